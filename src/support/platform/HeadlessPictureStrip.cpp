#include "support/platform/HeadlessPictureStrip.h"

namespace tolva {

HeadlessPictureStrip::HeadlessPictureStrip(std::string name, EventLoop& loop)
    : picture_(std::move(name)), playback_(loop) {
    playback_.HasPicture = [this] { return picture_.HasPicture(); };
    playback_.StripHeight = [this] { return picture_.ScaleHeight(); };
    playback_.PaintFrame = [this](int top) {
        ++framesShown_;
        lastFrameTop_ = top;
    };
    playback_.Finish = [this] {
        if (OnFinish) OnFinish();
    };
}

bool HeadlessPictureStrip::LoadStrip(const std::string& storedPath) {
    if (!picture_.LoadFile(storedPath)) return false;
    playback_.UpdatePicture();
    return true;
}

} // namespace tolva
