// The statistics screen: its layout, the load with its progress window and hourglass, the
// list it draws, the scroll bar, its buttons and questions, and the menu entry's rules.
#include "stats/qt/OpenStatistics.h"
#include "stats/qt/StatListPainter.h"
#include "stats/qt/frmLoadingStat.h"
#include "stats/qt/frmStatistics.h"
#include "support/TempFolder.h"
#include "support/ZenkorModule.h"
#include "support/platform/HeadlessEventLoop.h"
#include "support/platform/qt/QtEventLoop.h"
#include "testsupport/ScriptedDialogs.h"

#include <QApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

using tolva::frmLoadingStat;
using tolva::frmStatistics;
using tolva::MessageButtons;
using tolva::MessageIcon;
using tolva::MessageResult;
using tolva::StatTable;
using tolva::testing::TempFolder;

namespace {

constexpr QRgb Teal = 0x176B69;

// Levels 1, 2 and 5 played; level 2 with a few numbers.
const char* const ThreeLevels =
    "[LEVEL1]\r\nPLAYED=1\r\n[LEVEL2]\r\nMAXCLICKS=30\r\nMINCLICKS=12\r\nPLAYED=4\r\nGAMEOVER=1\r\n"
    "[LEVEL5]\r\nSPELL3_min=2\r\nSPELL3_max=6\r\nPLAYED=2\r\n";

frmLoadingStat* LoadingWindow() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* loading = qobject_cast<frmLoadingStat*>(w); loading != nullptr && loading->isVisible()) return loading;
    return nullptr;
}

// The window forgotten by the test once it closed: deletions are delivered.
void DeliverDeletions() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

class StatisticsWindow : public ::testing::Test {
protected:
    void SetUp() override { dir.Write("stat.ini", ThreeLevels); }
    void TearDown() override {
        if (!open.isNull()) delete open.data();
        DeliverDeletions();
    }

    tolva::StatisticsEntry Entry(bool isDefault = true) {
        return {statPath, isDefault, dialogs, events, nullptr};
    }

    TempFolder dir;
    std::string statPath = dir / "stat.ini";
    tolva::ScriptedDialogs dialogs;
    tolva::HeadlessEventLoop events;
    QPointer<frmStatistics> open;
};

} // namespace

TEST_F(StatisticsWindow, LoadShowsProgressAndHourglassAndTheWindowOnlyAfterwards) {
    struct Seen {
        std::string caption;
        bool hourglass = false;
        bool windowVisible = false;
    };
    std::vector<Seen> seen;
    std::function<void()> sample = [&] {
        Seen s;
        if (const auto* loading = LoadingWindow()) s.caption = loading->Label1()->text().toStdString();
        s.hourglass = QGuiApplication::overrideCursor() != nullptr &&
                      QGuiApplication::overrideCursor()->shape() == Qt::WaitCursor;
        s.windowVisible = !open.isNull() && open->isVisible();
        seen.push_back(s);
        events.Post(sample);
    };
    events.Post(sample);
    tolva::OpenStatistics(open, Entry());

    ASSERT_EQ(seen.size(), 100u);
    for (std::size_t i = 0; i < seen.size(); ++i) {
        EXPECT_EQ(seen[i].caption, "Loading statistics for level:" + std::to_string(i + 1));
        EXPECT_TRUE(seen[i].hourglass) << i;
        EXPECT_FALSE(seen[i].windowVisible) << i;
    }
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(LoadingWindow(), nullptr);
    EXPECT_TRUE(open->isVisible());

    // "Refresh" runs the same sequence again and reads the file anew.
    dir.Write("stat.ini", "[LEVEL9]\nPLAYED=7\n");
    seen.clear();
    QTest::mouseClick(open->Command4(), Qt::LeftButton);
    EXPECT_EQ(seen.size(), 100u);
    EXPECT_EQ(open->Table().Row(8).Played, 7);
    EXPECT_EQ(open->Table().Row(1).Played, 0);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(StatisticsWindow, ListShowsBandsBarRuleAndTotals) {
    frmStatistics* window = tolva::OpenStatistics(open, Entry());
    ASSERT_NE(window, nullptr);
    const auto& list = window->List();
    const int h = list.LineHeight;
    ASSERT_GT(h, 8);
    const QImage& s = list.Surface;
    auto at = [&](int x, int y) { return s.pixel(x, y) & 0xFFFFFFu; };

    // Row 1 black, row 2 teal, row 3 black; the right edge carries no text.
    EXPECT_EQ(at(600, h / 2), 0x000000u);
    EXPECT_EQ(at(600, h + h / 2), Teal);
    EXPECT_EQ(at(600, 2 * h + h / 2), 0x000000u);
    // Levels 1, 2 and 5 played: the green bar ends with row 2.
    EXPECT_EQ(at(3, 0), 0x00FF00u);
    EXPECT_EQ(at(3, 2 * h - 1), 0x00FF00u);
    EXPECT_EQ(at(3, 2 * h + 1), 0x000000u);
    EXPECT_EQ(window->List().RowCount, 3);
    // The rule halfway down the blank line after row 100, then the totals half a line
    // lower, wholly on the surface.
    const int ruleY = 101 * h - h / 2;
    EXPECT_EQ(at(300, ruleY), 0xFFFFFFu);
    EXPECT_EQ(at(300, ruleY - 2), 0x000000u);
    EXPECT_EQ(s.height(), static_cast<int>(std::nearbyint(101.5 * h)) + h);
    bool text = false;
    for (int y = s.height() - h; y < s.height(); ++y)
        for (int x = 17; x < 600; ++x) text = text || qRed(s.pixel(x, y)) > 160;   // smoothed white digits
    EXPECT_TRUE(text);
}

TEST_F(StatisticsWindow, ScrollBarMovesTheListLiveAndEndsAtTheTotals) {
    frmStatistics* window = tolva::OpenStatistics(open, Entry());
    ASSERT_NE(window, nullptr);
    QScrollBar* bar = window->Scroller();
    EXPECT_EQ(bar->value(), 0);

    // A drag: every position moves the list, not only the last.
    std::vector<int> tops;
    QObject::connect(bar, &QScrollBar::valueChanged, window, [&](int) { tops.push_back(window->DS()->y()); });
    bar->setSliderDown(true);
    for (int position : {40, 80, 120}) bar->setSliderPosition(position);
    bar->setSliderDown(false);
    EXPECT_EQ(tops, (std::vector<int>{-40, -80, -120}));

    // At the end of the range the bottom of the totals row is the bottom of the frame.
    bar->setValue(bar->maximum());
    EXPECT_EQ(window->DS()->y() + window->DS()->height(), window->ListFrame()->height());

    // A click on the bare window draws the list again: back at the top, the same totals.
    const tolva::StatRecord totals = window->Table().Totals();
    for (int i = 0; i < 2; ++i) {
        QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, QPoint(620, 5));
        EXPECT_EQ(bar->value(), 0);
        EXPECT_EQ(window->DS()->y(), 0);
        EXPECT_EQ(window->Table().Totals(), totals);
    }
    // A click on the list itself is no click on the window.
    bar->setValue(50);
    QTest::mouseClick(window->DS(), Qt::LeftButton, Qt::NoModifier, QPoint(100, 100));
    EXPECT_EQ(bar->value(), 50);
}

TEST_F(StatisticsWindow, PrintAsksAndAlwaysSaysItWasSent) {
    setenv("CUPS_SERVER", (dir / "no-cups.sock").c_str(), 1);   // no printer here
    frmStatistics* window = tolva::OpenStatistics(open, Entry());
    ASSERT_NE(window, nullptr);

    dialogs.QueueMessageAnswer(MessageResult::Cancel);
    QTest::mouseClick(window->Command3(), Qt::LeftButton);
    ASSERT_EQ(dialogs.ShownBoxes().size(), 1u);
    EXPECT_EQ(dialogs.ShownBoxes()[0].Text, "Send statistics to printer ?");
    EXPECT_EQ(dialogs.ShownBoxes()[0].Buttons, MessageButtons::OkCancel);

    dialogs.QueueMessageAnswer(MessageResult::Ok);
    QTest::mouseClick(window->Command3(), Qt::LeftButton);
    ASSERT_EQ(dialogs.ShownBoxes().size(), 3u);
    EXPECT_EQ(dialogs.ShownBoxes()[2].Text, "Send to printer!");
    unsetenv("CUPS_SERVER");
}

TEST_F(StatisticsWindow, ClearAllAsksThenDeletesTheFileAndCloses) {
    frmStatistics* window = tolva::OpenStatistics(open, Entry());
    ASSERT_NE(window, nullptr);

    dialogs.QueueMessageAnswer(MessageResult::Cancel);
    QTest::mouseClick(window->Command2(), Qt::LeftButton);
    ASSERT_EQ(dialogs.ShownBoxes().size(), 1u);
    EXPECT_EQ(dialogs.ShownBoxes()[0].Text, "Are you sure ?");
    EXPECT_EQ(dialogs.ShownBoxes()[0].Title, "Clear all statistics?");
    EXPECT_EQ(dialogs.ShownBoxes()[0].Icon, MessageIcon::Exclamation);
    EXPECT_EQ(dialogs.ShownBoxes()[0].Buttons, MessageButtons::OkCancel);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(tolva::FileExists(statPath));

    dialogs.QueueMessageAnswer(MessageResult::Ok);
    QTest::mouseClick(window->Command2(), Qt::LeftButton);
    DeliverDeletions();
    EXPECT_TRUE(open.isNull());
    EXPECT_FALSE(tolva::FileExists(statPath));

    // The next menu choice finds no stat.ini and opens nothing.
    EXPECT_EQ(tolva::OpenStatistics(open, Entry()), nullptr);
    ASSERT_EQ(dialogs.ShownBoxes().size(), 3u);
    EXPECT_EQ(dialogs.ShownBoxes()[2].Text,
              "Currently there is no stat.ini file. You might need to check the option \"Log statistics\" in the "
              "settings dialog!");
    EXPECT_EQ(dialogs.ShownBoxes()[2].Icon, MessageIcon::Exclamation);
    EXPECT_TRUE(open.isNull());
}

TEST_F(StatisticsWindow, MenuEntryTellsAboutOtherSetsAndReusesAnOpenWindow) {
    frmStatistics* first = tolva::OpenStatistics(open, Entry(false));
    ASSERT_NE(first, nullptr);
    ASSERT_EQ(dialogs.ShownBoxes().size(), 1u);
    EXPECT_EQ(dialogs.ShownBoxes()[0].Text, "Levels statistics is for default levels only !");
    EXPECT_EQ(dialogs.ShownBoxes()[0].Icon, MessageIcon::Information);
    // The default set's numbers all the same.
    EXPECT_EQ(first->Table().Row(1).MaxClicks, 30);

    // Open already: the same window comes to the front, nothing is read again.
    dir.Write("stat.ini", "[LEVEL2]\nMAXCLICKS=99\n");
    frmStatistics* again = tolva::OpenStatistics(open, Entry());
    EXPECT_EQ(again, first);
    EXPECT_EQ(again->Table().Row(1).MaxClicks, 30);
    EXPECT_EQ(dialogs.ShownBoxes().size(), 1u);

    // "Close" releases it; the next choice makes and loads a new one.
    QTest::mouseClick(first->Command1(), Qt::LeftButton);
    DeliverDeletions();
    EXPECT_TRUE(open.isNull());
    frmStatistics* fresh = tolva::OpenStatistics(open, Entry());
    ASSERT_NE(fresh, nullptr);
    EXPECT_EQ(fresh->Table().Row(1).MaxClicks, 99);
}

TEST_F(StatisticsWindow, OnTheRealEventLoopALoadCannotBeClosedOrShownHalfWay) {
    // The game's own loop: the load's yields deliver Qt events, a click or a key among them.
    tolva::QtEventLoop qtEvents;
    const tolva::StatisticsEntry entry{statPath, true, dialogs, qtEvents, nullptr};

    // F5 again while the first load runs: the window stays hidden until that load is done.
    bool visibleAfterSecond = true;
    frmStatistics* second = nullptr;
    qtEvents.Post([&] {
        ASSERT_FALSE(open.isNull());
        ASSERT_TRUE(open->Loading());
        second = tolva::OpenStatistics(open, entry);
        visibleAfterSecond = open->isVisible();
    });
    frmStatistics* window = tolva::OpenStatistics(open, entry);
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(second, window);
    EXPECT_FALSE(visibleAfterSecond);
    EXPECT_TRUE(window->isVisible());

    // "Close" and the title bar's close during a Refresh are refused; the load ends whole.
    int closesTried = 0;
    qtEvents.Post([&] {
        ASSERT_TRUE(open->Loading());
        QTest::mouseClick(open->Command1(), Qt::LeftButton);
        EXPECT_FALSE(open->close());
        closesTried = 2;
    });
    QTest::mouseClick(window->Command4(), Qt::LeftButton);
    DeliverDeletions();
    EXPECT_EQ(closesTried, 2);
    ASSERT_FALSE(open.isNull());
    EXPECT_TRUE(open->isVisible());
    EXPECT_FALSE(open->Loading());
    EXPECT_EQ(LoadingWindow(), nullptr);
    EXPECT_EQ(open->Table().Row(1).MaxClicks, 30);

    // After the load "Close" works again.
    QTest::mouseClick(open->Command1(), Qt::LeftButton);
    DeliverDeletions();
    EXPECT_TRUE(open.isNull());
}
