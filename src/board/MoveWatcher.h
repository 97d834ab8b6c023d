#pragma once
// MoveWatcher: told by the board just before a player's move changes anything, so that
// the state before the move can be kept (to take the move back). A move is a plain
// removal that will take a group, a right click that will take a cell, or the first click
// of a spell; a click the board refuses, and the test tube's second click, are none.
// The board works the same with no watcher at all.
namespace tolva {

class MoveWatcher {
public:
    virtual ~MoveWatcher() = default;
    virtual void BeforeMove() = 0;
};

} // namespace tolva
