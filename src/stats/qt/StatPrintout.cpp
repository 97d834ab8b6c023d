#include "stats/qt/StatPrintout.h"

#include "stats/StatTable.h"
#include "stats/qt/StatCanvas.h"
#include "stats/qt/StatPages.h"
#include "support/ZenkorModule.h"

#include <QDate>
#include <QLocale>
#include <QPrinter>
#include <QPrinterInfo>

#include <array>
#include <cmath>

namespace tolva {
namespace {

struct PrintedColumn {
    const char* label;
    double headerX;   // millimetres from the left of the printable area
    double rowX;
};

// The level's column first, then the 16 values in the order of ColumnValues.
constexpr std::array<PrintedColumn, 1 + StatColumnCount> Columns = {{
    {"LEVEL", 5, 8},    {"CLL", 24, 24},  {"CLH", 36, 36},  {"S0L", 50, 51},  {"S0H", 60, 61},
    {"S1L", 70, 71},    {"S1H", 80, 81},  {"S2L", 90, 91},  {"S2H", 100, 101}, {"S3L", 110, 111},
    {"S3H", 120, 121},  {"S4L", 130, 131}, {"S4H", 140, 141}, {"S5L", 150, 151}, {"S5H", 160, 161},
    {"Game Over", 170, 176}, {"Played", 190, 193},
}};

const QColor Black(0, 0, 0);
const QColor White(255, 255, 255);
const QColor LightGrey(190, 190, 190);

// A black bar 1 mm high across the page at the pen's height.
void HeaderBar(StatCanvas& page) {
    page.FillBox(0, page.CurrentY, page.ScaleWidth(), page.CurrentY + 1, Black);
}

// The level (or count) and the 16 values at line `y`, each at its column.
void PrintLine(StatCanvas& page, double y, std::int32_t first, const StatRecord& record) {
    const auto values = ColumnValues(record);
    for (std::size_t c = 0; c < Columns.size(); ++c) {
        page.CurrentY = y;
        page.CurrentX = Columns[c].rowX;
        page.Print(StatNumberText(c == 0 ? first : values[c - 1]));
    }
}

} // namespace

void PrintHeader(StatCanvas& page, const std::string& headerText, const std::string& dateText) {
    page.SetForeColor(Black);
    page.CurrentY = 3;
    const std::int16_t size = CInt(page.FontSize());
    page.SetFontSize(2.0 * size);
    page.SetFontBold(true);
    page.CurrentX = 3;
    double y = std::nearbyint(page.CurrentY);
    page.Print("TOLVA II STATISTICS - " + dateText);
    page.CurrentX = page.ScaleWidth() - page.TextWidth(headerText);
    page.CurrentY = y;
    page.Print(headerText);
    page.SetFontBold(false);
    page.SetFontSize(size);
    HeaderBar(page);
    y = std::nearbyint(page.CurrentY);
    for (const auto& column : Columns) {
        page.CurrentY = y;
        page.CurrentX = column.headerX;
        page.Print(column.label);
    }
    HeaderBar(page);
}

void PrintStatPages(StatTable& table, StatPages& pages, const std::string& dateText) {
    const std::int16_t printed = table.SumPlayedLevels();
    if (!pages.Active()) return;
    StatCanvas& page = pages.Canvas();
    int pageNumber = 1;
    bool band = false;
    PrintHeader(page, "Page 1", dateText);
    const double h = page.TextHeight("H");
    for (int level = 1; level <= StatTable::LevelCount; ++level) {
        if (!table.IsPlayed(level)) continue;
        if (page.ScaleHeight() <= page.CurrentY + 2 * h) {
            ++pageNumber;
            pages.NewPage();
            PrintHeader(page, "Page " + std::to_string(pageNumber), dateText);
        }
        const double y = std::nearbyint(page.CurrentY);
        page.FillBox(0, y, page.ScaleWidth(), y + h, band ? LightGrey : White);
        band = !band;
        PrintLine(page, y, level, table.Row(level - 1));
    }
    page.Print(" ");
    page.DrawLine(0, page.CurrentY - h / 2, page.ScaleWidth(), page.CurrentY - h / 2, Black);
    const double y = std::nearbyint(page.CurrentY + h / 2);
    PrintLine(page, y, printed, table.Totals());
    pages.EndDoc();
}

std::string TodayShortDate() {
    return QLocale::system().toString(QDate::currentDate(), QLocale::ShortFormat).toLatin1().toStdString();
}

void PrintStatToPrinter(StatTable& table) {
    const QPrinterInfo info = QPrinterInfo::defaultPrinter();
    if (info.isNull()) {
        table.SumPlayedLevels();
        return;
    }
    QPrinter printer(info, QPrinter::HighResolution);
    printer.setDocName("TOLVA II statistics");
    StatPages pages(printer);
    PrintStatPages(table, pages, TodayShortDate());
}

} // namespace tolva
