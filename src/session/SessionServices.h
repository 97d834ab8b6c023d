#pragma once
// The parts of the game that the session calls into and that live in rooms of their own:
// the hiscore table of the current set (hiscores/), the statistics log (stats/), the idle
// mascot (audio/) and the windows a key or menu opens. The composition root hands the
// session one bundle of them; tests and tolva2-cli hand it their own.
#include "audio/IdleAnimation.h"
#include "hiscores/HiscoreService.h"
#include "stats/StatLog.h"
#include "support/WindowOpener.h"

namespace tolva {

struct SessionServices {
    HiscoreService& Hiscores;
    StatLog& Stats;
    IdleAnimation& Idle;
    WindowOpener& Windows;
};

} // namespace tolva
