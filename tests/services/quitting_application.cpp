// usage: quitting_application HOME [at-once]
// Asks the tool on PATH, which records its runs, to switch Protection off, and quits as soon as the tool runs, or at
// once.

#include <QFile>
#include <QGuiApplication>
#include <QTimer>
#include <cstdlib>

#include "state_watcher.h"

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    if (argc < 2)
        return 2;
    quenchly::StateWatcher watcher(quenchly::makeSystem(argv[1]));
    watcher.setProtect(false);
    const bool busy = watcher.protectBusy();
    if (argc > 2)
        std::_Exit(busy ? 0 : 1);
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &application, [] {
        if (QFile::exists(qEnvironmentVariable("RECORDING_FILE")))
            QGuiApplication::quit();
    });
    look.start(10);
    QGuiApplication::exec();
    return busy ? 0 : 1;
}
