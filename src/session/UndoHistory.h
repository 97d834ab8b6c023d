#pragma once
// UndoHistory: takes moves back. The board tells it before every move (MoveWatcher), and
// it keeps the state of play as it was then; Undo sets the level back one move, any
// number of times, back to the level's start and never further: a state kept in another
// level, or before a game over, is dropped, since the board has started anew since. Not
// while an effect, a bonus count, a closing up or a spell is under way.
//
// A game in which a move was taken back is a practice game from then on (the session
// keeps the flag, shows "PRACTICE" and offers the score to no table).
#include "board/MoveWatcher.h"
#include "session/PlayState.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tolva {

class GameSession;
class TolvaBoard;

class UndoHistory final : public MoveWatcher {
public:
    // Plenty for the largest board: a move takes at least one brick of 1600.
    static constexpr std::size_t MaxSteps = 2000;

    UndoHistory(TolvaBoard& board, GameSession& session);

    void BeforeMove() override;
    // A move can be taken back now.
    bool CanUndo() const;
    // Takes the last move back; false (and nothing changed) when it cannot.
    bool Undo();
    // The moves kept for the level in play.
    std::size_t Steps() const;

private:
    struct Step {
        std::uint64_t LevelStart;
        PlayState State;
    };
    TolvaBoard& board_;
    GameSession& session_;
    std::vector<Step> steps_;
};

} // namespace tolva
