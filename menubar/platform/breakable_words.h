#pragma once

#include <QString>

namespace quenchly {

/// The text with invisible places to break a line within words so long that a line between words only would run off
/// the screen.
QString withBreakableWords(QString text);

}  // namespace quenchly
