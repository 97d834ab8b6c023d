#pragma once
// The whole headless platform of a test in one object: a virtual-clock event loop, a
// recording surface of 500 x 500 units, the bitmap-reading picture store, recording sound
// effects, scripted dialogs and seeded random numbers. Platform() bundles them for a board.
#include "support/platform/BoardPlatform.h"
#include "support/platform/HeadlessEventLoop.h"
#include "support/platform/HeadlessPictureStore.h"
#include "testsupport/RecordingSoundEffects.h"
#include "testsupport/RecordingSurface.h"
#include "testsupport/ScriptedDialogs.h"
#include "support/platform/SeededRandom.h"

namespace tolva {

class HeadlessPlatform {
public:
    explicit HeadlessPlatform(std::uint64_t seed = 1) : Pictures(Loop), Rng(seed) {}
    HeadlessPlatform(const HeadlessPlatform&) = delete;
    HeadlessPlatform& operator=(const HeadlessPlatform&) = delete;

    BoardPlatform Platform() { return {Loop, Surface, Pictures, Sound, Dialog, Rng}; }

    HeadlessEventLoop Loop;
    RecordingSurface Surface;
    HeadlessPictureStore Pictures;
    RecordingSoundEffects Sound;
    ScriptedDialogs Dialog;
    SeededRandom Rng;
};

} // namespace tolva
