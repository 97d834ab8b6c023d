// Loading the whole default level set as the game does at start-up: open levels.set,
// scan its 100 levels into the table and run the integrity test.
#include "levels/LevelSetReader.h"
#include "support/ZenkorModule.h"

#include <benchmark/benchmark.h>

#include <memory>

namespace {

void BM_LoadDefaultLevelSet(benchmark::State& state) {
    tolva::SetAppPath(std::string(TOLVA_SOURCE_DIR) + "/game");
    auto game = std::make_unique<tolva::LevelModule>();
    tolva::LevelSetReader reader(*game);
    reader.LevelSetPath = "levels\\default\\";
    for (auto _ : state) {
        const tolva::LevelSetLoad load = reader.InitLevels();
        if (load.Integrity != tolva::LevelSetIntegrity::Ok || load.LevelHeads != 100) {
            state.SkipWithError("the default set did not load");
            break;
        }
        benchmark::DoNotOptimize(game->Levels[99].BrickGrid(0, 39));
    }
}
BENCHMARK(BM_LoadDefaultLevelSet)->Unit(benchmark::kMillisecond);

} // namespace
