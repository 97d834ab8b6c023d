#include "EngineReplay.h"

#include "board/BoardListener.h"
#include "board/TolvaBoard.h"
#include "settings/GameSettings.h"

namespace tolva::levelgen {
namespace {

// What the replay needs to hear from the board: the removals and the two ends of a level.
struct EndWatch final : BoardListener {
    void BricksRemoved(std::int16_t) override { ++Removals; }
    void BonusScore(double, std::int16_t) override { Cleared = true; }
    void GameOver() override { Over = true; }
    int Removals = 0;
    bool Cleared = false;
    bool Over = false;
};

} // namespace

bool EngineClears(LevelModule& game, int level, const std::vector<Cell>& clicks, const BoardPlatform& platform,
                  std::size_t* failedAt) {
    EndWatch watch;
    GameSettings settings;
    settings.AniDraw = false;
    settings.MakeStat = false;
    TolvaBoard board(game, settings, platform, watch);
    board.ApplySettings(settings);
    std::int16_t number = static_cast<std::int16_t>(level);
    board.NewGame(number);
    std::size_t i = 0;
    for (; i < clicks.size() && !watch.Cleared && !watch.Over; ++i) {
        const int before = watch.Removals;
        board.BoardClick(clicks[i].x, clicks[i].y);
        if (watch.Removals == before) break;
    }
    if (failedAt != nullptr) *failedAt = i;
    return i == clicks.size() && watch.Cleared && !watch.Over;
}

} // namespace tolva::levelgen
