#pragma once
// The 14 events by which a board talks to its owner, numbered as the board declares
// them. Each is delivered synchronously: the handler has run when the board's next
// statement runs, and a handler may itself call back into the board or let pending
// events run. The owner (the session window) handles every one of them; a listener that
// only watches names just the events it cares about, the others doing nothing.
#include <cstdint>
#include <string>

namespace tolva {

class BoardListener {
public:
    virtual ~BoardListener() = default;

    // 1: a removal has been scored; after NewScore, only when at least one brick counted.
    virtual void BricksRemoved(std::int16_t /*numberOfBricks*/) {}
    // 2: the pointer moved over the board; the cell under it, which may lie off the board.
    virtual void MouseMove(std::int16_t /*xIndex*/, std::int16_t /*yIndex*/) {}
    // 3: the game is over: no move left, or SetGameOver.
    virtual void GameOver() {}
    // 4: points of a removal, or one step of the level bonus.
    virtual void NewScore(double /*point*/) {}
    // 5: a spell has reached the bottom row and goes to the stock.
    virtual void NewSpell(std::int16_t /*spellNumber*/) {}
    // 6: a level starts, before its data are copied to the board.
    virtual void NewLevel(std::int16_t /*levelNo*/) {}
    // 7: a spell has been spent.
    virtual void SpellUsed(std::int16_t /*spellNumber*/) {}
    // 8: the board has been emptied; the level bonus per step and the steps earned.
    virtual void BonusScore(double /*bonus*/, std::int16_t /*xTimes*/) {}
    // 9: the multiplier after a plain removal, changed or not.
    virtual void BonusTimes(std::int16_t /*bonusTimesNow*/) {}
    // 10: a click has been dealt with and the board has closed up.
    virtual void CanDoNextMove() {}
    // 11: a set of pictures has been loaded.
    virtual void ResourceLoaded(const std::string& /*resource*/) {}
    // 12: true when a spell starts, false when it ends.
    virtual void SpellInUse(bool /*inUse*/) {}
    // 13: a plain removal, with the number of the level in play.
    virtual void RemoveClick(std::int16_t /*cLevel*/) {}
    // 14: the first click of a spell.
    virtual void SpellClick(std::int16_t /*spellNumber*/, std::int16_t /*cLevel*/) {}
};

} // namespace tolva
