#include "program.h"

#include <QProcess>

#include "patience.h"

namespace quenchly::testing {

ProgramRun runProgram(const std::string& program, const std::vector<std::string>& arguments,
                      const std::map<std::string, std::string>& variables)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const auto& [name, value] : variables)
        environment.insert(QString::fromStdString(name), QString::fromStdString(value));
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setStandardInputFile(QProcess::nullDevice());
    QStringList words;
    for (const std::string& argument : arguments)
        words += QString::fromStdString(argument);
    process.start(QString::fromStdString(program), words);
    ProgramRun run;
    if (!process.waitForFinished(patience)) {
        process.kill();
        process.waitForFinished(patience);
    } else if (process.exitStatus() == QProcess::NormalExit) {
        run.exitStatus = process.exitCode();
    }
    run.output = process.readAllStandardOutput().toStdString();
    run.errors = process.readAllStandardError().toStdString();
    return run;
}

bool isInstalled(std::string_view path)
{
    return !path.ends_with("NOTFOUND");
}

}  // namespace quenchly::testing
