#pragma once
// HiscoreService: what the game session asks of the hiscore table of the current set.
// The session knows the running score and level; the table, its file and the entry of
// initials stay behind this interface.
#include <cstdint>

namespace tolva {

class HiscoreService {
public:
    virtual ~HiscoreService() = default;
    // The end-of-game entry: offers `score`, reached at `level`, to the table (initials and all).
    virtual void CheckIfHiScore(double score, std::int16_t level) = 0;
    // Draws the table; place 1-based or -1, colours 0xBBGGRR (red in the low byte).
    virtual void PrintHiScore(std::int16_t highlightPlace, std::int32_t highlightColor,
                              std::int32_t highlightTextColor) = 0;
    // The 1-based place `score` would take, or -1. Changes nothing.
    virtual std::int16_t CheckHiscorePlace(double score) const = 0;
};

} // namespace tolva
