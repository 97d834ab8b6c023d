#pragma once
// A picture strip: a short animation whose frames stand one below the other in a single
// picture. It shows one frame at a time stretched over its own rectangle, steps to the
// next frame at every tick of its timer, and calls OnFinish when it has played the asked
// number of passes or is stopped. The board uses strips for the hint, the explosion, the
// bomb and the saw.
//
// Play(times): -1 plays until StopPlay; any other number is a number of passes, and 0
// stops after the first pass as 1 does. Play while playing starts again from the first
// frame with the new count and gives no Finish for the interrupted play. StopPlay stops
// at once and calls OnFinish.
#include "support/platform/SurfaceRect.h"

#include <cstdint>
#include <functional>
#include <string>

namespace tolva {

class PictureStrip {
public:
    virtual ~PictureStrip() = default;

    virtual const std::string& Name() const = 0;

    // Loads the strip from a stored path; false, with the strip unchanged, if the file is
    // missing or unreadable.
    virtual bool LoadStrip(const std::string& storedPath) = 0;
    virtual bool HasStrip() const = 0;

    // Milliseconds between frames.
    virtual void SetInterval(std::int16_t ms) = 0;
    virtual std::int16_t Interval() const = 0;
    // Height of one frame in the strip's pixels.
    virtual void SetMoveHeight(std::int16_t height) = 0;
    virtual std::int16_t MoveHeight() const = 0;

    // Place and size on the surface that holds the strip, in that surface's units.
    virtual void SetBounds(const SurfaceRect& bounds) = 0;
    virtual SurfaceRect Bounds() const = 0;
    virtual void SetVisible(bool visible) = 0;
    virtual bool Visible() const = 0;

    virtual void Play(std::int16_t times = -1) = 0;
    virtual void StopPlay() = 0;
    virtual bool IsPlaying() const = 0;

    // Raised when the asked passes have been played, and by StopPlay.
    std::function<void()> OnFinish;
};

} // namespace tolva
