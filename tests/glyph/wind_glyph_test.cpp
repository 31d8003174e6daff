#include "wind_glyph.h"

#include <gtest/gtest.h>

#include <cmath>

#include "continuous_rect.h"

namespace quenchly {
namespace {

constexpr double tolerance = 1e-9;

void expectRect(const QRectF& actual, const QRectF& expected)
{
    EXPECT_NEAR(actual.left(), expected.left(), tolerance);
    EXPECT_NEAR(actual.top(), expected.top(), tolerance);
    EXPECT_NEAR(actual.right(), expected.right(), tolerance);
    EXPECT_NEAR(actual.bottom(), expected.bottom(), tolerance);
}

/// The glyph reaches from -10.58 to 10.58 and from -13.74 to 13.74 in its design box of 22.2 by 28.4.
QRectF glyphBounds(const QPointF& centre, double scale)
{
    return {centre.x() - 10.58 * scale, centre.y() - 13.74 * scale, 21.16 * scale, 27.48 * scale};
}

TEST(WindGlyph, ItFillsARectangleOfItsOwnShape)
{
    expectRect(WindGlyph::path(QRectF(0, 0, 22.2, 28.4)).boundingRect(), glyphBounds({11.1, 14.2}, 1));
}

TEST(WindGlyph, AWiderRectangleScalesItByTheHeightAndCentresItAcross)
{
    expectRect(WindGlyph::path(QRectF(10, 20, 200, 56.8)).boundingRect(), glyphBounds({110, 48.4}, 2));
}

TEST(WindGlyph, ATallerRectangleScalesItByTheWidthAndCentresItUpright)
{
    expectRect(WindGlyph::path(QRectF(0, 0, 11.1, 100)).boundingRect(), glyphBounds({5.55, 50}, 0.5));
}

TEST(WindGlyph, InAnEmptyRectangleAllPointsCoincide)
{
    const QPainterPath path = WindGlyph::path(QRectF(3, 4, 0, 0));
    ASSERT_GT(path.elementCount(), 0);
    for (int i = 0; i < path.elementCount(); ++i)
        EXPECT_EQ(QPointF(path.elementAt(i)), QPointF(3, 4)) << "element " << i;
}

TEST(WindGlyph, ItIsThreeClosedPolygonsOfStraightLines)
{
    const QPainterPath path = WindGlyph::path(QRectF(0, 0, 22.2, 28.4));
    std::vector<int> vertices;
    for (int i = 0; i < path.elementCount(); ++i) {
        ASSERT_NE(path.elementAt(i).type, QPainterPath::CurveToElement);
        if (path.elementAt(i).isMoveTo())
            vertices.push_back(0);
        ++vertices.back();
    }
    // Closing adds a line back to the first vertex.
    EXPECT_EQ(vertices, (std::vector<int>{25 + 1, 23 + 1, 12 + 1}));
    EXPECT_EQ(path.fillRule(), Qt::WindingFill);
}

TEST(ContinuousRoundedRect, ItStaysWithinItsRectangleAndTouchesEverySide)
{
    const QRectF rect(1.2, 1.2, 19.6, 19.6);
    expectRect(continuousRoundedRect(rect, 5.5).boundingRect(), rect);
}

TEST(ContinuousRoundedRect, ItIsTheSameSeenFromEverySide)
{
    const QPainterPath path = continuousRoundedRect(QRectF(-10, -10, 20, 20), 5);
    for (const double degrees : {90.0, 180.0, 270.0}) {
        const QPainterPath turned = QTransform().rotate(degrees).map(path);
        for (double x = -9.95; x < 10; x += 0.5)
            for (double y = -9.95; y < 10; y += 0.5)
                ASSERT_EQ(turned.contains(QPointF(x, y)), path.contains(QPointF(x, y)))
                    << degrees << " " << x << " " << y;
    }
}

TEST(ContinuousRoundedRect, ItsBendBeginsEarlierThanACirclesAndCutsTheCornerAsDeep)
{
    const QRectF rect(0, 0, 40, 40);
    const QPainterPath path = continuousRoundedRect(rect, 10);
    QPainterPath circular;
    circular.addRoundedRect(rect, 10, 10);
    // Ten points from the corner along the edge a circle's arc has only just begun; the continuous bend is under way.
    EXPECT_TRUE(circular.contains(QPointF(10, 0.02)));
    EXPECT_FALSE(path.contains(QPointF(10, 0.02)));
    // On the diagonal both cut about 0.29 radii off.
    EXPECT_FALSE(path.contains(QPointF(2.7, 2.7)));
    EXPECT_TRUE(path.contains(QPointF(3.2, 3.2)));
}

}  // namespace
}  // namespace quenchly
