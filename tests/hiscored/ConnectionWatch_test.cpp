// The whole-request deadline on a virtual clock, with real sockets to shut.
#include "ConnectionWatch.h"

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <unistd.h>

using namespace tolva::hiscored;
using namespace std::chrono_literals;

namespace {

// A connected pair of sockets: the server's end and the client's.
struct Pair {
    Pair() { ::socketpair(AF_UNIX, SOCK_STREAM, 0, ends); }
    ~Pair() {
        ::close(ends[0]);
        ::close(ends[1]);
    }
    // True if the client's end sees the server's end shut.
    bool ClientSeesShut() const {
        char byte;
        return ::recv(ends[1], &byte, 1, MSG_DONTWAIT) == 0;
    }
    int ends[2] = {-1, -1};
};

} // namespace

TEST(ConnectionWatch, ShutsARequestThatDoesNotArriveWholeInTime) {
    std::vector<std::string> log;
    ConnectionWatch watch(5s, [&](const std::string& line) { log.push_back(line); });
    const ConnectionWatch::Clock::time_point start{};
    Pair slow, quick, idle;
    int keys[3];
    watch.Opened(&keys[0], slow.ends[0], "10.0.0.1", start);
    watch.Opened(&keys[1], quick.ends[0], "10.0.0.2", start);
    watch.Opened(&keys[2], idle.ends[0], "10.0.0.2", start);
    EXPECT_EQ(watch.Open(), 3u);
    EXPECT_EQ(watch.OpenFrom("10.0.0.2"), 2u);

    watch.Answered(&keys[1]);  // its request came whole: no deadline while it is answered
    watch.Answered(&keys[2]);
    watch.Finished(&keys[2], start + 3s);  // answered; now idle on keep-alive
    EXPECT_EQ(watch.Sweep(start + 4999ms), 0);
    EXPECT_FALSE(slow.ClientSeesShut());

    EXPECT_EQ(watch.Sweep(start + 5s), 1);
    EXPECT_TRUE(slow.ClientSeesShut());
    EXPECT_FALSE(quick.ClientSeesShut());
    ASSERT_EQ(log.size(), 1u);
    EXPECT_EQ(log[0], "closed a connection from 10.0.0.1: no whole request within 5 s");
    EXPECT_EQ(watch.Sweep(start + 6s), 0);  // each is shut and logged once

    // The idle one goes five seconds after its answer.
    EXPECT_EQ(watch.Sweep(start + 8s), 1);
    EXPECT_TRUE(idle.ClientSeesShut());
    EXPECT_FALSE(quick.ClientSeesShut());

    // A closed connection is forgotten, and its socket number never touched again.
    watch.Closed(&keys[1]);
    watch.Closed(&keys[1]);
    EXPECT_EQ(watch.OpenFrom("10.0.0.2"), 1u);
    EXPECT_EQ(watch.Sweep(start + 60s), 0);
    EXPECT_FALSE(quick.ClientSeesShut());
}
