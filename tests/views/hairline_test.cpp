#include "hairline.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <cmath>

namespace quenchly {
namespace {

constexpr int lines = 24;
constexpr int distance = 7;  // at 1.25 and 1.5 the lines begin at every place within a pixel

/// Hairlines one below the other on black, as a screen of a scale shows them.
QImage picture(double scale)
{
    QWidget window;
    window.resize(20, lines * distance);
    window.setStyleSheet(QStringLiteral("background: black"));
    for (int i = 0; i < lines; ++i) {
        auto* line = new Hairline(&window);
        line->setGeometry(0, i * distance, 20, 1);
    }
    QImage picture((QSizeF(window.size()) * scale).toSize(), QImage::Format_RGB32);
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::black);
    window.render(&picture);
    return picture;
}

TEST(HairlineTest, EachIsOnePixelThickAndEquallyBrightAtEveryScale)
{
    for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0}) {
        const QImage shown = picture(scale);
        int rows = 0;
        for (int y = 0; y < shown.height(); ++y) {
            const QColor color = shown.pixelColor(10, y);
            if (color == Qt::black)
                continue;
            ++rows;
            EXPECT_EQ(color, shown.pixelColor(10, 0)) << scale << " at " << y;
        }
        EXPECT_EQ(rows, lines) << scale;
    }
}

}  // namespace
}  // namespace quenchly
