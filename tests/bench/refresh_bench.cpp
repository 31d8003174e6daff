// Usage: refresh_bench [PROCESSES...]
// What one whole refresh costs beside one plain listing of /proc, with so many more processes, and where it goes.

#include <QCoreApplication>
#include <QThread>
#include <chrono>
#include <cstdio>
#include <functional>
#include <utility>
#include <vector>

#include "command_runner.h"
#include "file_reading.h"
#include "heat_state_file.h"
#include "json_object.h"
#include "menu_bar_content.h"
#include "proc_listing.h"
#include "scratch_home.h"
#include "sleepers.h"
#include "state_watcher.h"
#include "status_builder.h"
#include "timing.h"

namespace {

using namespace quenchly;
using namespace quenchly::bench;
using namespace std::chrono_literals;

constexpr int repetitions = 2000;
constexpr int coldSeconds = 20;

/// Longer than a stamp has to be old to be trusted.
constexpr std::chrono::milliseconds untilFileIsTrusted = 2200ms;

/// Longer than a process counts as new.
constexpr int refreshesUntilSettled = 20;

struct Comparison {
    Spread listing;
    Spread refresh;
};

Comparison compare(const std::function<void()>& before, const std::function<void()>& refresh)
{
    std::vector<double> listings;
    std::vector<double> refreshes;
    for (int repetition = 0; repetition < repetitions; ++repetition) {
        before();
        // Whichever goes second finds the kernel's entries warm.
        if (repetition % 2 == 0)
            listings.push_back(cost([] { listProcOnce(); }));
        refreshes.push_back(cost(refresh));
        if (repetition % 2 == 1)
            listings.push_back(cost([] { listProcOnce(); }));
    }
    return {spreadOf(listings), spreadOf(refreshes)};
}

void print(const char* situation, const Comparison& compared)
{
    std::printf("  %-24s %8.1f us  %8.1f us (%.1f to %.1f)   %5.2f\n", situation, compared.listing.median,
                compared.refresh.median, compared.refresh.lowerQuartile, compared.refresh.upperQuartile,
                compared.refresh.median / compared.listing.median);
}

/// One refresh as the application makes it, up to what the menu bar shows.
void comparePlainListing(const ScratchHome& home, StateWatcher& watcher)
{
    MenuBarExtraContent shown;
    const auto refresh = [&] {
        watcher.reload();
        if (auto content = menuBarContent(watcher); content != shown)
            shown = std::move(content);
    };
    std::printf("  %-24s %11s  %11s %s   %s\n", "whole refresh", "/proc once", "refresh", "(quartiles)", "ratio");
    for (int settling = 0; settling < refreshesUntilSettled; ++settling)
        refresh();
    print("file changed each time", compare([&] { home.replaceStateFile(); }, refresh));
    QThread::msleep(untilFileIsTrusted.count());
    refresh();
    print("unchanged file", compare([] {}, refresh));
}

using Step = std::pair<const char*, std::function<void()>>;

std::vector<Step> stepsOf(const StateWatcher& watcher, HeatStateFile& file)
{
    const System& system = watcher.system();
    const auto sideFile = [&](const char* name) {
        return parseJsonObject(readFile(watcher.dataHome() / "state" / name).bytes);
    };
    const auto build = [&] {
        return QuenchStatusBuilder::build(
            file.state(), {.dataHome = watcher.dataHome(), .launchAgentsDir = system.launchAgentsFolder}, system.now());
    };
    return {
        {"one listing of /proc in C", [] { listProcOnce(); }},
        {"state file, unchanged", [&] { file.refresh(); }},
        {"state file, read and parsed", [&] { HeatState::parse(readFile(watcher.stateFileURL()).bytes); }},
        {"status built (two files)", [build] { build(); }},
        {"load and swap sampled", [&] { watcher.status().withLiveMetrics(*system.sampleMetrics(false)); }},
        {"tool looked up", [&] { CLIRunner::locate(system); }},
        {"mode and throttle files",
         [sideFile] {
             sideFile("protect-mode.json");
             sideFile("throttle.json");
         }},
        {"process table",
         [&] {
             system.processes->beginRefresh();
             system.processes->matching("quenchly.ts check");
             system.processes->matching("MacOS/quenchly check");
         }},
        {"menu bar content", [&] { menuBarContent(watcher); }},
    };
}

/// What each step costs on end, and what it costs once a second, when other programs have used the caches since.
void printShares(const StateWatcher& watcher)
{
    HeatStateFile file(watcher.stateFileURL(), watcher.system().now);
    file.refresh();
    const std::vector<Step> steps = stepsOf(watcher, file);
    std::vector<std::vector<double>> hot(steps.size());
    std::vector<std::vector<double>> cold(steps.size());
    for (std::size_t i = 0; i < steps.size(); ++i)
        for (int repetition = 0; repetition < repetitions; ++repetition)
            hot[i].push_back(cost(steps[i].second));
    for (int second = 0; second < coldSeconds; ++second) {
        QThread::sleep(1);
        for (std::size_t i = 0; i < steps.size(); ++i)
            cold[i].push_back(cost(steps[i].second));
    }
    std::printf("  %-32s %10s  %s\n", "where the time goes", "on end", "once a second (quartiles)");
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const Spread paced = spreadOf(cold[i]);
        std::printf("  %-32s %7.1f us  %7.1f us (%.1f to %.1f)\n", steps[i].first, spreadOf(hot[i]).median,
                    paced.median, paced.lowerQuartile, paced.upperQuartile);
    }
}

void measure(int count)
{
    const ScratchHome home("holding");
    const Sleepers sleepers(count);
    StateWatcher watcher(makeSystem(home.path()));
    std::printf("%d more processes, %d on the machine\n", count, listProcOnce());
    comparePlainListing(home, watcher);
    printShares(watcher);
}

}  // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QStringList counts = QCoreApplication::arguments().mid(1);
    if (counts.isEmpty())
        counts = {QStringLiteral("300")};
    for (const QString& count : std::as_const(counts))
        measure(count.toInt());
}
