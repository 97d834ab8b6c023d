#pragma once
// Plays a list of plain clicks on the game's own engine (TolvaBoard on the headless
// platform, closing up at once) and tells whether the level ended cleared: the board
// raised BonusScore with no cell left, right at the last click and not before.
#include "board/BoardListener.h"
#include "board/TolvaBoard.h"
#include "testsupport/HeadlessPlatform.h"

#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace tolva::testing {

using Clicks = std::vector<std::pair<int, int>>;

// "level N: X,Y X,Y ..." to N and the clicks; N is 0 for any other line, -1 for unsolved.
inline int ParseSolutionLine(const std::string& line, Clicks& clicks) {
    clicks.clear();
    std::istringstream in(line);
    std::string word, number;
    if (!(in >> word) || word != "level" || !(in >> number) || number.empty() || number.back() != ':') return 0;
    const int level = std::stoi(number.substr(0, number.size() - 1));
    std::string cell;
    while (in >> cell) {
        if (cell == "unsolved") return -1;
        const auto comma = cell.find(',');
        if (comma == std::string::npos) return 0;
        clicks.emplace_back(std::stoi(cell.substr(0, comma)), std::stoi(cell.substr(comma + 1)));
    }
    return level;
}

class ReplayListener : public BoardListener {
public:
    TolvaBoard* board = nullptr;
    int bonusScores = 0;
    int gameOvers = 0;
    int removals = 0;
    int spellsCollected = 0;
    bool emptyAtBonus = false;

    void BricksRemoved(std::int16_t) override { ++removals; }
    void GameOver() override { ++gameOvers; }
    void NewSpell(std::int16_t) override { ++spellsCollected; }
    void BonusScore(double, std::int16_t) override {
        ++bonusScores;
        emptyAtBonus = board->CheckIfFinished();
    }
};

struct ReplayOutcome {
    bool cleared = false;          // emptied by the last click, and only then
    int refusedAt = -1;            // index of the first click that took nothing
    int spellsCollected = 0;
    std::string Describe() const {
        return "cleared " + std::to_string(cleared) + ", refused at " + std::to_string(refusedAt);
    }
};

inline ReplayOutcome ReplayOnBoard(LevelModule& game, int level, const Clicks& clicks) {
    HeadlessPlatform platform;
    ReplayListener listener;
    const GameSettings settings;
    TolvaBoard board(game, settings, platform.Platform(), listener);
    listener.board = &board;
    board.AniDraw = false;
    std::int16_t number = static_cast<std::int16_t>(level);
    board.NewGame(number);
    ReplayOutcome outcome;
    for (std::size_t i = 0; i < clicks.size(); ++i) {
        const int before = listener.removals;
        if (listener.bonusScores > 0 || listener.gameOvers > 0) return outcome;   // ended too early
        board.BoardClick(clicks[i].first, clicks[i].second);
        if (listener.removals == before) {
            outcome.refusedAt = static_cast<int>(i);
            return outcome;
        }
    }
    outcome.cleared = listener.bonusScores == 1 && listener.emptyAtBonus && listener.gameOvers == 0;
    outcome.spellsCollected = listener.spellsCollected;
    return outcome;
}

} // namespace tolva::testing
