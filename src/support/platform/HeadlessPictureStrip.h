#pragma once
// A picture strip on the virtual clock. It plays through the same StripPlayback as the
// control on screen, so it keeps that control's timing to the tick: Play(1) on a strip of
// n frames finishes n intervals later; a strip with no picture counts one pass per tick.
// Nothing is drawn; the frames shown are counted.
#include "support/platform/EventLoop.h"
#include "support/platform/HeadlessPicture.h"
#include "support/platform/PictureStrip.h"
#include "support/platform/StripPlayback.h"

#include <memory>

namespace tolva {

class HeadlessPictureStrip final : public PictureStrip {
public:
    HeadlessPictureStrip(std::string name, EventLoop& loop);

    const std::string& Name() const override { return picture_.Name(); }
    bool LoadStrip(const std::string& storedPath) override;
    bool HasStrip() const override { return picture_.HasPicture(); }

    void SetInterval(std::int16_t ms) override { playback_.SetInterval(ms); }
    std::int16_t Interval() const override { return playback_.Interval(); }
    void SetMoveHeight(std::int16_t height) override { playback_.SetMoveHeight(height); }
    std::int16_t MoveHeight() const override { return playback_.MoveHeight(); }

    void SetBounds(const SurfaceRect& bounds) override { bounds_ = bounds; }
    SurfaceRect Bounds() const override { return bounds_; }
    void SetVisible(bool visible) override { visible_ = visible; }
    bool Visible() const override { return visible_; }

    void Play(std::int16_t times = -1) override { playback_.Play(times); }
    void StopPlay() override { playback_.StopPlay(); }
    bool IsPlaying() const override { return playback_.IsPlaying(); }

    // Frames shown since the strip was made, and the top of the last one in the strip.
    int FramesShown() const { return framesShown_; }
    int LastFrameTop() const { return lastFrameTop_; }
    // Passes finished since the last Play.
    std::int16_t PassesDone() const { return playback_.PassesDone(); }

private:
    HeadlessPicture picture_;
    StripPlayback playback_;
    SurfaceRect bounds_;
    bool visible_ = false;
    int framesShown_ = 0;
    int lastFrameTop_ = 0;
};

} // namespace tolva
