#pragma once
// Plays a solution on TolvaBoard itself, closing up at once: the search runs on a copy of the
// rules (PlayBoard), and only the game's own engine may say that a level is cleared. `levels
// solve` proves what it prints this way; the tests replay the shipped sets' solutions with it.
#include "PlayBoard.h"
#include "shared/LevelModule.h"
#include "support/platform/BoardPlatform.h"

#include <cstddef>
#include <vector>

namespace tolva::levelgen {

// True when every click takes a group and the last one, and no earlier one, ends `level`
// cleared. `failedAt` gives the index of the first click that took nothing or came after the
// level had ended, or the click count when all went and the level did not end cleared.
bool EngineClears(LevelModule& game, int level, const std::vector<Cell>& clicks, const BoardPlatform& platform,
                  std::size_t* failedAt = nullptr);

} // namespace tolva::levelgen
