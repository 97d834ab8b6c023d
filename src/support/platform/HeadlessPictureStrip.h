#pragma once
// A picture strip on the virtual clock. It keeps the timing of the real control to the
// tick: Play shows the first frame at once, every tick shows the next one, and after the
// last frame of the last pass it goes back to the first frame and raises OnFinish. So
// Play(1) on a strip of n frames finishes n intervals later, as on screen; a strip with no
// picture counts one pass per tick. Nothing is drawn; the frames shown are counted.
#include "support/platform/EventLoop.h"
#include "support/platform/HeadlessPicture.h"
#include "support/platform/PictureStrip.h"

#include <memory>

namespace tolva {

class HeadlessPictureStrip final : public PictureStrip {
public:
    HeadlessPictureStrip(std::string name, EventLoop& loop);

    const std::string& Name() const override { return picture_.Name(); }
    bool LoadStrip(const std::string& storedPath) override;
    bool HasStrip() const override { return picture_.HasPicture(); }

    void SetInterval(std::int16_t ms) override { timer_->SetInterval(ms); }
    std::int16_t Interval() const override { return static_cast<std::int16_t>(timer_->Interval()); }
    void SetMoveHeight(std::int16_t height) override { moveHeight_ = height; }
    std::int16_t MoveHeight() const override { return moveHeight_; }

    void SetBounds(const SurfaceRect& bounds) override { bounds_ = bounds; }
    SurfaceRect Bounds() const override { return bounds_; }
    void SetVisible(bool visible) override { visible_ = visible; }
    bool Visible() const override { return visible_; }

    void Play(std::int16_t times = -1) override;
    void StopPlay() override;
    bool IsPlaying() const override { return timer_->Enabled(); }

    // Frames shown since the strip was made, and the top of the last one in the strip.
    int FramesShown() const { return framesShown_; }
    int LastFrameTop() const { return lastFrameTop_; }
    // Passes finished since the last Play.
    std::int16_t PassesDone() const { return passesDone_; }

private:
    void Tick();
    void ShowFrame(int top);
    void UpdatePicture();

    HeadlessPicture picture_;
    std::unique_ptr<Timer> timer_;
    std::int16_t moveHeight_ = 20;
    SurfaceRect bounds_;
    bool visible_ = false;
    int stripPos_ = 0;
    std::int16_t passesDone_ = 0;
    std::int16_t passesWanted_ = -1;
    int framesShown_ = 0;
    int lastFrameTop_ = 0;
};

} // namespace tolva
