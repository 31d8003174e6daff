#include "panel_colors.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace quenchly {
namespace {

using namespace PanelColors;

/// Relative luminance, 0 to 1, as the Web Content Accessibility Guidelines define it.
double luminance(const QColor& color)
{
    const auto linear = [](double channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& one, const QColor& other)
{
    const double brighter = std::max(luminance(one), luminance(other));
    const double darker = std::min(luminance(one), luminance(other));
    return (brighter + 0.05) / (darker + 0.05);
}

/// Everything that lies under something else in the panel, its popovers and its tooltips.
const QColor surfaces[] = {backgroundTop, backgroundBottom, parchment};

TEST(PanelColorsTest, AnOutlineHasAContrastOfThreeToOneAtLeast)
{
    for (const QColor& surface : surfaces)
        EXPECT_GE(contrast(outline, surface), 3.0) << surface.name().toStdString();
}

TEST(PanelColorsTest, TextHasAContrastOfFourAndAHalfToOneAtLeast)
{
    for (const QColor& surface : surfaces)
        for (const QColor& ink : {inkText, inkMuted, gold, clay, helpSymbol})
            EXPECT_GE(contrast(ink, surface), 4.5)
                << ink.name().toStdString() << " on " << surface.name().toStdString();
}

TEST(PanelColorsTest, AnEmptyMeterIsToldFromThePanelByItsLine)
{
    for (const QColor& surface : {backgroundTop, backgroundBottom})
        EXPECT_GE(contrast(line, surface), 2.0);
}

}  // namespace
}  // namespace quenchly
