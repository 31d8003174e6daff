#include "icon_files.h"

#include <QBuffer>
#include <QtEndian>
#include <array>

#include "application_icon.h"
#include "wind_glyph.h"

namespace quenchly::IconFiles {
namespace {

constexpr double svgSide = 256;
constexpr double symbolicSide = 16;
constexpr double symbolicMargin = 1;

QByteArray number(double value)
{
    QByteArray text = QByteArray::number(value, 'f', 2);
    while (text.endsWith('0'))
        text.chop(1);
    if (text.endsWith('.'))
        text.chop(1);
    return text == "-0" ? QByteArrayLiteral("0") : text;
}

QByteArray point(const QPointF& p)
{
    return number(p.x()) + ',' + number(p.y());
}

QByteArray pathData(const QPainterPath& path)
{
    QByteArray data;
    QPointF start;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        if (element.isMoveTo()) {
            start = element;
            data += (i == 0 ? "M" : "ZM") + point(start);
        } else if (element.isLineTo() && QPointF(element) != start)  // Z draws the last line
            data += 'L' + point(element);
        else if (element.isCurveTo())
            data += 'C' + point(element);
        else if (element.type == QPainterPath::CurveToDataElement)
            data += ' ' + point(element);
    }
    return data + 'Z';
}

QByteArray document(double side, const QByteArray& content)
{
    const QByteArray length = number(side);
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + length + "\" height=\"" + length +
           "\" viewBox=\"0 0 " + length + ' ' + length + "\">\n" + content + "</svg>\n";
}

QByteArray gradient(const QLinearGradient& shade)
{
    QByteArray element = "  <linearGradient id=\"shade\" gradientUnits=\"userSpaceOnUse\" x1=\"" +
                         number(shade.start().x()) + "\" y1=\"" + number(shade.start().y()) + "\" x2=\"" +
                         number(shade.finalStop().x()) + "\" y2=\"" + number(shade.finalStop().y()) + "\">\n";
    for (const auto& [offset, color] : shade.stops())
        element += "    <stop offset=\"" + number(offset) + "\" stop-color=\"" + color.name().toLatin1() + "\"/>\n";
    return element + "  </linearGradient>\n";
}

QByteArray encodedPng(const QImage& picture)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "PNG");
    return bytes;
}

/// The system's own icons fill 824 of 1024.
QImage bundlePicture(int pixels)
{
    QImage picture(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    const double margin = pixels * 100.0 / 1024;
    paintApplicationIcon(painter, QRectF(picture.rect()).adjusted(margin, margin, -margin, -margin));
    return picture;
}

QByteArray bigEndian(qsizetype number)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(static_cast<quint32>(number), bytes.data());
    return bytes;
}

QByteArray chunk(const char* type, const QByteArray& content)
{
    return type + bigEndian(content.size() + 8) + content;
}

}  // namespace

QByteArray svg()
{
    const ApplicationIconShape shape = applicationIconShape(QRectF(0, 0, svgSide, svgSide), svgSide);
    return document(svgSide, gradient(shape.shade) + "  <path fill=\"url(#shade)\" d=\"" + pathData(shape.plate) +
                                 "\"/>\n  <path fill=\"" + shape.glyphColor.name().toLatin1() + "\" d=\"" +
                                 pathData(shape.glyph) + "\"/>\n");
}

QByteArray symbolicSvg()
{
    const QRectF square(0, 0, symbolicSide, symbolicSide);
    const QPainterPath glyph =
        WindGlyph::path(square.adjusted(symbolicMargin, symbolicMargin, -symbolicMargin, -symbolicMargin));
    // The colour that desktops know to replace.
    return document(symbolicSide, "  <path fill=\"#bebebe\" d=\"" + pathData(glyph) + "\"/>\n");
}

QByteArray png(int pixels)
{
    return encodedPng(applicationIcon(pixels, 1));
}

QByteArray icns()
{
    struct Entry {
        const char* type;
        int pixels;
    };
    constexpr std::array<Entry, 8> entries{{{"ic11", 32},
                                            {"ic12", 64},
                                            {"ic07", 128},
                                            {"ic13", 256},
                                            {"ic08", 256},
                                            {"ic14", 512},
                                            {"ic09", 512},
                                            {"ic10", 1024}}};
    QByteArray content;
    for (const Entry& entry : entries)
        content += chunk(entry.type, encodedPng(bundlePicture(entry.pixels)));
    return chunk("icns", content);
}

}  // namespace quenchly::IconFiles
