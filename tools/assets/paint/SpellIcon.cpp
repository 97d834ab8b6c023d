#include "SpellIcon.h"

#include "PaintKit.h"

#include <QLinearGradient>
#include <QPainterPath>
#include <QRadialGradient>
#include <cmath>
#include <numbers>

namespace {

// Maps a 100 x 100 drawing space onto `box`.
void Space(QPainter& p, const QRectF& box)
{
    p.translate(box.topLeft());
    p.scale(box.width() / 100.0, box.height() / 100.0);
}

QPen Outline(double width = 4.0)
{
    return QPen(PaintKit::Ink(), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

} // namespace

QColor SpellIcon::Glow(int spell)
{
    static const QColor glows[6] = {QColor(226, 84, 56), QColor(104, 84, 226), QColor(240, 152, 40),
                                    QColor(60, 196, 104), QColor(246, 208, 64), QColor(40, 186, 228)};
    return glows[std::clamp(spell, 0, 5)];
}

void SpellIcon::SawBlade(QPainter& p, const QPointF& centre, double radius, double angle)
{
    p.save();
    p.setRenderHint(QPainter::Antialiasing, true);
    p.translate(centre);
    p.rotate(angle);
    const int teeth = 12;
    QPolygonF blade;
    for (int i = 0; i < teeth; ++i) {
        const double a0 = 2 * std::numbers::pi * i / teeth;
        const double a1 = a0 + 2 * std::numbers::pi / teeth * 0.72;
        blade << QPointF(radius * 0.76 * std::cos(a0), radius * 0.76 * std::sin(a0))
              << QPointF(radius * std::cos(a1), radius * std::sin(a1));
    }
    QRadialGradient steel(-radius * 0.3, -radius * 0.3, radius * 1.4);
    steel.setColorAt(0.0, QColor(250, 252, 255));
    steel.setColorAt(0.5, QColor(176, 186, 198));
    steel.setColorAt(1.0, QColor(86, 94, 108));
    p.setPen(QPen(PaintKit::Ink(), std::max(1.0, radius * 0.07), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(steel);
    p.drawPolygon(blade);
    // Grooves, hub and arbor hole.
    p.setPen(QPen(QColor(90, 98, 112), std::max(0.7, radius * 0.05)));
    for (int i = 0; i < 4; ++i) {
        const double a = std::numbers::pi / 2 * i + 0.4;
        p.drawLine(QPointF(radius * 0.36 * std::cos(a), radius * 0.36 * std::sin(a)),
                   QPointF(radius * 0.62 * std::cos(a), radius * 0.62 * std::sin(a)));
    }
    QRadialGradient hub(-radius * 0.08, -radius * 0.08, radius * 0.34);
    hub.setColorAt(0, PaintKit::GoldLight());
    hub.setColorAt(1, PaintKit::GoldDark());
    p.setPen(QPen(PaintKit::Ink(), std::max(0.8, radius * 0.05)));
    p.setBrush(hub);
    p.drawEllipse(QPointF(0, 0), radius * 0.3, radius * 0.3);
    p.setBrush(PaintKit::Ink());
    p.drawEllipse(QPointF(0, 0), radius * 0.1, radius * 0.1);
    p.restore();
}

void SpellIcon::Rainbow(QPainter& p, const QRectF& box)
{
    p.save();
    Space(p, box);
    const QColor bands[6] = {QColor(232, 50, 50), QColor(246, 146, 30), QColor(250, 222, 50),
                             QColor(70, 190, 70), QColor(50, 120, 232), QColor(140, 70, 210)};
    p.setPen(QPen(PaintKit::Ink(), 44, Qt::SolidLine, Qt::FlatCap));
    p.drawArc(QRectF(20, 34, 60, 60), 0, 180 * 16);
    for (int i = 0; i < 6; ++i) {
        const double r = 37 - i * 6.5;
        p.setPen(QPen(bands[i], 6.8, Qt::SolidLine, Qt::FlatCap));
        p.drawArc(QRectF(50 - r, 68 - r, 2 * r, 2 * r), 0, 180 * 16);
    }
    // Clouds where the bow touches down.
    for (double cx : {14.0, 86.0}) {
        p.setPen(Outline(3));
        p.setBrush(QColor(248, 250, 255));
        QPainterPath cloud;
        cloud.addEllipse(QPointF(cx - 8, 70), 8, 7);
        cloud.addEllipse(QPointF(cx + 6, 70), 9, 8);
        cloud.addEllipse(QPointF(cx, 63), 9, 8);
        p.drawPath(cloud.simplified());
    }
    p.restore();
}

void SpellIcon::Gun(QPainter& p, const QRectF& box)
{
    p.save();
    Space(p, box);
    // A ray gun pointing right, with its beam.
    p.setPen(Qt::NoPen);
    QLinearGradient beam(56, 0, 100, 0);
    beam.setColorAt(0, QColor(255, 255, 200, 250));
    beam.setColorAt(1, QColor(255, 120, 40, 0));
    p.setBrush(beam);
    p.drawRect(QRectF(70, 36, 30, 8));
    p.setPen(Outline(3.5));
    QLinearGradient body(0, 24, 0, 56);
    body.setColorAt(0, QColor(255, 214, 120));
    body.setColorAt(1, QColor(196, 96, 24));
    p.setBrush(body);
    QPainterPath gun;
    gun.addRoundedRect(QRectF(16, 26, 50, 28), 12, 12);
    gun.addRect(QRectF(60, 34, 14, 12));
    gun.addRoundedRect(QRectF(22, 46, 16, 34), 5, 5);
    p.drawPath(gun.simplified());
    p.setBrush(QColor(60, 220, 220));
    for (double x : {44.0, 53.0}) {
        p.drawRect(QRectF(x, 26, 5, 28));
    }
    p.setBrush(QColor(255, 250, 220));
    p.drawEllipse(QPointF(27, 36), 4, 4);
    p.restore();
}

void SpellIcon::TestTube(QPainter& p, const QRectF& box, const QColor& liquid, double level, int bubblePhase)
{
    p.save();
    p.setRenderHint(QPainter::Antialiasing, true);
    Space(p, box);
    p.translate(50, 50);
    p.rotate(28);
    p.translate(-50, -50);
    QPainterPath tube;
    tube.moveTo(38, 8);
    tube.lineTo(38, 76);
    tube.arcTo(QRectF(38, 64, 24, 24), 180, 180);
    tube.lineTo(62, 8);
    const double top = 86 - level * 72;
    QPainterPath fill;
    fill.addRect(QRectF(36, top, 28, 100));
    QPainterPath content = tube.intersected(fill);
    QLinearGradient lg(38, 0, 62, 0);
    lg.setColorAt(0, PaintKit::Shade(liquid, 0.35));
    lg.setColorAt(0.6, liquid);
    lg.setColorAt(1, PaintKit::Shade(liquid, -0.35));
    p.setPen(Qt::NoPen);
    p.fillPath(content, lg);
    p.setBrush(QColor(255, 255, 255, 200));
    for (int i = 0; i < 3; ++i) {
        const double y = 84 - std::fmod(bubblePhase * 9.0 + i * 23.0, 70.0);
        if (y > top + 3) {
            p.drawEllipse(QPointF(46 + 7 * ((i + bubblePhase / 3) % 2), y), 2.6, 2.6);
        }
    }
    p.setPen(Outline(4));
    p.setBrush(QColor(220, 240, 255, 50));
    p.drawPath(tube);
    p.setPen(QPen(QColor(255, 255, 255, 210), 3, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(43, 14), QPointF(43, 66));
    p.setPen(Outline(4));
    p.setBrush(QColor(200, 220, 235));
    p.drawRoundedRect(QRectF(33, 4, 34, 8), 3, 3);
    p.restore();
}

void SpellIcon::Bomb(QPainter& p, const QPointF& centre, double radius)
{
    p.save();
    p.setRenderHint(QPainter::Antialiasing, true);
    const double w = std::max(1.0, radius * 0.1);
    p.setPen(QPen(PaintKit::Ink(), w));
    p.setBrush(QColor(120, 110, 90));
    p.drawRect(QRectF(centre.x() + radius * 0.35, centre.y() - radius * 1.05, radius * 0.5, radius * 0.4));
    QRadialGradient g(centre.x() - radius * 0.35, centre.y() - radius * 0.35, radius * 1.3);
    g.setColorAt(0.0, QColor(120, 128, 150));
    g.setColorAt(0.35, QColor(44, 48, 62));
    g.setColorAt(1.0, QColor(8, 8, 14));
    p.setBrush(g);
    p.drawEllipse(centre, radius, radius);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(255, 255, 255, 170));
    p.drawEllipse(QPointF(centre.x() - radius * 0.4, centre.y() - radius * 0.42), radius * 0.2, radius * 0.13);
    p.restore();
}

void SpellIcon::Umbrella(QPainter& p, const QRectF& box)
{
    p.save();
    Space(p, box);
    p.setPen(Outline(4));
    p.setBrush(Qt::NoBrush);
    QPainterPath handle;
    handle.moveTo(50, 40);
    handle.lineTo(50, 80);
    handle.arcTo(QRectF(36, 72, 14, 14), 0, -180);
    p.drawPath(handle);
    p.setPen(QPen(QColor(210, 190, 150), 2.2, Qt::SolidLine, Qt::RoundCap));
    p.drawPath(handle);
    // The canopy: six coloured panels with a scalloped hem.
    const QColor panels[6] = {QColor(232, 50, 50), QColor(250, 222, 50), QColor(50, 120, 232),
                              QColor(232, 50, 50), QColor(250, 222, 50), QColor(50, 120, 232)};
    const QPointF tip(50, 10);
    for (int i = 0; i < 6; ++i) {
        const double x0 = 8 + i * 14;
        QPainterPath seg;
        seg.moveTo(tip);
        seg.quadTo(QPointF(x0 + (i < 3 ? -6 : 6), 18), QPointF(x0, 48));
        seg.quadTo(QPointF(x0 + 7, 40), QPointF(x0 + 14, 48));
        seg.quadTo(QPointF(x0 + 14 + (i < 3 ? -6 : 6), 18), tip);
        QLinearGradient g(0, 10, 0, 48);
        g.setColorAt(0, PaintKit::Shade(panels[i], 0.35));
        g.setColorAt(1, PaintKit::Shade(panels[i], -0.2));
        p.setPen(Outline(3));
        p.setBrush(g);
        p.drawPath(seg);
    }
    p.setBrush(PaintKit::Gold());
    p.drawEllipse(QPointF(50, 8), 4, 4);
    p.restore();
}

void SpellIcon::Draw(QPainter& p, int spell, const QRectF& box)
{
    p.save();
    p.setRenderHint(QPainter::Antialiasing, true);
    switch (spell) {
    case 0:
        SawBlade(p, box.center(), box.width() * 0.44, 8);
        break;
    case 1:
        Rainbow(p, box);
        break;
    case 2:
        Gun(p, box);
        break;
    case 3:
        TestTube(p, box, QColor(80, 230, 90), 0.55, 0);
        break;
    case 4: {
        const double r = box.width() * 0.33;
        const QPointF c(box.center().x() - box.width() * 0.06, box.center().y() + box.height() * 0.08);
        Bomb(p, c, r);
        QPainterPath fuse;
        fuse.moveTo(c.x() + r * 0.6, c.y() - r * 1.05);
        fuse.quadTo(c.x() + r * 0.8, c.y() - r * 1.6, c.x() + r * 1.25, c.y() - r * 1.45);
        p.setPen(QPen(QColor(210, 180, 120), std::max(1.0, r * 0.14), Qt::SolidLine, Qt::RoundCap));
        p.setBrush(Qt::NoBrush);
        p.drawPath(fuse);
        const QPointF spark(c.x() + r * 1.3, c.y() - r * 1.45);
        p.setPen(QPen(QColor(255, 240, 120), std::max(1.0, r * 0.12), Qt::SolidLine, Qt::RoundCap));
        for (int i = 0; i < 4; ++i) {
            const double a = i * std::numbers::pi / 4;
            p.drawLine(spark - QPointF(std::cos(a), std::sin(a)) * r * 0.35,
                       spark + QPointF(std::cos(a), std::sin(a)) * r * 0.35);
        }
        break;
    }
    default:
        Umbrella(p, box);
        break;
    }
    p.restore();
}
