#include "support/platform/StripPlayback.h"

namespace tolva {

StripPlayback::StripPlayback(EventLoop& loop) : timer_(loop.CreateTimer(true)) {
    timer_->SetInterval(DefaultInterval);
    timer_->OnTick = [this] { Tick(); };
}

StripPlayback::~StripPlayback() {
    // A tick must never reach an owner that is gone.
    timer_->SetEnabled(false);
    timer_->OnTick = nullptr;
}

void StripPlayback::Play(std::int16_t times) {
    stripPos_ = 0;
    passesDone_ = 0;
    passesWanted_ = times;
    UpdatePicture();
    timer_->SetEnabled(true);
}

void StripPlayback::StopPlay() {
    timer_->SetEnabled(false);
    if (Finish) Finish();
    UpdatePicture();
}

void StripPlayback::UpdatePicture() {
    if (!HasPicture || !HasPicture()) return;
    if (moveHeight_ < 1) moveHeight_ = 1;
    if (PaintFrame) PaintFrame(0);
}

void StripPlayback::Tick() {
    if (PaintFrame) PaintFrame(stripPos_);
    const int step = moveHeight_ < 1 ? 1 : moveHeight_;
    const int next = stripPos_ + step;
    const double height = StripHeight ? StripHeight() : 0;
    if (next < height) {
        stripPos_ = static_cast<std::int16_t>(next);
        return;
    }
    stripPos_ = 0;
    if (passesWanted_ <= -1) return;
    ++passesDone_;
    if (passesDone_ < passesWanted_) return;
    timer_->SetEnabled(false);
    UpdatePicture();
    if (Finish) Finish();
}

} // namespace tolva
