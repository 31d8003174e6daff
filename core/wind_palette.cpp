#include "wind_palette.h"

namespace quenchly::WindPalette {

std::uint32_t ofTint(QuenchBarTint tint)
{
    switch (tint) {
        case QuenchBarTint::cool:
            return blue;
        case QuenchBarTint::protect:
            return amber;
        case QuenchBarTint::hotWatch:
            return teal;
        case QuenchBarTint::falseHeat:
            return muted;
        case QuenchBarTint::watch:
            return muted;
        case QuenchBarTint::unprotected:
            return clay;
        case QuenchBarTint::stale:
            return muted;
        case QuenchBarTint::waiting:
            return muted;
        case QuenchBarTint::spectrumLoop:
            return amber;
        case QuenchBarTint::spectrumTrend:
            return teal;
        case QuenchBarTint::spectrumFlat:
            return blue;
        case QuenchBarTint::spectrumInsufficient:
            return muted;
    }
    return muted;
}

}  // namespace quenchly::WindPalette
