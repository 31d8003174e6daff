#include "scratch_home.h"

#include <QFile>
#include <QProcess>
#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace quenchly::bench {
namespace {

[[noreturn]] void giveUp(const char* reason)
{
    std::fprintf(stderr, "%s\n", reason);
    std::exit(1);
}

}  // namespace

ScratchHome::ScratchHome(const char* scenario)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QUENCHLY_HOME"), QString::fromStdString(dataHome().string()));
    environment.insert(QStringLiteral("QUENCHLY_LAUNCH_AGENTS"),
                       folder_.filePath(QStringLiteral("Library/LaunchAgents")));
    QProcess tool;
    tool.setProcessEnvironment(environment);
    tool.start(QStringLiteral(QUENCHLY_DEMO_TOOL_PATH), {QStringLiteral("scenario"), QLatin1String(scenario)});
    if (!tool.waitForFinished() || tool.exitCode() != 0)
        giveUp("the stand-in checker cannot be run");
    QFile file(QString::fromStdString(stateFile().string()));
    if (!file.open(QIODevice::ReadOnly))
        giveUp("the stand-in checker wrote no state");
    state_ = file.readAll().toStdString();
}

void ScratchHome::replaceStateFile() const
{
    const std::filesystem::path fresh = stateFile().string() + ".new";
    std::ofstream(fresh, std::ios::binary) << state_;
    std::filesystem::rename(fresh, stateFile());
}

}  // namespace quenchly::bench
