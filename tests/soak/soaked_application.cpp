#include "soaked_application.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QTcpServer>
#include <QThread>

#include "live_metrics.h"
#include "menu_bar_content.h"
#include "relative_time.h"
#include "status_json.h"
#include "tool_output.h"

namespace quenchly::soak {
namespace {

constexpr qint64 patience = 120'000;  // milliseconds

/// How often the load of the machine moves, in refreshes.
constexpr std::int64_t refreshesPerSample = 5;

Words* messages = nullptr;

void keepMessage(QtMsgType, const QMessageLogContext&, const QString& message)
{
    // What the offscreen platform says of every window.
    if (messages != nullptr && !message.startsWith(QStringLiteral("This plugin does not support")))
        messages->add("Qt: " + message.toStdString());
}

std::uint16_t freePort()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

/// The real table of processes, which tells how often a scan has begun.
class CountingTable final : public ProcessTable {
public:
    CountingTable(std::unique_ptr<ProcessTable> table, std::shared_ptr<std::atomic<int>> scans)
        : table_(std::move(table)), scans_(std::move(scans))
    {
    }

    void beginRefresh() override
    {
        ++*scans_;
        table_->beginRefresh();
    }
    std::vector<ProcessId> named(const std::string& name) override { return table_->named(name); }
    std::vector<ProcessId> matching(const std::string& pattern) override { return table_->matching(pattern); }
    std::map<ProcessId, std::string> states(const std::vector<ProcessId>& ids) override { return table_->states(ids); }

private:
    std::unique_ptr<ProcessTable> table_;
    std::shared_ptr<std::atomic<int>> scans_;
};

}  // namespace

Words::Words()
{
    messages = this;
    qInstallMessageHandler(keepMessage);
}

Words::~Words()
{
    qInstallMessageHandler(nullptr);
    messages = nullptr;
}

void Words::add(const std::string& line)
{
    const std::scoped_lock lock(mutex_);
    lines_.push_back(line);
}

std::vector<std::string> Words::all() const
{
    const std::scoped_lock lock(mutex_);
    return lines_;
}

SoakedApplication::SoakedApplication(const CheckedHome& home, const std::filesystem::path& tools, bool inTray)
    : home_(home), now_(*RelativeTime::date("2026-03-01T12:00:00Z"))
{
    watcher_ = std::make_unique<StateWatcher>(scripted(makeSystem(home.home), tools));
    updater_ = std::make_unique<Updater>(watcher_->system());
    std::unique_ptr<MenuBarExtra> item;
    if (inTray) {
        item = makeMenuBarExtra();
    } else {
        auto pressed = std::make_unique<PressedItem>();
        item_ = pressed.get();
        item = std::move(pressed);
    }
    application_ = std::make_unique<MenuBarApplication>(*watcher_, *updater_, std::move(item));
}

System SoakedApplication::scripted(System system, const std::filesystem::path& tools)
{
    std::filesystem::create_directories(tools);
    std::filesystem::create_symlink(QUENCHLY_DEMO_TOOL_PATH, tools / "quenchly");
    system.dashboardPort = freePort();
    system.environment["PATH"] = tools;
    system.environment["QUENCHLY_LAUNCH_AGENTS"] = home_.launchAgents();
    system.environment["QUENCHLY_DASHBOARD_PORT"] = std::to_string(system.dashboardPort);
    system.now = [this] { return now_; };
    system.sampleMetrics = [this](bool swapCritical) { return sample(swapCritical); };
    system.makeProcesses = [make = system.makeProcesses, scans = scans_] {
        return std::make_unique<CountingTable>(make(), scans);
    };
    system.openAddress = [](const std::string&) { return true; };
    system.runAlert = [](const Alert&) { return std::nullopt; };
    system.log = [this](const std::string& line) { words_.add(line); };
    return system;
}

std::optional<LastMetrics> SoakedApplication::sample(bool swapCritical) const
{
    if (!samples_)
        return std::nullopt;
    const double load = static_cast<double>(refreshes_ / refreshesPerSample % 20) / 10;
    return LiveMetricsSampler::sampleFrom({.load1 = load, .cpuCount = 2, .swap = {}}, swapCritical);
}

void SoakedApplication::refresh()
{
    ++refreshes_;
    now_ += std::chrono::seconds(1);
    watcher_->reload();
    letHappen();
}

void SoakedApplication::letHappen()
{
    QCoreApplication::processEvents();
    // Without an event loop around it, the call above leaves these for ever.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

bool SoakedApplication::letHappenUntil(const std::function<bool()>& condition)
{
    QElapsedTimer elapsed;
    elapsed.start();
    for (letHappen(); !condition(); letHappen()) {
        if (elapsed.elapsed() > patience)
            return false;
        QThread::msleep(1);
    }
    return true;
}

MenuPanel* SoakedApplication::openPanel() const
{
    for (QWidget* window : QApplication::topLevelWidgets())
        if (auto* panel = qobject_cast<MenuPanel*>(window); panel != nullptr && panel->isVisible())
            return panel;
    return nullptr;
}

// A scan begins only when what the one before has found was taken over.
void SoakedApplication::awaitScan()
{
    const int before = *scans_;
    letHappenUntil([&] {
        refresh();
        return *scans_ >= before + 3;
    });
    letHappen();
}

void SoakedApplication::act(Dice& dice)
{
    const std::function<void()> actions[] = {
        [this] { watcher_->setProtect(true); },     [this] { watcher_->setProtect(false); },
        [this] { watcher_->installAgent(); },       [this] { watcher_->unloadListed(); },
        [this] { watcher_->startLiveData(); },      [this] { watcher_->acknowledgeAllVisibleQuarantine(); },
        [this] { watcher_->beginCheckNow(); },      [this] { watcher_->refreshOpenAtLogin(); },
        [this] { watcher_->setOpenAtLogin(true); }, [this] { watcher_->setOpenAtLogin(false); },
        [this] { watcher_->openReportProblem(); },
    };
    dice.oneOf(actions)();
}

std::string SoakedApplication::error()
{
    System system = watcher_->system();
    system.processes = system.makeProcesses();
    for (const bool withSample : {true, false}) {
        samples_ = withSample;
        watcher_->reload();
        StateWatcher fresh(system);
        if (std::string found = difference(fresh); !found.empty())
            return found;
    }
    const std::string shown = statusJson(watcher_->status()) + "\n";
    const std::string printed = printedStatus();
    samples_ = true;
    watcher_->reload();
    return shown == printed ? std::string() : "quenchly-status prints " + printed + "and shown is " + shown;
}

std::string SoakedApplication::difference(StateWatcher& fresh) const
{
    const StateWatcher& shown = *watcher_;
    if (shown.status() != fresh.status())
        return "a new watcher reads " + statusJson(fresh.status()) + " and shown is " + statusJson(shown.status());
    if (shown.cliAvailable() != fresh.cliAvailable() || shown.workSavedOn() != fresh.workSavedOn() ||
        shown.throttleActive() != fresh.throttleActive() || shown.throttledLabels() != fresh.throttledLabels() ||
        shown.openAtLogin() != fresh.openAtLogin())
        return "a new watcher has other side facts";
    const bool sameItem = item_ == nullptr || item_->shown == menuBarContent(fresh);
    return sameItem ? std::string() : "the item shows what a new watcher would not";
}

std::string SoakedApplication::printedStatus() const
{
    // Not a QProcess: its way of forking ends a program under the thread sanitizer.
    const auto run = runTool({QUENCHLY_STATUS_PATH, "--json", "--no-live", "--data-home", home_.dataHome().string(),
                              "--launch-agents", home_.launchAgents().string(), "--now", RelativeTime::isoText(now_)});
    return run ? run->standardOutput : std::string();
}

}  // namespace quenchly::soak
