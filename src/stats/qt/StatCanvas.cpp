#include "stats/qt/StatCanvas.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPen>

#include <cmath>

namespace tolva {

StatCanvas::StatCanvas(QPainter& painter, double deviceUnitsPerUnit, QSizeF size, bool wholeLines)
    : painter_(painter), unit_(deviceUnitsPerUnit), size_(size), wholeLines_(wholeLines) {}

double StatCanvas::TextWidth(const std::string& text) const {
    const QFontMetricsF metrics(painter_.font(), painter_.device());
    return metrics.horizontalAdvance(QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()))) / unit_;
}

double StatCanvas::TextHeight(const std::string&) const {
    // One line of text, whatever its characters: the font's full line height.
    const double height = QFontMetricsF(painter_.font(), painter_.device()).height() / unit_;
    return wholeLines_ ? std::round(height) : height;
}

double StatCanvas::FontSize() const {
    const QFont font = painter_.font();
    if (font.pointSizeF() > 0) return font.pointSizeF();
    // A font sized in pixels: its size in points on this device.
    const int dpi = painter_.device() ? painter_.device()->logicalDpiY() : 96;
    return font.pixelSize() * 72.0 / dpi;
}

void StatCanvas::SetFontSize(double points) {
    QFont font = painter_.font();
    font.setPointSizeF(points);
    painter_.setFont(font);
}

void StatCanvas::SetFontBold(bool bold) {
    QFont font = painter_.font();
    font.setBold(bold);
    painter_.setFont(font);
}

void StatCanvas::SetFont(const QFont& font) { painter_.setFont(font); }

void StatCanvas::Print(const std::string& text) {
    const QFontMetricsF metrics(painter_.font(), painter_.device());
    painter_.setPen(foreColor_);
    painter_.drawText(QPointF(CurrentX * unit_, CurrentY * unit_ + metrics.ascent()),
                      QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size())));
    CurrentX = 0;
    CurrentY += TextHeight(text);
}

void StatCanvas::FillBox(double x1, double y1, double x2, double y2, const QColor& colour) {
    const QRectF box(QPointF(x1 * unit_, y1 * unit_), QPointF(x2 * unit_, y2 * unit_));
    painter_.fillRect(box.normalized(), colour);
    CurrentX = x2;
    CurrentY = y2;
}

void StatCanvas::DrawLine(double x1, double y1, double x2, double y2, const QColor& colour) {
    QPen pen(colour);
    pen.setCosmetic(true);
    pen.setWidth(0);
    painter_.setPen(pen);
    painter_.drawLine(QPointF(x1 * unit_, y1 * unit_), QPointF(x2 * unit_, y2 * unit_));
}

} // namespace tolva
