// The group under the pointer and play from the keyboard, on a small board whose groups
// are known: what is outlined must be exactly what a click there takes, and nothing may
// be outlined where a click would take nothing or the board does not wait for a click.
#include "session/BoardFocus.h"
#include "session/LevelCodes.h"

#include "session/SessionFixture.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace tolva;
using namespace tolva::testing;

namespace {

// Holes at (0,0), a spell lying at (2,1); groups: the 1s (3), the upper 2s (2), the 3s
// (5), the 4s (3), the 5s (3); lone bricks at (2,2), (3,4) and (4,4).
const std::vector<std::string> Board5 = {
    ".2...",
    "12a.3",
    "11233",
    "44533",
    "45512",
};

class MarksRecorder final : public BoardMarksView {
public:
    void ShowMarks(const BoardMarks& marks) override { Shown.push_back(marks); }
    std::vector<BoardMarks> Shown;
};

// The focus is the one the game's builder hangs on its board.
struct FocusFixture : SessionFixture {
    FocusFixture() : Focus(Built.Focus()) {
        Focus.SetMarksView(&Marks);
        SetLevel(1, Board5);
    }
    std::vector<std::pair<int, int>> Group() const {
        std::vector<std::pair<int, int>> cells;
        for (const BoardCell& c : Focus.Marks().Group) cells.emplace_back(c.X, c.Y);
        std::sort(cells.begin(), cells.end());
        return cells;
    }
    std::size_t GroupAt(int x, int y) {
        Focus.PointerAt(x, y);
        Focus.Refresh();
        return Focus.Marks().Group.size();
    }
    BoardFocus& Focus;
    MarksRecorder Marks;
};

} // namespace

TEST(BoardFocus, TheOutlineIsWhatAClickWouldTakeAndNothingElse) {
    FocusFixture f;
    EXPECT_EQ(f.GroupAt(4, 2), 0u);   // no game yet: the board waits for no click

    ASSERT_TRUE(f.Session.NewGame(1));
    EXPECT_EQ(f.GroupAt(4, 2), 5u);
    EXPECT_EQ(f.Group(), (std::vector<std::pair<int, int>>{{3, 2}, {3, 3}, {4, 1}, {4, 2}, {4, 3}}));
    EXPECT_EQ(f.Label(SessionLabel::Group), "5 BRICKS = 25");
    EXPECT_EQ(f.Marks.Shown.back(), f.Focus.Marks());
    // A move inside the same cell changes nothing, and shows nothing again.
    const std::size_t shown = f.Marks.Shown.size();
    f.Focus.PointerAt(4, 2);
    EXPECT_EQ(f.Marks.Shown.size(), shown);

    // Nothing on a lone brick, a spell, a hole, or off the board.
    for (auto [x, y] : std::vector<std::pair<int, int>>{{2, 2}, {3, 4}, {4, 4}, {2, 1}, {0, 0}, {-1, 2}, {5, 0}, {2, 7}})
        EXPECT_EQ(f.GroupAt(x, y), 0u) << x << "," << y;
    EXPECT_EQ(f.Label(SessionLabel::Group), "");

    // The points foretold are the points the click scores.
    EXPECT_EQ(f.GroupAt(0, 1), 3u);
    const double foretold = f.Focus.Marks().Points();
    f.Click(0, 1);
    EXPECT_EQ(f.Session.Score, foretold);
    // After the click and its closing up the pointer's cell is looked at afresh: the 1s
    // are gone and the two 2s from above have fallen beside the lone 2 at (2, 2).
    f.Focus.Refresh();
    EXPECT_EQ(f.Focus.Marks().Group.size(), 0u);   // (0, 1) is a hole now
    EXPECT_EQ(f.GroupAt(1, 2), 3u);

    // Not while a spell is armed; back when it is put away.
    f.Session.SpellStock[SpellGun] = 1;
    f.Session.sp_Click(SpellGun);
    f.Focus.Refresh();
    EXPECT_EQ(f.Focus.Marks().Group.size(), 0u);
    f.Session.ActiveSpell_Click();
    f.Focus.Refresh();
    EXPECT_EQ(f.Focus.Marks().Group.size(), 3u);

    // Switched off, nothing is outlined and the line is empty; switched on, it is back.
    f.Focus.SetShowGroup(false);
    EXPECT_FALSE(f.Settings.ShowGroup);
    EXPECT_EQ(f.Focus.Marks().Group.size(), 0u);
    EXPECT_EQ(f.Label(SessionLabel::Group), "");
    f.Focus.SetShowGroup(true);
    EXPECT_EQ(f.Label(SessionLabel::Group), "3 BRICKS = 9");

    // The pointer leaving the board takes the outline with it.
    f.Focus.PointerLeft();
    EXPECT_EQ(f.Focus.Marks().Group.size(), 0u);
}

TEST(BoardFocus, NothingIsOutlinedWhileARemovalWaitsToCloseUp) {
    FocusFixture f;
    f.Board.AniDraw = true;
    f.Board.SetUpdateDelay(200);
    ASSERT_TRUE(f.Session.NewGame(1));
    EXPECT_EQ(f.GroupAt(0, 3), 3u);   // the 4s
    f.Click(4, 2);                    // the 3s go, as holes for now
    f.Focus.Refresh();
    EXPECT_EQ(f.Focus.Marks().Group.size(), 0u);
    f.Host.Loop.Advance(500);          // Timer1 closes the board up
    f.Focus.Refresh();
    EXPECT_EQ(f.Group(), (std::vector<std::pair<int, int>>{{0, 3}, {0, 4}, {1, 3}}));
}

TEST(BoardFocus, TheKeyboardMovesACursorAndClicksWhereItStands) {
    FocusFixture f;
    ASSERT_TRUE(f.Session.NewGame(1));
    // Space clicks nothing while no cursor is shown.
    EXPECT_TRUE(f.Focus.KeyDown(BoardFocus::KeySpace));
    EXPECT_EQ(f.Session.Score, 0);
    EXPECT_FALSE(f.Focus.Marks().Cursor);

    // The first arrow shows the cursor at the bottom left; the next ones move it, never
    // off the board; the group under it is outlined.
    f.Focus.KeyDown(BoardFocus::ArrowRight);
    ASSERT_TRUE(f.Focus.Marks().Cursor);
    EXPECT_EQ(*f.Focus.Marks().Cursor, (BoardCell{0, 4}));
    EXPECT_EQ(f.Focus.Marks().Group.size(), 3u);   // the 4s
    f.Focus.KeyDown(BoardFocus::ArrowDown);
    for (int i = 0; i < 9; ++i) f.Focus.KeyDown(BoardFocus::ArrowRight);
    EXPECT_EQ(*f.Focus.Marks().Cursor, (BoardCell{4, 4}));
    for (int i = 0; i < 9; ++i) f.Focus.KeyDown(BoardFocus::ArrowLeft);
    for (int i = 0; i < 9; ++i) f.Focus.KeyDown(BoardFocus::ArrowUp);
    EXPECT_EQ(*f.Focus.Marks().Cursor, (BoardCell{0, 0}));
    f.Focus.KeyDown(BoardFocus::ArrowDown);
    EXPECT_EQ(f.Focus.Marks().Group.size(), 3u);   // the 1s

    // Return clicks the group with the left button.
    EXPECT_TRUE(f.Focus.KeyDown(BoardFocus::KeyReturn));
    EXPECT_EQ(f.Session.Score, 9);
    EXPECT_EQ(f.Board.Bricks(0, 1), CellEmpty);

    // Delete is the right button: a brick stays (no cheat mode), the spell lying at
    // (2, 1) is taken off.
    f.Focus.KeyDown(BoardFocus::ArrowRight);
    f.Focus.KeyDown(BoardFocus::ArrowRight);
    EXPECT_EQ(*f.Focus.Marks().Cursor, (BoardCell{2, 1}));
    f.Focus.KeyDown(BoardFocus::ArrowDown);
    f.Focus.KeyDown(BoardFocus::KeyDelete);
    EXPECT_NE(f.Board.Bricks(2, 2), CellEmpty);
    f.Focus.KeyDown(BoardFocus::ArrowUp);
    f.Focus.KeyDown(BoardFocus::KeyDelete);
    EXPECT_EQ(f.Board.Bricks(2, 1), CellEmpty);
    EXPECT_EQ(f.Session.Score, 9);

    // The keys 1 to 6 are the spell buttons: armed, and put away again.
    f.Session.SpellStock[SpellBomb] = 1;
    EXPECT_TRUE(f.Focus.KeyDown(BoardFocus::KeyFirstSpell + SpellBomb));
    EXPECT_EQ(f.Game->ActiveSpell, SpellBomb);
    EXPECT_EQ(f.Focus.Marks().Group.size(), 0u);
    f.Focus.KeyDown(BoardFocus::KeyFirstSpell + SpellBomb);
    EXPECT_EQ(f.Game->ActiveSpell, NoSpell);
    EXPECT_FALSE(f.Focus.KeyDown('A'));

    // The mouse over the board hides the cursor; the group under the pointer counts then.
    f.Focus.PointerAt(0, 4);
    EXPECT_FALSE(f.Focus.Marks().Cursor);
    EXPECT_EQ(f.Focus.Marks().Group.size(), 3u);
}

TEST(BoardFocus, TheLevelCodeBoxTakesBackTheGamesOwnClipboardText) {
    SessionFixture f;
    f.LoadDefaultSet();
    // A wrong code in the game's own words is still wrong; the right one, pasted in any
    // case with the line end of a clipboard, starts its level.
    f.Host.Dialog.QueueInputAnswer("TOLVA II LEVEL-CODE FOR LEVEL 7 :" + LevelCodes::CodeOf(8) + "X");
    std::string pasted = LevelCodes::ClipboardText(7);
    std::transform(pasted.begin(), pasted.end(), pasted.begin(), [](unsigned char c) { return std::tolower(c); });
    f.Host.Dialog.QueueInputAnswer(" " + pasted + "\n");
    f.Session.NewGameWithLevelCode_Click();
    EXPECT_EQ(f.Game->CurLevelNo, 7);
    int invalid = 0;
    for (const auto& box : f.Host.Dialog.ShownBoxes()) invalid += box.Text == "INVALID LEVEL-CODE!";
    EXPECT_EQ(invalid, 1);

    // The code alone, in lower case, as before; an empty answer starts nothing.
    EXPECT_EQ(LevelCodes::Find("9cb3yr"), 2);
    EXPECT_EQ(LevelCodes::FindClipboardText("TOLVA II LEVEL-CODE FOR LEVEL 2 :9CB3YR trailing"), -1);
    f.Host.Dialog.QueueInputAnswer("");
    f.Session.NewGameWithLevelCode_Click();
    EXPECT_EQ(f.Game->CurLevelNo, 7);
}
