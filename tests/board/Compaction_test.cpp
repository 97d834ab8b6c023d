// CleanArray: falling, closing up, collecting spells and judging the end of a move.
#include "BoardFixture.h"

using tolva::testing::BoardFixture;
using tolva::testing::Rows;

TEST(Compaction, ColumnsFallAndEmptyColumnsCloseToTheLeftWithTheirSpells) {
    BoardFixture f;
    f.Start({"1.2.3",
             "..2..",
             "1...3",
             "4.5.3",
             "4.5.6"},
            {"3...2",
             ".4...",
             "5....",
             ".....",
             "....."});
    // A stored level starts exactly as stored, cells in the air included.
    EXPECT_EQ(f.Rows()[0], "1.2.3");
    f.Board.CleanArray();
    EXPECT_EQ(f.Rows(), (Rows{".....",
                              "123..",
                              "123..",
                              "453..",
                              "456.."}));
    // Hidden spells travel with their bricks; a number over an empty cell is gone.
    EXPECT_EQ(f.SpellRows(), (Rows{".....",
                                   "3.2..",
                                   "5....",
                                   ".....",
                                   "....."}));
    EXPECT_TRUE(f.Events.Take().empty());   // moves are left: nothing to report
}

TEST(Compaction, SpellsInTheBottomRowAreCollectedLeftFirstOnePerPass) {
    BoardFixture f;
    f.Start({"1a.",
             "1b2",
             "cd2"});
    // Each collection compacts again before the next: record what the bottom row looked
    // like when each spell was reported.
    std::vector<std::string> bottomRows;
    f.Events.OnEvent = [&](const std::string&) { bottomRows.push_back(f.Rows()[2]); };
    f.Board.CleanArray();
    // The leftmost first; in column 1 the lower spell of the stack before the upper ones.
    EXPECT_EQ(f.Events.Take(), (Rows{"NewSpell(2)", "NewSpell(3)", "NewSpell(1)", "NewSpell(0)"}));
    EXPECT_EQ(bottomRows, (Rows{".d2", "1.2", "1.2", "1.2"}));
    // The emptied column 1 has closed up.
    EXPECT_EQ(f.Rows(), (Rows{"...",
                              "12.",
                              "12."}));
    EXPECT_FALSE(f.Board.GameIsOver);
    f.Events.OnEvent = nullptr;

    // The value 10 and values with no spell behind them are never collected.
    f.Start({"..", "X1"});
    f.Board.Bricks(1, 1) = 17;
    f.Board.CleanArray();
    EXPECT_EQ(f.Events.Take(), (Rows{"GameOver"}));
    EXPECT_EQ(f.Board.Bricks(0, 1), 10);
    EXPECT_EQ(f.Board.Bricks(1, 1), 17);
}

TEST(Compaction, DeadBoardRaisesGameOverOnceAndTheNestedPassJudgesFirst) {
    BoardFixture f;
    f.Board.AniDraw = false;
    f.Start({"...",
             "2..",
             "133"});
    f.Click(1, 2);
    EXPECT_EQ(f.Events.Take(), (Rows{"BonusTimes(1)", "NewScore(4)", "BricksRemoved(2)", "RemoveClick(1)",
                                     "GameOver", "CanDoNextMove"}));
    EXPECT_TRUE(f.Board.GameIsOver);
    f.Board.CleanArray();
    f.Board.SetGameOver();
    f.Click(0, 1);
    EXPECT_TRUE(f.Events.Take().empty());

    // A spell collected off a board that is dead afterwards: the inner pass raises
    // GameOver, the outer one sees it over already.
    f.Start({"1.",
             "a2"});
    f.Board.CleanArray();
    EXPECT_EQ(f.Events.Take(), (Rows{"NewSpell(0)", "GameOver"}));
    EXPECT_EQ(f.Rows(), (Rows{"..", "12"}));
}

TEST(Compaction, OnlyTheSquareInUseCounts) {
    BoardFixture f;
    f.Start({"...",
             "...",
             "1.."});
    // Cells beyond the side in use take no part in any judgement.
    f.Board.Bricks(3, 2) = 1;
    f.Board.Bricks(4, 0) = 5;
    f.Board.Bricks(4, 1) = 5;
    EXPECT_FALSE(f.Board.HasMoves());
    f.Board.Bricks(1, 3) = 2;
    EXPECT_TRUE(f.Board.IsColEmpty(1));
    EXPECT_TRUE(f.Board.IsColEmpty(-1));
    EXPECT_FALSE(f.Board.IsColEmpty(0));
    EXPECT_FALSE(f.Board.CheckIfFinished());
    f.Board.Bricks(0, 2) = -1;
    EXPECT_TRUE(f.Board.CheckIfFinished());
    // Spells lying on the board make moves and keep a level open like bricks.
    f.Board.Bricks(0, 2) = 12;
    f.Board.Bricks(1, 2) = 12;
    EXPECT_TRUE(f.Board.HasMoves());
    EXPECT_FALSE(f.Board.CheckIfFinished());
}

TEST(Compaction, ClearedLevelWaitsForTheBonusDisplayBeforeTheNextLevel) {
    BoardFixture f;
    f.SetLevel(2, {"33", "44"});
    f.Start({"a.",
             "11"});
    f.Board.AniDraw = false;
    f.Game->BonusTimes = 12;   // more than the cap: the bonus carries 9

    // The owner shows the bonus screen, and takes it away 1000 ms later.
    auto hide = f.Host.Loop.CreateTimer();
    hide->SetInterval(1000);
    hide->OnTick = [&] { f.Board.BonusPic().SetVisible(false); hide->SetEnabled(false); };
    std::vector<std::int64_t> when;
    f.Events.OnEvent = [&](const std::string& e) {
        when.push_back(f.Host.Loop.NowMs());
        if (e.rfind("BonusScore", 0) == 0) {
            f.Board.BonusPic().SetVisible(true);
            hide->SetEnabled(true);
        }
    };
    const auto start = f.Host.Loop.NowMs();
    f.Click(0, 1);
    // The spell lying on the board falls, is collected, and only then is the board empty;
    // the next level starts inside the same click, before the click ends.
    EXPECT_EQ(f.Events.Take(), (Rows{"BonusTimes(9)", "NewScore(4)", "BricksRemoved(2)", "RemoveClick(1)",
                                     "NewSpell(0)", "BonusScore(100000,9)", "NewLevel(2)", "CanDoNextMove"}));
    EXPECT_EQ(when[5] - start, 0);      // BonusScore at once
    EXPECT_EQ(when[6] - start, 1000);   // NewLevel after the display
    EXPECT_EQ(f.Game->BonusTimes, 0);
    EXPECT_EQ(f.Game->CurLevelNo, 2);
    EXPECT_EQ(f.Rows(), (Rows{"33", "44"}));
}

TEST(Compaction, AClickServedInsideNewSpellDoesNotCollectTheSameSpellAgain) {
    BoardFixture f;
    f.Board.AniDraw = false;
    f.Start({"..3",
             "a.3",
             "114"});
    // The owner lets pending events run in its NewSpell handler, and a click is waiting.
    bool clicked = false;
    f.Events.OnEvent = [&](const std::string& e) {
        if (e != "NewSpell(0)" || clicked) return;
        clicked = true;
        f.Host.Loop.Post([&] { f.Click(1, 1); });
        f.Host.Loop.DoEvents();
    };
    f.Click(0, 2);
    EXPECT_EQ(f.Events.Take(), (Rows{"BonusTimes(1)", "NewScore(4)", "BricksRemoved(2)", "RemoveClick(1)",
                                     "NewSpell(0)",
                                     // the click served inside the handler, on the compacted board
                                     "BonusTimes(2)", "NewScore(4)", "BricksRemoved(2)", "RemoveClick(1)",
                                     "GameOver", "CanDoNextMove",
                                     // the end of the first click
                                     "CanDoNextMove"}));
    EXPECT_EQ(f.Rows(), (Rows{"...", "...", "4.."}));
}
