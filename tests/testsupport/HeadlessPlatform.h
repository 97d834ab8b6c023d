#pragma once
// The whole headless platform of a test in one object: the game's headless parts with a
// recording surface of 500 x 500 units, recording sound effects and scripted dialogs.
#include "support/platform/HeadlessParts.h"
#include "testsupport/RecordingSoundEffects.h"
#include "testsupport/RecordingSurface.h"
#include "testsupport/ScriptedDialogs.h"

namespace tolva {

using HeadlessPlatform = HeadlessParts<RecordingSurface, RecordingSoundEffects, ScriptedDialogs>;

} // namespace tolva
