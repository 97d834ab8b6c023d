#include "WindowPainter.h"

#include "BrickPainter.h"
#include "LogoPainter.h"
#include "PaintKit.h"

#include <QLinearGradient>
#include <QFontMetrics>
#include <QPainter>
#include <QRadialGradient>
#include <algorithm>
#include <cmath>

namespace {

void Ornament(QPainter& p, int x1, int x2, int y)
{
    p.save();
    p.setRenderHint(QPainter::Antialiasing, false);
    p.setPen(PaintKit::GoldDark());
    p.drawLine(x1, y + 1, x2, y + 1);
    p.setPen(PaintKit::Gold());
    p.drawLine(x1, y, x2, y);
    p.setRenderHint(QPainter::Antialiasing, true);
    p.setPen(QPen(PaintKit::Ink(), 1));
    p.setBrush(PaintKit::Gold());
    for (int x : {x1, x2}) {
        p.drawPolygon(QPolygonF({QPointF(x, y - 3.5), QPointF(x + 3.5, y + 0.5), QPointF(x, y + 4.5),
                                 QPointF(x - 3.5, y + 0.5)}));
    }
    p.restore();
}

} // namespace

QImage WindowPainter::Backdrop(int width, int height, int seed)
{
    QImage image = PaintKit::NewImage(width, height, Qt::black);
    for (int y = 0; y < height; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < width; ++x) {
            const double n = PaintKit::Fbm(x / 120.0, y / 120.0, 4, seed);
            const double brush = PaintKit::Noise(x / 2.0 + y / 9.0, y / 90.0, seed + 5);
            const double lit = 1.0 - std::hypot(x / double(width), y / double(height)) / 1.42;
            const double k = 0.55 * n + 0.1 * brush + 0.45 * lit;
            line[x] = qRgb(static_cast<int>(7 + 18 * k), static_cast<int>(22 + 40 * k),
                           static_cast<int>(26 + 42 * k));
        }
    }
    return image;
}

void WindowPainter::SectionCaption(QPainter& p, const QRect& r, const QString& text, double spacing)
{
    QFont font = PaintKit::Font(10, true);
    font.setLetterSpacing(QFont::AbsoluteSpacing, spacing);
    PaintKit::Caption(p, r, text, font, PaintKit::Gold(), Qt::AlignLeft | Qt::AlignVCenter);
}

void WindowPainter::MainTop(QPainter& p)
{
    // The mascot's medallion: the mascot is laid over this picture with its mask.
    p.save();
    p.setRenderHint(QPainter::Antialiasing, true);
    QRadialGradient g(35, 14, 22);
    g.setColorAt(0.0, PaintKit::PanelLight());
    g.setColorAt(1.0, PaintKit::Ink());
    p.setPen(QPen(PaintKit::Ink(), 2));
    p.setBrush(g);
    p.drawEllipse(QPointF(39, 19), 18.5, 18.5);
    p.setPen(QPen(PaintKit::Gold(), 1.4));
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(QPointF(39, 19), 17, 17);
    p.restore();
    LogoPainter::Paint(p, QPointF(126, 19), 17);
    // Plaque for the level's name, which starts at 207.
    const QRect plaque(200, 2, 321, 24);
    PaintKit::Well(p, plaque, PaintKit::Shade(PaintKit::Deep(), -0.35));
    PaintKit::Rivet(p, QPoint(plaque.right() - 6, plaque.top() + 11));
}

void WindowPainter::MainPanel(QPainter& p)
{
    const QRect panel(532, 36, 208, 514);
    PaintKit::PanelBox(p, panel, PaintKit::Panel());
    for (QPoint c : {panel.topLeft() + QPoint(6, 6), QPoint(panel.right() - 6, panel.top() + 6),
                     QPoint(panel.left() + 6, panel.bottom() - 6), panel.bottomRight() - QPoint(6, 6)}) {
        PaintKit::Rivet(p, c);
    }
    SectionCaption(p, QRect(545, 39, 180, 15), QStringLiteral("SCORE"));
    PaintKit::GoldFrame(p, QRect(541, 53, 188, 31));
    p.fillRect(QRect(543, 55, 184, 27), Qt::black);

    // Level and bonus: caption, then a dark well for the number. The numbers stand at
    // fixed places (584 and 677), so the room for the bonus caption is what lies between
    // the level's well, wide enough for "100", and the bonus's: the caption keeps a clear
    // margin on both sides, in the largest caption size that leaves one.
    const QRect levelWell(581, 100, 44, 28);
    const QRect bonusWell(674, 100, 55, 28);
    constexpr int margin = 5;
    SectionCaption(p, QRect(543, 101, levelWell.left() - margin - 543, 27), QStringLiteral("LEVEL"), 0.2);
    PaintKit::Well(p, levelWell, PaintKit::Ink());
    const QRect bonusRoom(levelWell.right() + 1 + margin, 101, bonusWell.left() - margin - levelWell.right() - 1 - margin, 27);
    int size = 10;
    double spacing = 0.2;
    for (;; spacing = 0.0, --size) {
        QFont font = PaintKit::Font(size, true);
        font.setLetterSpacing(QFont::AbsoluteSpacing, spacing);
        if (size <= 8 || QFontMetrics(font).horizontalAdvance(QStringLiteral("BONUS")) <= bonusRoom.width()) break;
    }
    QFont bonusFont = PaintKit::Font(size, true);
    bonusFont.setLetterSpacing(QFont::AbsoluteSpacing, spacing);
    PaintKit::Caption(p, bonusRoom, QStringLiteral("BONUS"), bonusFont, PaintKit::Gold(), Qt::AlignRight | Qt::AlignVCenter);
    PaintKit::Well(p, bonusWell, PaintKit::Ink());
    Ornament(p, 546, 724, 91);

    SectionCaption(p, QRect(545, 131, 180, 15), QStringLiteral("SPELLS"));
    PaintKit::Well(p, QRect(540, 146, 91, 51), PaintKit::Ink());
    PaintKit::Well(p, QRect(641, 146, 91, 51), PaintKit::Ink());
    PaintKit::Well(p, QRect(541, 196, 188, 18), PaintKit::Teal());
    // The pedestal of the armed spell.
    PaintKit::GoldFrame(p, QRect(607, 211, 56, 56));
    p.fillRect(QRect(609, 213, 52, 52), PaintKit::Ink());
    Ornament(p, 548, 598, 240);
    Ornament(p, 672, 722, 240);

    SectionCaption(p, QRect(545, 279, 180, 15), QStringLiteral("HISCORES"));
    PaintKit::GoldFrame(p, QRect(541, 295, 188, 126));
    p.fillRect(QRect(543, 297, 184, 122), Qt::black);
    Ornament(p, 546, 724, 425);
}

void WindowPainter::MainStatus(QPainter& p)
{
    const QRect strip(17, 544, 506, 16);
    PaintKit::Well(p, strip, PaintKit::Shade(PaintKit::Deep(), -0.4));
    p.setPen(PaintKit::PanelLight());
    for (int x : {133, 258, 356}) {
        p.drawLine(x, strip.top() + 3, x, strip.bottom() - 3);
    }
}

QImage WindowPainter::Main()
{
    QImage image = Backdrop(750, 561, 301);
    PaintKit::Grain(image, image.rect(), 0.015, 302);
    QPainter p(&image);
    MainTop(p);
    // The board's frame: gold, three pixels wide, just outside the 500 x 500 board.
    PaintKit::GoldFrame(p, QRect(17, 38, 506, 506));
    p.fillRect(QRect(20, 41, 500, 500), PaintKit::Ink());
    MainPanel(p);
    MainStatus(p);
    p.setPen(PaintKit::PanelLight());
    p.drawRect(0, 0, 749, 560);
    return image;
}

QImage WindowPainter::Loading()
{
    QImage image = Backdrop(401, 231, 311);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing, true);
    for (int i = 0; i < 10; ++i) {
        const QImage brick = BrickPainter::Paint(BrickPainter::Style::Classic, i);
        p.setOpacity(0.9);
        p.drawImage(QRect(50 + i * 30, 100, 25, 25), brick);
    }
    p.setOpacity(1.0);
    LogoPainter::Paint(p, QPointF(200, 55), 40);
    // The band where the progress text appears (its label sits at top 148).
    QLinearGradient band(0, 142, 0, 168);
    band.setColorAt(0, QColor(0, 0, 0, 200));
    band.setColorAt(1, QColor(0, 0, 0, 120));
    p.fillRect(QRect(1, 142, 399, 26), band);
    Ornament(p, 12, 388, 140);
    Ornament(p, 12, 388, 169);
    PaintKit::Caption(p, QRect(12, 184, 300, 18), QStringLiteral("a brick-clearing puzzle"),
                      PaintKit::Font(12, false), PaintKit::Cream(), Qt::AlignLeft | Qt::AlignVCenter);
    // A dark corner for the version number at 354, 210.
    PaintKit::Well(p, QRect(346, 206, 52, 21), PaintKit::Ink());
    p.end();
    QPainter frame(&image);
    PaintKit::GoldFrame(frame, QRect(1, 1, 399, 229));
    return image;
}

QImage WindowPainter::About()
{
    QImage image = Backdrop(450, 400, 321);
    QPainter p(&image);
    LogoPainter::Paint(p, QPointF(225, 58), 46);
    PaintKit::Caption(p, QRect(0, 96, 450, 20), QStringLiteral("a brick-clearing puzzle in ten colours"),
                      PaintKit::Font(13, false), PaintKit::Cream());
    Ornament(p, 40, 410, 126);
    // The ten bricks with their signs, as a key to the colours.
    for (int i = 0; i < 10; ++i) {
        const QImage brick = BrickPainter::Paint(BrickPainter::Style::Classic, i);
        p.drawImage(QRect(46 + i * 36, 140, 32, 32), brick);
    }
    PaintKit::Caption(p, QRect(0, 180, 450, 16), QStringLiteral("every colour carries its own sign"),
                      PaintKit::Font(11, false), PaintKit::TealBright());
    QFont heading = PaintKit::Font(11, true);
    heading.setLetterSpacing(QFont::AbsoluteSpacing, 2);
    PaintKit::Caption(p, QRect(0, 206, 450, 18), QStringLiteral("CREDITS"), heading, PaintKit::Gold());
    // The credits roll in a black window at 25, 230.
    PaintKit::GoldFrame(p, QRect(22, 227, 406, 104));
    p.fillRect(QRect(25, 230, 400, 98), Qt::black);
    PaintKit::Well(p, QRect(183, 357, 84, 27), PaintKit::Ink());
    // A light plate for the blue web link at 310, 373.
    QRect plate(305, 370, 131, 19);
    p.fillRect(plate, PaintKit::Shade(PaintKit::Cream(), -0.05));
    PaintKit::Raised(p, plate, 1, PaintKit::Cream());
    p.end();
    QPainter frame(&image);
    PaintKit::GoldFrame(frame, QRect(1, 1, 448, 398));
    return image;
}

QImage WindowPainter::Initials()
{
    QImage image = Backdrop(320, 150, 331);
    QPainter p(&image);
    // The caption "ENTER YOUR INITIALS" is a label over the plate at the top; the three
    // letters are printed into the black box in the middle (110, 58, 100 x 60).
    PaintKit::Well(p, QRect(20, 12, 280, 26), PaintKit::Shade(PaintKit::Deep(), -0.35));
    PaintKit::GoldFrame(p, QRect(107, 55, 106, 66));
    p.fillRect(QRect(110, 58, 100, 60), Qt::black);
    p.setRenderHint(QPainter::Antialiasing, true);
    for (int side = 0; side < 2; ++side) {
        const double cx = side == 0 ? 60 : 260;
        QPainterPath star;
        for (int i = 0; i < 10; ++i) {
            const double r = (i % 2 == 0) ? 16 : 7;
            const double a = -M_PI / 2 + i * M_PI / 5;
            const QPointF pt(cx + r * std::cos(a), 88 + r * std::sin(a));
            i == 0 ? star.moveTo(pt) : star.lineTo(pt);
        }
        star.closeSubpath();
        p.fillPath(star.translated(2, 2), QColor(0, 0, 0, 150));
        QLinearGradient g(0, 72, 0, 104);
        g.setColorAt(0, PaintKit::GoldLight());
        g.setColorAt(1, PaintKit::GoldDark());
        p.setPen(QPen(PaintKit::Ink(), 1.2));
        p.setBrush(g);
        p.drawPath(star);
    }
    PaintKit::Caption(p, QRect(0, 126, 320, 16), QStringLiteral("a new hiscore!"), PaintKit::Font(11, false),
                      PaintKit::TealBright());
    p.end();
    QPainter frame(&image);
    PaintKit::GoldFrame(frame, QRect(1, 1, 318, 148));
    return image;
}

QImage WindowPainter::Settings()
{
    QImage image = Backdrop(460, 420, 341);
    QPainter p(&image);
    QFont font = PaintKit::Font(22, true);
    font.setLetterSpacing(QFont::AbsoluteSpacing, 3);
    PaintKit::Title(p, QRect(0, 8, 460, 34), QStringLiteral("SETTINGS"), font, PaintKit::GoldLight(),
                    PaintKit::GoldDark());
    Ornament(p, 20, 440, 46);
    // The controls stand on a calm, slightly raised field; the close button sits in the
    // well at the bottom (191, 386, 78 x 21).
    QRect field(12, 54, 436, 318);
    p.fillRect(field, QColor(255, 255, 255, 10));
    PaintKit::Raised(p, field, 1, PaintKit::Panel());
    PaintKit::Well(p, QRect(188, 383, 84, 27), PaintKit::Ink());
    p.end();
    QPainter frame(&image);
    PaintKit::GoldFrame(frame, QRect(1, 1, 458, 418));
    return image;
}

QImage WindowPainter::Bonus()
{
    QImage image = Backdrop(500, 500, 351);
    QPainter p(&image);
    QFont font = PaintKit::Font(34, true);
    PaintKit::Title(p, QRect(0, 22, 500, 52), QStringLiteral("LEVEL CLEARED!"), font, PaintKit::GoldLight(),
                    PaintKit::GoldDark());
    Ornament(p, 60, 440, 84);
    QFont caption = PaintKit::Font(14, true);
    caption.setLetterSpacing(QFont::AbsoluteSpacing, 2);
    const QString captions[3] = {QStringLiteral("BONUS PER STEP"), QStringLiteral("STEPS"),
                                 QStringLiteral("LEVEL BONUS")};
    const QString signs[2] = {QStringLiteral("\u00D7"), QStringLiteral("=")};
    for (int i = 0; i < 3; ++i) {
        const int top = BonusRowTops[i];
        PaintKit::Caption(p, QRect(0, top - 28, 500, 22), captions[i], caption, PaintKit::TealBright());
        // The band: gold rims outside, and inside exactly the colour of the digits' ground,
        // since the three number holders take the colour of their own top left pixel.
        p.fillRect(QRect(0, top - 3, 500, 3), PaintKit::GoldDark());
        p.fillRect(QRect(0, top - 3, 500, 1), PaintKit::GoldLight());
        p.fillRect(QRect(0, top + BonusRowHeight, 500, 3), PaintKit::GoldDark());
        p.fillRect(QRect(0, top + BonusRowHeight, 500, 1), PaintKit::Gold());
        p.fillRect(QRect(0, top, 500, BonusRowHeight), PaintKit::BonusBand());
        if (i < 2) {
            PaintKit::Title(p, QRect(0, top + BonusRowHeight + 6, 500, 34), signs[i], PaintKit::Font(28, true),
                            PaintKit::GoldLight(), PaintKit::GoldDark());
        }
    }
    return image;
}
