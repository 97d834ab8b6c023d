// The brick materials of the six later worlds. Like the first ones, each keeps the colour
// and the emblem of every index and changes only the surface, so that the board reads the
// same in every world, to colour-blind players too.
#include "BrickPainter.h"

#include "Emblem.h"
#include "PaintKit.h"
#include "PixelMath.h"

#include <QLinearGradient>
#include <QPainter>
#include <QRadialGradient>
#include <algorithm>
#include <cmath>

using PixelMath::Ridge;

void BrickPainter::Meadow(QImage& image, int index)
{
    // Glazed clay tiles with soft pillowed edges, set in dusk-dark earth.
    const QColor base = PaintKit::Mix(PaintKit::BrickColor(index), QColor(255, 214, 190), 0.10);
    image.fill(QColor(34, 26, 40));
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing, true);
    QLinearGradient g(0, 0, 0, Size);
    g.setColorAt(0.0, PaintKit::Shade(base, 0.32));
    g.setColorAt(0.5, base);
    g.setColorAt(1.0, PaintKit::Shade(base, -0.34));
    p.setPen(QPen(PaintKit::Shade(base, -0.65), 1.0));
    p.setBrush(g);
    p.drawRoundedRect(QRectF(0.5, 0.5, Size - 1, Size - 1), 6, 6);
    QRadialGradient glaze(9, 8, 16);
    glaze.setColorAt(0.0, PaintKit::Shade(base, 0.2));
    glaze.setColorAt(1.0, PaintKit::Shade(base, -0.1));
    p.setPen(QPen(QColor(255, 255, 255, 70), 1.0));
    p.setBrush(glaze);
    p.drawRoundedRect(QRectF(3.5, 3.5, Size - 7, Size - 7), 4.5, 4.5);
    DrawEmblem(p, index, base, 11, QPointF(12.5, 12.8));
    // The glaze catches the light in a short curve at the top left.
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(QColor(255, 255, 255, 190), 1.3, Qt::SolidLine, Qt::RoundCap));
    p.drawArc(QRectF(4, 4, 12, 12), 100 * 16, 60 * 16);
}

void BrickPainter::Dunes(QImage& image, int index)
{
    // Wind-worn sandstone: rounded blocks with sloping strata, a fine grit and the low
    // sun on their tops, set in the shade between them.
    const QColor base = PaintKit::Mix(PaintKit::BrickColor(index), QColor(232, 190, 130), 0.3);
    QImage stone(Size, Size, QImage::Format_RGB32);
    for (int y = 0; y < Size; ++y) {
        for (int x = 0; x < Size; ++x) {
            const double warp = PaintKit::Fbm(x * 0.12, y * 0.12, 2, 700 + index) * 2;
            const double strata = 0.5 + 0.5 * std::sin((y + 0.45 * x + warp) * 1.4);
            const double grit = PaintKit::Noise(x * 0.9, y * 0.9, 710) - 0.5;
            stone.setPixelColor(x, y, PaintKit::Shade(base, 0.08 - 0.12 * strata + 0.12 * grit - 0.01 * y));
        }
    }
    image.fill(QColor(44, 24, 22));
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing, true);
    const QRectF block(0.5, 0.5, Size - 1, Size - 1);
    p.setPen(QPen(PaintKit::Shade(base, -0.7), 1.0));
    p.setBrush(QBrush(stone));
    p.drawRoundedRect(block, 5, 5);
    QLinearGradient sun(0, 1, 0, 9);
    sun.setColorAt(0.0, QColor(255, 240, 200, 120));
    sun.setColorAt(1.0, QColor(255, 240, 200, 0));
    p.setPen(Qt::NoPen);
    p.setBrush(sun);
    p.drawRoundedRect(QRectF(1.5, 1.5, Size - 3, 8), 4, 4);
    DrawEmblem(p, index, base, 12, QPointF(12.5, 13));
}

void BrickPainter::Marble(QImage& image, int index)
{
    // Polished marble slabs with pale veins, inlaid in a thin gold frame.
    const QColor base = PaintKit::BrickColor(index);
    for (int y = 0; y < Size; ++y) {
        for (int x = 0; x < Size; ++x) {
            const double warp = PaintKit::Fbm(x / 10.0, y / 10.0, 2, 830 + index);
            const double vein = std::pow(Ridge(PaintKit::Fbm(x / 14.0 + warp, y / 9.0 + index, 3, 820)), 9);
            const double cloud = PaintKit::Fbm(x / 6.0, y / 6.0, 2, 840 + index) - 0.5;
            const double light = 0.06 * (1.0 - (x + y) / (2.0 * Size));
            image.setPixelColor(x, y, PaintKit::Shade(base, -0.12 + 0.14 * cloud + light + 0.45 * vein));
        }
    }
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing, false);
    p.setBrush(Qt::NoBrush);
    p.setPen(PaintKit::GoldDark());
    p.drawRect(0, 0, Size - 1, Size - 1);
    p.setPen(PaintKit::Gold());
    p.drawLine(1, 1, Size - 2, 1);
    p.drawLine(1, 1, 1, Size - 2);
    p.setPen(PaintKit::Shade(base, -0.45));
    p.drawLine(2, Size - 2, Size - 2, Size - 2);
    p.drawLine(Size - 2, 2, Size - 2, Size - 2);
    DrawEmblem(p, index, base, 11, QPointF(12.5, 12.5));
    // The polish: a soft band of reflected light across the top left.
    p.setRenderHint(QPainter::Antialiasing, true);
    QLinearGradient gloss(0, 0, 14, 14);
    gloss.setColorAt(0.0, QColor(255, 255, 255, 0));
    gloss.setColorAt(0.45, QColor(255, 255, 255, 70));
    gloss.setColorAt(0.6, QColor(255, 255, 255, 0));
    p.setPen(Qt::NoPen);
    p.setBrush(gloss);
    p.drawPolygon(QPolygonF({QPointF(2, 2), QPointF(16, 2), QPointF(2, 16)}));
}

void BrickPainter::Clockwork(QImage& image, int index)
{
    // Enamel plates in a riveted brass bezel.
    const QColor base = PaintKit::BrickColor(index);
    image.fill(QColor(22, 30, 28));
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing, true);
    QLinearGradient brass(0, 0, Size, Size);
    brass.setColorAt(0.0, PaintKit::GoldLight());
    brass.setColorAt(0.45, QColor(196, 146, 60));
    brass.setColorAt(1.0, QColor(96, 62, 22));
    p.setPen(QPen(QColor(50, 34, 12), 1.0));
    p.setBrush(brass);
    p.drawRoundedRect(QRectF(0.5, 0.5, Size - 1, Size - 1), 3, 3);
    p.setRenderHint(QPainter::Antialiasing, false);
    const QRect enamel(3, 3, Size - 6, Size - 6);
    QLinearGradient g(0, enamel.top(), 0, enamel.bottom());
    g.setColorAt(0.0, PaintKit::Shade(base, 0.2));
    g.setColorAt(1.0, PaintKit::Shade(base, -0.2));
    p.fillRect(enamel, g);
    // Sunk into the bezel: dark above and left, lit below and right.
    p.setPen(QColor(60, 40, 14));
    p.drawLine(enamel.left() - 1, enamel.top() - 1, enamel.right() + 1, enamel.top() - 1);
    p.drawLine(enamel.left() - 1, enamel.top() - 1, enamel.left() - 1, enamel.bottom() + 1);
    p.setPen(PaintKit::GoldLight());
    p.drawLine(enamel.left(), enamel.bottom() + 1, enamel.right() + 1, enamel.bottom() + 1);
    p.drawLine(enamel.right() + 1, enamel.top(), enamel.right() + 1, enamel.bottom() + 1);
    for (QPoint r : {QPoint(1, 1), QPoint(Size - 2, 1), QPoint(1, Size - 2), QPoint(Size - 2, Size - 2)}) {
        p.setPen(QColor(70, 46, 16));
        p.drawPoint(r + QPoint(1, 1));
        p.setPen(QColor(255, 246, 210));
        p.drawPoint(r);
    }
    DrawEmblem(p, index, base, 11, QPointF(12.5, 12.5));
}

void BrickPainter::Neon(QImage& image, int index)
{
    // Smoked glass tiles ringed by a glowing tube; the emblem glows in the tube's colour.
    const QColor base = PaintKit::BrickColor(index);
    image.fill(QColor(10, 6, 20));
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing, true);
    const QRectF tube(3.5, 3.5, Size - 7, Size - 7);
    QLinearGradient glass(0, 3, 0, Size - 3);
    glass.setColorAt(0.0, PaintKit::Shade(base, -0.42));
    glass.setColorAt(1.0, PaintKit::Shade(base, -0.62));
    p.setPen(Qt::NoPen);
    p.setBrush(glass);
    p.drawRoundedRect(tube, 4, 4);
    p.setBrush(Qt::NoBrush);
    for (const auto& [width, alpha] : {std::pair{5.5, 40}, std::pair{3.6, 80}}) {
        QColor halo = base;
        halo.setAlpha(alpha);
        p.setPen(QPen(halo, width));
        p.drawRoundedRect(tube, 4, 4);
    }
    p.setPen(QPen(PaintKit::Shade(base, 0.55), 1.3));
    p.drawRoundedRect(tube, 4, 4);
    const QPainterPath sign = Emblem::Path(index, QPointF(12.5, 12.6), 10);
    QColor glow = base;
    glow.setAlpha(110);
    p.setPen(QPen(glow, 2.4));
    p.setBrush(Qt::NoBrush);
    p.drawPath(sign);
    p.fillPath(sign, PaintKit::Shade(base, 0.6));
}

void BrickPainter::Cosmos(QImage& image, int index)
{
    // Small planets in the night: a lit sphere on a starry tile.
    const QColor base = PaintKit::BrickColor(index);
    image.fill(QColor(8, 6, 26));
    for (int i = 0; i < 5; ++i) {
        const int x = static_cast<int>(PaintKit::Hash(i + index * 7, 880) * Size);
        const int y = static_cast<int>(PaintKit::Hash(i + index * 7, 881) * Size);
        image.setPixelColor(x, y, QColor(150, 150, 200));
    }
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing, true);
    QRadialGradient g(8.5, 8, 17);
    g.setColorAt(0.0, PaintKit::Shade(base, 0.5));
    g.setColorAt(0.45, base);
    g.setColorAt(1.0, PaintKit::Shade(base, -0.62));
    p.setPen(Qt::NoPen);
    p.setBrush(g);
    p.drawEllipse(QPointF(12.5, 12.5), 11.6, 11.6);
    // A thin lit atmosphere on the sunward rim.
    QColor air = PaintKit::Shade(base, 0.6);
    air.setAlpha(170);
    p.setPen(QPen(air, 1.0));
    p.setBrush(Qt::NoBrush);
    p.drawArc(QRectF(1.2, 1.2, Size - 2.4, Size - 2.4), 95 * 16, 80 * 16);
    DrawEmblem(p, index, base, 10, QPointF(12.5, 12.8));
    p.setRenderHint(QPainter::Antialiasing, false);
    p.setPen(QColor(52, 44, 104));
    p.drawRect(0, 0, Size - 1, Size - 1);
}
