// usage: quitting_application HOME
// Asks the tool on PATH to switch Protection off and quits at once, while the tool still runs.

#include <QGuiApplication>

#include "state_watcher.h"

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    if (argc != 2)
        return 2;
    quenchly::StateWatcher watcher(quenchly::makeSystem(argv[1]));
    watcher.setProtect(false);
    const bool busy = watcher.protectBusy();
    QMetaObject::invokeMethod(&application, &QGuiApplication::quit, Qt::QueuedConnection);
    QGuiApplication::exec();
    return busy ? 0 : 1;
}
