#pragma once
// The event loop on a virtual clock. See EventLoop.h for why.
#include "support/platform/EventLoop.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <stdexcept>
#include <vector>

namespace tolva {

// Thrown by WaitUntil when the condition cannot come true: no timer is running and no
// event is queued, or the virtual clock has run further than any effect of the game
// lasts. In a test this is a failure with a message, never a hang.
class WaitNeverEnds : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class HeadlessEventLoop final : public EventLoop {
public:
    HeadlessEventLoop();
    ~HeadlessEventLoop() override;

    std::unique_ptr<Timer> CreateTimer(bool precise = true) override;
    void DoEvents() override;
    void WaitUntil(const std::function<bool()>& condition) override;
    void Pause(std::int32_t ms) override;
    void Post(std::function<void()> event) override;
    std::int64_t NowMs() const override { return now_; }

    // Moves the clock forward by `ms`, delivering every tick on the way at its time.
    void Advance(std::int64_t ms);

    // The longest stretch of virtual time one WaitUntil may run before it gives up.
    void SetWaitLimitMs(std::int64_t ms) { waitLimit_ = ms; }

    // Number of timers that are enabled now.
    int RunningTimers() const;

private:
    class VirtualTimer;
    friend class VirtualTimer;

    // Delivers the queued events, then each timer due at the present time once.
    void RunDue();
    // The earliest deadline of an enabled timer that is not ticking, or -1.
    std::int64_t NextDeadline() const;

    std::int64_t now_ = 0;
    std::int64_t waitLimit_ = 3'600'000;
    std::uint64_t nextOrder_ = 0;
    std::vector<VirtualTimer*> timers_;
    std::deque<std::function<void()>> posted_;
};

} // namespace tolva
