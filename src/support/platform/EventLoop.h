#pragma once
// The one thread of the game and everything that waits on it.
//
// The game is single-threaded and event driven. A routine that has to wait for an effect
// (a saw running, a bonus counting up) does not block: it calls WaitUntil, which keeps
// handing the thread to the event loop until the condition holds, so that timer ticks,
// repaints and clicks are served meanwhile. A tick may itself wait; the waits nest.
//
// Two implementations stand behind this interface:
//  - HeadlessEventLoop, a virtual clock for the core, the command-line tool and the tests.
//    Waiting advances the clock straight to the next timer deadline, so a four-second
//    effect runs in microseconds with exactly the ticks it has on screen, and a wait
//    that can never end throws instead of hanging.
//  - QtEventLoop, which sleeps in a nested Qt event loop until the next event arrives.
#include <cstdint>
#include <functional>
#include <memory>

namespace tolva {

// A timer: Interval in milliseconds, Enabled, and a tick. Enabling starts a period whose
// first tick comes one Interval later; disabling ends it and no tick follows, even one
// that was already due. A timer ticks until something switches it off. Changing the
// Interval of a running timer starts a new period of the new length from now.
class Timer {
public:
    virtual ~Timer() = default;

    virtual void SetInterval(std::int32_t ms) = 0;
    virtual std::int32_t Interval() const = 0;
    virtual void SetEnabled(bool enabled) = 0;
    virtual bool Enabled() const = 0;

    // Called on every tick. A timer whose tick is still running is not ticked again
    // from inside that tick (a nested wait lets the other timers run, not itself).
    std::function<void()> OnTick;
};

class EventLoop {
public:
    virtual ~EventLoop() = default;

    // A new timer, disabled, interval 0. `precise` asks for the high-resolution kind
    // that the short effect timers need; the headless loop treats both the same.
    virtual std::unique_ptr<Timer> CreateTimer(bool precise = true) = 0;

    // Hands the thread to the event loop once: queued events and due timer ticks are
    // delivered, then the call returns. It never sleeps.
    virtual void DoEvents() = 0;

    // Lets events run until `condition` holds; returns at once if it holds already.
    virtual void WaitUntil(const std::function<bool()>& condition) = 0;

    // Blocks the thread for `ms` milliseconds: nothing is delivered meanwhile.
    virtual void Pause(std::int32_t ms) = 0;

    // Queues `event` to run on this thread at the next DoEvents or wait.
    virtual void Post(std::function<void()> event) = 0;

    // Milliseconds since the loop was made, on its own clock.
    virtual std::int64_t NowMs() const = 0;
};

} // namespace tolva
