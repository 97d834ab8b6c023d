#include "BrickPainter.h"

#include "Emblem.h"
#include "PaintKit.h"

#include <QLinearGradient>
#include <QPainter>
#include <QRadialGradient>
#include <cmath>

QImage BrickPainter::Paint(Style style, int index)
{
    QImage image = PaintKit::NewImage(Size, Size, PaintKit::Ink());
    switch (style) {
    case Style::Classic: Classic(image, index); break;
    case Style::Crystal: Crystal(image, index); break;
    case Style::Forest: Forest(image, index); break;
    case Style::Ocean: Ocean(image, index); break;
    case Style::Ember: Ember(image, index); break;
    case Style::Meadow: Meadow(image, index); break;
    case Style::Dunes: Dunes(image, index); break;
    case Style::Marble: Marble(image, index); break;
    case Style::Clockwork: Clockwork(image, index); break;
    case Style::Neon: Neon(image, index); break;
    case Style::Cosmos: Cosmos(image, index); break;
    }
    return image;
}

void BrickPainter::DrawEmblem(QPainter& p, int index, const QColor& ground, double size,
                              const QPointF& centre)
{
    const bool lightGround = PaintKit::Luma(ground) > 0.52;
    const QColor sign = lightGround ? PaintKit::Shade(ground, -0.62) : PaintKit::Shade(ground, 0.78);
    const QColor edge = lightGround ? PaintKit::Shade(ground, 0.55) : PaintKit::Shade(ground, -0.6);
    const QPainterPath path = Emblem::Path(index, centre, size);
    p.save();
    p.setRenderHint(QPainter::Antialiasing, true);
    // Light comes from the top left: an engraved sign catches it on its lower right rim,
    // a raised one throws its shadow there.
    p.fillPath(path.translated(1, 1), edge);
    p.fillPath(path, sign);
    p.restore();
}

void BrickPainter::Classic(QImage& image, int index)
{
    const QColor base = PaintKit::BrickColor(index);
    QPainter p(&image);
    const QRect body(1, 1, Size - 2, Size - 2);
    QLinearGradient g(0, 1, 0, Size - 1);
    g.setColorAt(0.0, PaintKit::Shade(base, 0.22));
    g.setColorAt(0.55, base);
    g.setColorAt(1.0, PaintKit::Shade(base, -0.22));
    p.fillRect(body, g);
    PaintKit::Raised(p, body, 2, base);
    // Outline, with the four corner pixels rounded off into the grout.
    p.setPen(PaintKit::Shade(base, -0.72));
    p.drawRect(0, 0, Size - 1, Size - 1);
    p.setPen(PaintKit::Ink());
    for (QPoint c : {QPoint(0, 0), QPoint(Size - 1, 0), QPoint(0, Size - 1), QPoint(Size - 1, Size - 1)}) {
        p.drawPoint(c);
    }
    // A soft gloss over the upper half.
    p.setRenderHint(QPainter::Antialiasing, true);
    QLinearGradient gloss(0, 3, 0, 12);
    gloss.setColorAt(0.0, QColor(255, 255, 255, 90));
    gloss.setColorAt(1.0, QColor(255, 255, 255, 0));
    p.setPen(Qt::NoPen);
    p.setBrush(gloss);
    p.drawRoundedRect(QRectF(3, 3, Size - 6, 9), 3, 3);
    DrawEmblem(p, index, base, 12, QPointF(12.5, 12.8));
}

void BrickPainter::Crystal(QImage& image, int index)
{
    const QColor base = PaintKit::Mix(PaintKit::BrickColor(index), QColor(200, 230, 255), 0.12);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing, true);
    const QPointF o(0.5, 0.5);
    const QPointF a(0, 0), b(Size, 0), c(Size, Size), d(0, Size);
    const QPointF ta(6, 6), tb(Size - 6, 6), tc(Size - 6, Size - 6), td(6, Size - 6);
    auto facet = [&](QPointF p1, QPointF p2, QPointF p3, QPointF p4, double light) {
        QPolygonF poly({p1, p2, p3, p4});
        p.setPen(Qt::NoPen);
        p.setBrush(PaintKit::Shade(base, light));
        p.drawPolygon(poly);
    };
    facet(a, b, tb, ta, 0.34);  // top catches the light
    facet(a, ta, td, d, 0.14);  // left
    facet(b, c, tc, tb, -0.2);  // right
    facet(d, td, tc, c, -0.36); // bottom
    QRadialGradient table(9, 9, 14);
    table.setColorAt(0.0, PaintKit::Shade(base, 0.35));
    table.setColorAt(1.0, PaintKit::Shade(base, -0.1));
    p.setBrush(table);
    p.drawRect(QRectF(ta, tc));
    // Facet edges as fine bright lines, and the outline of the stone.
    p.setPen(QPen(QColor(255, 255, 255, 110), 0.8));
    p.drawLine(a + o, ta);
    p.drawLine(b + QPointF(-0.5, 0.5), tb);
    p.setPen(QPen(QColor(0, 0, 0, 90), 0.8));
    p.drawLine(c - o, tc);
    p.drawLine(d + QPointF(0.5, -0.5), td);
    p.setRenderHint(QPainter::Antialiasing, false);
    p.setPen(PaintKit::Shade(base, -0.7));
    p.setBrush(Qt::NoBrush);
    p.drawRect(0, 0, Size - 1, Size - 1);
    DrawEmblem(p, index, PaintKit::Shade(base, 0.1), 10, QPointF(12.5, 12.5));
    // A glint in the top left corner of the table.
    p.setRenderHint(QPainter::Antialiasing, true);
    p.setPen(QPen(QColor(255, 255, 255, 230), 1.0));
    p.drawLine(QPointF(4, 2.5), QPointF(4, 5.5));
    p.drawLine(QPointF(2.5, 4), QPointF(5.5, 4));
}

void BrickPainter::Forest(QImage& image, int index)
{
    const QColor base = PaintKit::Mix(PaintKit::BrickColor(index), QColor(120, 84, 50), 0.22);
    image.fill(QColor(18, 30, 16));
    // Painted wood: the grain is a warped stripe pattern that darkens the paint.
    for (int y = 1; y < Size - 1; ++y) {
        for (int x = 1; x < Size - 1; ++x) {
            const double warp = PaintKit::Fbm(x * 0.09, y * 0.25, 3, 400 + index) * 6;
            const double grain = 0.5 + 0.5 * std::sin((y + warp) * 1.3);
            const double shade = 0.12 - 0.22 * grain - 0.012 * y + 0.008 * (Size - x);
            image.setPixelColor(x, y, PaintKit::Shade(base, shade));
        }
    }
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing, false);
    PaintKit::Raised(p, QRect(1, 1, Size - 2, Size - 2), 2, base);
    p.setPen(PaintKit::Shade(base, -0.75));
    p.drawRect(0, 0, Size - 1, Size - 1);
    p.setPen(QColor(18, 30, 16));
    for (QPoint c : {QPoint(0, 0), QPoint(Size - 1, 0), QPoint(0, Size - 1), QPoint(Size - 1, Size - 1),
                     QPoint(1, 0), QPoint(0, 1), QPoint(Size - 2, 0), QPoint(Size - 1, 1),
                     QPoint(0, Size - 2), QPoint(1, Size - 1), QPoint(Size - 1, Size - 2),
                     QPoint(Size - 2, Size - 1)}) {
        p.drawPoint(c);
    }
    // Two nail heads, then the carved sign.
    for (QPoint n : {QPoint(4, 4), QPoint(Size - 5, Size - 5)}) {
        p.setPen(PaintKit::Shade(base, -0.55));
        p.drawPoint(n);
        p.setPen(PaintKit::Shade(base, 0.5));
        p.drawPoint(n - QPoint(1, 1));
    }
    DrawEmblem(p, index, base, 12, QPointF(12.5, 12.5));
}

void BrickPainter::Ocean(QImage& image, int index)
{
    const QColor base = PaintKit::Mix(PaintKit::BrickColor(index), QColor(40, 120, 170), 0.10);
    image.fill(QColor(6, 28, 52));
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing, true);
    const QRectF body(0.8, 0.8, Size - 1.6, Size - 1.6);
    QRadialGradient g(8, 7, 19);
    g.setColorAt(0.0, PaintKit::Shade(base, 0.45));
    g.setColorAt(0.55, base);
    g.setColorAt(1.0, PaintKit::Shade(base, -0.45));
    p.setPen(QPen(PaintKit::Shade(base, -0.7), 1.0));
    p.setBrush(g);
    p.drawRoundedRect(body, 8, 8);
    // Light passing through the glass pools at the lower right rim.
    QColor rim = PaintKit::Shade(base, 0.4);
    rim.setAlpha(120);
    p.setPen(QPen(rim, 1.0));
    p.setBrush(Qt::NoBrush);
    p.drawArc(QRectF(2.5, 2.5, Size - 5, Size - 5), -15 * 16, -60 * 16);
    DrawEmblem(p, index, base, 11, QPointF(12.5, 13));
    // The wet highlight.
    QRadialGradient shine(7.5, 6.5, 4.5);
    shine.setColorAt(0.0, QColor(255, 255, 255, 230));
    shine.setColorAt(1.0, QColor(255, 255, 255, 0));
    p.setPen(Qt::NoPen);
    p.setBrush(shine);
    p.drawEllipse(QPointF(7.5, 6.5), 4.5, 3.2);
}

void BrickPainter::Ember(QImage& image, int index)
{
    const QColor base = PaintKit::BrickColor(index);
    // Basalt frame with a rough grain.
    for (int y = 0; y < Size; ++y) {
        for (int x = 0; x < Size; ++x) {
            const double n = PaintKit::Fbm(x * 0.4, y * 0.4, 3, 900);
            const int v = static_cast<int>(28 + 30 * n);
            image.setPixelColor(x, y, QColor(v + 6, v, v - 4));
        }
    }
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing, false);
    PaintKit::Raised(p, QRect(0, 0, Size, Size), 1, QColor(70, 60, 54));
    // The glowing core, hottest in the middle, sunk into the stone.
    const QRect core(3, 3, Size - 6, Size - 6);
    QRadialGradient g(12.5, 12.5, 12);
    g.setColorAt(0.0, PaintKit::Shade(base, 0.4));
    g.setColorAt(0.45, PaintKit::Shade(base, 0.06));
    g.setColorAt(1.0, PaintKit::Shade(base, -0.22));
    p.fillRect(core, g);
    p.setPen(QColor(10, 8, 6));
    p.drawLine(core.left() - 1, core.top() - 1, core.right() + 1, core.top() - 1);
    p.drawLine(core.left() - 1, core.top() - 1, core.left() - 1, core.bottom() + 1);
    p.setPen(PaintKit::Shade(base, -0.2));
    p.drawLine(core.left(), core.bottom() + 1, core.right() + 1, core.bottom() + 1);
    p.drawLine(core.right() + 1, core.top(), core.right() + 1, core.bottom() + 1);
    p.setRenderHint(QPainter::Antialiasing, true);
    // The sign is a dark silhouette in the glow, as if cut from the stone.
    const QPainterPath sign = Emblem::Path(index, QPointF(12.5, 12.6), 11);
    p.fillPath(sign.translated(0.8, 0.8), PaintKit::Shade(base, 0.6));
    p.fillPath(sign, QColor(24, 16, 12));
}
