// Usage: start_to_icon TIMES PROGRAM [ARGUMENT...]
// How long PROGRAM takes from its start until the tray knows its item, and from a click until its panel is on the
// screen.

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QThread>
#include <QTimer>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "process_facts.h"
#include "timing.h"

namespace {

using namespace quenchly::bench;

constexpr int deadline = 10'000;    // milliseconds
constexpr int betweenClicks = 700;  // milliseconds
constexpr int clicks = 10;
constexpr QPoint icon{900, 28};
constexpr QPoint insidePanel{900, 40};

class Tray : public QObject {
    Q_OBJECT

public:
    Tray()
    {
        const QString watcher = QStringLiteral("org.kde.StatusNotifierWatcher");
        QDBusConnection::sessionBus().connect(watcher, QStringLiteral("/StatusNotifierWatcher"), watcher,
                                              QStringLiteral("StatusNotifierItemRegistered"), this,
                                              SLOT(registered(QString)));
    }

    /// The bus name of the next item to appear; empty when none does in time.
    QString waitForItem()
    {
        item_.clear();
        QTimer::singleShot(deadline, &loop_, &QEventLoop::quit);
        loop_.exec();
        return item_;
    }

private Q_SLOTS:
    void registered(const QString& item)
    {
        item_ = item.section(u'/', 0, 0);
        loop_.quit();
    }

private:
    QEventLoop loop_;
    QString item_;
};

class Program {
public:
    explicit Program(char** arguments)
    {
        if (::posix_spawn(&id_, arguments[0], nullptr, nullptr, arguments, environ) != 0)
            std::exit(1);
    }
    ~Program()
    {
        ::kill(id_, SIGTERM);
        ::waitpid(id_, nullptr, 0);
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    pid_t id() const { return id_; }

private:
    pid_t id_ = 0;
};

double milliseconds(const QElapsedTimer& timer)
{
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

QRgb pixelInsidePanel()
{
    return QGuiApplication::primaryScreen()
        ->grabWindow(0, insidePanel.x(), insidePanel.y(), 1, 1)
        .toImage()
        .pixel(0, 0);
}

/// Milliseconds from a press on the item until the screen changes where the panel comes or goes.
std::optional<double> click(const QString& item)
{
    const QRgb before = pixelInsidePanel();
    QDBusMessage activate =
        QDBusMessage::createMethodCall(item, QStringLiteral("/StatusNotifierItem"),
                                       QStringLiteral("org.kde.StatusNotifierItem"), QStringLiteral("Activate"));
    activate << icon.x() << icon.y();
    QElapsedTimer timer;
    timer.start();
    QDBusConnection::sessionBus().send(activate);
    while (pixelInsidePanel() == before) {
        if (timer.elapsed() > deadline)
            return std::nullopt;
        QThread::usleep(200);
    }
    return milliseconds(timer);
}

void print(const char* what, const std::vector<double>& values)
{
    if (values.empty())
        return;
    const Spread spread = spreadOf(values);
    std::printf("  %-40s %7.1f ms (%.1f to %.1f)\n", what, spread.median, spread.lowest, spread.highest);
}

void measureStarts(Tray& tray, int times, char** arguments)
{
    std::vector<double> walls;
    std::vector<double> processor;
    for (int time = 0; time < times; ++time) {
        QElapsedTimer timer;
        timer.start();
        const Program program(arguments);
        if (tray.waitForItem().isEmpty()) {
            std::printf("  no item in time\n");
            return;
        }
        walls.push_back(milliseconds(timer));
        processor.push_back(factsOf(program.id()).processorMilliseconds);
        QThread::msleep(betweenClicks);
    }
    print("start to item known to the tray", walls);
    print("  of it processor time of the program", processor);
}

void measureClicks(Tray& tray, char** arguments)
{
    const Program program(arguments);
    const QString item = tray.waitForItem();
    std::vector<double> opens;
    for (int time = 0; time < clicks; ++time) {
        QThread::msleep(betweenClicks);
        const auto opened = click(item);
        QThread::msleep(betweenClicks);
        if (!opened || !click(item)) {
            std::printf("  the panel does not come and go at a click\n");
            return;
        }
        opens.push_back(*opened);
    }
    print("first click to painted panel", {opens.front()});
    print("later click to painted panel", {opens.begin() + 1, opens.end()});
}

}  // namespace

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    if (argc < 3)
        return 2;
    Tray tray;
    measureStarts(tray, std::atoi(argv[1]), argv + 2);
    measureClicks(tray, argv + 2);
}

#include "start_to_icon.moc"
