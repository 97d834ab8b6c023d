#include "support/platform/HeadlessEventLoop.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using tolva::HeadlessEventLoop;
using tolva::WaitNeverEnds;

namespace {

struct Log {
    std::vector<std::string> lines;
    void Add(HeadlessEventLoop& loop, const std::string& what) {
        lines.push_back(std::to_string(loop.NowMs()) + " " + what);
    }
};

} // namespace

TEST(HeadlessEventLoop, FirstTickOneIntervalAfterEnablingAndNoneAfterDisabling) {
    HeadlessEventLoop loop;
    Log log;
    auto t = loop.CreateTimer();
    t->SetInterval(100);
    t->OnTick = [&] { log.Add(loop, "tick"); };
    loop.Advance(50);
    t->SetEnabled(true);          // period starts at 50
    loop.Advance(99);             // 149: nothing yet
    EXPECT_TRUE(log.lines.empty());
    loop.Advance(1);              // first tick at 150
    loop.Advance(200);
    EXPECT_EQ(log.lines, (std::vector<std::string>{"150 tick", "250 tick", "350 tick"}));

    // Disabled while a tick is already due: it does not come.
    loop.Pause(100);              // clock at 450: the tick of 450 is due but not delivered
    t->SetEnabled(false);
    loop.DoEvents();
    EXPECT_EQ(log.lines.size(), 3u);
    // Enabling again starts a fresh period from now.
    t->SetEnabled(true);
    loop.Advance(100);
    EXPECT_EQ(log.lines.back(), "550 tick");
}

TEST(HeadlessEventLoop, NestedWaitsLetOtherTimersTickButNotTheWaitingOne) {
    HeadlessEventLoop loop;
    Log log;
    auto outer = loop.CreateTimer();
    auto inner = loop.CreateTimer();
    outer->SetInterval(100);
    inner->SetInterval(30);
    int innerTicks = 0;
    inner->OnTick = [&] {
        ++innerTicks;
        log.Add(loop, "inner");
        if (innerTicks == 4) inner->SetEnabled(false);
    };
    outer->OnTick = [&] {
        log.Add(loop, "outer begins");
        outer->SetEnabled(false);
        inner->SetEnabled(true);
        // The outer tick waits for the inner effect, as a spell waits for its animation.
        loop.WaitUntil([&] { return !inner->Enabled(); });
        log.Add(loop, "outer ends");
    };
    outer->SetEnabled(true);
    loop.WaitUntil([&] { return !outer->Enabled() && !inner->Enabled() && innerTicks == 4; });
    EXPECT_EQ(log.lines, (std::vector<std::string>{"100 outer begins", "130 inner", "160 inner", "190 inner",
                                                   "220 inner", "220 outer ends"}));

    // A timer that keeps running while its own tick waits is not re-entered, and a wait
    // that runs past the end of an Advance does not turn the clock back.
    int depth = 0, maxDepth = 0, ticks = 0;
    std::int64_t lastWaitEnd = 0;
    auto self = loop.CreateTimer();
    auto helper = loop.CreateTimer();
    helper->SetInterval(10);
    helper->OnTick = [&] { ++ticks; };
    self->SetInterval(5);
    self->OnTick = [&] {
        maxDepth = std::max(maxDepth, ++depth);
        const int until = ticks + 3;
        helper->SetEnabled(true);
        loop.WaitUntil([&] { return ticks >= until; });
        lastWaitEnd = loop.NowMs();
        --depth;
    };
    self->SetEnabled(true);
    const std::int64_t advanceEnd = loop.NowMs() + 100;
    loop.Advance(100);
    EXPECT_EQ(maxDepth, 1);
    ASSERT_GT(lastWaitEnd, advanceEnd);
    EXPECT_GE(loop.NowMs(), lastWaitEnd);
}

TEST(HeadlessEventLoop, WaitThatCanNeverEndThrowsInsteadOfHanging) {
    HeadlessEventLoop loop;
    EXPECT_THROW(loop.WaitUntil([] { return false; }), WaitNeverEnds);

    // A timer that keeps ticking but never brings the condition about.
    auto t = loop.CreateTimer();
    t->SetInterval(10);
    t->SetEnabled(true);
    loop.SetWaitLimitMs(5000);
    EXPECT_THROW(loop.WaitUntil([] { return false; }), WaitNeverEnds);
    EXPECT_LE(loop.NowMs(), 5010);

    // A condition that holds already returns at once without moving the clock.
    const auto before = loop.NowMs();
    loop.WaitUntil([] { return true; });
    EXPECT_EQ(loop.NowMs(), before);
}

TEST(HeadlessEventLoop, PostedEventsRunInOrderAndPauseDeliversNothing) {
    HeadlessEventLoop loop;
    std::vector<int> seen;
    loop.Post([&] { seen.push_back(1); loop.Post([&] { seen.push_back(3); }); });
    loop.Post([&] { seen.push_back(2); });
    int ticks = 0;
    auto t = loop.CreateTimer();
    t->SetInterval(10);
    t->OnTick = [&] { ++ticks; };
    t->SetEnabled(true);
    loop.Pause(50);
    EXPECT_TRUE(seen.empty());
    EXPECT_EQ(ticks, 0);
    loop.DoEvents();                   // queued events first, then one late tick
    EXPECT_EQ(seen, (std::vector<int>{1, 2}));
    EXPECT_EQ(ticks, 1);
    loop.WaitUntil([&] { return seen.size() == 3; });
    EXPECT_EQ(seen.back(), 3);

    // A timer deleted by another timer's tick is not ticked afterwards.
    auto victim = loop.CreateTimer();
    int victimTicks = 0;
    victim->SetInterval(10);
    victim->OnTick = [&] { ++victimTicks; };
    auto killer = loop.CreateTimer();
    killer->SetInterval(10);
    killer->OnTick = [&] { victim.reset(); killer->SetEnabled(false); };
    killer->SetEnabled(true);
    victim->SetEnabled(true);
    loop.Advance(50);
    EXPECT_EQ(victimTicks, 0);
}
