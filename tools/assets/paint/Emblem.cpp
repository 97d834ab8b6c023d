#include "Emblem.h"

#include <QPolygonF>
#include <QTransform>
#include <cmath>
#include <numbers>

namespace {

QPainterPath UnitPath(int index)
{
    // Every shape is drawn in a box from -1 to 1.
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    switch (index) {
    case 0:
        path.addEllipse(QPointF(0, 0), 0.86, 0.86);
        break;
    case 1:
        path.addPolygon(QPolygonF({{0, -1.0}, {0.8, 0}, {0, 1.0}, {-0.8, 0}}));
        path.closeSubpath();
        break;
    case 2:
        path.addPolygon(QPolygonF({{0, -0.95}, {0.98, 0.78}, {-0.98, 0.78}}));
        path.closeSubpath();
        break;
    case 3: {
        QPolygonF star;
        for (int i = 0; i < 10; ++i) {
            const double r = (i % 2 == 0) ? 1.14 : 0.52;
            const double a = -std::numbers::pi / 2 + i * std::numbers::pi / 5;
            star << QPointF(r * std::cos(a), r * std::sin(a) + 0.08);
        }
        path.addPolygon(star);
        path.closeSubpath();
        break;
    }
    case 4:
        path.moveTo(0, 0.92);
        path.cubicTo(-0.55, 0.45, -1.05, 0.05, -0.95, -0.38);
        path.cubicTo(-0.85, -0.88, -0.2, -0.98, 0, -0.45);
        path.cubicTo(0.2, -0.98, 0.85, -0.88, 0.95, -0.38);
        path.cubicTo(1.05, 0.05, 0.55, 0.45, 0, 0.92);
        path.closeSubpath();
        break;
    case 5:
        path.addRect(-0.74, -0.74, 1.48, 1.48);
        break;
    case 6:
        path.addRect(-0.3, -0.95, 0.6, 1.9);
        path.addRect(-0.95, -0.3, 1.9, 0.6);
        break;
    case 7: {
        QPainterPath outer;
        outer.addEllipse(QPointF(0, 0), 0.92, 0.92);
        QPainterPath bite;
        bite.addEllipse(QPointF(0.42, -0.28), 0.74, 0.74);
        path = outer.subtracted(bite);
        break;
    }
    case 8: {
        QPainterPath bar;
        bar.addRect(-0.26, -1.12, 0.52, 2.24);
        path.addPath(QTransform().rotate(45).map(bar));
        path.addPath(QTransform().rotate(-45).map(bar));
        break;
    }
    default:
        path.addPolygon(QPolygonF({{0.22, -1.05}, {-0.78, 0.2}, {-0.08, 0.2}, {-0.36, 1.08},
                                   {0.8, -0.26}, {0.1, -0.26}, {0.52, -1.05}}));
        path.closeSubpath();
        break;
    }
    return path.simplified();
}

} // namespace

QPainterPath Emblem::Path(int index, const QPointF& centre, double size)
{
    QTransform t;
    t.translate(centre.x(), centre.y());
    t.scale(size / 2.0, size / 2.0);
    return t.map(UnitPath(index));
}
