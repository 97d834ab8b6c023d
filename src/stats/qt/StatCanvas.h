#pragma once
// StatCanvas: the few drawing operations the statistics list and its printout are written
// in, with a pen position (CurrentX, CurrentY) that printing moves the way the list's
// layout counts on: a printed text leaves CurrentX at 0 and CurrentY one line lower, a
// filled box leaves the pen at its second corner.
//
// Coordinates are in a unit of the caller's choice: pixels on the screen, millimetres on
// paper. Only positions are converted; the font keeps its size in points on the device,
// so a 10-point title is 10 points on any printer (a painter scaled to millimetres would
// scale the font with it).
#include <QColor>
#include <QFont>
#include <QSizeF>

#include <string>

class QPainter;

namespace tolva {

class StatCanvas {
public:
    // `painter` is active on its device; `deviceUnitsPerUnit` is how many device pixels
    // make one unit; `size` is the drawable area in units. With `wholeLines` a line of
    // text is a whole number of units high, as on the screen, where rows of a fractional
    // height would blur the bands.
    StatCanvas(QPainter& painter, double deviceUnitsPerUnit, QSizeF size, bool wholeLines = false);

    double CurrentX = 0;
    double CurrentY = 0;

    double ScaleWidth() const { return size_.width(); }
    double ScaleHeight() const { return size_.height(); }

    // Width and line height of a text in the present font, in units.
    double TextWidth(const std::string& text) const;
    double TextHeight(const std::string& text) const;

    // Font size in points, and weight.
    double FontSize() const;
    void SetFontSize(double points);
    void SetFontBold(bool bold);
    void SetFont(const QFont& font);
    void SetForeColor(const QColor& colour) { foreColor_ = colour; }

    // Draws 8-bit `text` with its top at the pen, then moves the pen to the start of the
    // next line.
    void Print(const std::string& text);
    // A box filled with `colour` from corner to corner; the pen stays at (x2, y2).
    void FillBox(double x1, double y1, double x2, double y2, const QColor& colour);
    // A line of the thinnest pen the device draws; the pen position does not move.
    void DrawLine(double x1, double y1, double x2, double y2, const QColor& colour);

private:
    QPainter& painter_;
    double unit_;
    QSizeF size_;
    bool wholeLines_;
    QColor foreColor_{0, 0, 0};
};

} // namespace tolva
