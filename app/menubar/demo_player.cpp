#include "demo_player.h"

#include <system_error>

#include "demo_processes.h"

namespace quenchly {
namespace {

constexpr int toolTimeout = 5000;  // milliseconds

QProcessEnvironment processEnvironment(const System& system)
{
    QProcessEnvironment environment;
    for (const auto& [name, value] : system.environment)
        environment.insert(QString::fromStdString(name), QString::fromStdString(value));
    return environment;
}

}  // namespace

std::filesystem::path DemoPlayer::tool(const std::filesystem::path& executableFolder)
{
    const std::filesystem::path prefix = executableFolder.parent_path();
    std::error_code ignored;
    std::filesystem::path installed = prefix / QUENCHLY_DEMO_TOOL;
    return std::filesystem::exists(installed, ignored) ? installed : prefix / "demo" / "quenchly";
}

void DemoPlayer::adapt(System& system)
{
    const std::filesystem::path dataHome = system.homeFolder / "Library/Application Support/Quenchly";
    system.environment[CheckerContract::dataFolderVariable] = dataHome;
    system.environment["QUENCHLY_LAUNCH_AGENTS"] = system.launchAgentsFolder;
    system.executableFolder = tool(system.executableFolder).parent_path();
    system.sampleMetrics = [](bool) { return std::optional<LastMetrics>(); };
    system.makeProcesses = [dataHome] { return makeDemoProcesses(dataHome); };
}

DemoPlayer::DemoPlayer(const System& system, const QString& scenario, const Pace& pace)
    : pace_(pace), tool_(QString::fromStdString((system.executableFolder / "quenchly").string()))
{
    process_.setProcessEnvironment(processEnvironment(system));
    process_.setStandardInputFile(QProcess::nullDevice());
    process_.setProcessChannelMode(QProcess::SeparateChannels);
    if (!scenario.isEmpty())
        scenarios_ = {scenario};
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { goOn(); });
    QObject::connect(&process_, &QProcess::finished, &timer_, [this] { follow(); });
}

DemoPlayer::~DemoPlayer()
{
    // What it writes must be there before the home folder is removed.
    if (process_.state() != QProcess::NotRunning && !process_.waitForFinished(toolTimeout))
        process_.kill();
}

QString DemoPlayer::begin()
{
    if (scenarios_.isEmpty())
        listScenarios();
    if (scenarios_.isEmpty())
        return QStringLiteral("the stand-in checker cannot be run: %1").arg(tool_);
    run({QStringLiteral("tour"), QStringLiteral("begin"), scenarios_.first()});
    if (!process_.waitForFinished(toolTimeout))
        return QStringLiteral("the stand-in checker cannot be run: %1").arg(tool_);
    if (process_.exitCode() != 0)
        return QString::fromUtf8(process_.readAllStandardError()).trimmed();
    next_ = 1;
    timer_.start(scenarios_.size() == 1 ? pace_.singleScene : pace_.tour);
    return {};
}

void DemoPlayer::listScenarios()
{
    run({QStringLiteral("scenario")});
    process_.waitForFinished(toolTimeout);
    scenarios_ = QString::fromUtf8(process_.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
}

void DemoPlayer::goOn()
{
    if (process_.state() != QProcess::NotRunning)
        return;
    if (!touring_)
        return run({QStringLiteral("refresh")});
    run({QStringLiteral("tour"), scenarios_.at(next_ % scenarios_.size())});
    ++next_;
}

void DemoPlayer::follow()
{
    // Only the tool can tell for sure, while nobody else changes the state.
    if (!touring_ || !process_.peek(64).startsWith("the tour is over"))
        return;
    touring_ = false;
    timer_.start(pace_.checks);
}

void DemoPlayer::run(const QStringList& arguments)
{
    process_.start(tool_, arguments, QIODevice::ReadOnly);
}

}  // namespace quenchly
