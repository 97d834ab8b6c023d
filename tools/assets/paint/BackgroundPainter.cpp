#include "BackgroundPainter.h"

#include "BrickPainter.h"
#include "LogoPainter.h"
#include "PaintKit.h"
#include "PixelMath.h"

#include <QLinearGradient>
#include <QPainter>
#include <QRadialGradient>
#include <algorithm>
#include <cmath>
#include <numbers>

using PixelMath::Rgb;
using PixelMath::Ridge;

void BackgroundPainter::CellGrid(QImage& image, int alpha)
{
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing, false);
    for (int i = 0; i <= 20; ++i) {
        const int v = i * 25;
        p.setPen(QColor(0, 0, 0, alpha));
        p.drawLine(v, 0, v, Size);
        p.drawLine(0, v, Size, v);
        p.setPen(QColor(255, 255, 255, alpha / 3));
        p.drawLine(v + 1, 0, v + 1, Size);
        p.drawLine(0, v + 1, Size, v + 1);
    }
}

void BackgroundPainter::Vignette(QImage& image, double strength)
{
    QPainter p(&image);
    QRadialGradient g(Size / 2.0, Size / 2.0, Size * 0.75);
    g.setColorAt(0.0, QColor(0, 0, 0, 0));
    g.setColorAt(0.6, QColor(0, 0, 0, 0));
    g.setColorAt(1.0, QColor(0, 0, 0, static_cast<int>(255 * strength)));
    p.fillRect(image.rect(), g);
}

QImage BackgroundPainter::Standard()
{
    QImage image = PaintKit::NewImage(Size, Size, PaintKit::Deep());
    for (int y = 0; y < Size; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < Size; ++x) {
            const double d = std::hypot(x - 250.0, y - 200.0) / 360.0;
            const double n = PaintKit::Fbm(x / 90.0, y / 90.0, 4, 11);
            const double k = std::clamp(1.0 - d, 0.0, 1.0) * 0.8 + n * 0.35;
            line[x] = Rgb(8 + 22 * k, 26 + 60 * k, 32 + 62 * k);
        }
    }
    CellGrid(image, 60);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing, true);
    // A fan of soft light from the top left, the one light of every picture.
    for (int i = 0; i < 5; ++i) {
        QPolygonF ray({QPointF(-40, -40), QPointF(520, 60 + i * 90), QPointF(520, 100 + i * 90)});
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(180, 255, 240, 10));
        p.drawPolygon(ray);
    }
    // The board shows this picture between games and behind every level that has no
    // background of its own, so it holds nothing that could pass for a brick: only the
    // logo, which a cleared board reveals.
    LogoPainter::Paint(p, QPointF(Size / 2.0, 215), 64);
    PaintKit::Caption(p, QRect(0, 267, Size, 24), QStringLiteral("clear the board, brick by brick"),
                      PaintKit::Font(15, false), PaintKit::Cream());
    // How to begin, for a player who has not opened a menu yet: the Game menu opens with a
    // right click beside the board or from the GAME button.
    PaintKit::Caption(p, QRect(0, 318, Size, 22), QStringLiteral("press F2 to start a new game"),
                      PaintKit::Font(13, true), PaintKit::Gold());
    PaintKit::Caption(p, QRect(0, 342, Size, 20), QStringLiteral("or choose New game from the GAME menu"),
                      PaintKit::Font(11, false), PaintKit::Cream());
    p.end();
    Vignette(image, 0.55);
    return image;
}

QImage BackgroundPainter::Crystal()
{
    QImage image = PaintKit::NewImage(Size, Size, Qt::black);
    for (int y = 0; y < Size; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < Size; ++x) {
            const double t = y / double(Size);
            const double n = PaintKit::Fbm(x / 70.0, y / 140.0, 5, 21);
            const double frost = std::pow(Ridge(PaintKit::Fbm(x / 60.0, y / 60.0, 4, 23)), 16);
            line[x] = Rgb(34 - 14 * t + 36 * n + 50 * frost, 58 - 20 * t + 44 * n + 60 * frost,
                          112 - 36 * t + 50 * n + 70 * frost);
        }
    }
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing, true);
    // Tall shards of ice rising from the floor, lit on their left faces.
    for (int i = 0; i < 16; ++i) {
        const double cx = PaintKit::Hash(i, 31) * Size;
        const double h = 120 + PaintKit::Hash(i, 32) * 220;
        const double w = 18 + PaintKit::Hash(i, 33) * 30;
        const double lean = (PaintKit::Hash(i, 34) - 0.5) * 60;
        const QPointF tip(cx + lean, Size - h);
        const QPointF left(cx - w / 2, Size + 4);
        const QPointF right(cx + w / 2, Size + 4);
        const QPointF mid(cx + lean * 0.2, Size + 4);
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(190, 230, 255, 48));
        p.drawPolygon(QPolygonF({tip, left, mid}));
        p.setBrush(QColor(10, 24, 70, 70));
        p.drawPolygon(QPolygonF({tip, mid, right}));
        p.setPen(QPen(QColor(220, 245, 255, 70), 1.0));
        p.drawLine(tip, left);
    }
    for (int i = 0; i < 70; ++i) {
        const QPointF s(PaintKit::Hash(i, 41) * Size, PaintKit::Hash(i, 42) * Size);
        const double r = 0.6 + PaintKit::Hash(i, 43) * 1.8;
        p.setPen(QPen(QColor(230, 250, 255, 150), 0.7));
        p.drawLine(s - QPointF(r * 2, 0), s + QPointF(r * 2, 0));
        p.drawLine(s - QPointF(0, r * 2), s + QPointF(0, r * 2));
    }
    p.end();
    CellGrid(image, 40);
    Vignette(image, 0.5);
    return image;
}

QImage BackgroundPainter::Forest()
{
    QImage image = PaintKit::NewImage(Size, Size, Qt::black);
    for (int y = 0; y < Size; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < Size; ++x) {
            const double n = PaintKit::Fbm(x / 60.0, y / 60.0, 5, 51);
            const double moss = PaintKit::Fbm(x / 14.0, y / 14.0, 3, 52);
            const double t = y / double(Size);
            line[x] = Rgb(14 + 20 * n + 10 * moss, 34 + 40 * n + 18 * moss - 8 * t, 18 + 16 * n);
        }
    }
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing, true);
    // Trunks in the dusk at both sides, then three layers of leaves.
    for (int i = 0; i < 5; ++i) {
        const double x = (i < 3 ? 10 + i * 45 : 360 + (i - 3) * 80) + PaintKit::Hash(i, 53) * 20;
        const double w = 16 + PaintKit::Hash(i, 54) * 22;
        QLinearGradient g(x, 0, x + w, 0);
        g.setColorAt(0, QColor(58, 44, 30, 110));
        g.setColorAt(1, QColor(12, 10, 6, 130));
        p.fillRect(QRectF(x, 0, w, Size), g);
    }
    for (int layer = 0; layer < 3; ++layer) {
        for (int i = 0; i < 140; ++i) {
            const int k = layer * 1000 + i;
            const QPointF c(PaintKit::Hash(k, 61) * Size, PaintKit::Hash(k, 62) * Size);
            const double len = 7 + PaintKit::Hash(k, 63) * 9 + layer * 3;
            const double angle = PaintKit::Hash(k, 64) * 360;
            const int g = 70 + static_cast<int>(PaintKit::Hash(k, 65) * 70) + layer * 20;
            p.save();
            p.translate(c);
            p.rotate(angle);
            p.setPen(Qt::NoPen);
            p.setBrush(QColor(g / 3, g, g / 4, 40 + layer * 18));
            QPainterPath leaf;
            leaf.moveTo(-len, 0);
            leaf.quadTo(0, -len * 0.5, len, 0);
            leaf.quadTo(0, len * 0.5, -len, 0);
            p.drawPath(leaf);
            p.restore();
        }
    }
    // Sunlight falling through the canopy from the top left.
    for (int i = 0; i < 4; ++i) {
        const double x = 40 + i * 110;
        QLinearGradient g(0, 0, 0, Size);
        g.setColorAt(0, QColor(255, 240, 170, 34));
        g.setColorAt(1, QColor(255, 240, 170, 0));
        p.setPen(Qt::NoPen);
        p.setBrush(g);
        p.drawPolygon(QPolygonF({QPointF(x, 0), QPointF(x + 40, 0), QPointF(x + 240, Size), QPointF(x + 150, Size)}));
    }
    p.end();
    CellGrid(image, 40);
    Vignette(image, 0.6);
    return image;
}

QImage BackgroundPainter::Ocean()
{
    QImage image = PaintKit::NewImage(Size, Size, Qt::black);
    for (int y = 0; y < Size; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < Size; ++x) {
            const double t = y / double(Size);
            const double caustic = std::pow(Ridge(PaintKit::Fbm(x / 55.0, y / 45.0, 3, 71)), 10) +
                                   std::pow(Ridge(PaintKit::Fbm(x / 37.0 + 9, y / 31.0, 3, 72)), 12);
            const double light = (1 - t) * 0.9;
            double r = 6 + 14 * light + 60 * caustic * light;
            double g = 34 + 60 * light + 90 * caustic * light;
            double b = 66 + 70 * light + 90 * caustic * light;
            // Rippled sand at the bottom.
            const double sandLine = 440 + 14 * std::sin(x / 47.0) + 8 * PaintKit::Noise(x / 20.0, 0, 73);
            if (y > sandLine) {
                const double ripple = 0.5 + 0.5 * std::sin((y + 5 * std::sin(x / 19.0)) * 0.7);
                r = 70 + 30 * ripple;
                g = 72 + 26 * ripple;
                b = 62 + 16 * ripple;
            }
            line[x] = Rgb(r, g, b);
        }
    }
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing, true);
    for (int i = 0; i < 6; ++i) {
        const double x = -60 + i * 100;
        QLinearGradient g(0, 0, 0, 420);
        g.setColorAt(0, QColor(200, 255, 255, 30));
        g.setColorAt(1, QColor(200, 255, 255, 0));
        p.setPen(Qt::NoPen);
        p.setBrush(g);
        p.drawPolygon(QPolygonF({QPointF(x, 0), QPointF(x + 36, 0), QPointF(x + 160, 420), QPointF(x + 100, 420)}));
    }
    for (int i = 0; i < 46; ++i) {
        const QPointF c(PaintKit::Hash(i, 81) * Size, PaintKit::Hash(i, 82) * 440);
        const double r = 1.5 + std::pow(PaintKit::Hash(i, 83), 3) * 7;
        p.setPen(QPen(QColor(210, 250, 255, 110), 0.9));
        p.setBrush(QColor(160, 230, 255, 30));
        p.drawEllipse(c, r, r);
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(255, 255, 255, 170));
        p.drawEllipse(c - QPointF(r * 0.35, r * 0.35), r * 0.25, r * 0.25);
    }
    p.end();
    CellGrid(image, 40);
    Vignette(image, 0.5);
    return image;
}

QImage BackgroundPainter::Ember()
{
    QImage image = PaintKit::NewImage(Size, Size, Qt::black);
    for (int y = 0; y < Size; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < Size; ++x) {
            const double rock = PaintKit::Fbm(x / 50.0, y / 50.0, 5, 91);
            const double crack = std::pow(Ridge(PaintKit::Fbm(x / 80.0, y / 80.0, 4, 92)), 14);
            const double heat = crack * (0.45 + 0.3 * PaintKit::Noise(x / 30.0, y / 30.0, 93));
            const double lit = (1.0 - (x + y) / 1000.0) * 0.25;
            line[x] = Rgb(22 + 36 * rock + 30 * lit + 255 * heat, 18 + 28 * rock + 20 * lit + 120 * heat * heat,
                          18 + 24 * rock + 10 * lit + 20 * heat * heat * heat);
        }
    }
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing, true);
    // Sparks drifting up.
    for (int i = 0; i < 60; ++i) {
        const QPointF c(PaintKit::Hash(i, 95) * Size, PaintKit::Hash(i, 96) * Size);
        const double r = 0.7 + PaintKit::Hash(i, 97) * 1.5;
        QRadialGradient g(c, r * 3);
        g.setColorAt(0, QColor(255, 220, 120, 220));
        g.setColorAt(1, QColor(255, 90, 20, 0));
        p.setPen(Qt::NoPen);
        p.setBrush(g);
        p.drawEllipse(c, r * 3, r * 3);
    }
    QLinearGradient floor(0, 380, 0, Size);
    floor.setColorAt(0, QColor(255, 80, 10, 0));
    floor.setColorAt(1, QColor(255, 80, 10, 60));
    p.fillRect(QRect(0, 380, Size, 120), floor);
    p.end();
    CellGrid(image, 50);
    Vignette(image, 0.55);
    return image;
}
