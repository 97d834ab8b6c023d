// The board's hot paths on full 40 x 40 boards of random colours, on the headless
// platform: a click on a large group with AniDraw off (search, events, compaction and the
// end-of-move test), the dead-board test HasMoves, and a whole-board paint pass against
// the recording surface.
#include "board/TolvaBoard.h"
#include "testsupport/HeadlessPlatform.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <utility>
#include <vector>

namespace {

using namespace tolva;

constexpr int Side = 40;
constexpr int Boards = 32;

// Counts what the board reports, as a session would add it up.
class CountingListener final : public BoardListener {
public:
    long events = 0;
    double score = 0;
    void BricksRemoved(std::int16_t) override { ++events; }
    void MouseMove(std::int16_t, std::int16_t) override { ++events; }
    void GameOver() override { ++events; }
    void NewScore(double p) override { score += p; ++events; }
    void NewSpell(std::int16_t) override { ++events; }
    void NewLevel(std::int16_t) override { ++events; }
    void SpellUsed(std::int16_t) override { ++events; }
    void BonusScore(double, std::int16_t) override { ++events; }
    void BonusTimes(std::int16_t) override { ++events; }
    void CanDoNextMove() override { ++events; }
    void ResourceLoaded(const std::string&) override { ++events; }
    void SpellInUse(bool) override { ++events; }
    void RemoveClick(std::int16_t) override { ++events; }
    void SpellClick(std::int16_t, std::int16_t) override { ++events; }
};

// The size of the group at (x, y) of a level, by a flood of our own.
int GroupSize(const LevelRecord& level, int x0, int y0) {
    const std::int16_t v = level.BrickGrid(x0, y0);
    std::vector<char> seen(Side * Side, 0);
    std::vector<std::pair<int, int>> todo{{x0, y0}};
    seen[static_cast<std::size_t>(x0 * Side + y0)] = 1;
    int size = 0;
    while (!todo.empty()) {
        const auto [x, y] = todo.back();
        todo.pop_back();
        ++size;
        const std::pair<int, int> next[] = {{x + 1, y}, {x - 1, y}, {x, y + 1}, {x, y - 1}};
        for (const auto& [nx, ny] : next) {
            if (nx < 0 || ny < 0 || nx >= Side || ny >= Side) continue;
            auto& s = seen[static_cast<std::size_t>(nx * Side + ny)];
            if (s || level.BrickGrid(nx, ny) != v) continue;
            s = 1;
            todo.emplace_back(nx, ny);
        }
    }
    return size;
}

struct Bench {
    explicit Bench(int colours) : game(std::make_unique<LevelModule>()), board(*game, settings, host.Platform(), listener) {
        SeededRandom rng(2024);
        for (int i = 0; i < Boards; ++i) {
            auto& level = game->Levels[static_cast<std::size_t>(i)];
            level.LevelName = "RANDOM";
            level.levelbricks = Side;
            for (int x = 0; x < Side; ++x)
                for (int y = 0; y < Side; ++y)
                    level.BrickGrid(x, y) = static_cast<std::int16_t>(rng.Next() * colours);
            // The cell of the largest group of this board.
            std::pair<int, int> best{0, 0};
            int bestSize = 0;
            for (int x = 0; x < Side; ++x)
                for (int y = 0; y < Side; ++y)
                    if (const int s = GroupSize(level, x, y); s > bestSize) {
                        bestSize = s;
                        best = {x, y};
                    }
            target.push_back(best);
            groupSizes += bestSize;
        }
        board.AniDraw = false;
    }
    void Start(int i) {
        std::int16_t level = static_cast<std::int16_t>(i + 1);
        board.NewGame(level);
        host.Surface.ClearRecords();
    }

    HeadlessPlatform host;
    GameSettings settings;
    std::unique_ptr<LevelModule> game;
    CountingListener listener;
    TolvaBoard board;
    std::vector<std::pair<int, int>> target;
    long groupSizes = 0;
};

void BM_BoardClickLargestGroup(benchmark::State& state) {
    Bench b(static_cast<int>(state.range(0)));
    int i = 0;
    for (auto _ : state) {
        state.PauseTiming();
        b.Start(i);
        state.ResumeTiming();
        b.board.BoardClick(b.target[static_cast<std::size_t>(i)].first, b.target[static_cast<std::size_t>(i)].second);
        i = (i + 1) % Boards;
    }
    state.counters["group"] = static_cast<double>(b.groupSizes) / Boards;
    benchmark::DoNotOptimize(b.listener.score);
}
BENCHMARK(BM_BoardClickLargestGroup)->Arg(2)->Arg(3)->Arg(10)->Unit(benchmark::kMicrosecond);

void BM_HasMoves(benchmark::State& state) {
    Bench b(10);
    b.Start(0);
    if (state.range(0) == 0) {
        // A board with no move: the whole square is looked at.
        for (int x = 0; x < Side; ++x)
            for (int y = 0; y < Side; ++y) b.board.Bricks(x, y) = static_cast<std::int16_t>((x + y) % 2);
    }
    for (auto _ : state) benchmark::DoNotOptimize(b.board.HasMoves());
    state.SetLabel(state.range(0) == 0 ? "dead board" : "random board");
}
BENCHMARK(BM_HasMoves)->Arg(0)->Arg(1);

void BM_DrawBoardWholePass(benchmark::State& state) {
    Bench b(10);
    b.Start(0);
    const bool fast = state.range(0) != 0;
    for (auto _ : state) {
        b.board.DrawBoard(-1, -1, fast);
        state.PauseTiming();
        b.host.Surface.ClearRecords();
        state.ResumeTiming();
    }
    state.SetLabel(fast ? "fast, nothing changed" : "every cell");
}
BENCHMARK(BM_DrawBoardWholePass)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

} // namespace
