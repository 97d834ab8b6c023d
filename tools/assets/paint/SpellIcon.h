#pragma once
// The six spell signs as vector drawings, so that one drawing serves the 50-pixel spell
// on the board, the 27-pixel spell button, the test tube strip and the contact sheet:
// 0 saw blade, 1 rainbow, 2 gun, 3 test tube, 4 bomb, 5 umbrella.
#include <QColor>
#include <QPainter>
#include <QRectF>

class SpellIcon {
public:
    // Draws the sign of `spell` filling the square `box`.
    static void Draw(QPainter& p, int spell, const QRectF& box);
    // The glow colour behind each sign, one per spell, far apart in hue and lightness.
    static QColor Glow(int spell);
    // Parts used by the animation strips.
    static void SawBlade(QPainter& p, const QPointF& centre, double radius, double angle);
    static void TestTube(QPainter& p, const QRectF& box, const QColor& liquid, double level, int bubblePhase);
    static void Bomb(QPainter& p, const QPointF& centre, double radius);

private:
    static void Rainbow(QPainter& p, const QRectF& box);
    static void Gun(QPainter& p, const QRectF& box);
    static void Umbrella(QPainter& p, const QRectF& box);
};
