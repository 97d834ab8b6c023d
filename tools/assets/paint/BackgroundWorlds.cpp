// The backgrounds of the six later worlds. Each has a palette and a texture of its own, so
// that a player knows the world at a glance, and like the first four keeps its middle dark
// and quiet enough for the bricks and the holes between them to read.
#include "BackgroundPainter.h"

#include "PaintKit.h"
#include "PixelMath.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

using PixelMath::Rgb;
using PixelMath::Ridge;

double Smooth(double edge0, double edge1, double v)
{
    const double t = std::clamp((v - edge0) / (edge1 - edge0), 0.0, 1.0);
    return t * t * (3 - 2 * t);
}

double Lerp(double a, double b, double t)
{
    return a + (b - a) * t;
}

// A toothed wheel with a hub hole and round windows between its spokes.
QPainterPath Gear(const QPointF& centre, double radius, int teeth, double turn)
{
    QPolygonF rim;
    const int steps = teeth * 4;
    for (int i = 0; i < steps; ++i) {
        const double a = turn + 2 * std::numbers::pi * i / steps;
        const double r = (i % 4 < 2) ? radius : radius * 0.86;
        rim << centre + QPointF(std::cos(a) * r, std::sin(a) * r);
    }
    QPainterPath path;
    path.setFillRule(Qt::OddEvenFill);
    path.addPolygon(rim);
    path.closeSubpath();
    path.addEllipse(centre, radius * 0.14, radius * 0.14);
    for (int i = 0; i < 5; ++i) {
        const double a = turn + 2 * std::numbers::pi * i / 5;
        const QPointF at = centre + QPointF(std::cos(a), std::sin(a)) * radius * 0.5;
        path.addEllipse(at, radius * 0.2, radius * 0.2);
    }
    return path;
}

} // namespace

QImage BackgroundPainter::Meadow()
{
    // Rolling hills at dawn: a violet sky warming to rose at the horizon, three ranges of
    // hills going dark towards the viewer.
    QImage image = PaintKit::NewImage(Size, Size, Qt::black);
    const double ridge[3] = {250, 310, 380};
    const double layer[3][3] = {{96, 62, 104}, {58, 48, 80}, {32, 40, 44}};
    for (int y = 0; y < Size; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < Size; ++x) {
            const double t = Smooth(0, 290, y);
            const double cloud = std::pow(PaintKit::Fbm(x / 110.0, y / 36.0, 4, 111), 2);
            double r = Lerp(34, 150, t) + 50 * cloud * t;
            double g = Lerp(24, 84, t) + 28 * cloud * t;
            double b = Lerp(66, 100, t) + 30 * cloud * t;
            for (int k = 0; k < 3; ++k) {
                const double h = ridge[k] + 26 * std::sin(x / (70.0 + 30 * k) + k * 2.1) +
                                 30 * (PaintKit::Fbm(x / 120.0, k * 5.0, 3, 120 + k) - 0.5);
                if (y > h) {
                    const double grass = PaintKit::Fbm(x / 9.0, y / 4.0, 2, 130 + k) - 0.5;
                    const double rim = std::exp(-(y - h) / 6.0) * (k == 0 ? 40 : 22);
                    const double deep = std::min(1.0, (y - h) / 260.0) * 14;
                    r = layer[k][0] + 12 * grass + rim - deep;
                    g = layer[k][1] + 16 * grass + rim * 0.7 - deep;
                    b = layer[k][2] + 8 * grass + rim * 0.6 - deep;
                }
            }
            line[x] = Rgb(r, g, b);
        }
    }
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing, true);
    // The sun rising behind the far hills, and the first stars still in the sky.
    QRadialGradient sun(340, 252, 120);
    sun.setColorAt(0.0, QColor(255, 214, 160, 120));
    sun.setColorAt(0.2, QColor(255, 170, 130, 60));
    sun.setColorAt(1.0, QColor(255, 140, 120, 0));
    p.setPen(Qt::NoPen);
    p.setBrush(sun);
    p.drawEllipse(QPointF(340, 252), 120, 120);
    for (int i = 0; i < 40; ++i) {
        const QPointF s(PaintKit::Hash(i, 141) * Size, PaintKit::Hash(i, 142) * 150);
        p.setBrush(QColor(255, 240, 250, 60 + static_cast<int>(PaintKit::Hash(i, 143) * 120)));
        p.drawEllipse(s, 0.9, 0.9);
    }
    // Flowers in the near grass.
    const QColor petals[4] = {QColor(250, 200, 220), QColor(255, 236, 160), QColor(210, 190, 255),
                              QColor(250, 250, 240)};
    for (int i = 0; i < 90; ++i) {
        const QPointF f(PaintKit::Hash(i, 151) * Size, 410 + PaintKit::Hash(i, 152) * 90);
        QColor c = petals[i % 4];
        c.setAlpha(110 + static_cast<int>(PaintKit::Hash(i, 153) * 100));
        p.setBrush(c);
        p.drawEllipse(f, 1.6, 1.6);
    }
    p.end();
    CellGrid(image, 40);
    Vignette(image, 0.5);
    return image;
}

QImage BackgroundPainter::Dunes()
{
    // A desert at sunset: dunes in banded ochre under an amber sky, their lee sides in shade.
    QImage image = PaintKit::NewImage(Size, Size, Qt::black);
    for (int y = 0; y < Size; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < Size; ++x) {
            const double t = Smooth(0, 230, y);
            const double haze = PaintKit::Fbm(x / 140.0, y / 30.0, 3, 211);
            double r = Lerp(46, 196, t) + 20 * haze;
            double g = Lerp(20, 104, t) + 10 * haze;
            double b = Lerp(34, 48, t);
            // The low sun, half set behind the dunes that are painted over it below.
            const double d = std::hypot(x - 140.0, y - 196.0);
            const double disc = Smooth(40, 36, d);
            const double glow = std::exp(-d / 55.0);
            r += 90 * glow + 60 * disc;
            g += 60 * glow + 80 * disc;
            b += 20 * glow + 40 * disc;
            for (int k = 0; k < 4; ++k) {
                const double phase = x / (60.0 + 25 * k) + k * 1.7;
                const double h = 210 + k * 70 + 30 * std::sin(phase) + 20 * PaintKit::Fbm(x / 90.0, k * 3.0, 3, 220 + k);
                if (y > h) {
                    // The crest faces the low sun on one side and turns away on the other.
                    const double slope = std::cos(phase);
                    const double lit = 0.5 + 0.5 * slope;
                    const double strata = 0.5 + 0.5 * std::sin((y - h) * 0.45 + 6 * PaintKit::Fbm(x / 50.0, y / 50.0, 2, 230));
                    const double fade = 0.9 - k * 0.16;
                    const double depth = std::min(1.0, (y - h) / 120.0);
                    r = (120 + 70 * lit - 26 * strata - 20 * depth) * fade;
                    g = (66 + 40 * lit - 16 * strata - 12 * depth) * fade;
                    b = (30 + 14 * lit - 8 * strata) * fade;
                }
            }
            line[x] = Rgb(r, g, b);
        }
    }
    CellGrid(image, 44);
    Vignette(image, 0.6);
    return image;
}

QImage BackgroundPainter::Marble()
{
    // A hall of black marble: clouded stone with pale veins and a few of gold, and fluted
    // columns at both sides.
    QImage image = PaintKit::NewImage(Size, Size, Qt::black);
    for (int y = 0; y < Size; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < Size; ++x) {
            const double cloud = PaintKit::Fbm(x / 120.0, y / 120.0, 5, 301);
            const double warp = PaintKit::Fbm(x / 60.0, y / 60.0, 3, 302);
            const double vein = std::pow(Ridge(PaintKit::Fbm(x / 110.0 + warp * 1.4, y / 80.0 + warp, 5, 303)), 22);
            const double gold = std::pow(Ridge(PaintKit::Fbm(x / 160.0 + 7 + warp, y / 150.0, 4, 304)), 60);
            const double v = 18 + 26 * cloud;
            line[x] = Rgb(v + 70 * vein + 200 * gold, v + 70 * vein + 150 * gold, v + 4 + 74 * vein + 50 * gold);
        }
    }
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing, true);
    for (double left : {0.0, 450.0}) {
        QLinearGradient shaft(left, 0, left + 50, 0);
        shaft.setColorAt(0.0, QColor(70, 70, 76, 150));
        shaft.setColorAt(0.35, QColor(150, 148, 150, 120));
        shaft.setColorAt(1.0, QColor(10, 10, 12, 170));
        p.fillRect(QRectF(left, 0, 50, Size), shaft);
        for (int f = 1; f < 5; ++f) {
            p.setPen(QPen(QColor(0, 0, 0, 90), 2));
            p.drawLine(QPointF(left + f * 10, 0), QPointF(left + f * 10, Size));
        }
        // Gold capital and base.
        for (double y : {0.0, Size - 22.0}) {
            QLinearGradient band(0, y, 0, y + 22);
            band.setColorAt(0.0, QColor(255, 230, 150, 200));
            band.setColorAt(1.0, QColor(120, 76, 20, 200));
            p.fillRect(QRectF(left - 2, y, 54, 22), band);
        }
    }
    p.end();
    CellGrid(image, 44);
    Vignette(image, 0.55);
    return image;
}

QImage BackgroundPainter::Clockwork()
{
    // The inside of a great clock: riveted plates of green-patinated copper behind a train
    // of brass wheels.
    QImage image = PaintKit::NewImage(Size, Size, Qt::black);
    for (int y = 0; y < Size; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < Size; ++x) {
            const double patina = PaintKit::Fbm(x / 70.0, y / 70.0, 5, 401);
            const double brushed = PaintKit::Noise(x / 90.0, y * 1.3, 402) - 0.5;
            const double seam = (x % 125 < 2 || y % 125 < 2) ? -18 : 0;
            line[x] = Rgb(26 + 16 * patina + 8 * brushed + seam, 48 + 30 * patina + 8 * brushed + seam,
                          46 + 22 * patina + 8 * brushed + seam);
        }
    }
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing, true);
    for (int i = 0; i <= 4; ++i) {
        for (int j = 0; j <= 4; ++j) {
            for (QPointF d : {QPointF(7, 7), QPointF(-7, 7), QPointF(7, -7), QPointF(-7, -7)}) {
                const QPointF c = QPointF(i * 125, j * 125) + d;
                p.setPen(Qt::NoPen);
                p.setBrush(QColor(10, 20, 18, 160));
                p.drawEllipse(c + QPointF(1, 1), 2.6, 2.6);
                p.setBrush(QColor(150, 190, 170, 150));
                p.drawEllipse(c, 2.3, 2.3);
            }
        }
    }
    const struct {
        double x, y, r;
        int teeth;
        int alpha;
    } wheels[] = {{70, 80, 110, 20, 70},   {250, 210, 70, 14, 55},  {410, 120, 95, 18, 70},
                  {120, 400, 90, 16, 65},  {360, 390, 120, 22, 70}, {250, 330, 40, 10, 60},
                  {470, 270, 55, 12, 60}};
    for (const auto& w : wheels) {
        const QPainterPath gear = Gear(QPointF(w.x, w.y), w.r, w.teeth, w.x / 40);
        QRadialGradient brass(w.x - w.r * 0.4, w.y - w.r * 0.4, w.r * 1.6);
        brass.setColorAt(0.0, QColor(236, 186, 90, w.alpha + 60));
        brass.setColorAt(1.0, QColor(110, 70, 22, w.alpha + 40));
        p.setPen(QPen(QColor(20, 14, 4, 150), 2.0));
        p.setBrush(brass);
        p.drawPath(gear.translated(2, 2));
        p.setPen(QPen(QColor(255, 226, 150, 90), 1.0));
        p.drawPath(gear);
    }
    p.end();
    CellGrid(image, 44);
    Vignette(image, 0.55);
    return image;
}

QImage BackgroundPainter::Neon()
{
    // A night-time arcade: a violet sky, a banded sun sinking into a glowing grid floor.
    QImage image = PaintKit::NewImage(Size, Size, Qt::black);
    const double horizon = 250;
    for (int y = 0; y < Size; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < Size; ++x) {
            if (y < horizon) {
                const double t = Smooth(0, horizon, y);
                const double haze = PaintKit::Fbm(x / 120.0, y / 40.0, 3, 501);
                line[x] = Rgb(Lerp(12, 84, t) + 20 * haze, Lerp(4, 14, t), Lerp(30, 92, t) + 16 * haze);
            } else {
                const double glow = std::exp(-(y - horizon) / 50.0);
                line[x] = Rgb(14 + 60 * glow, 4 + 10 * glow, 28 + 60 * glow);
            }
        }
    }
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing, true);
    for (int i = 0; i < 80; ++i) {
        const QPointF s(PaintKit::Hash(i, 511) * Size, PaintKit::Hash(i, 512) * 170);
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(220, 230, 255, 60 + static_cast<int>(PaintKit::Hash(i, 513) * 140)));
        p.drawEllipse(s, 0.9, 0.9);
    }
    // The sun, cut by ever wider dark bands towards the horizon.
    QPainterPath sun;
    sun.addEllipse(QPointF(250, horizon), 96, 96);
    QPainterPath upper;
    upper.addRect(QRectF(0, 0, Size, horizon));
    QPainterPath bands;
    for (int i = 0; i < 6; ++i) {
        const double y = horizon - 12 - i * 13;
        bands.addRect(QRectF(0, y, Size, 6 - i * 0.9));
    }
    QLinearGradient sunGradient(0, horizon - 96, 0, horizon);
    sunGradient.setColorAt(0.0, QColor(255, 214, 100, 150));
    sunGradient.setColorAt(1.0, QColor(255, 60, 170, 150));
    p.fillPath(sun.intersected(upper).subtracted(bands), sunGradient);
    // The grid: lines running to the vanishing point, rows closing up towards the horizon.
    p.save();
    p.setClipRect(QRectF(0, horizon, Size, Size - horizon));
    for (const auto& [width, alpha] : {std::pair{4.0, 40}, std::pair{1.4, 170}}) {
        p.setPen(QPen(QColor(255, 70, 210, alpha), width));
        for (int i = -12; i <= 12; ++i) {
            p.drawLine(QPointF(250, horizon), QPointF(250 + i * 70, Size + 40));
        }
        for (int i = 1; i < 12; ++i) {
            const double y = horizon + (Size - horizon) * std::pow(i / 11.0, 2.0);
            p.drawLine(QPointF(0, y), QPointF(Size, y));
        }
    }
    p.restore();
    p.setPen(QPen(QColor(120, 240, 255, 200), 1.5));
    p.drawLine(QPointF(0, horizon), QPointF(Size, horizon));
    p.end();
    CellGrid(image, 44);
    Vignette(image, 0.5);
    return image;
}

QImage BackgroundPainter::Cosmos()
{
    // Deep space: clouds of a violet nebula, a field of stars and a ringed planet rising
    // in the lower right corner.
    QImage image = PaintKit::NewImage(Size, Size, Qt::black);
    for (int y = 0; y < Size; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < Size; ++x) {
            const double nebula = std::pow(PaintKit::Fbm(x / 130.0, y / 130.0, 5, 601), 2.2);
            const double dust = std::pow(PaintKit::Fbm(x / 60.0 + 3, y / 60.0, 4, 602), 3);
            line[x] = Rgb(8 + 150 * nebula + 20 * dust, 6 + 40 * nebula + 50 * dust, 24 + 160 * nebula + 120 * dust);
        }
    }
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing, true);
    p.setPen(Qt::NoPen);
    for (int i = 0; i < 260; ++i) {
        const QPointF s(PaintKit::Hash(i, 611) * Size, PaintKit::Hash(i, 612) * Size);
        const double bright = std::pow(PaintKit::Hash(i, 613), 3);
        p.setBrush(QColor(230, 230, 255, 70 + static_cast<int>(bright * 185)));
        p.drawEllipse(s, 0.6 + bright, 0.6 + bright);
        if (bright > 0.55) {
            p.setPen(QPen(QColor(200, 210, 255, 110), 0.8));
            p.drawLine(s - QPointF(5, 0), s + QPointF(5, 0));
            p.drawLine(s - QPointF(0, 5), s + QPointF(0, 5));
            p.setPen(Qt::NoPen);
        }
    }
    const QPointF planet(440, 455);
    const double radius = 110;
    QRadialGradient body(planet - QPointF(50, 50), radius * 1.5);
    body.setColorAt(0.0, QColor(120, 200, 230));
    body.setColorAt(0.5, QColor(40, 80, 140));
    body.setColorAt(1.0, QColor(6, 8, 30));
    // The ring whole, the planet over its far half, then the near half over the planet.
    auto ring = [&](bool nearHalfOnly) {
        p.save();
        p.translate(planet);
        p.rotate(-18);
        if (nearHalfOnly) p.setClipRect(QRectF(-radius * 2, 0, radius * 4, radius));
        p.setBrush(Qt::NoBrush);
        for (const auto& [width, alpha] : {std::pair{9.0, 60}, std::pair{3.0, 150}}) {
            p.setPen(QPen(QColor(230, 200, 150, alpha), width));
            p.drawEllipse(QPointF(0, 0), radius * 1.65, radius * 0.38);
        }
        p.restore();
    };
    ring(false);
    p.setPen(Qt::NoPen);
    p.setBrush(body);
    p.drawEllipse(planet, radius, radius);
    ring(true);
    p.end();
    CellGrid(image, 40);
    Vignette(image, 0.5);
    return image;
}
