// Usage: panel_bench [PROCESSES]
// What the open panel costs and where it goes: its content, its layout, its painting and its scans. Runs on any Qt
// platform; on "offscreen" no window system is in the figures.

#include <malloc.h>

#include <QApplication>
#include <QThread>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <vector>

#include "live_metrics.h"
#include "menu_content_view.h"
#include "menu_panel.h"
#include "meter_bar.h"
#include "panel_controller.h"
#include "scratch_home.h"
#include "sleepers.h"
#include "state_watcher.h"
#include "target_scanner.h"
#include "timing.h"
#include "updater.h"

namespace {

using namespace quenchly;
using namespace quenchly::bench;

constexpr int repetitions = 300;
constexpr int coldSeconds = 15;
constexpr int mostOpenings = 1000;
constexpr int untilScanHasEnded = 200;  // milliseconds
constexpr int defaultProcesses = 300;

/// The real sampler with a load that moves as often as it is asked.
System movingSystem(System system, double& load)
{
    system.sampleMetrics = [&load](bool swapCritical) {
        return LiveMetricsSampler::sampleFrom({.load1 = load, .cpuCount = 2, .swap = {}}, swapCritical);
    };
    return system;
}

/// Lets the layout and the paint events through, and the spring come to rest.
void settle(const MenuPanel& panel)
{
    const auto bars = panel.findChildren<MeterBar*>();
    const auto isMoving = [&] {
        return std::any_of(bars.begin(), bars.end(), [](auto* bar) { return bar->isMoving(); });
    };
    QApplication::processEvents();
    while (isMoving())
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

struct Step {
    const char* name;
    std::function<void()> work;
};

class Bench {
public:
    explicit Bench(int processes)
        : sleepers_(processes),
          watcher_(movingSystem(makeSystem(home_.path()), load_)),
          updater_(watcher_.system()),
          controller_(watcher_, updater_),
          panel_(controller_, MenuPanel::Role::popup),
          table_(watcher_.system().makeProcesses())
    {
    }

    void run()
    {
        const double first = cost([this] { open(); });
        std::printf("  %-44s %9.1f us\n", "first opening, without the making", first);
        std::vector<double> openings;
        for (int opening = 1; opening <= mostOpenings; ++opening) {
            panel_.close();
            openings.push_back(cost([this] { open(); }));
            if (opening == mostOpenings / 100 || opening == mostOpenings / 10 || opening == mostOpenings)
                printAllocated(opening);
        }
        std::printf("  %-44s %9.1f us\n", "later opening", spreadOf(openings).median);
        open();
        settle(panel_);
        printSteps();
    }

private:
    void open()
    {
        panel_.openAt({});
        QApplication::processEvents();
    }

    void printAllocated(int openings)
    {
        panel_.close();
        QThread::msleep(untilScanHasEnded);
        QApplication::processEvents();
        std::printf("  allocated after %5d openings, closed          %6.2f MiB\n", openings,
                    static_cast<double>(::mallinfo2().uordblks) / (1024 * 1024));
    }

    void moveFigures() { load_ = load_ > 1.5 ? 0.5 : load_ + 0.1; }

    std::vector<Step> steps()
    {
        return {
            {"status read and published, panel closed",
             [this] {
                 panel_.blockSignals(true);
                 watcher_.blockSignals(true);
                 watcher_.reload();
                 watcher_.blockSignals(false);
                 panel_.blockSignals(false);
             }},
            {"content decided and compared", [this] { panel_.refresh(); }},
            {"nothing changed, events",
             [this] {
                 watcher_.reload();
                 QApplication::processEvents();
             }},
            {"figures changed: laid out",
             [this] {
                 moveFigures();
                 watcher_.reload();
             }},
            {"  and painted with the spring's first frame",
             [this] {
                 moveFigures();
                 watcher_.reload();
                 QApplication::processEvents();
             }},
            {"one frame of a bar",
             [this] {
                 MeterBar* bar = panel_.findChildren<MeterBar*>().constFirst();
                 bar->repaint();
             }},
            {"whole panel painted", [this] { panel_.repaint(); }},
            {"target scan", [this] { TargetScanner::rows(*table_, targetSituation(watcher_)); }},
        };
    }

    void printSteps()
    {
        std::printf("  %-44s %12s  %s\n", "where the time goes", "on end", "once a second (quartiles)");
        for (const Step& step : steps()) {
            std::vector<double> hot;
            std::vector<double> cold;
            for (int repetition = 0; repetition < repetitions; ++repetition)
                hot.push_back(cost(step.work));
            for (int second = 0; second < coldSeconds; ++second) {
                settle(panel_);
                QThread::sleep(1);
                cold.push_back(cost(step.work));
            }
            const Spread paced = spreadOf(cold);
            std::printf("  %-44s %9.1f us  %9.1f us (%.1f to %.1f)\n", step.name, spreadOf(hot).median, paced.median,
                        paced.lowerQuartile, paced.upperQuartile);
        }
    }

    const ScratchHome home_{"holding"};
    const Sleepers sleepers_;
    double load_ = 0.5;
    StateWatcher watcher_;
    Updater updater_;
    PanelController controller_;
    MenuPanel panel_;
    std::unique_ptr<ProcessTable> table_;
};

}  // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    Bench(argc > 1 ? std::atoi(argv[1]) : defaultProcesses).run();
}
