#include "program.h"

#include <QProcess>

namespace quenchly::testing {
namespace {

constexpr int deadline = 60'000;  // milliseconds

}  // namespace

ProgramRun runProgram(const QString& program, const QStringList& arguments,
                      const std::map<std::string, std::string>& variables)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const auto& [name, value] : variables)
        environment.insert(QString::fromStdString(name), QString::fromStdString(value));
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(program, arguments);
    ProgramRun run;
    if (!process.waitForFinished(deadline)) {
        process.kill();
        process.waitForFinished(deadline);
    } else if (process.exitStatus() == QProcess::NormalExit) {
        run.exitStatus = process.exitCode();
    }
    run.output = process.readAllStandardOutput().toStdString();
    run.errors = process.readAllStandardError().toStdString();
    return run;
}

}  // namespace quenchly::testing
