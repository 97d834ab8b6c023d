// The spells' heavy paths on the headless platform: a whole run of the saw on a full
// 40 x 40 board (four seconds of game time on the virtual clock: its steps, the frames of
// its strip and the compaction at its end), the test tube's flood over a whole board of
// one colour (1600 cells deep, each painted by itself), and the nine-step bonus count-up
// with its lingering second.
#include "board/TolvaBoard.h"
#include "testsupport/HeadlessPlatform.h"

#include <benchmark/benchmark.h>

#include <memory>

namespace {

using namespace tolva;

constexpr int Side = 40;

class QuietListener final : public BoardListener {
public:
    double score = 0;
    void NewScore(double p) override { score += p; }
};

struct Bench {
    HeadlessPlatform host{7};
    GameSettings settings;
    std::unique_ptr<LevelModule> game = std::make_unique<LevelModule>();
    QuietListener events;
    TolvaBoard board{*game, settings, host.Platform(), events};

    // Starts a full board of side 40, its colours drawn by `colour(x, y)`.
    template <typename Colour>
    explicit Bench(Colour colour) {
        LevelRecord& level = game->Levels[0];
        level.LevelName = "BENCH";
        level.levelbricks = Side;
        for (int x = 0; x < Side; ++x)
            for (int y = 0; y < Side; ++y) level.BrickGrid(x, y) = static_cast<std::int16_t>(colour(x, y));
        std::int16_t first = 1;
        board.NewGame(first);
    }
};

void BM_SawOverAFullBoard(benchmark::State& state) {
    Bench b([](int x, int y) { return (x * 7 + y * 3) % 9; });
    const CellGrid start = b.board.Bricks;
    for (auto _ : state) {
        b.board.Bricks = start;
        b.board.UseSpell(SpellSaw, Side / 2, Side / 2);
        b.board.SetScoreEvents();
        b.host.Surface.ClearRecords();
        b.host.Sound.ClearCalls();
    }
    benchmark::DoNotOptimize(b.events.score);
}
BENCHMARK(BM_SawOverAFullBoard);

void BM_TestTubeFloodsAWholeBoard(benchmark::State& state) {
    Bench b([](int, int) { return 1; });
    std::int16_t colour = 1;
    for (auto _ : state) {
        colour = colour == 1 ? 2 : 1;
        b.board.HuntAndSetColor(0, 0, colour);
        b.host.Surface.ClearRecords();
    }
    benchmark::DoNotOptimize(b.board.Bricks(Side - 1, Side - 1));
}
BENCHMARK(BM_TestTubeFloodsAWholeBoard);

void BM_NineStepBonusCountUp(benchmark::State& state) {
    Bench b([](int x, int y) { return (x + y) % 9; });
    for (auto _ : state) {
        b.board.ShowBonusMovie(100000, 9);
        b.host.Loop.WaitUntil([&] { return !b.board.BonusPic().Visible(); });
        b.host.Sound.ClearCalls();
    }
    benchmark::DoNotOptimize(b.events.score);
}
BENCHMARK(BM_NineStepBonusCountUp);

} // namespace
