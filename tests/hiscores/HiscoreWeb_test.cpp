// The rules of the three hiscore entries of the Options menu, without a window: who is
// refused with which box, what the save-file box is asked, and what an export writes.
#include "hiscores/HiscoreWeb.h"
#include "hiscores/Hiscores.h"
#include "support/TempFolder.h"
#include "support/ZenkorModule.h"
#include "testsupport/ScriptedDialogs.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

using namespace tolva;
using tolva::testing::TempFolder;

namespace {

constexpr const char* NoHiscores = "There is currently no hiscores to export!";

Hiscores PlayedTable() {
    Hiscores table;
    table[0] = {"ANN", 12, 45000};
    table[1] = {"BOB", 7, 9000};
    return table;
}

// The menu's parts around a table, by default one with two scores.
struct Menu {
    explicit Menu(Hiscores table = PlayedTable()) : Table(std::move(table)) {}

    Hiscores Table;
    ScriptedDialogs Boxes;
    std::vector<bool> Opened;   // one element per browser window, true for a submission
    OpenWebBrowser Open = [this](bool submit) { Opened.push_back(submit); };

    HiscoreMenuState State(bool isDefault, bool gameRunning) {
        return {Table, isDefault ? DefaultSetKey : OtherSetKey, isDefault, gameRunning, Boxes};
    }
};

void ExpectOneBox(const ScriptedDialogs& boxes, const std::string& text, MessageIcon icon) {
    ASSERT_EQ(boxes.ShownBoxes().size(), 1u);
    EXPECT_EQ(boxes.ShownBoxes()[0].Text, text);
    EXPECT_EQ(boxes.ShownBoxes()[0].Icon, icon);
    EXPECT_FALSE(boxes.ShownBoxes()[0].SaveFile);
}

} // namespace

TEST(HiscoreWeb, ATableWithoutAScoreAboveZeroIsRefusedByBothWithTheExportMessage) {
    // Ten free places, and places with names but no positive score, are all "empty".
    Hiscores named;
    named[0] = {"ZED", 3, 0};
    named[1] = {"NEG", 1, -5};
    for (const Hiscores& table : {Hiscores{}, named}) {
        Menu m(table);
        EXPECT_EQ(ExportHiscore(m.State(true, false), "/desk"), ExportOutcome::NoHiscores);
        ExpectOneBox(m.Boxes, NoHiscores, MessageIcon::Exclamation);

        Menu s(table);
        EXPECT_EQ(SubmitInternetHiscores(s.State(true, false), s.Open), SubmitOutcome::NoHiscores);
        ExpectOneBox(s.Boxes, NoHiscores, MessageIcon::Exclamation);
        EXPECT_TRUE(s.Opened.empty());
    }
}

TEST(HiscoreWeb, AnotherSetSilencesTheSubmissionAndTheExportSaysWhy) {
    Menu submit;
    EXPECT_EQ(SubmitInternetHiscores(submit.State(false, false), submit.Open), SubmitOutcome::OtherSet);
    EXPECT_TRUE(submit.Boxes.ShownBoxes().empty());
    EXPECT_TRUE(submit.Opened.empty());

    // The set is looked at before the table: an empty table of another set says nothing either.
    Menu emptyOther{Hiscores{}};
    EXPECT_EQ(SubmitInternetHiscores(emptyOther.State(false, false), emptyOther.Open), SubmitOutcome::OtherSet);
    EXPECT_TRUE(emptyOther.Boxes.ShownBoxes().empty());

    Menu exportOther;
    EXPECT_EQ(ExportHiscore(exportOther.State(false, false), "/desk"), ExportOutcome::OtherSet);
    ExpectOneBox(exportOther.Boxes, "You can only export hiscores from the [default] level-set.",
                 MessageIcon::Information);

    // "Show Internet hiscores" asks nothing, whatever the set and the table.
    Menu show;
    ShowInternetHiscores(show.Open);
    EXPECT_EQ(show.Opened, std::vector<bool>{false});
    EXPECT_TRUE(show.Boxes.ShownBoxes().empty());
}

TEST(HiscoreWeb, DuringAGameTheSubmissionRefusesFirstAndTheShowingOpens) {
    Menu m;
    // The running game is told before anything else, also in another set.
    for (const bool isDefault : {true, false}) {
        ScriptedDialogs boxes;
        HiscoreMenuState state{m.Table, DefaultSetKey, isDefault, true, boxes};
        EXPECT_EQ(SubmitInternetHiscores(state, m.Open), SubmitOutcome::GameRunning);
        ExpectOneBox(boxes,
                     "You can't submit hiscores while you are playing.\r\nYou must wait untill you are game over, "
                     "or click on \"END GAME\" in the game menu.",
                     MessageIcon::Exclamation);
    }
    EXPECT_TRUE(m.Opened.empty());
    ShowInternetHiscores(m.Open);
    EXPECT_EQ(SubmitInternetHiscores(m.State(true, false), m.Open), SubmitOutcome::Opened);
    EXPECT_EQ(m.Opened, (std::vector<bool>{false, true}));
}

TEST(HiscoreWeb, ExportAsksForAFileOnTheDesktopAndWritesTheTableThere) {
    TempFolder dir;
    Menu m;
    m.Table[2] = {"Q\"<b>", 3, 700};

    // Cancelled: nothing is written and nothing more is said.
    EXPECT_EQ(ExportHiscore(m.State(true, false), dir.Path()), ExportOutcome::Cancelled);
    ASSERT_EQ(m.Boxes.ShownBoxes().size(), 1u);
    const ScriptedDialogs::Shown& box = m.Boxes.ShownBoxes()[0];
    EXPECT_TRUE(box.SaveFile);
    EXPECT_EQ(box.Request.Title, "Export hiscore-file");
    EXPECT_EQ(box.Request.Filter, "Tolva hiscore-file|*.hi");
    EXPECT_EQ(box.Request.InitialFolder, dir.Path());
    EXPECT_TRUE(box.Request.OverwritePrompt);
    EXPECT_EQ(dir.EntryCount(), 0u);

    // Chosen: the file is hiscore.hi's form with the default set's key; an old file there
    // is replaced, and no temporary file stays. The box gave a native path: its backslash
    // is a character of the name, not a folder.
    dir.Write("sub\\mine.hi", "old bytes");
    m.Boxes.QueueSaveFileAnswer(dir / "sub\\mine.hi");
    EXPECT_EQ(ExportHiscore(m.State(true, false), dir.Path()), ExportOutcome::Saved);
    EXPECT_EQ(m.Boxes.ShownBoxes().size(), 2u);
    EXPECT_EQ(dir.Read("sub\\mine.hi"), m.Table.FileBytes(DefaultSetKey).value());
    EXPECT_EQ(dir.EntryCount(), 1u);

    // A file that cannot be written says nothing, as no failed save of a table does, and
    // nothing is left behind.
    m.Boxes.QueueSaveFileAnswer(dir / "no-such-folder/x.hi");
    EXPECT_EQ(ExportHiscore(m.State(true, false), dir.Path()), ExportOutcome::NotWritten);
    EXPECT_EQ(m.Boxes.ShownBoxes().size(), 3u);
    EXPECT_EQ(dir.EntryCount(), 1u);
}
