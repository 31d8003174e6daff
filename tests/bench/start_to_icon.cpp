// Usage: start_to_icon TIMES PROGRAM [ARGUMENT...]
// How long PROGRAM takes from its start until the tray knows its item.

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "process_facts.h"
#include "started_program.h"
#include "timing.h"

namespace {

using namespace quenchly::bench;

constexpr int betweenStarts = 700;  // milliseconds

}  // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    if (argc < 3)
        return 2;
    Tray tray;
    std::vector<double> walls;
    std::vector<double> processor;
    for (int time = 0; time < std::atoi(argv[1]); ++time) {
        QElapsedTimer timer;
        timer.start();
        const StartedProgram program(argv + 2);
        if (!tray.waitForItem()) {
            std::printf("  no item in time\n");
            return 1;
        }
        walls.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
        processor.push_back(factsOf(program.id()).processorMilliseconds);
        QThread::msleep(betweenStarts);
    }
    printMilliseconds("start to item known to the tray", walls);
    printMilliseconds("  of it processor time of the program", processor);
}
