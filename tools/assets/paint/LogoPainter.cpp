#include "LogoPainter.h"

#include "PaintKit.h"

#include <QLinearGradient>
#include <QPainterPath>
#include <QRadialGradient>
#include <cmath>

int LogoPainter::Paint(QPainter& p, const QPointF& centre, int height)
{
    p.save();
    p.setRenderHint(QPainter::Antialiasing, true);
    QFont font = PaintKit::Font(static_cast<int>(std::lround(height * 1.38)), true);
    font.setLetterSpacing(QFont::PercentageSpacing, 96);
    const QFontMetricsF fm(font);
    const QString word = QStringLiteral("TOLVA");
    const double wordWidth = fm.horizontalAdvance(word);
    const double gem = height * 1.15;
    const double gap = height * 0.22;
    const double total = wordWidth + gap + gem;
    const double left = centre.x() - total / 2;
    const double baseline = centre.y() + fm.capHeight() / 2;

    QPainterPath path;
    path.addText(QPointF(left, baseline), font, word);
    // Shadow, thick dark rim, gold body, and a bright upper band.
    p.translate(height * 0.08, height * 0.1);
    p.fillPath(path, QColor(0, 0, 0, 140));
    p.translate(-height * 0.08, -height * 0.1);
    p.setPen(QPen(PaintKit::Ink(), std::max(2.0, height * 0.12), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.drawPath(path);
    QLinearGradient g(0, baseline - fm.capHeight(), 0, baseline);
    g.setColorAt(0.0, PaintKit::GoldLight());
    g.setColorAt(0.45, PaintKit::Gold());
    g.setColorAt(0.5, QColor(214, 146, 40));
    g.setColorAt(1.0, PaintKit::GoldDark());
    p.fillPath(path, g);
    p.setPen(QPen(QColor(255, 250, 220, 160), std::max(0.8, height * 0.03)));
    p.setBrush(Qt::NoBrush);
    p.drawPath(path.translated(0, -std::max(0.6, height * 0.02)).intersected(path));

    // The "II" gem: a rounded square of teal glass with the numeral cut into it.
    const QRectF gemBox(left + wordWidth + gap, baseline - fm.capHeight() - (gem - fm.capHeight()) / 2, gem, gem);
    QRadialGradient gg(gemBox.left() + gem * 0.3, gemBox.top() + gem * 0.25, gem);
    gg.setColorAt(0.0, QColor(150, 255, 244));
    gg.setColorAt(0.5, PaintKit::Teal());
    gg.setColorAt(1.0, QColor(8, 52, 56));
    p.setPen(QPen(PaintKit::Ink(), std::max(1.5, height * 0.08)));
    p.setBrush(gg);
    p.drawRoundedRect(gemBox, gem * 0.22, gem * 0.22);
    p.setPen(QPen(PaintKit::GoldLight(), std::max(1.0, height * 0.04)));
    p.setBrush(Qt::NoBrush);
    p.drawRoundedRect(gemBox.adjusted(height * 0.08, height * 0.08, -height * 0.08, -height * 0.08),
                      gem * 0.16, gem * 0.16);
    QFont numeral = PaintKit::Font(static_cast<int>(std::lround(gem * 0.72)), true, QStringLiteral("DejaVu Serif"));
    QPainterPath ii;
    const QFontMetricsF nm(numeral);
    ii.addText(QPointF(gemBox.center().x() - nm.horizontalAdvance(QStringLiteral("II")) / 2,
                       gemBox.center().y() + nm.capHeight() / 2),
               numeral, QStringLiteral("II"));
    p.fillPath(ii.translated(height * 0.04, height * 0.05), QColor(0, 30, 30, 200));
    p.fillPath(ii, QColor(240, 255, 250));
    p.restore();
    return static_cast<int>(std::lround(total));
}
