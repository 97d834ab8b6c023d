#pragma once
// GameBuilder: the one place the running game is put together. From the game variables,
// the settings and a platform it makes the session, then the board, and wires them: the
// board's events go to the session (or through a relay that hands them on), the session
// drives the board, the undo history watches the board's moves and the focus follows the
// pointer and the keys. The window, the game without a screen, tolva2-cli and the tests
// all build their game here, so a change to how the parts meet is made once.
//
// The level sets and the saver stay with the composition roots: each root ties the level
// sets to its own hiscore screen, the saver works on the level sets, and play and
// autoplay load a set of their own without either.
//
// Two steps, because a relay is made from the session it hands the events on to: the
// constructor makes the session, BuildBoard the board and what hangs on it. The parts
// live as long as the builder and go in the order that keeps every pointer valid.
#include "session/SessionServices.h"
#include "support/platform/BoardPlatform.h"

#include <memory>

namespace tolva {

class BoardFocus;
class BoardListener;
class GameSession;
class SessionView;
class TolvaBoard;
class UndoHistory;
struct GameSettings;
struct LevelModule;

// What the session and the board are made from; all of it outlives the builder.
struct GameParts {
    LevelModule& Game;
    GameSettings& Settings;
    BoardPlatform Platform;
    SessionView& View;
    SessionServices Services;
};

class GameBuilder {
public:
    // Makes the session; the board follows with BuildBoard.
    explicit GameBuilder(const GameParts& parts);
    ~GameBuilder();
    GameBuilder(const GameBuilder&) = delete;
    GameBuilder& operator=(const GameBuilder&) = delete;

    // Makes the board and wires it to the session. Its events go to `relay` when one is
    // given (a listener that sees each event and hands it on to the session), else straight
    // to the session. Once only.
    TolvaBoard& BuildBoard(BoardListener* relay = nullptr);

    GameSession& Session() { return *session_; }
    TolvaBoard& Board() { return *board_; }
    BoardFocus& Focus() { return *focus_; }
    UndoHistory& Undo() { return *undo_; }

private:
    GameParts parts_;
    std::unique_ptr<GameSession> session_;
    std::unique_ptr<TolvaBoard> board_;
    std::unique_ptr<BoardFocus> focus_;
    std::unique_ptr<UndoHistory> undo_;
};

} // namespace tolva
