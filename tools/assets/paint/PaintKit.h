#pragma once
// The one palette and the few drawing habits that every picture of the game shares.
//
// The look: deep teal-black panels, the teal of the spell caption and of the hiscore bars,
// gold for titles and frames, light always from the top left. A raised thing has a light
// top and left edge and a dark bottom and right edge; a recessed well the other way round.
// Bevels are one or two whole pixels wide and never anti-aliased, so that they stay crisp
// at the small sizes of the game. Texture comes from a seeded value noise, so that every
// build paints the very same pixels.
#include <QColor>
#include <QFont>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QRect>
#include <QString>

class PaintKit {
public:
    // Palette of the frames, panels and texts.
    static QColor Ink() { return QColor(6, 17, 20); }
    static QColor Deep() { return QColor(11, 33, 38); }
    static QColor Panel() { return QColor(20, 55, 60); }
    static QColor PanelLight() { return QColor(37, 89, 92); }
    static QColor Teal() { return QColor(34, 116, 113); }
    static QColor TealBright() { return QColor(24, 223, 222); }
    static QColor Gold() { return QColor(242, 190, 72); }
    static QColor GoldDark() { return QColor(150, 96, 22); }
    static QColor GoldLight() { return QColor(255, 238, 170); }
    static QColor Cream() { return QColor(236, 244, 236); }
    // The flat colour behind the digits of the bonus count; its rows on the bonus screen
    // have exactly this colour, so that the digit pictures sit on it without a seam.
    static QColor BonusBand() { return QColor(9, 27, 33); }

    // The ten brick colours; each also has an emblem of its own (see Emblem).
    static QColor BrickColor(int index);

    static QColor Mix(const QColor& a, const QColor& b, double t);
    // amount > 0 mixes towards white, amount < 0 towards black.
    static QColor Shade(const QColor& c, double amount);
    static double Luma(const QColor& c);

    static QImage NewImage(int width, int height, const QColor& fill);
    static QFont Font(int pixelSize, bool bold, const QString& family = QStringLiteral("DejaVu Sans"));

    // A raised bevel of `depth` pixels on the inside of r (light top left, dark bottom right).
    static void Raised(QPainter& p, const QRect& r, int depth, const QColor& base);
    // A recessed well: dark top left, light bottom right, filled with `fill`.
    static void Well(QPainter& p, const QRect& r, const QColor& fill);
    // A framed, slightly lit panel: outline, bevel, vertical gradient and fine grain.
    static void PanelBox(QPainter& p, const QRect& r, const QColor& base);
    // A thin gold frame line around r, lit from the top left.
    static void GoldFrame(QPainter& p, const QRect& r);
    // Small gold rivet, used at the corners of frames.
    static void Rivet(QPainter& p, const QPoint& centre);

    // Text filled with a vertical gradient, with a dark outline and a drop shadow.
    static void Title(QPainter& p, const QRect& r, const QString& text, const QFont& font,
                      const QColor& top, const QColor& bottom, int align = Qt::AlignCenter);
    // Plain text with a one-pixel shadow down and right.
    static void Caption(QPainter& p, const QRect& r, const QString& text, const QFont& font,
                        const QColor& colour, int align = Qt::AlignCenter);

    // Smooth value noise in [0, 1] and its fractal sum; the seed picks an independent field.
    static double Noise(double x, double y, int seed);
    static double Fbm(double x, double y, int octaves, int seed);
    // Adds a fine brightness grain to the pixels of r.
    static void Grain(QImage& image, const QRect& r, double amount, int seed);
    // A small deterministic pseudo-random number in [0, 1) for index i.
    static double Hash(int i, int seed);
};
