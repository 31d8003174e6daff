// Usage: soak [REFRESHES]
// Refreshes the application as often as in a day, as fast as it can, and shows what has grown.

#include <malloc.h>
#include <unistd.h>

#include <QApplication>
#include <chrono>
#include <cstdio>
#include <memory>

#include "menu_bar_application.h"
#include "process_facts.h"
#include "scratch_home.h"
#include "state_watcher.h"
#include "updater.h"

namespace {

using namespace quenchly;
using namespace quenchly::bench;

constexpr int refreshesOfADay = 86'400;

/// How often a checker writes, and how often the machine's load average moves, in refreshes.
constexpr int refreshesPerCheck = 60;
constexpr int refreshesPerSample = 5;

constexpr int shownRows = 6;

void printRow(int refreshes)
{
    const ProcessFacts facts = factsOf(::getpid());
    const Memory memory = memoryOf(::getpid());
    std::printf("  %9d %12.1f MiB %12.1f MiB %12.2f MiB %12d %9d\n", refreshes,
                static_cast<double>(memory.proportionalKiB) / 1024, static_cast<double>(memory.privateKiB) / 1024,
                static_cast<double>(::mallinfo2().uordblks) / (1024 * 1024), facts.descriptors, facts.threads);
    std::fflush(stdout);
}

/// The real sampler with a load that moves although no time passes.
System movingSystem(System system, const int& refreshes)
{
    system.sampleMetrics = [&refreshes](bool swapCritical) {
        const double load = (refreshes / refreshesPerSample) % 20 / 10.0;
        return LiveMetricsSampler::sampleFrom({.load1 = load, .cpuCount = 2, .swap = {}}, swapCritical);
    };
    return system;
}

}  // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const int count = QApplication::arguments().value(1, QString::number(refreshesOfADay)).toInt();
    const ScratchHome home("holding");
    int refreshes = 0;
    StateWatcher watcher(movingSystem(makeSystem(home.path()), refreshes));
    Updater updater(watcher.system());
    const MenuBarApplication shown(watcher, updater, makeMenuBarExtra());

    std::printf("  %9s %16s %16s %16s %12s %9s\n", "refreshes", "proportional", "private", "allocated", "descriptors",
                "threads");
    const int warmUp = count / 100;
    const auto start = std::chrono::steady_clock::now();
    while (refreshes <= count) {
        if (refreshes == warmUp || (refreshes > warmUp && refreshes % (count / shownRows) == 0))
            printRow(refreshes);
        if (refreshes % refreshesPerCheck == 0)
            home.replaceStateFile();
        watcher.reload();
        QApplication::processEvents();
        ++refreshes;
    }
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    std::printf("  took %.1f s, %.0f us of processor time a refresh\n", took.count(),
                factsOf(::getpid()).processorMilliseconds * 1000 / count);
}
