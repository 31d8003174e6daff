#include "application_icon.h"

#include <gtest/gtest.h>

#include <QPixmap>

namespace quenchly {
namespace {

constexpr QRgb glyphColor = 0xFFF7F1E4;

void expectNear(QRgb actual, QRgb expected, const char* where)
{
    EXPECT_NEAR(qRed(actual), qRed(expected), 2) << where;
    EXPECT_NEAR(qGreen(actual), qGreen(expected), 2) << where;
    EXPECT_NEAR(qBlue(actual), qBlue(expected), 2) << where;
    EXPECT_EQ(qAlpha(actual), 255) << where;
}

bool isGlyph(QRgb pixel)
{
    return qRed(pixel) > 110;
}

/// The rows from the glyph's first to its last, of all rows.
double glyphShare(const QImage& picture)
{
    int first = picture.height();
    int last = -1;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (isGlyph(picture.pixel(x, y))) {
                first = std::min(first, y);
                last = y;
            }
    return (last - first + 1.0) / picture.height();
}

TEST(ApplicationIcon, IsMadeAtEveryScale)
{
    for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        const QImage picture = applicationIcon(40, scale);
        EXPECT_EQ(picture.width(), qRound(40 * scale));
        EXPECT_EQ(picture.height(), picture.width());
        EXPECT_EQ(picture.devicePixelRatio(), scale);
        EXPECT_NEAR(glyphShare(picture), 0.726, 0.03) << scale;
    }
}

TEST(ApplicationIcon, TheShadeRunsFromTheUpperLeftToTheLowerRight)
{
    const QImage picture = applicationIcon(200, 1);
    expectNear(picture.pixel(60, 2), qRgb(0x37, 0x46, 0x56), "top");
    expectNear(picture.pixel(140, 197), qRgb(0x22, 0x2D, 0x36), "bottom");
    EXPECT_GT(qBlue(picture.pixel(5, 100)), qBlue(picture.pixel(194, 100)));
}

TEST(ApplicationIcon, TheGustIsLightAndTheCornersAreClear)
{
    const QImage picture = applicationIcon(200, 1);
    expectNear(picture.pixel(130, 120), glyphColor, "the lower sweep");
    for (const QPoint corner : {QPoint(0, 0), QPoint(199, 0), QPoint(0, 199), QPoint(199, 199)})
        EXPECT_EQ(qAlpha(picture.pixel(corner)), 0);
    EXPECT_EQ(qAlpha(picture.pixel(100, 0)), 255);
    EXPECT_EQ(qAlpha(picture.pixel(0, 100)), 255);
}

TEST(ApplicationIcon, InFewPixelsTheGustTakesUpMore)
{
    for (const int side : {16, 22, 24})
        EXPECT_NEAR(glyphShare(applicationIcon(side, 1)), 0.847, 0.06) << side;
    for (const int side : {32, 48, 64, 512})
        EXPECT_NEAR(glyphShare(applicationIcon(side, 1)), 0.726, 0.03) << side;
    EXPECT_NEAR(glyphShare(applicationIcon(16, 3)), 0.726, 0.03) << "16 points are not few pixels at 3x";
}

TEST(ApplicationIcon, AWindowsIconIsDrawnAtTheSizeThatIsAsked)
{
    for (const int side : {16, 40, 256})
        EXPECT_EQ(applicationIcon()
                      .pixmap(QSize(side, side), 1.0)
                      .toImage()
                      .convertToFormat(QImage::Format_ARGB32_Premultiplied),
                  applicationIcon(side, 1))
            << side;
    const QImage sharp = applicationIcon().pixmap(QSize(40, 40), 2.0).toImage();
    EXPECT_EQ(sharp.width(), 80);
    QImage expected = applicationIcon(40, 2);
    EXPECT_EQ(sharp.convertToFormat(QImage::Format_ARGB32_Premultiplied), expected);
}

TEST(ApplicationIcon, InARectangleItIsCentredAndSquare)
{
    const QImage wide = applicationIcon().pixmap(QSize(100, 40), 1.0).toImage();
    EXPECT_EQ(qAlpha(wide.pixel(20, 20)), 0);
    EXPECT_EQ(qAlpha(wide.pixel(50, 2)), 255);
    EXPECT_EQ(qAlpha(wide.pixel(80, 20)), 0);
}

}  // namespace
}  // namespace quenchly
