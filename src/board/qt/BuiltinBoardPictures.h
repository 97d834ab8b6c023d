#pragma once
// The pictures built into the game for the board (compiled in as resources): the ten
// brick pictures that stand in the board itself, so that a brick always has a picture
// even when no level folder gives one, the pipette pointer of the "TEST TUBE", and the
// standard board background that the board shows between games.
#include <memory>

namespace tolva {

class PictureHolder;
class QtPictureHolder;
class TolvaBoard;

// Gives the board its built-in brick pictures and pointer. The board's holders come from
// the Qt picture store of this folder, so they are Qt holders.
void GiveBuiltinPictures(TolvaBoard& board);
// The standard board background (eBack), 500 x 500.
std::unique_ptr<QtPictureHolder> MakeStandardBackground();

} // namespace tolva
