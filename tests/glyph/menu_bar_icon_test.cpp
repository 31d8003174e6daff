#include "menu_bar_icon.h"

#include <gtest/gtest.h>

#include <QPainter>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>

#include "wind_palette.h"

namespace quenchly {
namespace {

struct TintColor {
    QuenchBarTint tint;
    std::uint32_t palette;
    QRgb rgb;
};

constexpr TintColor tintColors[] = {
    {QuenchBarTint::cool, WindPalette::blue, qRgb(78, 147, 198)},
    {QuenchBarTint::protect, WindPalette::amber, qRgb(225, 154, 60)},
    {QuenchBarTint::hotWatch, WindPalette::teal, qRgb(107, 143, 181)},
    {QuenchBarTint::falseHeat, WindPalette::muted, qRgb(142, 138, 132)},
    {QuenchBarTint::watch, WindPalette::muted, qRgb(142, 138, 132)},
    {QuenchBarTint::unprotected, WindPalette::clay, qRgb(240, 154, 116)},
    {QuenchBarTint::stale, WindPalette::muted, qRgb(142, 138, 132)},
    {QuenchBarTint::waiting, WindPalette::muted, qRgb(142, 138, 132)},
    {QuenchBarTint::spectrumLoop, WindPalette::amber, qRgb(225, 154, 60)},
    {QuenchBarTint::spectrumTrend, WindPalette::teal, qRgb(107, 143, 181)},
    {QuenchBarTint::spectrumFlat, WindPalette::blue, qRgb(78, 147, 198)},
    {QuenchBarTint::spectrumInsufficient, WindPalette::muted, qRgb(142, 138, 132)},
};

std::string nameOf(QuenchBarTint tint)
{
    return std::string(rawValue(tint));
}

/// The pixel at a place given in points.
QRgb at(const QImage& image, double x, double y)
{
    const double scale = image.devicePixelRatio();
    return image.pixel(static_cast<int>(x * scale), static_cast<int>(y * scale));
}

// Points of the mark that are well inside one region each at every scale.
constexpr QPointF insideTheSquare{4.5, 11};  // between the square's edge and the glyph
constexpr QPointF insideTheGlyph{13.2, 13};  // the lower sweep
constexpr QPointF outsideTheCorner{0.6, 0.6};
constexpr QPointF onTheOutline{0.5, 11};  // beyond the square's edge, where only the hollow outline reaches

/// Blended colours keep their hue only roughly once premultiplied.
void expectNear(QRgb actual, QRgb expected, const std::string& where)
{
    EXPECT_NEAR(qRed(actual), qRed(expected), 2) << where;
    EXPECT_NEAR(qGreen(actual), qGreen(expected), 2) << where;
    EXPECT_NEAR(qBlue(actual), qBlue(expected), 2) << where;
    EXPECT_EQ(qAlpha(actual), qAlpha(expected)) << where;
}

TEST(MenuBarIcon, EveryTintHasItsPaletteColour)
{
    std::set<QuenchBarTint> tints;
    for (const auto& [tint, palette, rgb] : tintColors) {
        EXPECT_EQ(MenuBarIcon::color(tint).rgba(), rgb) << nameOf(tint);
        EXPECT_EQ(palette, rgb & 0xFFFFFFU) << nameOf(tint);
        tints.insert(tint);
    }
    EXPECT_EQ(tints.size(), rawValues<QuenchBarTint>.size());
}

TEST(MenuBarIcon, TheStyleSheetInTheReadmeHasItsColours)
{
    std::ostringstream readme;
    readme << std::ifstream(QUENCHLY_README).rdbuf();
    const std::string text = readme.str();
    static const std::regex rule("#custom-quenchly\\.(\\w+) \\{ color: (#[0-9A-F]{6}); \\}");
    int rules = 0;
    for (std::sregex_iterator match(text.begin(), text.end(), rule), end; match != end; ++match, ++rules) {
        const auto tint = fromRawValue<QuenchBarTint>((*match)[1].str());
        ASSERT_TRUE(tint) << (*match)[1];
        EXPECT_EQ(MenuBarIcon::color(*tint).name().toUpper().toStdString(), (*match)[2]) << (*match)[1];
    }
    EXPECT_EQ(rules, 2);
}

TEST(MenuBarIcon, RedIsNeverUsed)
{
    for (const auto& [tint, palette, rgb] : tintColors)
        EXPECT_NE(MenuBarIcon::color(tint).rgb() & 0xFFFFFFU, WindPalette::red) << nameOf(tint);
}

TEST(MenuBarIcon, ItIsTwentyTwoPointsAtEveryScale)
{
    const std::vector<QImage> images = MenuBarIcon::image(QuenchBarTint::cool);
    std::vector<int> widths;
    for (const QImage& image : images) {
        widths.push_back(image.width());
        EXPECT_EQ(image.size(), QSize(image.width(), image.width()));
        EXPECT_EQ(image.deviceIndependentSize(), QSizeF(22, 22));
    }
    EXPECT_EQ(widths, (std::vector<int>{22, 33, 44, 66}));
}

TEST(MenuBarIcon, TheSolidMarkIsFilledAndItsGlyphIsAHole)
{
    for (const auto& [tint, palette, rgb] : tintColors) {
        if (tint == QuenchBarTint::unprotected)
            continue;
        for (const QImage& image : MenuBarIcon::image(tint)) {
            const std::string where = nameOf(tint) + " at " + std::to_string(image.devicePixelRatio());
            expectNear(at(image, insideTheSquare.x(), insideTheSquare.y()), rgb, where);
            EXPECT_EQ(at(image, insideTheGlyph.x(), insideTheGlyph.y()), 0U) << where;
            EXPECT_EQ(qAlpha(at(image, outsideTheCorner.x(), outsideTheCorner.y())), 0) << where;
        }
    }
}

TEST(MenuBarIcon, OnlyTheUnprotectedMarkIsHollow)
{
    for (const QImage& image : MenuBarIcon::image(QuenchBarTint::unprotected)) {
        const std::string where = std::to_string(image.devicePixelRatio());
        expectNear(at(image, insideTheGlyph.x(), insideTheGlyph.y()), qRgb(240, 154, 116), where);
        EXPECT_EQ(at(image, insideTheSquare.x(), insideTheSquare.y()), 0U) << where;
        EXPECT_GT(qAlpha(at(image, onTheOutline.x(), onTheOutline.y())), 0) << where;
    }
}

TEST(MenuBarIcon, TheFiveGreysAreOneImage)
{
    for (const QuenchBarTint tint :
         {QuenchBarTint::falseHeat, QuenchBarTint::watch, QuenchBarTint::stale, QuenchBarTint::spectrumInsufficient})
        EXPECT_EQ(MenuBarIcon::image(tint), MenuBarIcon::image(QuenchBarTint::waiting)) << nameOf(tint);
    EXPECT_NE(MenuBarIcon::image(QuenchBarTint::cool), MenuBarIcon::image(QuenchBarTint::waiting));
}

TEST(MenuBarIcon, ARimDarkensTheEdgeOfTheSquare)
{
    const QImage image = MenuBarIcon::image(QuenchBarTint::cool, 3);
    const QRgb edge = at(image, 1.4, 11);
    EXPECT_EQ(qAlpha(edge), 255);
    EXPECT_LT(qBlue(edge), 180);
}

TEST(MenuBarIcon, TheKnockedOutGlyphShowsTheBarBehindIt)
{
    QImage bar(22, 22, QImage::Format_RGB32);
    bar.fill(qRgb(1, 2, 3));
    QPainter painter(&bar);
    painter.drawImage(QPointF(), MenuBarIcon::image(QuenchBarTint::protect, 1));
    painter.end();
    EXPECT_EQ(at(bar, insideTheGlyph.x(), insideTheGlyph.y()), qRgb(1, 2, 3));
}

}  // namespace
}  // namespace quenchly
