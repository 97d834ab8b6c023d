#include "PaintKit.h"

#include <QLinearGradient>
#include <QRadialGradient>
#include <algorithm>
#include <cmath>

QColor PaintKit::BrickColor(int index)
{
    // Hues spread round the wheel and, as important, spread in lightness: the ten greys
    // run in even steps from umber (about 64) to silver (about 230), so that a player who
    // confuses two hues still sees two brightnesses, and the emblems settle the rest.
    static const QColor colours[10] = {
        QColor(218, 50, 48),   // 0 red, circle
        QColor(34, 84, 214),   // 1 blue, diamond
        QColor(96, 212, 70),   // 2 green, triangle
        QColor(252, 220, 60),  // 3 yellow, star
        QColor(150, 90, 226),  // 4 purple, heart
        QColor(252, 160, 44),  // 5 orange, square
        QColor(96, 232, 240),  // 6 cyan, plus
        QColor(226, 86, 176),  // 7 pink, crescent
        QColor(228, 232, 238), // 8 silver, saltire
        QColor(86, 58, 40),    // 9 umber, lightning
    };
    return colours[std::clamp(index, 0, 9)];
}

QColor PaintKit::Mix(const QColor& a, const QColor& b, double t)
{
    t = std::clamp(t, 0.0, 1.0);
    return QColor(static_cast<int>(std::lround(a.red() + (b.red() - a.red()) * t)),
                  static_cast<int>(std::lround(a.green() + (b.green() - a.green()) * t)),
                  static_cast<int>(std::lround(a.blue() + (b.blue() - a.blue()) * t)));
}

QColor PaintKit::Shade(const QColor& c, double amount)
{
    return amount >= 0 ? Mix(c, Qt::white, amount) : Mix(c, Qt::black, -amount);
}

double PaintKit::Luma(const QColor& c)
{
    return (0.2126 * c.red() + 0.7152 * c.green() + 0.0722 * c.blue()) / 255.0;
}

QImage PaintKit::NewImage(int width, int height, const QColor& fill)
{
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(fill);
    return image;
}

QFont PaintKit::Font(int pixelSize, bool bold, const QString& family)
{
    QFont font(family);
    font.setPixelSize(pixelSize);
    font.setBold(bold);
    font.setHintingPreference(QFont::PreferFullHinting);
    font.setStyleStrategy(QFont::PreferAntialias);
    return font;
}

void PaintKit::Raised(QPainter& p, const QRect& r, int depth, const QColor& base)
{
    p.save();
    p.setRenderHint(QPainter::Antialiasing, false);
    for (int i = 0; i < depth; ++i) {
        const QRect e = r.adjusted(i, i, -i, -i);
        const double k = 1.0 - 0.35 * i;
        p.setPen(Shade(base, 0.45 * k));
        p.drawLine(e.left(), e.top(), e.right() - 1, e.top());
        p.drawLine(e.left(), e.top(), e.left(), e.bottom() - 1);
        p.setPen(Shade(base, -0.5 * k));
        p.drawLine(e.left() + 1, e.bottom(), e.right(), e.bottom());
        p.drawLine(e.right(), e.top() + 1, e.right(), e.bottom());
    }
    p.restore();
}

void PaintKit::Well(QPainter& p, const QRect& r, const QColor& fill)
{
    p.save();
    p.setRenderHint(QPainter::Antialiasing, false);
    p.fillRect(r, fill);
    p.setPen(Shade(Deep(), -0.6));
    p.drawLine(r.left(), r.top(), r.right(), r.top());
    p.drawLine(r.left(), r.top(), r.left(), r.bottom());
    p.setPen(Shade(Deep(), -0.3));
    p.drawLine(r.left() + 1, r.top() + 1, r.right() - 1, r.top() + 1);
    p.drawLine(r.left() + 1, r.top() + 1, r.left() + 1, r.bottom() - 1);
    p.setPen(Shade(Teal(), 0.25));
    p.drawLine(r.left() + 1, r.bottom(), r.right(), r.bottom());
    p.drawLine(r.right(), r.top() + 1, r.right(), r.bottom());
    p.restore();
}

void PaintKit::PanelBox(QPainter& p, const QRect& r, const QColor& base)
{
    p.save();
    QLinearGradient g(r.topLeft(), r.bottomLeft());
    g.setColorAt(0.0, Shade(base, 0.10));
    g.setColorAt(1.0, Shade(base, -0.25));
    p.fillRect(r, g);
    p.setPen(Ink());
    p.setRenderHint(QPainter::Antialiasing, false);
    p.drawRect(r.adjusted(0, 0, -1, -1));
    Raised(p, r.adjusted(1, 1, -1, -1), 2, base);
    p.restore();
}

void PaintKit::GoldFrame(QPainter& p, const QRect& r)
{
    p.save();
    p.setRenderHint(QPainter::Antialiasing, false);
    p.setPen(Ink());
    p.drawRect(r.adjusted(-1, -1, 0, 0));
    p.setPen(GoldLight());
    p.drawLine(r.left(), r.top(), r.right() - 1, r.top());
    p.drawLine(r.left(), r.top(), r.left(), r.bottom() - 1);
    p.setPen(GoldDark());
    p.drawLine(r.left() + 1, r.bottom() - 1, r.right() - 1, r.bottom() - 1);
    p.drawLine(r.right() - 1, r.top() + 1, r.right() - 1, r.bottom() - 1);
    p.setPen(Gold());
    p.drawRect(r.adjusted(1, 1, -3, -3));
    p.restore();
}

void PaintKit::Rivet(QPainter& p, const QPoint& centre)
{
    p.save();
    p.setRenderHint(QPainter::Antialiasing, true);
    QRadialGradient g(centre.x() - 0.8, centre.y() - 0.8, 2.6);
    g.setColorAt(0.0, GoldLight());
    g.setColorAt(0.6, Gold());
    g.setColorAt(1.0, GoldDark());
    p.setPen(QPen(Ink(), 0.8));
    p.setBrush(g);
    p.drawEllipse(QPointF(centre.x() + 0.5, centre.y() + 0.5), 2.4, 2.4);
    p.restore();
}

void PaintKit::Title(QPainter& p, const QRect& r, const QString& text, const QFont& font,
                     const QColor& top, const QColor& bottom, int align)
{
    p.save();
    p.setRenderHint(QPainter::Antialiasing, true);
    QPainterPath path;
    const QFontMetricsF fm(font);
    double x = r.left();
    if (align & Qt::AlignHCenter) {
        x = r.left() + (r.width() - fm.horizontalAdvance(text)) / 2.0;
    } else if (align & Qt::AlignRight) {
        x = r.right() - fm.horizontalAdvance(text);
    }
    const double y = r.top() + (r.height() - fm.capHeight()) / 2.0 + fm.capHeight();
    path.addText(QPointF(x, y), font, text);

    p.translate(2, 2);
    p.fillPath(path, QColor(0, 0, 0, 150));
    p.translate(-2, -2);
    QLinearGradient g(0, y - fm.capHeight(), 0, y);
    g.setColorAt(0.0, top);
    g.setColorAt(1.0, bottom);
    p.setPen(QPen(Ink(), std::max(1.0, font.pixelSize() / 14.0), Qt::SolidLine, Qt::RoundCap,
                  Qt::RoundJoin));
    p.setBrush(g);
    p.drawPath(path);
    p.setPen(Qt::NoPen);
    p.fillPath(path, g);
    p.restore();
}

void PaintKit::Caption(QPainter& p, const QRect& r, const QString& text, const QFont& font,
                       const QColor& colour, int align)
{
    p.save();
    p.setFont(font);
    p.setPen(QColor(0, 0, 0, 170));
    p.drawText(r.translated(1, 1), align, text);
    p.setPen(colour);
    p.drawText(r, align, text);
    p.restore();
}

double PaintKit::Hash(int i, int seed)
{
    quint32 h = static_cast<quint32>(i) * 374761393u + static_cast<quint32>(seed) * 668265263u;
    h = (h ^ (h >> 13)) * 1274126177u;
    h ^= h >> 16;
    return (h & 0xFFFFFF) / static_cast<double>(0x1000000);
}

double PaintKit::Noise(double x, double y, int seed)
{
    const int xi = static_cast<int>(std::floor(x));
    const int yi = static_cast<int>(std::floor(y));
    const double fx = x - xi;
    const double fy = y - yi;
    auto corner = [seed](int cx, int cy) { return Hash(cx * 7919 + cy * 104729, seed); };
    const double sx = fx * fx * (3 - 2 * fx);
    const double sy = fy * fy * (3 - 2 * fy);
    const double top = corner(xi, yi) + (corner(xi + 1, yi) - corner(xi, yi)) * sx;
    const double bottom = corner(xi, yi + 1) + (corner(xi + 1, yi + 1) - corner(xi, yi + 1)) * sx;
    return top + (bottom - top) * sy;
}

double PaintKit::Fbm(double x, double y, int octaves, int seed)
{
    double sum = 0;
    double weight = 0.5;
    double total = 0;
    for (int o = 0; o < octaves; ++o) {
        sum += Noise(x, y, seed + o * 31) * weight;
        total += weight;
        x *= 2.03;
        y *= 2.03;
        weight *= 0.5;
    }
    return sum / total;
}

void PaintKit::Grain(QImage& image, const QRect& r, double amount, int seed)
{
    const QRect area = r.intersected(image.rect());
    for (int y = area.top(); y <= area.bottom(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = area.left(); x <= area.right(); ++x) {
            const double n = (Hash(x * 4099 + y, seed) - 0.5) * 2 * amount * 255;
            const QRgb c = line[x];
            auto adj = [n](int v) { return std::clamp(static_cast<int>(std::lround(v + n)), 0, 255); };
            line[x] = qRgba(adj(qRed(c)), adj(qGreen(c)), adj(qBlue(c)), qAlpha(c));
        }
    }
}
