#include "support/platform/HeadlessPictureStrip.h"

#include <algorithm>

namespace tolva {

HeadlessPictureStrip::HeadlessPictureStrip(std::string name, EventLoop& loop)
    : picture_(std::move(name)), timer_(loop.CreateTimer(true)) {
    timer_->SetInterval(40);
    timer_->OnTick = [this] { Tick(); };
}

bool HeadlessPictureStrip::LoadStrip(const std::string& storedPath) {
    if (!picture_.LoadFile(storedPath)) return false;
    UpdatePicture();
    return true;
}

void HeadlessPictureStrip::Play(std::int16_t times) {
    stripPos_ = 0;
    passesDone_ = 0;
    passesWanted_ = times;
    UpdatePicture();
    timer_->SetEnabled(true);
}

void HeadlessPictureStrip::StopPlay() {
    // Finish comes before the first frame is shown again, the other way round from the
    // end of a pass.
    timer_->SetEnabled(false);
    if (OnFinish) OnFinish();
    UpdatePicture();
}

void HeadlessPictureStrip::Tick() {
    ShowFrame(stripPos_);
    stripPos_ += std::max<int>(moveHeight_, 1);
    if (stripPos_ < picture_.ScaleHeight()) return;
    stripPos_ = 0;
    if (passesWanted_ <= -1) return;
    ++passesDone_;
    if (passesDone_ < passesWanted_) return;
    timer_->SetEnabled(false);
    UpdatePicture();
    if (OnFinish) OnFinish();
}

void HeadlessPictureStrip::ShowFrame(int top) {
    ++framesShown_;
    lastFrameTop_ = top;
}

void HeadlessPictureStrip::UpdatePicture() {
    if (!picture_.HasPicture()) return;
    if (moveHeight_ < 1) moveHeight_ = 1;
    ShowFrame(0);
}

} // namespace tolva
