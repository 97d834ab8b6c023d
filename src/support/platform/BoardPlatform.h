#pragma once
// Everything the board reaches outside its own grids, in one bundle: the event loop
// (timers, letting pending events run, Pause), the drawing surface, the store of its
// pictures and strips, the sound routine, dialogs and the random numbers. The board takes
// this one argument; the Qt front end fills it with its implementations, tests and
// tolva2-cli with the headless ones (HeadlessParts).
#include "support/platform/BoardSurface.h"
#include "support/platform/Dialogs.h"
#include "support/platform/EventLoop.h"
#include "support/platform/PictureStore.h"
#include "support/platform/Random.h"
#include "support/platform/SoundEffects.h"

namespace tolva {

struct BoardPlatform {
    EventLoop& Loop;
    BoardSurface& Surface;
    PictureStore& Pictures;
    SoundEffects& Sound;
    Dialogs& Dialog;
    Random& Rng;
};

} // namespace tolva
