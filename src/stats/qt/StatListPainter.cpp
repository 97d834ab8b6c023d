#include "stats/qt/StatListPainter.h"

#include "stats/StatTable.h"
#include "stats/qt/StatCanvas.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace tolva {
namespace {

// x of the level number, then of the 16 values in the order of ColumnValues.
constexpr std::array<int, 1 + StatColumnCount> RowX = {13,  53,  92,  136, 163, 193, 220, 249, 277,
                                                       306, 334, 363, 392, 420, 448, 508, 564};
constexpr int CounterX = 17;
constexpr int BarWidth = 6;
constexpr int LinesMeasured = 102;

const QColor White(255, 255, 255);
const QColor Black(0, 0, 0);
const QColor Teal(23, 107, 105);
const QColor Green(0, 255, 0);

void PrintValues(StatCanvas& list, int y, const StatRecord& record) {
    const auto values = ColumnValues(record);
    for (std::size_t c = 0; c < values.size(); ++c) {
        list.CurrentY = y;
        list.CurrentX = RowX[c + 1];
        list.Print(StatNumberText(values[c]));
    }
}

void PaintRows(StatCanvas& list, const StatTable& table, int h) {
    const std::vector<int> bars = table.ProgressBars();
    bool band = false;
    for (int i = 1; i <= StatTable::LevelCount; ++i) {
        const int y = static_cast<int>(std::nearbyint(list.CurrentY));
        list.FillBox(0, y, list.ScaleWidth(), y + h, band ? Teal : Black);
        if (std::find(bars.begin(), bars.end(), i) != bars.end()) list.FillBox(0, 0, BarWidth, y + h, Green);
        band = !band;
        list.CurrentX = RowX[0];
        list.CurrentY = y;
        list.Print(StatNumberText(i));
        PrintValues(list, y, table.Row(i - 1));
    }
}

} // namespace

QFont StatListFont() {
    QFont font("Liberation Sans");
    font.setPixelSize(11);
    return font;
}

StatList PaintStatList(StatTable& table, const QFont& font, int width) {
    StatList result;
    result.RowCount = table.SumAllLevels();
    const int h = QFontMetrics(font).height();
    result.LineHeight = h;
    result.MeasuredHeight = LinesMeasured * h;
    // The totals start half a line below the blank line after the rows, and end a line later.
    const int totalsY = static_cast<int>(std::nearbyint((StatTable::LevelCount + 1) * h + h / 2.0));
    result.Surface = QImage(width, totalsY + h, QImage::Format_RGB32);
    result.Surface.fill(Black);

    QPainter painter(&result.Surface);
    painter.setFont(font);
    StatCanvas list(painter, 1.0, QSizeF(width, result.Surface.height()), true);
    list.SetForeColor(White);
    PaintRows(list, table, h);
    list.Print(" ");
    const int ruleY = static_cast<int>(list.CurrentY - h / 2.0);
    list.FillBox(0, ruleY, list.ScaleWidth(), ruleY + 1, White);
    list.CurrentX = CounterX;
    list.CurrentY = totalsY;
    list.Print(std::to_string(result.RowCount));
    PrintValues(list, totalsY, table.Totals());
    painter.end();
    return result;
}

} // namespace tolva
