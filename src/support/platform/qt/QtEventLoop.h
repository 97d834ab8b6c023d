#pragma once
// The event loop of the running game, on Qt. See support/platform/EventLoop.h.
#include "support/platform/EventLoop.h"

#include <QElapsedTimer>

namespace tolva {

class QtEventLoop final : public EventLoop {
public:
    QtEventLoop();

    std::unique_ptr<Timer> CreateTimer(bool precise = true) override;
    void DoEvents() override;
    // Sleeps in the Qt event loop until an event arrives, then tests the condition
    // again; it never spins.
    void WaitUntil(const std::function<bool()>& condition) override;
    void Pause(std::int32_t ms) override;
    void Post(std::function<void()> event) override;
    std::int64_t NowMs() const override { return clock_.elapsed(); }

private:
    QElapsedTimer clock_;
};

} // namespace tolva
