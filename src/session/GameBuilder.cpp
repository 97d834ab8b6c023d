#include "session/GameBuilder.h"

#include "board/TolvaBoard.h"
#include "session/BoardFocus.h"
#include "session/GameSession.h"
#include "session/UndoHistory.h"

#include <stdexcept>

namespace tolva {

GameBuilder::GameBuilder(const GameParts& parts)
    : parts_(parts),
      session_(std::make_unique<GameSession>(parts.Game, parts.Settings, parts.Platform, parts.View, parts.Services)) {}

GameBuilder::~GameBuilder() {
    // The focus and the undo history look at the board and the session, and the session
    // holds the board: they go first, then the board, then the session.
    focus_.reset();
    if (board_) board_->SetMoveWatcher(nullptr);
    undo_.reset();
    board_.reset();
    session_.reset();
}

TolvaBoard& GameBuilder::BuildBoard(BoardListener* relay) {
    if (board_) throw std::logic_error("GameBuilder: the board is built once");
    BoardListener& listener = relay != nullptr ? *relay : static_cast<BoardListener&>(*session_);
    board_ = std::make_unique<TolvaBoard>(parts_.Game, parts_.Settings, parts_.Platform, listener);
    session_->AttachBoard(*board_);
    focus_ = std::make_unique<BoardFocus>(*board_, *session_, parts_.Settings, parts_.View);
    undo_ = std::make_unique<UndoHistory>(*board_, *session_);
    board_->SetMoveWatcher(undo_.get());
    return *board_;
}

} // namespace tolva
