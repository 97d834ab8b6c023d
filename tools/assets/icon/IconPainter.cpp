#include "IconPainter.h"

#include "Emblem.h"
#include "PaintKit.h"

#include <QPainter>

namespace {

constexpr double Canvas = 256.0;

QPainterPath Rounded(const QRectF& r, double radius) {
    QPainterPath path;
    path.addRoundedRect(r, radius, radius);
    return path;
}

// Which brick colour sits in each cell of the 3 x 3 slab; -1 is the cleared gap.
constexpr int Layout[3][3] = {{0, 3, 1}, {2, -1, 4}, {6, 5, 7}};

void AddBrick(std::vector<IconPainter::Shape>& shapes, const QRectF& cell, int index, bool withEmblems) {
    const QColor base = PaintKit::BrickColor(index);
    shapes.push_back({Rounded(cell, 10), PaintKit::Shade(base, -0.45)});
    shapes.push_back({Rounded(cell.adjusted(0, 0, -5, -5), 9), PaintKit::Shade(base, 0.35)});
    shapes.push_back({Rounded(cell.adjusted(5, 5, -5, -5), 7), base});
    if (!withEmblems) return;
    const QColor ink = PaintKit::Luma(base) > 140 ? PaintKit::Shade(base, -0.6) : PaintKit::Mix(base, Qt::white, 0.8);
    shapes.push_back({Emblem::Path(index, cell.center(), cell.width() * 0.46), ink});
}

// A path as the data of an SVG path element, to two decimals.
QString SvgPathData(const QPainterPath& path) {
    QString d;
    const auto num = [](double v) { return QString::number(v, 'f', 2); };
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element e = path.elementAt(i);
        if (e.isMoveTo()) {
            d += QStringLiteral("M%1 %2").arg(num(e.x), num(e.y));
        } else if (e.isLineTo()) {
            d += QStringLiteral("L%1 %2").arg(num(e.x), num(e.y));
        } else if (e.type == QPainterPath::CurveToElement && i + 2 < path.elementCount()) {
            const QPainterPath::Element c2 = path.elementAt(i + 1);
            const QPainterPath::Element end = path.elementAt(i + 2);
            d += QStringLiteral("C%1 %2 %3 %4 %5 %6")
                     .arg(num(e.x), num(e.y), num(c2.x), num(c2.y), num(end.x), num(end.y));
            i += 2;
        }
    }
    return d + QStringLiteral("Z");
}

} // namespace

std::vector<IconPainter::Shape> IconPainter::Scene(bool withEmblems) {
    std::vector<Shape> shapes;
    const QRectF slab(8, 8, Canvas - 16, Canvas - 16);
    shapes.push_back({Rounded(slab, 36), PaintKit::GoldDark()});
    shapes.push_back({Rounded(slab.adjusted(4, 4, -4, -4), 32), PaintKit::Gold()});
    shapes.push_back({Rounded(slab.adjusted(14, 14, -14, -14), 24), PaintKit::Deep()});
    const double cell = 62, gap = 6, origin = (Canvas - 3 * cell - 2 * gap) / 2;
    for (int row = 0; row < 3; ++row) {
        for (int col = 0; col < 3; ++col) {
            const QRectF r(origin + col * (cell + gap), origin + row * (cell + gap), cell, cell);
            if (Layout[row][col] < 0) shapes.push_back({Rounded(r.adjusted(4, 4, -4, -4), 8), PaintKit::Panel()});
            else AddBrick(shapes, r, Layout[row][col], withEmblems);
        }
    }
    return shapes;
}

QImage IconPainter::Paint(int size) {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(size / Canvas, size / Canvas);
    p.setPen(Qt::NoPen);
    for (const Shape& shape : Scene(size >= 48)) {
        p.setBrush(shape.fill);
        p.drawPath(shape.path);
    }
    p.end();
    return image.convertToFormat(QImage::Format_ARGB32);
}

QString IconPainter::Svg() {
    QString svg = QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                 "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"256\" height=\"256\" "
                                 "viewBox=\"0 0 256 256\">\n");
    for (const Shape& shape : Scene(true)) {
        // Each subpath of a shape is filled with the non-zero rule, as the painter fills it.
        const QPainterPath path = shape.path.simplified();
        svg += QStringLiteral("  <path fill=\"%1\" d=\"%2\"/>\n").arg(shape.fill.name(), SvgPathData(path));
    }
    return svg + QStringLiteral("</svg>\n");
}
