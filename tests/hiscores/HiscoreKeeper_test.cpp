// The end-of-game entry on the virtual clock, the flashing tick by tick, and the load and
// save of a set's table.
#include "testsupport/RecordingHiscoreView.h"
#include "hiscores/HiscoreKeeper.h"
#include "support/TempFolder.h"
#include "support/ZenkorModule.h"
#include "support/platform/HeadlessEventLoop.h"
#include "testsupport/ScriptedDialogs.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

using tolva::HeadlessEventLoop;
using tolva::RecordingHiscoreView;
using tolva::HiscoreEntry;
using tolva::HiscoreKeeper;
using tolva::HiscoreLoad;
using tolva::Hiscores;
using tolva::testing::TempFolder;

namespace {

struct KeeperFixture {
    HeadlessEventLoop loop;
    RecordingHiscoreView view;
    HiscoreKeeper keeper{loop, view};

    KeeperFixture() {
        for (int i = 0; i < Hiscores::Places; ++i)
            keeper.Table()[i] = HiscoreEntry{"P" + std::to_string(i + 1), static_cast<std::int16_t>(i + 1), 1000.0 - 100 * i};
    }
};

struct Shown {
    std::int16_t place;
    std::int32_t colour;
    std::int32_t textColour;
};

void ExpectDrawing(const RecordingHiscoreView::Drawing& d, Shown expected) {
    EXPECT_EQ(d.HighlightPlace, expected.place);
    EXPECT_EQ(d.HighlightColor, expected.colour);
    EXPECT_EQ(d.HighlightTextColor, expected.textColour);
}

} // namespace

TEST(HiscoreKeeper, TheNewEntryFlashesTickByTickWhileTheInitialsAreTyped) {
    KeeperFixture f;
    std::vector<std::int64_t> keyTimes;
    f.view.BeforeEachKey = [&] {
        f.loop.Advance(500);
        keyTimes.push_back(f.loop.NowMs());
    };
    f.view.QueueKeys("ab");
    f.keeper.CheckIfHiScore(900, 7);  // ties with place 2

    // Ticks at 500, 1000 and 1500 (before "a", "b" and the closing Enter), then the
    // green drawing of the result.
    ASSERT_EQ(keyTimes, (std::vector<std::int64_t>{500, 1000, 1500}));
    const auto& drawn = f.view.Drawings();
    ASSERT_EQ(drawn.size(), 4u);
    ExpectDrawing(drawn[0], {2, HiscoreKeeper::Red, HiscoreKeeper::Black});
    ExpectDrawing(drawn[1], {2, 0, HiscoreKeeper::White});
    ExpectDrawing(drawn[2], {2, HiscoreKeeper::Red, HiscoreKeeper::Black});
    ExpectDrawing(drawn[3], {2, HiscoreKeeper::Green, HiscoreKeeper::White});
    // While it flashes the entry says "***"; the old second place stands third.
    EXPECT_EQ(drawn[0].Rows[1].Name, "***");
    EXPECT_EQ(drawn[0].Rows[1].Level, "7");
    EXPECT_EQ(drawn[0].Rows[1].Score, "000.000.900");
    EXPECT_EQ(drawn[0].Rows[2].Name, "P2");
    EXPECT_EQ(drawn[0].Rows[9].Name, "P9");  // the old tenth dropped off
    EXPECT_EQ(drawn[3].Rows[1].Name, "AB ");
    EXPECT_EQ(drawn[3].Rows[1].Place, " 2");
    EXPECT_EQ(drawn[3].Rows[9].Place, "10");
    EXPECT_EQ(f.view.ShownInitials(), (std::vector<std::string>{"A", "AB", "AB "}));

    EXPECT_EQ(f.keeper.EnteredInitials, "AB ");
    EXPECT_EQ(f.keeper.HighlightedPlace, 2);
    EXPECT_EQ(f.keeper.Table()[1], (HiscoreEntry{"AB ", 7, 900}));
    EXPECT_FALSE(f.keeper.FlashTimer().Enabled());
    f.loop.Advance(5000);
    EXPECT_EQ(f.view.Drawings().size(), 4u);

    // The flash goes on where it stopped: after three ticks the next entry starts black.
    f.view.QueueKeys("xyz");
    f.keeper.CheckIfHiScore(5000, 9);
    ExpectDrawing(f.view.Drawings()[4], {1, 0, HiscoreKeeper::White});
    EXPECT_EQ(f.keeper.Table()[0], (HiscoreEntry{"XYZ", 9, 5000}));
    EXPECT_EQ(f.keeper.Table()[2], (HiscoreEntry{"AB ", 7, 900}));
}

TEST(HiscoreKeeper, NoPlaceMeansNoWindowAndEnterAloneGivesBlanks) {
    KeeperFixture f;
    const Hiscores before = f.keeper.Table();
    f.keeper.CheckIfHiScore(0, 3);
    f.keeper.CheckIfHiScore(50, 3);
    EXPECT_EQ(f.view.InitialsAsked(), 0);
    EXPECT_TRUE(f.view.Drawings().empty());
    EXPECT_EQ(f.keeper.Table().Entries, before.Entries);
    EXPECT_EQ(f.keeper.CheckHiscorePlace(100), 10);

    // The last place: nothing moves, no time passes, Enter gives three blanks.
    f.keeper.CheckIfHiScore(100, 1);
    EXPECT_EQ(f.view.InitialsAsked(), 1);
    ASSERT_EQ(f.view.Drawings().size(), 1u);
    ExpectDrawing(f.view.Drawings()[0], {10, HiscoreKeeper::Green, HiscoreKeeper::White});
    EXPECT_EQ(f.keeper.Table()[9], (HiscoreEntry{"   ", 1, 100}));
    EXPECT_EQ(f.keeper.Table()[8], before[8]);
}

TEST(HiscoreKeeper, ATickWithNoPlaceSwitchesTheTimerOff) {
    KeeperFixture f;
    f.view.BeforeEachKey = [&] {
        f.keeper.HighlightedPlace = -1;
        f.loop.Advance(500);
        EXPECT_FALSE(f.keeper.FlashTimer().Enabled());
    };
    f.keeper.CheckIfHiScore(2000, 4);
    ASSERT_EQ(f.view.Drawings().size(), 1u);  // only the closing drawing
    ExpectDrawing(f.view.Drawings()[0], {-1, HiscoreKeeper::Green, HiscoreKeeper::White});
}

TEST(HiscoreKeeper, EachSetsTableGoesWithItsKeyAndACorruptedOneIsToldAndReset) {
    TempFolder dir;
    for (const char* set : {"default", "mine"}) std::filesystem::create_directories(dir / (std::string("levels/") + set));
    const std::string game = dir.Path() + "\\";
    KeeperFixture f;
    tolva::ScriptedDialogs dialogs;
    int labels = 0;
    const auto label = [&](const std::string&) { ++labels; };
    ASSERT_TRUE(f.keeper.SaveForSet(game, "levels\\default\\"));
    ASSERT_TRUE(f.keeper.SaveForSet(game, "levels\\mine\\"));
    const Hiscores saved = f.keeper.Table();
    f.keeper.Table().Reset();
    EXPECT_EQ(f.keeper.LoadForSet(game, "levels\\mine\\", label, dialogs), HiscoreLoad::Loaded);
    EXPECT_EQ(f.keeper.Table().Entries, saved.Entries);
    EXPECT_EQ(labels, 10);

    // A corrupted table: the box between the two callbacks, then ten free places.
    std::string bytes = dir.Read("levels/default/hiscore.hi");
    bytes.replace(bytes.find("\r\n[", bytes.size() - 40) - 1, 1, "\xFE");  // last score byte changed
    dir.Write("levels/default/hiscore.hi", bytes);
    std::vector<std::string> order;
    const auto load = f.keeper.LoadForSet(
        game, "levels\\default\\", label, dialogs,
        [&] { order.push_back("before:" + std::to_string(dialogs.ShownBoxes().size())); },
        [&] { order.push_back("after:" + std::to_string(dialogs.ShownBoxes().size())); });
    EXPECT_EQ(load, HiscoreLoad::Corrupted);
    EXPECT_EQ(order, (std::vector<std::string>{"before:0", "after:1"}));
    ASSERT_EQ(dialogs.ShownBoxes().size(), 1u);
    EXPECT_EQ(dialogs.ShownBoxes()[0].Title, "CORRUPTED DATA!");
    EXPECT_EQ(f.keeper.Table().Entries, Hiscores{}.Entries);
    ASSERT_EQ(f.view.Drawings().size(), 2u);  // each load draws the table plain
    ExpectDrawing(f.view.Drawings()[1], {-1, 0, 0});
    EXPECT_EQ(dir.Read("levels/default/hiscore.hi"), bytes);  // not rewritten by the reset
}
