// The solver's inner step on the largest default levels: every child of one board, each
// a copy, a click (the group goes, the columns fall and close up) and the measure of the
// columns the click changed. The boards are taken a third of the way along the level's
// stored solution, where the search spends most of its passes.
#include "BoardFeatures.h"
#include "PlayBoard.h"
#include "SolutionText.h"
#include "levels/LevelSetReader.h"
#include "support/ZenkorModule.h"

#include <benchmark/benchmark.h>

#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace tolva;
using namespace tolva::levelgen;

// Level `n` of the default set after a third of its stored solution.
PlayBoard BoardPartWay(int n) {
    auto game = std::make_unique<LevelModule>();
    SetAppPath(std::string(TOLVA_SOURCE_DIR) + "/game");
    LevelSetReader reader(*game);
    reader.LevelSetPath = "levels\\default\\";
    reader.InitLevels();
    PlayBoard board(game->Levels[static_cast<std::size_t>(n - 1)]);
    std::ifstream in(std::string(TOLVA_SOURCE_DIR) + "/tools/levelgen/default-solutions.txt");
    std::stringstream text;
    text << in.rdbuf();
    for (const SolutionLine& line : ParseSolutions(text.str())) {
        if (line.level != n) continue;
        for (std::size_t i = 0; i < line.clicks.size() / 3; ++i) board.Click(line.clicks[i].x, line.clicks[i].y);
    }
    return board;
}

void BM_ExpandBoard(benchmark::State& state) {
    const PlayBoard board = BoardPartWay(static_cast<int>(state.range(0)));
    ColumnParts parts, childParts;
    MeasureBoard(board, parts);
    std::vector<Group> groups;
    board.FindGroups(groups);
    double sum = 0;
    for (auto _ : state) {
        for (const Group& g : groups) {
            PlayBoard child = board;
            child.Click(g.at.x, g.at.y);
            sum += MeasureChild(board, parts, child, g, childParts).Estimate();
        }
    }
    benchmark::DoNotOptimize(sum);
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * groups.size()));
    state.counters["cells"] = board.Occupied();
}
BENCHMARK(BM_ExpandBoard)->Arg(97)->Arg(99);

} // namespace
