#pragma once
// The playing of a picture strip, the one logic behind the strips on screen (IA) and the
// headless ones, so that both keep exactly the same frames at exactly the same ticks.
//
//  - Play(n) shows the first frame at once and starts the timer; every tick shows the
//    frame at StripPos and steps on by MoveHeight. After the last frame of a pass the
//    position goes back to the top; after the n-th pass the timer stops, the first frame
//    shows again and Finish comes. The first frame is thus on screen for two intervals,
//    and Play(0) ends after one pass as Play(1). Play() or Play(-1) runs until StopPlay.
//  - StopPlay stops at once and raises Finish before it shows the first frame again, the
//    other way round from the end of a pass.
//  - Play while playing starts again from the first frame with the new count; the
//    interrupted play gets no Finish.
//  - A MoveHeight below 1 is raised to 1 when a frame is shown.
// The strip's owner paints (PaintFrame) and knows the strip's height; this class only
// counts. A strip with no picture shows nothing but still counts its passes by the ticks.
#include "support/platform/EventLoop.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace tolva {

class StripPlayback {
public:
    static constexpr std::int16_t DefaultInterval = 40;
    static constexpr std::int16_t DefaultMoveHeight = 20;

    explicit StripPlayback(EventLoop& loop);
    ~StripPlayback();
    StripPlayback(const StripPlayback&) = delete;
    StripPlayback& operator=(const StripPlayback&) = delete;

    // What the owner supplies: whether it holds a picture and how high it is, how a frame
    // at a given top is painted, and what a finished play does.
    std::function<bool()> HasPicture;
    std::function<double()> StripHeight;
    std::function<void(int top)> PaintFrame;
    std::function<void()> Finish;

    void Play(std::int16_t times = -1);
    void StopPlay();
    bool IsPlaying() const { return timer_->Enabled(); }
    // Shows the first frame; with no picture, nothing.
    void UpdatePicture();

    std::int16_t Interval() const { return static_cast<std::int16_t>(timer_->Interval()); }
    void SetInterval(std::int16_t ms) { timer_->SetInterval(ms); }
    std::int16_t MoveHeight() const { return moveHeight_; }
    void SetMoveHeight(std::int16_t height) { moveHeight_ = height; }

    std::int16_t StripPos() const { return stripPos_; }
    std::int16_t PassesDone() const { return passesDone_; }
    std::int16_t PassesWanted() const { return passesWanted_; }

private:
    void Tick();

    std::unique_ptr<Timer> timer_;
    std::int16_t moveHeight_ = DefaultMoveHeight;
    std::int16_t stripPos_ = 0;
    std::int16_t passesDone_ = 0;
    std::int16_t passesWanted_ = -1;
};

} // namespace tolva
