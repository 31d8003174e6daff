#include "demo_player.h"

namespace quenchly {
namespace {

constexpr int toolTimeout = 5000;              // milliseconds
constexpr int sceneLength = 10'000;            // milliseconds
constexpr int singleSceneRepetition = 30'000;  // milliseconds, well below the age at which a state is stale

QProcessEnvironment processEnvironment(const System& system)
{
    QProcessEnvironment environment;
    for (const auto& [name, value] : system.environment)
        environment.insert(QString::fromStdString(name), QString::fromStdString(value));
    return environment;
}

}  // namespace

std::filesystem::path DemoPlayer::tool(const System& system)
{
    return system.executableFolder.parent_path() / "demo" / "quenchly";
}

void DemoPlayer::adapt(System& system)
{
    system.environment["QUENCHLY_HOME"] = system.homeFolder / "Library/Application Support/Quenchly";
    system.environment["QUENCHLY_LAUNCH_AGENTS"] = system.launchAgentsFolder;
    system.executableFolder = tool(system).parent_path();
    system.sampleMetrics = [](bool) { return std::optional<LastMetrics>(); };
}

DemoPlayer::DemoPlayer(const System& system, const QString& scenario)
    : tool_(QString::fromStdString((system.executableFolder / "quenchly").string()))
{
    process_.setProcessEnvironment(processEnvironment(system));
    process_.setStandardInputFile(QProcess::nullDevice());
    process_.setProcessChannelMode(QProcess::SeparateChannels);
    if (!scenario.isEmpty())
        scenarios_ = {scenario};
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { playNext(); });
}

QString DemoPlayer::begin()
{
    if (scenarios_.isEmpty()) {
        run({QStringLiteral("scenario")});
        process_.waitForFinished(toolTimeout);
        scenarios_ = QString::fromUtf8(process_.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    }
    if (scenarios_.isEmpty())
        return QStringLiteral("the stand-in checker cannot be run: %1").arg(tool_);
    playNext();
    if (!process_.waitForFinished(toolTimeout))
        return QStringLiteral("the stand-in checker cannot be run: %1").arg(tool_);
    if (process_.exitCode() != 0)
        return QString::fromUtf8(process_.readAllStandardError()).trimmed();
    timer_.start(scenarios_.size() == 1 ? singleSceneRepetition : sceneLength);
    return {};
}

void DemoPlayer::playNext()
{
    if (process_.state() != QProcess::NotRunning)
        return;
    run({QStringLiteral("scenario"), scenarios_.at(next_)});
    next_ = (next_ + 1) % scenarios_.size();
}

void DemoPlayer::run(const QStringList& arguments)
{
    process_.start(tool_, arguments, QIODevice::ReadOnly);
}

}  // namespace quenchly
