#include "StripPainter.h"

#include "PaintKit.h"
#include "MascotPainter.h"
#include "SpellIcon.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <algorithm>
#include <cmath>
#include <numbers>

QImage StripPainter::Stack(int width, int height, int frames)
{
    return PaintKit::NewImage(width, height * frames, PaintKit::Ink());
}

QImage StripPainter::Explosion()
{
    const int s = EffectFrame;
    QImage strip = Stack(s, s, ExplosionFrames);
    QPainter p(&strip);
    p.setRenderHint(QPainter::Antialiasing, true);
    for (int f = 0; f < ExplosionFrames; ++f) {
        const double t = f / double(ExplosionFrames - 1);
        p.save();
        p.translate(0, f * s);
        p.setClipRect(0, 0, s, s);
        const QPointF c(25, 25);
        // Fireball: grows fast, then cools from white through orange to smoke.
        const double r = 6 + 26 * std::sqrt(t);
        const double heat = std::max(0.0, 1.0 - t * 1.25);
        QRadialGradient g(c, r);
        g.setColorAt(0.0, PaintKit::Mix(QColor(110, 100, 96), QColor(255, 255, 230), heat));
        g.setColorAt(0.4, PaintKit::Mix(QColor(80, 70, 66), QColor(255, 200, 60), heat));
        g.setColorAt(0.8, PaintKit::Mix(QColor(44, 40, 40), QColor(230, 80, 20), heat));
        g.setColorAt(1.0, QColor(0, 0, 0, 0));
        p.setPen(Qt::NoPen);
        p.setBrush(g);
        p.setOpacity(std::min(1.0, 1.6 - t * 1.2));
        p.drawEllipse(c, r, r);
        p.setOpacity(1.0);
        // Flying sparks and chips.
        for (int i = 0; i < 14; ++i) {
            const double a = PaintKit::Hash(i, 501) * 2 * std::numbers::pi;
            const double v = 10 + PaintKit::Hash(i, 502) * 22;
            const double d = v * t * 1.4;
            const QPointF pt = c + QPointF(std::cos(a), std::sin(a)) * d;
            const QColor spark = i % 3 == 0 ? QColor(255, 250, 200) : QColor(255, 150, 40);
            p.setBrush(PaintKit::Mix(spark, QColor(60, 50, 45), t));
            p.drawEllipse(pt, 1.8 * (1 - t) + 0.6, 1.8 * (1 - t) + 0.6);
        }
        // The first frames flash white-hot round the blast.
        if (f < 2) {
            QRadialGradient flash(c, 30 - f * 6);
            flash.setColorAt(0.0, QColor(255, 255, 235, 220 - f * 80));
            flash.setColorAt(1.0, QColor(255, 200, 120, 0));
            p.setBrush(flash);
            p.drawEllipse(c, 30 - f * 6, 30 - f * 6);
        }
        p.restore();
    }
    return strip;
}

QImage StripPainter::Bomb()
{
    const int s = EffectFrame;
    QImage strip = Stack(s, s, BombFrames);
    QPainter p(&strip);
    p.setRenderHint(QPainter::Antialiasing, true);
    for (int f = 0; f < BombFrames; ++f) {
        const double t = f / double(BombFrames - 1);
        p.save();
        p.translate(0, f * s);
        p.setClipRect(0, 0, s, s);
        const QPointF c(22, 29);
        const double swell = 1.0 + 0.08 * std::pow(t, 3) + (f % 2) * 0.02 * t;
        // The bomb glows redder as the fuse burns down.
        QRadialGradient warn(c, 24);
        warn.setColorAt(0, QColor(255, 60, 30, static_cast<int>(140 * t * (f % 2 == 1 ? 1.0 : 0.6))));
        warn.setColorAt(1, QColor(255, 60, 30, 0));
        p.setPen(Qt::NoPen);
        p.setBrush(warn);
        p.drawEllipse(c, 24, 24);
        SpellIcon::Bomb(p, c, 15 * swell);
        const double burnt = t * 0.85;
        QPainterPath fuse;
        fuse.moveTo(c.x() + 9, c.y() - 16);
        fuse.cubicTo(c.x() + 12, c.y() - 26, c.x() + 22, c.y() - 22, c.x() + 24, c.y() - 27);
        const QPointF spark = fuse.pointAtPercent(1.0 - burnt);
        QPainterPath rest;
        rest.moveTo(fuse.pointAtPercent(0));
        for (int k = 1; k <= 20; ++k) {
            rest.lineTo(fuse.pointAtPercent((1.0 - burnt) * k / 20.0));
        }
        p.setPen(QPen(QColor(210, 180, 120), 2.2, Qt::SolidLine, Qt::RoundCap));
        p.setBrush(Qt::NoBrush);
        p.drawPath(rest);
        for (int i = 0; i < 6; ++i) {
            const double a = (i + f * 0.5) * std::numbers::pi / 3;
            const double len = 3 + 3 * PaintKit::Hash(i + f * 7, 511);
            p.setPen(QPen(i % 2 ? QColor(255, 240, 140) : QColor(255, 140, 40), 1.4, Qt::SolidLine, Qt::RoundCap));
            p.drawLine(spark, spark + QPointF(std::cos(a), std::sin(a)) * len);
        }
        if (f == BombFrames - 1) {
            // The moment it goes off, before the explosion takes over.
            QRadialGradient flash(c, 34);
            flash.setColorAt(0.0, QColor(255, 255, 240, 250));
            flash.setColorAt(0.5, QColor(255, 220, 140, 190));
            flash.setColorAt(1.0, QColor(255, 140, 40, 0));
            p.setPen(Qt::NoPen);
            p.setBrush(flash);
            p.drawEllipse(c, 34, 34);
        }
        p.restore();
    }
    return strip;
}

QImage StripPainter::Saw()
{
    const int s = EffectFrame;
    QImage strip = Stack(s, s, SawFrames);
    QPainter p(&strip);
    p.setRenderHint(QPainter::Antialiasing, true);
    for (int f = 0; f < SawFrames; ++f) {
        p.save();
        p.translate(0, f * s);
        p.setClipRect(0, 0, s, s);
        // Turning one tooth pitch over the strip makes the loop seamless.
        const double angle = f * (360.0 / 12.0) / SawFrames;
        QRadialGradient blur(25, 25, 24);
        blur.setColorAt(0.75, QColor(200, 210, 225, 60));
        blur.setColorAt(1.0, QColor(200, 210, 225, 0));
        p.setPen(Qt::NoPen);
        p.setBrush(blur);
        p.drawEllipse(QPointF(25, 25), 24, 24);
        SpellIcon::SawBlade(p, QPointF(25, 25), 21, angle);
        for (int i = 0; i < 5; ++i) {
            const double a = (f * 45 + i * 72) * std::numbers::pi / 180;
            const QPointF from(25 + 21 * std::cos(a), 25 + 21 * std::sin(a));
            p.setPen(QPen(QColor(255, 210, 90), 1.4, Qt::SolidLine, Qt::RoundCap));
            p.drawLine(from, from + QPointF(-std::sin(a), std::cos(a)) * 5);
        }
        p.restore();
    }
    return strip;
}

QImage StripPainter::TestTube()
{
    const int s = EffectFrame;
    QImage strip = Stack(s, s, TubeFrames);
    QPainter p(&strip);
    p.setRenderHint(QPainter::Antialiasing, true);
    for (int f = 0; f < TubeFrames; ++f) {
        p.save();
        p.translate(0, f * s);
        p.setClipRect(0, 0, s, s);
        // The liquid runs through the brick colours while it waits for the colour to take.
        const double pos = f * 10.0 / TubeFrames;
        const int a = static_cast<int>(pos) % 10;
        const QColor liquid = PaintKit::Mix(PaintKit::BrickColor(a), PaintKit::BrickColor((a + 1) % 10), pos - a);
        QRadialGradient glow(20, 18, 30);
        glow.setColorAt(0.0, PaintKit::Shade(liquid, 0.1));
        glow.setColorAt(0.6, PaintKit::Shade(liquid, -0.55));
        glow.setColorAt(1.0, PaintKit::Shade(liquid, -0.85));
        p.setPen(Qt::NoPen);
        p.setBrush(glow);
        p.drawRoundedRect(QRectF(1, 1, 48, 48), 9, 9);
        p.setPen(QPen(PaintKit::Gold(), 3));
        p.setBrush(Qt::NoBrush);
        p.drawRoundedRect(QRectF(2.5, 2.5, 45, 45), 8, 8);
        SpellIcon::TestTube(p, QRectF(6, 6, 38, 38), liquid, 0.5 + 0.08 * std::sin(f * std::numbers::pi / 4), f);
        p.restore();
    }
    return strip;
}

QImage StripPainter::Hint()
{
    const int s = SmallFrame;
    QImage strip = Stack(s, s, HintFrames);
    QPainter p(&strip);
    p.setRenderHint(QPainter::Antialiasing, true);
    for (int f = 0; f < HintFrames; ++f) {
        const double t = f / double(HintFrames);
        const double pulse = 0.5 - 0.5 * std::cos(t * 2 * std::numbers::pi);
        p.save();
        p.translate(0, f * s);
        p.setClipRect(0, 0, s, s);
        QRadialGradient glow(16, 16, 16);
        glow.setColorAt(0, QColor(255, 240, 160, static_cast<int>(120 + 120 * pulse)));
        glow.setColorAt(1, QColor(255, 170, 40, 0));
        p.setPen(Qt::NoPen);
        p.setBrush(glow);
        p.drawRect(0, 0, s, s);
        // A turning four-point star with a ring that breathes.
        p.translate(16, 16);
        p.rotate(t * 90);
        QPainterPath star;
        for (int i = 0; i < 8; ++i) {
            const double r = i % 2 == 0 ? 9 + 4 * pulse : 3;
            const double a = i * std::numbers::pi / 4;
            const QPointF pt(r * std::cos(a), r * std::sin(a));
            i == 0 ? star.moveTo(pt) : star.lineTo(pt);
        }
        star.closeSubpath();
        p.setPen(QPen(PaintKit::Ink(), 1.2));
        p.setBrush(QColor(255, 252, 220));
        p.drawPath(star);
        p.rotate(-t * 90);
        p.setPen(QPen(PaintKit::Gold(), 2));
        p.setBrush(Qt::NoBrush);
        p.drawEllipse(QPointF(0, 0), 11 + 3 * (1 - pulse), 11 + 3 * (1 - pulse));
        p.restore();
        p.save();
        p.translate(0, f * s);
        p.setPen(PaintKit::Gold());
        p.drawRect(0, 0, s - 1, s - 1);
        p.restore();
    }
    return strip;
}

QImage StripPainter::MascotFrame(int frame)
{
    return MascotPainter::Paint(MascotPainter::PoseOf(frame, MascotFrames));
}

QImage StripPainter::Mascot()
{
    const int s = SmallFrame;
    QImage strip(2 * s, s * MascotFrames, QImage::Format_ARGB32_Premultiplied);
    strip.fill(Qt::black);
    for (int f = 0; f < MascotFrames; ++f) {
        const QImage frame = MascotFrame(f);
        for (int y = 0; y < s; ++y) {
            for (int x = 0; x < s; ++x) {
                const QRgb c = frame.pixel(x, y);
                // A pixel is either the mascot's or the background's: the mask has no
                // half tones, so edge pixels go to whichever covers more of them.
                const bool covered = qAlpha(c) >= 128;
                const QColor solid = covered ? QColor(qRed(c) * 255 / qAlpha(c), qGreen(c) * 255 / qAlpha(c),
                                                      qBlue(c) * 255 / qAlpha(c))
                                             : QColor(Qt::black);
                strip.setPixelColor(x, f * s + y, solid);
                strip.setPixelColor(s + x, f * s + y, covered ? Qt::black : Qt::white);
            }
        }
    }
    return strip;
}
