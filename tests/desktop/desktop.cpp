#include "desktop.h"

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDir>
#include <QGuiApplication>
#include <QPixmap>
#include <QProcess>
#include <QScreen>
#include <QTest>
#include <cstdlib>

namespace quenchly::testing {
namespace {

constexpr int deadline = 60000;   // milliseconds; only ends what hangs
constexpr int restingTime = 250;  // milliseconds
constexpr int barHeight = 28;
constexpr int pixelsAroundIcon = 8;
constexpr int enlargement = 12;

QScreen& primaryScreen()
{
    return *QGuiApplication::primaryScreen();
}

QRect bar()
{
    const QRect whole = primaryScreen().geometry();
    const bool atBottom = qEnvironmentVariable("SESSION_BAR").startsWith(QStringLiteral("bottom"));
    return {0, atBottom ? whole.height() - barHeight : 0, whole.width(), barHeight};
}

bool isClose(QRgb a, QRgb b)
{
    constexpr int tolerance = 6;
    return std::abs(qRed(a) - qRed(b)) <= tolerance && std::abs(qGreen(a) - qGreen(b)) <= tolerance &&
           std::abs(qBlue(a) - qBlue(b)) <= tolerance;
}

QImage barImage()
{
    const QRect part = bar();
    return primaryScreen().grabWindow(0, part.x(), part.y(), part.width(), part.height()).toImage();
}

/// Where on the screen pixels of a colour are, in an image of the bar.
QRect colorIn(const QImage& image, QRgb color)
{
    QRect found;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (isClose(image.pixel(x, y), color))
                found |= QRect(x, y, 1, 1);
        }
    }
    return found.isNull() ? found : found.translated(bar().topLeft());
}

QString picturePath(const QString& name)
{
    const QString folder = qEnvironmentVariable("QUENCHLY_SCREENSHOT_DIR", QDir::currentPath());
    QDir().mkpath(folder);
    return QStringLiteral("%1/%2.png").arg(folder, name);
}

}  // namespace

bool waitFor(const std::function<bool()>& condition)
{
    return QTest::qWaitFor(condition, deadline);
}

QString run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished(deadline)) << qPrintable(program + u' ' + arguments.join(u' '));
    return QString::fromUtf8(process.readAllStandardOutput());
}

void moveTo(QPoint position)
{
    run(QStringLiteral("xdotool"),
        {QStringLiteral("mousemove"), QString::number(position.x()), QString::number(position.y())});
}

void click(QPoint position, int button)
{
    moveTo(position);
    run(QStringLiteral("xdotool"), {QStringLiteral("click"), QString::number(button)});
}

void clickTwice(QPoint position, int gap)
{
    moveTo(position);
    run(QStringLiteral("xdotool"), {QStringLiteral("click"), QStringLiteral("--repeat"), QStringLiteral("2"),
                                    QStringLiteral("--delay"), QString::number(gap), QStringLiteral("1")});
}

void turnWheel(QPoint position, int steps)
{
    const int upwards = 4;
    const int downwards = 5;
    moveTo(position);
    run(QStringLiteral("xdotool"),
        {QStringLiteral("click"), QStringLiteral("--delay"), QStringLiteral("5"), QStringLiteral("--repeat"),
         QString::number(std::abs(steps)), QString::number(steps < 0 ? upwards : downwards)});
}

void press(const char* key)
{
    run(QStringLiteral("xdotool"), {QStringLiteral("key"), QLatin1String(key)});
}

bool trayRuns()
{
    const QString watcher = QStringLiteral("org.kde.StatusNotifierWatcher");
    QDBusMessage question =
        QDBusMessage::createMethodCall(watcher, QStringLiteral("/StatusNotifierWatcher"),
                                       QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question << watcher << QStringLiteral("IsStatusNotifierHostRegistered");
    const QDBusMessage answer = QDBusConnection::sessionBus().call(question);
    return answer.arguments().value(0).value<QDBusVariant>().variant().toBool();
}

bool barIsThere()
{
    return waitFor([] { return workArea().height() < primaryScreen().geometry().height() && trayRuns(); });
}

QImage screen()
{
    return primaryScreen().grabWindow(0).toImage();
}

QRect workArea()
{
    return primaryScreen().availableGeometry();
}

QPoint idlePosition()
{
    return {1, primaryScreen().geometry().center().y()};
}

void keepPicture(const QString& name)
{
    EXPECT_TRUE(screen().save(picturePath(name)));
}

void keepEnlarged(const QString& name, const QRect& part)
{
    const QRect around =
        part.adjusted(-pixelsAroundIcon, -pixelsAroundIcon, pixelsAroundIcon, pixelsAroundIcon) & bar();
    EXPECT_TRUE(screen().copy(around).scaled(around.size() * enlargement).save(picturePath(name)));
}

bool screenRests()
{
    return waitFor([] {
        const QImage before = screen();
        QTest::qWait(restingTime);
        return screen() == before;
    });
}

QRect colorOnBar(QRgb color)
{
    return colorIn(barImage(), color);
}

QRect iconOnBar()
{
    constexpr QRgb tints[] = {amber, blue, 0xFF6B8FB5, 0xFFF09A74, 0xFF8E8A84};
    const QImage image = barImage();
    for (const QRgb tint : tints) {
        const QRect found = colorIn(image, tint);
        if (found.width() >= iconSize / 2)
            return found;
    }
    return {};
}

QRect restingIcon()
{
    QRect icon;
    const bool found = waitFor([&] {
        icon = iconOnBar();
        QTest::qWait(restingTime / 2);
        return !icon.isNull() && iconOnBar() == icon;
    });
    return found ? icon : QRect();
}

}  // namespace quenchly::testing
