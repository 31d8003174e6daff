#pragma once

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QStringList>
#include <functional>

/// The desktop that the tests run on: its pointer, its keys, its screen and its bar with the tray.
namespace quenchly::testing {

/// False when the condition does not come true within a time that is far more than it takes.
bool waitFor(const std::function<bool()>& condition);

/// What a program printed.
QString run(const QString& program, const QStringList& arguments);

void moveTo(QPoint position);
void click(QPoint position, int button = 1);
/// Two presses with so many milliseconds between them.
void clickTwice(QPoint position, int gap);
/// Turns the wheel over a position; upwards when `steps` is negative.
void turnWheel(QPoint position, int steps);
/// A key by its X11 name.
void press(const char* key);

QImage screen();
/// What the bar leaves of the screen.
QRect workArea();
/// Whether there is a tray that shows items.
bool trayRuns();
/// Waits until the bar with its tray has taken its place.
bool barIsThere();
/// The pointer rests here, away from everything.
QPoint idlePosition();
/// Keeps what is on the screen now.
void keepPicture(const QString& name);
/// Keeps a part of the screen, many times enlarged.
void keepEnlarged(const QString& name, const QRect& part);
/// Waits until nothing on the screen moves.
bool screenRests();

constexpr int iconSize = 22;
constexpr QRgb amber = 0xFFE19A3C;
constexpr QRgb blue = 0xFF4E93C6;

/// Where on the bar pixels of a colour are; null when there are none.
QRect colorOnBar(QRgb color);
/// Where the item's icon is on the bar in whatever tint; null when it is not there.
QRect iconOnBar();
/// Waits until it is there and stays where it is.
QRect restingIcon();

}  // namespace quenchly::testing
