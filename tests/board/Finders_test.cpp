// The move finders and the hint: the move test with its strict bounds, the scan order,
// the choice among candidates, and the hint strip on the virtual clock.
#include "BmpWriter.h"
#include "BoardFixture.h"
#include "support/TempFolder.h"

#include "support/ZenkorModule.h"

using tolva::testing::BoardFixture;
using tolva::testing::SequenceRandom;
using tolva::testing::Rows;

namespace {

std::pair<float, float> FirstMove(BoardFixture& f) {
    float x = -7, y = -7;
    f.Board.GetFirstMoveableBrick(x, y);
    return {x, y};
}

using Cell = std::pair<float, float>;

} // namespace

TEST(Finders, MoveTestStopsOneShortOfTheLastColumnAndRow) {
    Rows wide(10, "..........");
    wide[9] = "....66....";
    const struct {
        const char* what;
        Rows board;
        Cell first;
    } cases[] = {
        // The only pair in the last two columns is found from its right cell, looking back;
        // in the last two rows from its lower cell; elsewhere the upper cell looks down.
        {"last two columns", {".....", ".....", "...33", ".....", "....."}, {4, 2}},
        {"last two rows", {".....", ".....", ".....", "..4..", "..4.."}, {2, 4}},
        {"away from the far edges", {".....", ".4...", ".4...", ".....", "....."}, {1, 1}},
        // Column by column, each from the top.
        {"scan order", {"....2", "....2", ".....", "11...", "....."}, {0, 3}},
        // A pair at x = 4 and 5 of the bottom row of a side of 10: x = 4 passes on its own.
        {"bottom row of ten", wide, {4, 9}},
        // Two same spells are a move like two bricks; no move at all leaves x and y alone.
        {"two spells", {"..", "cc"}, {1, 1}},
        {"no move", {"12", "21"}, {-7, -7}},
    };
    BoardFixture f;
    for (const auto& c : cases) {
        f.Start(c.board);
        EXPECT_EQ(FirstMove(f), c.first) << c.what;
    }
}

TEST(Finders, ShowHintPlaysOnceOverTheCellAndHidesAtTheFinish) {
    tolva::testing::TempFolder folder;
    folder.Write("hint.bmp", tolva::testing::SolidBmp(32, 4 * 32));   // four frames of 32
    BoardFixture f;
    ASSERT_TRUE(f.Board.AniHint().LoadStrip(folder.Path() + "\\hint.bmp"));

    // No move: silent, nothing shows.
    f.Start({"12", "21"});
    f.Board.ShowHint();
    EXPECT_TRUE(f.Host.Sound.Calls().empty());
    EXPECT_FALSE(f.Board.AniHint().Visible());

    f.Start({"....", "....", "..55", "...."});
    const auto board = f.Rows();
    f.Board.ShowHint();
    EXPECT_EQ(f.Host.Sound.Calls().size(), 1u);
    EXPECT_EQ(f.Host.Sound.Calls()[0].File, tolva::AppPath() + "data\\8.wav");
    EXPECT_EQ(f.Board.AniHint().Bounds(), (tolva::SurfaceRect{375, 250, 125, 125}));
    EXPECT_TRUE(f.Board.AniHint().Visible());
    // Four frames at 20 ms: the strip finishes and hides itself after 80 ms.
    f.Host.Loop.Advance(79);
    EXPECT_TRUE(f.Board.AniHint().Visible());
    f.Host.Loop.Advance(1);
    EXPECT_FALSE(f.Board.AniHint().Visible());
    EXPECT_FALSE(f.Board.AniHint().IsPlaying());
    // A hint changes nothing and costs nothing.
    EXPECT_EQ(f.Rows(), board);
    EXPECT_TRUE(f.Events.Take().empty());

    // With sounds off the strip still plays.
    f.Settings.PlaySounds = 0;
    f.Board.ShowHint();
    EXPECT_EQ(f.Host.Sound.Calls().size(), 1u);
    EXPECT_TRUE(f.Board.AniHint().IsPlaying());
}

TEST(Finders, RandomFindersRoundIntoTheirListTiesToEven) {
    SequenceRandom rng;
    BoardFixture f(&rng);
    // Cells that pass, in scan order: (0,0) (0,1) (2,1) (2,2).
    f.Start({"1...", "1.7.", "..7.", "...."});
    // The cell a finder gives with this random number; (-7, -7) when it leaves x and y alone.
    auto find = [&](void (tolva::TolvaBoard::*finder)(float&, float&), double r) {
        rng.Values.push_back(r);
        float x = -7, y = -7;
        (f.Board.*finder)(x, y);
        return Cell(x, y);
    };
    auto pick = [&](double r) { return find(&tolva::TolvaBoard::GetRandomMoveableBrick, r); };
    auto brick = [&](double r) { return find(&tolva::TolvaBoard::GetRandomBrick, r); };
    EXPECT_EQ(pick(0.0), Cell(0, 0));
    EXPECT_EQ(pick(0.1666), Cell(0, 0));     // 0.4998 of 3
    EXPECT_EQ(pick(0.5), Cell(2, 1));        // 1.5: the tie goes to the even entry 2
    EXPECT_EQ(pick(0.8), Cell(2, 1));        // 2.4
    EXPECT_EQ(pick(0.9999), Cell(2, 2));     // 2.9997: the last entry

    // Any occupied cell, with or without a neighbour, but never in the last two columns.
    f.Start({"1..5", "..26", "....", "...."});
    EXPECT_EQ(brick(0.99), Cell(0, 0));      // the only candidate
    f.Start({"1...", "3.2.", "....", "...."});
    EXPECT_EQ(brick(0.5), Cell(0, 0));       // 0.5 of 1: the tie goes to 0
    EXPECT_EQ(brick(0.75), Cell(0, 1));

    // No candidate: x and y stay, and no random number is drawn.
    f.Start({"..12", "..21", "....", "...."});
    EXPECT_EQ(brick(0.3), Cell(-7, -7));
    EXPECT_EQ(rng.Values.size(), 1u);
    rng.Values.clear();
    f.Start({"12", "21"});
    EXPECT_EQ(pick(0.3), Cell(-7, -7));
    EXPECT_EQ(rng.Values.size(), 1u);
}
