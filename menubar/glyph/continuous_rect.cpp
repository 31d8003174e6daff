#include "continuous_rect.h"

#include <QTransform>
#include <array>

namespace quenchly {
namespace {

/// The top right corner with radius 1, seen from the corner point: three cubic curves from the upper edge to the right
/// one, each as two control points and an end point. x counts to the left, y downwards.
struct Curve {
    QPointF control1;
    QPointF control2;
    QPointF end;
};
constexpr double bendLength = 1.52866483;
constexpr std::array<Curve, 3> bend{{
    {{1.08849296, 0}, {0.86840694, 0}, {0.63149379, 0.07491139}},
    {{0.37282383, 0.16905956}, {0.16905956, 0.37282383}, {0.07491139, 0.63149379}},
    {{0, 0.86840694}, {0, 1.08849296}, {0, bendLength}},
}};

}  // namespace

QPainterPath continuousRoundedRect(const QRectF& rect, double radius)
{
    QPainterPath path;
    for (int corner = 0; corner < 4; ++corner) {
        // Each corner is the top right one of a rectangle turned by a further quarter.
        const bool sideways = corner % 2 == 1;
        const double halfWidth = (sideways ? rect.height() : rect.width()) / 2;
        const double halfHeight = (sideways ? rect.width() : rect.height()) / 2;
        QTransform turn;
        turn.translate(rect.center().x(), rect.center().y()).rotate(90.0 * corner);
        const auto placed = [&](const QPointF& p) {
            return turn.map(QPointF(halfWidth - p.x() * radius, -halfHeight + p.y() * radius));
        };
        const QPointF start = placed({bendLength, 0});
        corner == 0 ? path.moveTo(start) : path.lineTo(start);
        for (const Curve& curve : bend)
            path.cubicTo(placed(curve.control1), placed(curve.control2), placed(curve.end));
    }
    path.closeSubpath();
    return path;
}

}  // namespace quenchly
