#pragma once

#include <QByteArray>

/// The application's icon in the formats that desktops want.
namespace quenchly::IconFiles {

/// The scalable icon.
QByteArray svg();

/// The gust of wind alone, for desktops that paint icons in the colour of the text beside them.
QByteArray symbolicSvg();

/// A square picture of some pixels.
QByteArray png(int pixels);

/// The icon file of a macOS bundle. The plate leaves the margin that the system's own icons have.
QByteArray icns();

}  // namespace quenchly::IconFiles
