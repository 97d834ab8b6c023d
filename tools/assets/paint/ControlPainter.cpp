#include "ControlPainter.h"

#include "BrickPainter.h"
#include "PaintKit.h"
#include "SpellIcon.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <cmath>
#include <numbers>

void ControlPainter::ButtonIcon(QPainter& p, int icon, const QRectF& box, bool hover)
{
    p.save();
    p.setRenderHint(QPainter::Antialiasing, true);
    const QColor ink = hover ? PaintKit::GoldLight() : PaintKit::Gold();
    if (icon == 0) {
        // A brick: the game.
        p.drawImage(box.toRect(), BrickPainter::Paint(BrickPainter::Style::Classic, hover ? 3 : 1));
    } else if (icon == 1) {
        // A gear: the options.
        QPainterPath gear;
        const QPointF c = box.center();
        const double r = box.width() / 2;
        for (int i = 0; i < 16; ++i) {
            const double a = i * std::numbers::pi / 8;
            const double rr = (i / 2) % 2 == 0 ? r : r * 0.72;
            const QPointF pt = c + QPointF(std::cos(a), std::sin(a)) * rr;
            i == 0 ? gear.moveTo(pt) : gear.lineTo(pt);
        }
        gear.closeSubpath();
        QPainterPath hole;
        hole.addEllipse(c, r * 0.32, r * 0.32);
        p.setPen(QPen(PaintKit::Ink(), 1.2));
        p.setBrush(ink);
        p.drawPath(gear.subtracted(hole));
    } else {
        // An "i" in a ring: about.
        p.setPen(QPen(PaintKit::Ink(), 1.2));
        p.setBrush(ink);
        p.drawEllipse(box.adjusted(0.5, 0.5, -0.5, -0.5));
        p.setPen(Qt::NoPen);
        p.setBrush(PaintKit::Ink());
        const QPointF c = box.center();
        p.drawEllipse(QPointF(c.x(), box.top() + box.height() * 0.27), box.width() * 0.1, box.width() * 0.1);
        p.drawRoundedRect(QRectF(c.x() - box.width() * 0.09, box.top() + box.height() * 0.42, box.width() * 0.18,
                                 box.height() * 0.38),
                          1, 1);
    }
    p.restore();
}

QImage ControlPainter::MenuButton(const QString& text, int icon, bool hover)
{
    QImage image = PaintKit::NewImage(190, 31, PaintKit::Ink());
    QPainter p(&image);
    const QRect face(1, 1, 188, 29);
    QLinearGradient g(0, 1, 0, 30);
    const QColor base = hover ? QColor(40, 138, 134) : PaintKit::Panel();
    g.setColorAt(0.0, PaintKit::Shade(base, 0.28));
    g.setColorAt(0.48, base);
    g.setColorAt(0.52, PaintKit::Shade(base, -0.12));
    g.setColorAt(1.0, PaintKit::Shade(base, -0.35));
    p.fillRect(face, g);
    PaintKit::Raised(p, face, 1, base);
    p.setPen(hover ? PaintKit::GoldLight() : PaintKit::GoldDark());
    p.drawRect(0, 0, 189, 30);
    if (hover) {
        // The lit button glows from its middle.
        QRadialGradient glow(95, 15, 90);
        glow.setColorAt(0, QColor(120, 255, 240, 70));
        glow.setColorAt(1, QColor(120, 255, 240, 0));
        p.fillRect(face, glow);
    }
    ButtonIcon(p, icon, QRectF(12, 7, 17, 17), hover);
    QFont font = PaintKit::Font(14, true);
    font.setLetterSpacing(QFont::AbsoluteSpacing, 2.5);
    PaintKit::Caption(p, QRect(0, 0, 190, 31), text, font, hover ? QColor(255, 250, 210) : PaintKit::Gold());
    // Small arrow marks at the right end, pointing at what opens.
    p.setRenderHint(QPainter::Antialiasing, true);
    p.setPen(Qt::NoPen);
    p.setBrush(hover ? PaintKit::GoldLight() : PaintKit::GoldDark());
    p.drawPolygon(QPolygonF({QPointF(170, 11), QPointF(177, 15.5), QPointF(170, 20)}));
    return image;
}

QImage ControlPainter::CloseButton(bool hover)
{
    QImage image = PaintKit::NewImage(78, 21, PaintKit::Ink());
    QPainter p(&image);
    const QRect face(1, 1, 76, 19);
    const QColor base = hover ? QColor(40, 138, 134) : PaintKit::Panel();
    QLinearGradient g(0, 1, 0, 20);
    g.setColorAt(0.0, PaintKit::Shade(base, 0.28));
    g.setColorAt(1.0, PaintKit::Shade(base, -0.35));
    p.fillRect(face, g);
    PaintKit::Raised(p, face, 1, base);
    p.setPen(hover ? PaintKit::GoldLight() : PaintKit::GoldDark());
    p.drawRect(0, 0, 77, 20);
    QFont font = PaintKit::Font(11, true);
    font.setLetterSpacing(QFont::AbsoluteSpacing, 1.5);
    PaintKit::Caption(p, QRect(0, 0, 78, 21), QStringLiteral("CLOSE"), font,
                      hover ? QColor(255, 250, 210) : PaintKit::Gold());
    return image;
}

QImage ControlPainter::Spell(int spell)
{
    QImage image = PaintKit::NewImage(50, 50, PaintKit::Ink());
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing, true);
    // A medallion: glow of the spell's own colour inside a gold ring.
    QRadialGradient glow(20, 18, 30);
    glow.setColorAt(0.0, PaintKit::Shade(SpellIcon::Glow(spell), 0.25));
    glow.setColorAt(0.55, PaintKit::Shade(SpellIcon::Glow(spell), -0.35));
    glow.setColorAt(1.0, PaintKit::Shade(SpellIcon::Glow(spell), -0.8));
    p.setPen(Qt::NoPen);
    p.setBrush(glow);
    p.drawRoundedRect(QRectF(1, 1, 48, 48), 9, 9);
    QLinearGradient ring(0, 0, 50, 50);
    ring.setColorAt(0, PaintKit::GoldLight());
    ring.setColorAt(0.5, PaintKit::Gold());
    ring.setColorAt(1, PaintKit::GoldDark());
    p.setPen(QPen(QBrush(ring), 3));
    p.setBrush(Qt::NoBrush);
    p.drawRoundedRect(QRectF(2.5, 2.5, 45, 45), 8, 8);
    p.setPen(QPen(PaintKit::Ink(), 1));
    p.drawRoundedRect(QRectF(0.5, 0.5, 49, 49), 9.5, 9.5);
    p.drawRoundedRect(QRectF(4.5, 4.5, 41, 41), 6, 6);
    SpellIcon::Draw(p, spell, QRectF(7, 7, 36, 36));
    return image;
}

QImage ControlPainter::SpellButton(int spell)
{
    QImage image = PaintKit::NewImage(27, 27, PaintKit::Ink());
    QPainter p(&image);
    const QColor base = PaintKit::Mix(PaintKit::Panel(), SpellIcon::Glow(spell), 0.35);
    QLinearGradient g(0, 0, 0, 27);
    g.setColorAt(0, PaintKit::Shade(base, 0.25));
    g.setColorAt(1, PaintKit::Shade(base, -0.4));
    p.fillRect(QRect(1, 1, 25, 25), g);
    PaintKit::Raised(p, QRect(1, 1, 25, 25), 1, base);
    p.setPen(PaintKit::GoldDark());
    p.drawRect(0, 0, 26, 26);
    SpellIcon::Draw(p, spell, QRectF(3, 3, 21, 21));
    return image;
}

QImage ControlPainter::Digit(int index)
{
    const int width = index == 10 ? PointWidth : DigitWidth;
    QImage image = PaintKit::NewImage(width, DigitHeight, PaintKit::BonusBand());
    QPainter p(&image);
    if (index == 10) {
        p.setRenderHint(QPainter::Antialiasing, true);
        QRadialGradient g(9, 44, 8);
        g.setColorAt(0, PaintKit::GoldLight());
        g.setColorAt(1, PaintKit::GoldDark());
        p.setPen(QPen(PaintKit::Ink(), 1.5));
        p.setBrush(g);
        p.drawRoundedRect(QRectF(6, 40, 10, 10), 2, 2);
        return image;
    }
    QFont font = PaintKit::Font(58, true);
    PaintKit::Title(p, QRect(0, 0, width, DigitHeight), QString::number(index), font, PaintKit::GoldLight(),
                    PaintKit::GoldDark());
    return image;
}

QImage ControlPainter::PipettePointer()
{
    QImage image(32, 32, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing, true);
    // Lying flat, the glass tip pointing left at (0, 15), the rubber bulb on the right.
    QPainterPath glass;
    glass.moveTo(0.5, 15.5);
    glass.lineTo(9, 13);
    glass.lineTo(21, 13);
    glass.lineTo(21, 18);
    glass.lineTo(9, 18);
    glass.closeSubpath();
    p.setPen(QPen(Qt::black, 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(QColor(220, 240, 255, 235));
    p.drawPath(glass);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(60, 200, 90));
    p.drawRect(QRectF(4, 14.5, 12, 2.5));
    p.setPen(QPen(Qt::black, 1.4));
    QLinearGradient bulb(0, 10, 0, 22);
    bulb.setColorAt(0, QColor(255, 110, 90));
    bulb.setColorAt(1, QColor(150, 20, 20));
    p.setBrush(bulb);
    p.drawRoundedRect(QRectF(20, 10.5, 11, 11), 5, 5);
    p.setPen(QPen(QColor(255, 255, 255, 220), 1));
    p.drawLine(QPointF(10, 14.3), QPointF(19, 14.3));
    return image;
}

QImage ControlPainter::SpellPointer()
{
    QImage image(32, 32, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing, true);
    // A wand from the lower right to the tip at (1, 1), with a star of light at the tip.
    p.setPen(QPen(Qt::black, 5, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(8, 8), QPointF(27, 27));
    p.setPen(QPen(QColor(60, 40, 30), 3, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(8, 8), QPointF(27, 27));
    p.setPen(QPen(PaintKit::GoldLight(), 3, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(8, 8), QPointF(12, 12));
    QPainterPath star;
    for (int i = 0; i < 8; ++i) {
        const double r = i % 2 == 0 ? 8.5 : 3;
        const double a = -std::numbers::pi / 4 + i * std::numbers::pi / 4;
        const QPointF pt(5 + r * std::cos(a), 5 + r * std::sin(a));
        i == 0 ? star.moveTo(pt) : star.lineTo(pt);
    }
    star.closeSubpath();
    p.setPen(QPen(Qt::black, 1.2));
    p.setBrush(QColor(255, 240, 120));
    p.drawPath(star);
    p.setPen(Qt::NoPen);
    p.setBrush(Qt::white);
    p.drawEllipse(QPointF(1.5, 1.5), 1.6, 1.6);
    return image;
}
