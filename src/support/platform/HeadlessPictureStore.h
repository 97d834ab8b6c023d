#pragma once
// The picture store of the headless platform: holders that read bitmap files themselves
// and strips that play on the event loop's clock.
#include "support/platform/EventLoop.h"
#include "support/platform/PictureStore.h"

namespace tolva {

class HeadlessPictureStore final : public PictureStore {
public:
    explicit HeadlessPictureStore(EventLoop& loop) : loop_(loop) {}

    std::unique_ptr<PictureHolder> CreateHolder(const std::string& name) override;
    std::unique_ptr<PictureStrip> CreateStrip(const std::string& name) override;

private:
    EventLoop& loop_;
};

} // namespace tolva
