#include "wind_glyph.h"

#include <algorithm>
#include <array>
#include <span>

namespace quenchly::WindGlyph {
namespace {

struct Vertex {
    double x;
    double y;
};

constexpr std::array<Vertex, 25> lowerSweep{{
    {6.58, -0.21}, {4.54, -1.74}, {1.44, -2.47},  {-1.92, -2.13}, {-4.33, -0.9},  {-5.65, 1.38},  {-4.78, 3.76},
    {-4.45, 3.88}, {-4.45, 2.25}, {-3.52, 1.2},   {-0.24, 0.51},  {2.01, 1.98},   {2.41, 3.19},   {2.1, 5.05},
    {0.78, 7.1},   {-2.1, 9.59},  {-5.77, 11.64}, {-9.68, 12.99}, {-6.46, 13.74}, {-2.92, 13.53}, {0.45, 12.45},
    {4, 10.25},    {6.31, 7.79},  {7.64, 4.81},   {7.67, 2.01},
}};

constexpr std::array<Vertex, 23> leftCurl{{
    {1.86, -13.56},  {0.72, -13.74}, {1.41, -12.3},  {0.45, -10.73}, {-6.92, -6.92}, {-9.8, -3.79},
    {-10.58, -1.47}, {-10.43, 1.23}, {-9.32, 3.4},   {-7.55, 4.84},  {-5.32, 5.5},   {-2.92, 5.11},
    {-5.14, 4.66},   {-6.85, 3.4},   {-7.67, 1.71},  {-7.58, -0.36}, {-6.79, -1.89}, {-5.32, -3.4},
    {1.17, -6.95},   {3.1, -8.69},   {3.73, -10.07}, {3.7, -11.61},  {3.1, -12.69},
}};

constexpr std::array<Vertex, 12> upperRightBlade{{
    {10.58, -10.61},
    {8.96, -8.36},
    {6.79, -6.52},
    {4.15, -5.26},
    {-0.72, -3.76},
    {-2.68, -2.47},
    {0.18, -3.01},
    {4.72, -3.1},
    {7.37, -4.06},
    {8.84, -5.35},
    {9.83, -6.92},
    {10.43, -8.72},
}};

struct Placement {
    QPointF centre;
    double scale;

    QPointF operator()(const Vertex& vertex) const { return centre + QPointF(vertex.x, vertex.y) * scale; }
};

void addPolygon(QPainterPath& path, std::span<const Vertex> vertices, const Placement& placed)
{
    path.moveTo(placed(vertices.front()));
    for (const Vertex& vertex : vertices.subspan(1))
        path.lineTo(placed(vertex));
    path.closeSubpath();
}

}  // namespace

QPainterPath path(const QRectF& rect)
{
    const Placement placement{rect.center(), std::min(rect.width() / designWidth, rect.height() / designHeight)};
    QPainterPath glyph;
    addPolygon(glyph, lowerSweep, placement);
    addPolygon(glyph, leftCurl, placement);
    addPolygon(glyph, upperRightBlade, placement);
    glyph.setFillRule(Qt::WindingFill);
    return glyph;
}

}  // namespace quenchly::WindGlyph
