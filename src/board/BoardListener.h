#pragma once
// The 14 events by which a board talks to its owner, numbered as the board declares
// them. Each is delivered synchronously: the handler has run when the board's next
// statement runs, and a handler may itself call back into the board or let pending
// events run. The owner (the session window) implements every one of them; tests use a
// listener that writes the events down.
#include <cstdint>
#include <string>

namespace tolva {

class BoardListener {
public:
    virtual ~BoardListener() = default;

    // 1: a removal has been scored; after NewScore, only when at least one brick counted.
    virtual void BricksRemoved(std::int16_t numberOfBricks) = 0;
    // 2: the pointer moved over the board; the cell under it, which may lie off the board.
    virtual void MouseMove(std::int16_t xIndex, std::int16_t yIndex) = 0;
    // 3: the game is over: no move left, or SetGameOver.
    virtual void GameOver() = 0;
    // 4: points of a removal, or one step of the level bonus.
    virtual void NewScore(double point) = 0;
    // 5: a spell has reached the bottom row and goes to the stock.
    virtual void NewSpell(std::int16_t spellNumber) = 0;
    // 6: a level starts, before its data are copied to the board.
    virtual void NewLevel(std::int16_t levelNo) = 0;
    // 7: a spell has been spent.
    virtual void SpellUsed(std::int16_t spellNumber) = 0;
    // 8: the board has been emptied; the level bonus per step and the steps earned.
    virtual void BonusScore(double bonus, std::int16_t xTimes) = 0;
    // 9: the multiplier after a plain removal, changed or not.
    virtual void BonusTimes(std::int16_t bonusTimesNow) = 0;
    // 10: a click has been dealt with and the board has closed up.
    virtual void CanDoNextMove() = 0;
    // 11: a set of pictures has been loaded.
    virtual void ResourceLoaded(const std::string& resource) = 0;
    // 12: true when a spell starts, false when it ends.
    virtual void SpellInUse(bool inUse) = 0;
    // 13: a plain removal, with the number of the level in play.
    virtual void RemoveClick(std::int16_t cLevel) = 0;
    // 14: the first click of a spell.
    virtual void SpellClick(std::int16_t spellNumber, std::int16_t cLevel) = 0;
};

} // namespace tolva
