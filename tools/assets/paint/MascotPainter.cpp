#include "MascotPainter.h"

#include "PaintKit.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <cmath>
#include <numbers>

MascotPose MascotPainter::PoseOf(int frame, int frames)
{
    // The pass, in 48 frames: rest, a hop, a look round with a blink, a wave, a wink.
    MascotPose pose;
    const double t = frame * 48.0 / frames;
    if (t >= 6 && t < 18) {
        const double h = (t - 6) / 12.0;
        if (h < 0.15) {
            pose.squash = 0.25;
        } else if (h > 0.85) {
            pose.squash = 0.2;
        } else {
            const double u = (h - 0.15) / 0.7;
            pose.lift = 7 * std::sin(u * std::numbers::pi);
            pose.squash = -0.12 * std::sin(u * std::numbers::pi);
        }
    } else if (t >= 18 && t < 30) {
        const double u = (t - 18) / 12.0;
        pose.lookX = std::sin(u * 2 * std::numbers::pi) * -1.0;
        pose.lid = (t >= 23 && t < 25) ? 1.0 : 0.0;
    } else if (t >= 30 && t < 42) {
        pose.arm = 20 + 30 * std::sin((t - 30) / 12.0 * 4 * std::numbers::pi);
    } else if (t >= 42 && t < 47) {
        pose.wink = true;
    }
    return pose;
}

QImage MascotPainter::Paint(const MascotPose& pose)
{
    QImage image(32, 32, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing, true);
    const double ground = 29;
    const double w = 22 * (1 + pose.squash * 0.6);
    const double h = 19 * (1 - pose.squash);
    const QRectF body(16 - w / 2, ground - pose.lift - h, w, h);

    // Shadow on the ground shrinks as it lifts.
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0, 0, 0, 110));
    const double sw = 10 - pose.lift * 0.6;
    p.drawEllipse(QPointF(16, ground + 0.8), sw, 1.6);
    // Feet.
    p.setBrush(PaintKit::GoldDark());
    p.setPen(QPen(QColor(10, 10, 10), 1));
    p.drawEllipse(QPointF(11, body.bottom() + 0.5), 3, 1.8);
    p.drawEllipse(QPointF(21, body.bottom() + 0.5), 3, 1.8);
    // The body: a glossy teal brick with the gold band of the game.
    QLinearGradient g(0, body.top(), 0, body.bottom());
    g.setColorAt(0, QColor(110, 240, 226));
    g.setColorAt(0.5, QColor(30, 170, 164));
    g.setColorAt(1, QColor(14, 92, 92));
    p.setPen(QPen(QColor(10, 10, 10), 1.3));
    p.setBrush(g);
    p.drawRoundedRect(body, 5, 5);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(255, 255, 255, 110));
    p.drawRoundedRect(QRectF(body.left() + 3, body.top() + 2, w - 6, h * 0.28), 3, 3);
    // A small gold sprout on top.
    p.setPen(QPen(QColor(10, 10, 10), 1));
    p.setBrush(PaintKit::Gold());
    p.drawEllipse(QPointF(16, body.top() - 2.2), 2.4, 2.4);

    // The waving arm, raised from the body's right side.
    if (pose.arm >= 0) {
        p.save();
        p.translate(body.right() - 2, body.top() + h * 0.62);
        p.rotate(-pose.arm - 40);
        p.setPen(QPen(QColor(10, 10, 10), 4.2, Qt::SolidLine, Qt::RoundCap));
        p.drawLine(QPointF(0, 0), QPointF(10, 0));
        p.setPen(QPen(PaintKit::TealBright(), 2.2, Qt::SolidLine, Qt::RoundCap));
        p.drawLine(QPointF(0, 0), QPointF(10, 0));
        p.restore();
    }
    // Eyes.
    const double eyeY = body.top() + h * 0.45;
    for (int side = 0; side < 2; ++side) {
        const double ex = 16 + (side == 0 ? -4.6 : 4.6);
        const bool shut = pose.lid >= 1.0 || (pose.wink && side == 1);
        if (shut) {
            p.setPen(QPen(QColor(10, 10, 10), 1.4, Qt::SolidLine, Qt::RoundCap));
            p.drawLine(QPointF(ex - 2.6, eyeY), QPointF(ex + 2.6, eyeY));
            continue;
        }
        p.setPen(QPen(QColor(10, 10, 10), 1));
        p.setBrush(Qt::white);
        p.drawEllipse(QPointF(ex, eyeY), 3.3, 3.8);
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(20, 24, 40));
        p.drawEllipse(QPointF(ex + pose.lookX * 1.3, eyeY + 0.6), 1.7, 2.1);
        p.setBrush(Qt::white);
        p.drawEllipse(QPointF(ex + pose.lookX * 1.3 - 0.6, eyeY - 0.4), 0.6, 0.6);
    }
    // Mouth: a small smile, wider with the wink.
    QPainterPath mouth;
    const double my = body.top() + h * 0.74;
    const double mw = pose.wink ? 4.5 : 3;
    mouth.moveTo(16 - mw, my);
    mouth.quadTo(16, my + (pose.wink ? 3.6 : 2.4), 16 + mw, my);
    p.setPen(QPen(QColor(10, 10, 10), 1.2, Qt::SolidLine, Qt::RoundCap));
    p.setBrush(Qt::NoBrush);
    p.drawPath(mouth);
    // Rosy cheeks.
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(255, 120, 140, 110));
    p.drawEllipse(QPointF(16 - 7.5, my - 1), 1.8, 1.1);
    p.drawEllipse(QPointF(16 + 7.5, my - 1), 1.8, 1.1);
    return image;
}
