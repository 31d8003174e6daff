// Usage: click_to_panel STARTS CLICKS PROGRAM [ARGUMENT...]
// How long it takes from a real click on PROGRAM's item in the tray until its panel is painted on the screen.

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QProcess>
#include <QRegularExpression>
#include <QScreen>
#include <QThread>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <vector>

#include "started_program.h"
#include "timing.h"

namespace {

using namespace quenchly::bench;

constexpr int deadline = 10'000;        // milliseconds
constexpr int untilItemIsDrawn = 1500;  // milliseconds
constexpr int betweenClicks = 700;      // milliseconds; a press just after the panel went does not open it again
constexpr int atRest = 300;             // milliseconds without a change
constexpr int pressLength = 60;         // milliseconds
constexpr int lookInterval = 400;       // microseconds

/// Of the tray's strip; the only item of the session stands at its right end.
constexpr int itemFromRight = 14;
constexpr int itemFromTop = 14;

/// Crosses the application's icon, the targets' dots and the rows' titles, and no figure that moves by itself.
constexpr int columnInPanel = 24;

struct Opening {
    double firstChange;  ///< milliseconds
    double lastChange;
};

/// xdotool, kept running so that its start is in no figure.
class Mouse {
public:
    Mouse()
    {
        tool_.start(QStringLiteral("xdotool"), {QStringLiteral("-")});
        if (!tool_.waitForStarted())
            std::exit(1);
    }
    ~Mouse()
    {
        tool_.closeWriteChannel();
        tool_.waitForFinished();
    }

    void command(const QByteArray& line)
    {
        tool_.write(line + '\n');
        tool_.waitForBytesWritten();
    }

private:
    QProcess tool_;
};

QRect screenArea()
{
    return QGuiApplication::primaryScreen()->geometry();
}

QImage columnOfScreen(int x)
{
    return QGuiApplication::primaryScreen()->grabWindow(0, x, 0, 1, screenArea().height()).toImage();
}

/// The left edge of the open panel.
std::optional<int> panelLeft()
{
    QProcess tool;
    tool.start(QStringLiteral("xdotool"),
               {QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--name"),
                QStringLiteral("^Quenchly$"), QStringLiteral("getwindowgeometry"), QStringLiteral("--shell")});
    tool.waitForFinished();
    const auto match = QRegularExpression(QStringLiteral("X=(-?\\d+)")).match(QString::fromUtf8(tool.readAll()));
    return match.hasMatch() ? std::optional(match.captured(1).toInt()) : std::nullopt;
}

class Clicks {
public:
    /// The tray takes no press of a pointer that was there before the item.
    void approach()
    {
        const QPoint item = screenArea().topRight() + QPoint(-itemFromRight, itemFromTop);
        for (const QPoint& place : {screenArea().center(), item})
            mouse_.command("mousemove " + QByteArray::number(place.x()) + ' ' + QByteArray::number(place.y()));
    }

    /// Opens the panel once to see where it is; false when it does not come.
    bool findPanel()
    {
        press();
        mouse_.command("mouseup 1");
        QElapsedTimer timer;
        timer.start();
        auto left = panelLeft();
        for (; !left && timer.elapsed() < deadline; left = panelLeft())
            QThread::msleep(50);
        if (left)
            column_ = *left + columnInPanel;
        return left.has_value();
    }

    /// None when nothing comes or goes on the screen.
    std::optional<Opening> click()
    {
        press();
        QImage shown = columnOfScreen(column_);
        QElapsedTimer timer;
        timer.start();
        mouse_.command("mouseup 1");
        std::optional<Opening> opening;
        while (timer.elapsed() < deadline) {
            QImage now = columnOfScreen(column_);
            const double passed = static_cast<double>(timer.nsecsElapsed()) / 1e6;
            if (now != shown) {
                shown = std::move(now);
                opening = {opening ? opening->firstChange : passed, passed};
            } else if (opening && passed - opening->lastChange > atRest) {
                return opening;
            }
            QThread::usleep(lookInterval);
        }
        return std::nullopt;
    }

private:
    /// The item acts when the button is let go.
    void press()
    {
        QThread::msleep(betweenClicks);
        mouse_.command("mousedown 1");
        QThread::msleep(pressLength);
    }

    Mouse mouse_;
    int column_ = 0;
};

struct Measured {
    std::vector<double> first;
    std::vector<double> firstWhole;
    std::vector<double> later;
    std::vector<double> laterWhole;
};

[[noreturn]] void giveUp(const char* reason)
{
    std::printf("  %s\n", reason);
    std::exit(1);
}

void measure(Clicks& clicks, int count, Measured& measured)
{
    for (int time = 0; time < count; ++time) {
        const auto opened = clicks.click();
        if (!opened || !clicks.click())
            giveUp("the panel does not come and go at a click");
        (time == 0 ? measured.first : measured.later).push_back(opened->firstChange);
        (time == 0 ? measured.firstWhole : measured.laterWhole).push_back(opened->lastChange);
    }
}

}  // namespace

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    if (argc < 4)
        return 2;
    Tray tray;
    Clicks clicks;
    Measured measured;
    for (int start = 0; start <= std::atoi(argv[1]); ++start) {
        const StartedProgram program(argv + 3);
        if (!tray.waitForItem())
            giveUp("no item in time");
        QThread::msleep(untilItemIsDrawn);
        clicks.approach();
        if (start > 0)
            measure(clicks, std::atoi(argv[2]), measured);
        else if (!clicks.findPanel())
            giveUp("the panel does not come at a click");
    }
    printMilliseconds("first click to the panel on the screen", measured.first);
    printMilliseconds("  to its last change", measured.firstWhole);
    printMilliseconds("later click to the panel on the screen", measured.later);
    printMilliseconds("  to its last change", measured.laterWhole);
}
