#include "support/platform/HeadlessEventLoop.h"

#include <algorithm>
#include <string>

namespace tolva {

class HeadlessEventLoop::VirtualTimer final : public Timer {
public:
    explicit VirtualTimer(HeadlessEventLoop& loop) : loop_(&loop) { loop_->timers_.push_back(this); }
    ~VirtualTimer() override {
        if (loop_ != nullptr) {
            auto& v = loop_->timers_;
            v.erase(std::remove(v.begin(), v.end(), this), v.end());
        }
    }

    void SetInterval(std::int32_t ms) override {
        interval_ = ms < 0 ? 0 : ms;
        if (enabled_) Schedule();
    }
    std::int32_t Interval() const override { return interval_; }
    void SetEnabled(bool enabled) override {
        if (enabled == enabled_) return;
        enabled_ = enabled;
        if (enabled_) Schedule();
    }
    bool Enabled() const override { return enabled_; }

    void Schedule() {
        deadline_ = loop_->now_ + interval_;
        order_ = loop_->nextOrder_++;
    }

    HeadlessEventLoop* loop_;
    std::int32_t interval_ = 0;
    bool enabled_ = false;
    bool ticking_ = false;
    std::int64_t deadline_ = 0;
    std::uint64_t order_ = 0;
};

HeadlessEventLoop::HeadlessEventLoop() = default;

HeadlessEventLoop::~HeadlessEventLoop() {
    // Timers may outlive the loop in a careless test; cut them loose rather than dangle.
    for (auto* t : timers_) t->loop_ = nullptr;
}

std::unique_ptr<Timer> HeadlessEventLoop::CreateTimer(bool) {
    return std::make_unique<VirtualTimer>(*this);
}

int HeadlessEventLoop::RunningTimers() const {
    return static_cast<int>(std::count_if(timers_.begin(), timers_.end(),
                                          [](const VirtualTimer* t) { return t->enabled_; }));
}

void HeadlessEventLoop::Post(std::function<void()> event) {
    posted_.push_back(std::move(event));
}

void HeadlessEventLoop::RunDue() {
    // Events queued before this call run first, in order; those they queue wait for
    // the next call, as on a real loop.
    for (auto n = posted_.size(); n > 0 && !posted_.empty(); --n) {
        auto ev = std::move(posted_.front());
        posted_.pop_front();
        if (ev) ev();
    }
    // Each timer due now ticks once, earliest deadline first. The list is taken as it
    // stands and re-checked before each tick: a tick may switch other timers off (no
    // tick follows then) or delete them.
    std::vector<std::pair<std::int64_t, std::uint64_t>> due;
    for (auto* t : timers_)
        if (t->enabled_ && !t->ticking_ && t->deadline_ <= now_) due.emplace_back(t->deadline_, t->order_);
    std::sort(due.begin(), due.end());
    for (const auto& entry : due) {
        auto it = std::find_if(timers_.begin(), timers_.end(), [&entry](const VirtualTimer* t) {
            return t->deadline_ == entry.first && t->order_ == entry.second;
        });
        if (it == timers_.end()) continue;
        VirtualTimer* t = *it;
        if (!t->enabled_ || t->ticking_) continue;
        // The next period starts at this tick; a late tick does not try to catch up.
        t->deadline_ = now_ + std::max<std::int32_t>(t->interval_, 1);
        t->order_ = nextOrder_++;
        t->ticking_ = true;
        if (t->OnTick) t->OnTick();
        // The timer may have been destroyed by its own tick.
        auto still = std::find(timers_.begin(), timers_.end(), t);
        if (still != timers_.end()) t->ticking_ = false;
    }
}

std::int64_t HeadlessEventLoop::NextDeadline() const {
    std::int64_t best = -1;
    for (const auto* t : timers_)
        if (t->enabled_ && !t->ticking_ && (best < 0 || t->deadline_ < best)) best = t->deadline_;
    return best;
}

void HeadlessEventLoop::DoEvents() { RunDue(); }

void HeadlessEventLoop::WaitUntil(const std::function<bool()>& condition) {
    const std::int64_t start = now_;
    while (!condition()) {
        RunDue();
        if (condition()) return;
        if (!posted_.empty()) continue;
        const std::int64_t next = NextDeadline();
        if (next < 0)
            throw WaitNeverEnds("wait can never end: no timer running and no event queued (virtual time " +
                                std::to_string(now_) + " ms)");
        if (next - start > waitLimit_)
            throw WaitNeverEnds("wait did not end within " + std::to_string(waitLimit_) +
                                " ms of virtual time");
        if (next > now_) now_ = next;
    }
}

void HeadlessEventLoop::Pause(std::int32_t ms) {
    if (ms > 0) now_ += ms;
}

void HeadlessEventLoop::Advance(std::int64_t ms) {
    const std::int64_t end = now_ + std::max<std::int64_t>(ms, 0);
    for (;;) {
        RunDue();
        const std::int64_t next = NextDeadline();
        if (next < 0 || next > end) break;
        if (next > now_) now_ = next;
    }
    // A tick may itself have waited past `end`; the clock never runs backwards.
    now_ = std::max(now_, end);
    RunDue();
}

} // namespace tolva
