#include "session/UndoHistory.h"

#include "board/TolvaBoard.h"
#include "session/GameSession.h"

namespace tolva {

UndoHistory::UndoHistory(TolvaBoard& board, GameSession& session) : board_(board), session_(session) {}

void UndoHistory::BeforeMove() {
    const std::uint64_t now = board_.LevelStarts();
    // A new level (or a new game) has begun since the last move: its moves start afresh.
    if (!steps_.empty() && steps_.back().LevelStart != now) steps_.clear();
    if (steps_.size() == MaxSteps) steps_.erase(steps_.begin());
    steps_.push_back({now, session_.CapturePlay()});
}

std::size_t UndoHistory::Steps() const {
    if (steps_.empty() || steps_.back().LevelStart != board_.LevelStarts()) return 0;
    return steps_.size();
}

bool UndoHistory::CanUndo() const { return session_.GameRunning && Steps() > 0 && board_.EffectsIdle(); }

bool UndoHistory::Undo() {
    if (!CanUndo()) return false;
    PlayState state = steps_.back().State;
    steps_.pop_back();
    state.Practice = true;
    session_.RestorePlay(state);
    return true;
}

} // namespace tolva
