// The real server against hostile and heavy use: oversized heads, too many submissions
// from one address, slow clients from many addresses and a proxy that tells who sent a
// request. (Two servers sharing one database are the store suite's two stores on one.)
// The timings asserted here are generous bounds; scripts/hiscored-load.sh measures the
// real figures.
#include "ServerHarness.h"

#include <atomic>
#include <thread>

using tolva::Hiscores;
using tolva::testing::TempFolder;
using namespace tolva::testing::hiscored;
using namespace std::chrono_literals;

namespace {

constexpr const char* FormType = "application/x-www-form-urlencoded";

std::string TableForm(double score, const std::string& name = "ACE") {
    Hiscores table;
    table[0] = {name, 7, score};
    return FormOf(table);
}

int Lines(const std::string& text, const std::string& part) {
    int n = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++n;
    return n;
}

// True once the server has closed `s` (a read gives end of file or an error).
bool ClosedByServer(int s) {
    char byte;
    const ssize_t n = ::recv(s, &byte, 1, MSG_DONTWAIT);
    return n == 0 || (n < 0 && errno != EAGAIN && errno != EWOULDBLOCK);
}

} // namespace

TEST(ServerLimits, RefusesOversizedHeadsAndTooManySubmissionsLoggingEachOnce) {
    TempFolder folder;
    Server server(folder, {"--max-submissions-per-minute", "1"});
    ASSERT_TRUE(server.Running());
    httplib::Client client = server.Client();
    auto accepted = client.Post(Path, TableForm(101, "\xC4\xC4\xC4"), FormType);
    ASSERT_TRUE(accepted);
    EXPECT_EQ(accepted->status, 200) << accepted->body;
    auto refused = client.Post(Path, TableForm(500), FormType);
    ASSERT_TRUE(refused);
    EXPECT_EQ(refused->status, 429);
    EXPECT_NE(refused->body.find("in this minute already"), std::string::npos) << refused->body;

    auto large = client.Get(Path, httplib::Headers{{"X-Padding", std::string(40000, 'p')}});
    ASSERT_TRUE(large);
    EXPECT_EQ(large->status, 431);
    auto page = client.Get(Path);
    ASSERT_TRUE(page);
    EXPECT_EQ(page->status, 200);
    EXPECT_EQ(page->get_header_value("Content-Type"), "text/html; charset=utf-8");
    // The game's code page in UTF-8 (the escaping is the site's own test).
    EXPECT_NE(page->body.find("<td>\xC3\x84\xC3\x84\xC3\x84</td>"), std::string::npos) << page->body;
    EXPECT_EQ(page->body.find("000.000.500"), std::string::npos);
    EXPECT_EQ(Query(server.Database(), "SELECT group_concat(stat, '|') FROM submission"), "[LEVEL1]\r\nScore=120\r\n");

    EXPECT_EQ(server.Stop(), 0);
    const std::string log = folder.Read("stderr.txt");
    EXPECT_EQ(Lines(log, "refused 127.0.0.1 with 429"), 1) << log;
    EXPECT_EQ(Lines(log, "431"), 1) << log;
}

TEST(ServerLimits, SlowClientsFromManyAddressesNeitherHoldTheServerNorStay) {
    TempFolder folder;
    Server server(folder, {"--request-timeout", "2"});
    ASSERT_TRUE(server.Running());
    std::vector<int> slow;
    for (unsigned i = 0; i < 300; ++i) {
        // Each from a loopback address of its own, 127.3.x.y.
        if (const int s = Connect(server.Port(), 127u << 24 | 3u << 16 | (i / 250) << 8 | (i % 250 + 1)); s >= 0)
            slow.push_back(s);
    }
    ASSERT_EQ(slow.size(), 300u);
    // An idle kept-alive connection: one request answered, then nothing.
    const int idle = Connect(server.Port());
    const std::string get = std::string("GET ") + Path + " HTTP/1.1\r\nHost: x\r\n\r\n";
    ::send(idle, get.data(), get.size(), MSG_NOSIGNAL);

    // Each slow client sends the start of a request head, a byte a second.
    const std::string head = "GET /tolva2/updatehiscore.asp HTTP/1.1\r\nX-Slow: ";
    std::atomic<bool> done{false};
    std::thread trickle([&] {
        for (std::size_t at = 0; at < head.size() && !done; ++at) {
            for (const int s : slow) ::send(s, &head[at], 1, MSG_NOSIGNAL | MSG_DONTWAIT);
            for (int tick = 0; tick < 10 && !done; ++tick) std::this_thread::sleep_for(100ms);
        }
    });
    httplib::Client client = server.Client();
    double worstMs = 0;
    for (int i = 0; i < 10; ++i) {
        const auto sent = Clock::now();
        auto page = client.Get(Path);
        ASSERT_TRUE(page);
        EXPECT_EQ(page->status, 200);
        worstMs = std::max(worstMs, std::chrono::duration<double, std::milli>(Clock::now() - sent).count());
        std::this_thread::sleep_for(100ms);
    }
    EXPECT_LT(worstMs, 1000.0);

    // The deadline closes them all, the idle one too, within a few seconds.
    const auto deadline = Clock::now() + 10s;
    std::size_t closed = 0;
    bool idleClosed = false;
    while (Clock::now() < deadline && (closed < slow.size() || !idleClosed)) {
        std::this_thread::sleep_for(200ms);
        closed = 0;
        for (const int s : slow) closed += ClosedByServer(s);
        if (!idleClosed) {
            char buffer[4096];
            ssize_t n;
            while ((n = ::recv(idle, buffer, sizeof buffer, MSG_DONTWAIT)) > 0) {
            }
            idleClosed = n == 0;
        }
    }
    done = true;
    trickle.join();
    EXPECT_EQ(closed, slow.size());
    EXPECT_TRUE(idleClosed);
    for (const int s : slow) ::close(s);
    ::close(idle);
    EXPECT_EQ(server.Stop(), 0);
    EXPECT_GE(Lines(folder.Read("stderr.txt"), "no whole request within 2 s"), 300);
}

TEST(ServerLimits, TakesTheSenderFromForwardedForOnlyBehindTheTrustedProxy) {
    TempFolder folder;
    Server proxied(folder, {"--trusted-proxy", "127.0.0.1", "--max-submissions-per-minute", "1"});
    ASSERT_TRUE(proxied.Running());
    const auto post = [](httplib::Client client, double score, const char* forwardedFor) {
        auto reply = client.Post(Path, httplib::Headers{{"X-Forwarded-For", forwardedFor}}, TableForm(score), FormType);
        return reply ? reply->status : -1;
    };
    EXPECT_EQ(post(proxied.Client(), 1, "10.9.9.9, 198.51.100.1"), 200);
    EXPECT_EQ(post(proxied.Client(), 2, "198.51.100.2"), 200);  // another player behind the same proxy
    EXPECT_EQ(post(proxied.Client(), 3, "198.51.100.1"), 429);
    EXPECT_EQ(Query(proxied.Database(), "SELECT group_concat(sender, ' ') FROM submission"),
              "198.51.100.1 198.51.100.2");
    EXPECT_EQ(proxied.Stop(), 0);

    TempFolder direct;
    Server open(direct, {"--max-submissions-per-minute", "1"});
    ASSERT_TRUE(open.Running());
    EXPECT_EQ(post(open.Client(), 1, "198.51.100.1"), 200);
    EXPECT_EQ(post(open.Client(), 2, "198.51.100.2"), 429);  // the header is nobody's word without a trusted proxy
    EXPECT_EQ(Query(open.Database(), "SELECT sender FROM submission"), "127.0.0.1");
    EXPECT_EQ(open.Stop(), 0);
}
