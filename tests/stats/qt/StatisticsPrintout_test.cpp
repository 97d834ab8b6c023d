// The printout of the statistics, painted into a PDF through the same drawing code the
// printer gets, and read back with pdftotext (words and their boxes) and pdftoppm (the
// colours of the bands).
#include "CommandOutput.h"
#include "stats/StatTable.h"
#include "stats/qt/StatPages.h"
#include "stats/qt/StatPrintout.h"
#include "support/TempFolder.h"

#include <QImage>
#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>
#include <QRegularExpression>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

using tolva::StatTable;
using tolva::testing::CommandOutput;
using tolva::testing::TempFolder;

namespace {

const std::string Date = "23.11.2026";

bool HaveTool(const char* name) {
    return std::system((std::string("command -v ") + name + " >/dev/null 2>&1").c_str()) == 0;
}

// A4 pages with 5 mm margins, 3 mm at the bottom, as a printer's printable area. With
// these the end of page 1 comes where one more row would still fit, but not a row and
// the line a page keeps free under its last row.
QPageLayout PrintLayout() {
    return QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(5, 5, 5, 3), QPageLayout::Millimeter);
}

// Prints `table` into a PDF laid out as PrintLayout.
void PrintToPdf(StatTable& table, const std::string& file) {
    QPdfWriter writer(QString::fromStdString(file));
    writer.setResolution(600);
    writer.setPageLayout(PrintLayout());
    tolva::StatPages pages(writer);
    ASSERT_TRUE(pages.Active());
    tolva::PrintStatPages(table, pages, Date);
}

// The text of each page, laid out as on paper.
std::vector<std::string> PageTexts(const std::string& pdf) {
    const std::string text = CommandOutput("pdftotext -layout '" + pdf + "' -");
    std::vector<std::string> pages;
    std::size_t start = 0;
    for (std::size_t ff; (ff = text.find('\f', start)) != std::string::npos; start = ff + 1)
        pages.push_back(text.substr(start, ff - start));
    return pages;
}

struct Word {
    int page = 0;
    double top = 0;   // points from the top of the page
    double left = 0;
    std::string text;
};

// Every word of the PDF with its box, from pdftotext -bbox.
std::vector<Word> Words(const std::string& pdf) {
    const std::string html = CommandOutput("pdftotext -bbox '" + pdf + "' -");
    static const QRegularExpression pattern(
        R"re(<page |<word xMin="([\d.]+)" yMin="([\d.]+)" xMax="[\d.]+" yMax="[\d.]+">([^<]*)</word>)re");
    std::vector<Word> words;
    int page = 0;
    for (auto it = pattern.globalMatch(QString::fromStdString(html)); it.hasNext();) {
        const auto m = it.next();
        if (m.captured(0).startsWith("<page")) {
            ++page;
            continue;
        }
        words.push_back({page, m.captured(2).toDouble(), m.captured(1).toDouble(), m.captured(3).toStdString()});
    }
    return words;
}

// The colour of page `page` (from 1) at (x, y) in points.
QRgb ColourAt(const std::string& pdf, int page, double x, double y, const TempFolder& dir) {
    const std::string base = dir / ("page" + std::to_string(page));
    CommandOutput("pdftoppm -r 72 -png -singlefile -f " + std::to_string(page) + " -l " + std::to_string(page) + " '" + pdf +
        "' '" + base + "'");
    const QImage image(QString::fromStdString(base + ".png"));
    return image.pixel(static_cast<int>(x), static_cast<int>(y)) & 0xFFFFFFu;
}

StatTable AllPlayed() {
    StatTable table;
    for (int i = 0; i < StatTable::LevelCount; ++i) {
        table.Row(i).Played = 2;
        table.Row(i).MinClicks = static_cast<std::int16_t>(10 + i % 7);
        table.Row(i).GameOver = static_cast<std::int16_t>(i % 2);
    }
    return table;
}

class StatisticsPrintout : public ::testing::Test {
protected:
    void SetUp() override {
        if (!HaveTool("pdftotext") || !HaveTool("pdftoppm"))
            GTEST_SKIP() << "pdftotext and pdftoppm (poppler-utils) are needed to read the printout back";
    }
    TempFolder dir;
};

} // namespace

TEST_F(StatisticsPrintout, OnlyPlayedLevelsArePrintedWithTheirTotals) {
    StatTable table;
    table.Row(2).Played = 3;
    table.Row(2).MaxClicks = 41;
    table.Row(2).MinClicks = 17;
    table.Row(6).Played = 1;
    table.Row(6).MaxClicks = 9;
    table.Row(6).Spell[5].High = 4;
    table.Row(6).GameOver = 1;
    table.Row(4).MaxClicks = 777;   // never played: not printed, not added
    const std::string pdf = dir / "some.pdf";
    PrintToPdf(table, pdf);

    const auto pages = PageTexts(pdf);
    ASSERT_EQ(pages.size(), 1u);
    EXPECT_EQ(pages[0].find("777"), std::string::npos);   // title, date and page: the page-break test's

    // Lines: level 3, level 7, then the totals of the two (count 2, clicks 26 and 50).
    const auto words = Words(pdf);
    auto line = [&](const std::string& first) {
        std::vector<std::string> found;
        double top = -1;
        for (const auto& w : words)
            if (top < 0 && w.text == first && w.left < 40) top = w.top;
        for (const auto& w : words)
            if (top >= 0 && std::abs(w.top - top) < 2) found.push_back(w.text);
        return found;
    };
    EXPECT_EQ(line("3"), (std::vector<std::string>{"3", "17", "41", "0", "0", "0", "0", "0", "0", "0", "0", "0",
                                                    "0", "0", "0", "0", "3"}));
    EXPECT_EQ(line("2"), (std::vector<std::string>{"2", "17", "50", "0", "0", "0", "0", "0", "0", "0", "0", "0",
                                                    "0", "0", "4", "1", "4"}));
    // "Page 1" stands at the right edge of the printable area, on the title's line.
    double titleTop = -1, labelTop = -1, labelRight = 0;
    for (const auto& w : words) {
        if (w.text == "TOLVA") titleTop = w.top;
        if (w.text == "Page") labelTop = w.top;
        if (w.text == "1" && w.top < 40) labelRight = w.left;
    }
    EXPECT_NEAR(titleTop, labelTop, 1.0);
    EXPECT_GT(labelRight, 500);   // A4 is 595 points wide, the printable area ends 14 points earlier
}

TEST_F(StatisticsPrintout, HundredLevelsRunOverPagesAndTheBandsGoOn) {
    StatTable table = AllPlayed();
    const std::string pdf = dir / "all.pdf";
    PrintToPdf(table, pdf);

    const auto pages = PageTexts(pdf);
    ASSERT_GE(pages.size(), 2u);
    EXPECT_NE(pages[0].find("Page 1"), std::string::npos);
    EXPECT_NE(pages[1].find("Page 2"), std::string::npos);
    EXPECT_NE(pages[1].find("TOLVA II STATISTICS - " + Date), std::string::npos);
    EXPECT_EQ(table.Totals().Played, 200);
    EXPECT_EQ(table.Totals().GameOver, 50);

    // The first level on page 2 follows on from page 1 in the white / grey sequence.
    const auto words = Words(pdf);
    int firstOnPage2 = 0;
    double top = 0;
    for (const auto& w : words) {
        if (w.page == 2 && w.left < 40 && w.text.find_first_not_of("0123456789") == std::string::npos) {
            firstOnPage2 = std::stoi(w.text);
            top = w.top;
            break;
        }
    }
    ASSERT_GT(firstOnPage2, 1);
    const bool grey = (firstOnPage2 - 1) % 2 == 1;   // level 1 is white, level 2 grey
    EXPECT_EQ(ColourAt(pdf, 2, 20, top + 2, dir), grey ? 0xBEBEBEu : 0xFFFFFFu) << "level " << firstOnPage2;

    // Page 1 ends while a row still fits: it keeps a line free under its last row, and
    // the room left there is at least a row's pitch but less than two.
    std::vector<double> tops;
    int lastOnPage1 = 0;
    for (const auto& w : words)
        if (w.page == 1 && w.left < 40 && w.top > 40 && w.text.find_first_not_of("0123456789") == std::string::npos) {
            tops.push_back(w.top);
            lastOnPage1 = std::stoi(w.text);
        }
    ASSERT_GE(tops.size(), 2u);
    EXPECT_EQ(lastOnPage1 + 1, firstOnPage2);
    const double pitch = tops[1] - tops[0];
    const double printableBottom = PrintLayout().paintRect(QPageLayout::Point).bottom();
    const double free = printableBottom - (tops.back() + pitch);   // under the last row
    EXPECT_GE(free, pitch) << "pitch " << pitch;
    EXPECT_LT(free, 2 * pitch) << "pitch " << pitch;

    // The totals follow the last row and count all hundred levels.
    bool totals = false;
    for (const auto& w : words)
        if (w.text == "100" && w.left < 40) totals = true;
    EXPECT_TRUE(totals);
    EXPECT_NE(pages.back().find("200"), std::string::npos);
}

TEST_F(StatisticsPrintout, NothingPlayedPrintsOnePageWithZeroTotals) {
    StatTable table;
    table.Row(9).MinClicks = 5;   // not played: left out
    const std::string pdf = dir / "none.pdf";
    PrintToPdf(table, pdf);
    const auto pages = PageTexts(pdf);
    ASSERT_EQ(pages.size(), 1u);
    EXPECT_NE(pages[0].find("Page 1"), std::string::npos);
    int zeros = 0;
    for (const auto& w : Words(pdf)) zeros += w.text == "0" ? 1 : 0;
    EXPECT_EQ(zeros, 17);
}

TEST_F(StatisticsPrintout, NoPrinterPrintsNothingButTheTotalsAreThePrintersAllTheSame) {
    // A CUPS server that is not there: no default printer.
    setenv("CUPS_SERVER", (dir / "no-such-cups.sock").c_str(), 1);
    StatTable table = AllPlayed();
    table.Row(0).Played = 0;
    tolva::PrintStatToPrinter(table);
    EXPECT_EQ(table.Totals().Played, 198);

    // A device that cannot be written: the document is not active and nothing is drawn.
    QPdfWriter writer(QString::fromStdString(dir / "no-folder/x.pdf"));
    tolva::StatPages pages(writer);
    EXPECT_FALSE(pages.Active());
    tolva::PrintStatPages(table, pages, Date);
    EXPECT_EQ(table.Totals().Played, 198);
}
