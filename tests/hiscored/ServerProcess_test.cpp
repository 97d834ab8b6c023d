// The real tolva2-hiscored process on 127.0.0.1: its arguments and exit status, and the
// server still answering after a run of garbage. Every wait has a deadline. A table posted
// and read back from the public page is in ServerLimits_test and, through the game's own
// submission window, in tests/hiscores/qt/HiscoreServer_test.
#include "ServerHarness.h"

#include <random>

using tolva::testing::TempFolder;
using namespace tolva::testing::hiscored;

TEST(ServerProcess, AnswersHelpAndRefusesBadArgumentsWithStatusTwo) {
    TempFolder folder;
    EXPECT_EQ(WaitExit(Spawn({"--help"}, folder), std::chrono::seconds(10)), 0);
    EXPECT_NE(folder.Read("stdout.txt").find("--listen HOST:PORT"), std::string::npos);
    EXPECT_EQ(WaitExit(Spawn({"--listen", "nowhere"}, folder), std::chrono::seconds(10)), 2);
    const std::string error = folder.Read("stderr.txt");
    EXPECT_EQ(error.rfind("tolva2-hiscored: --listen", 0), 0u) << error;
    EXPECT_EQ(std::count(error.begin(), error.end(), '\n'), 1);
    // A database it cannot open is another failure than a bad argument.
    EXPECT_EQ(WaitExit(Spawn({"--db", folder / "missing/dir/x.sqlite", "--listen", "127.0.0.1:0"}, folder),
                       std::chrono::seconds(10)),
              1);
}

TEST(ServerProcess, KeepsAnsweringAfterGarbageAndOversizedBodies) {
    TempFolder folder;
    // A body cut short waits for the rest until the request's deadline.
    Server server(folder, {"--request-timeout", "1"});
    ASSERT_TRUE(server.Running());

    std::mt19937 random(17);
    for (int i = 0; i < 200; ++i) {
        const int s = Connect(server.Port());
        ASSERT_GE(s, 0);
        std::string junk(random() % 2000, '\0');
        for (char& c : junk) c = static_cast<char>(random());
        if (i % 2) junk = "POST /tolva2/updatehiscore.asp HTTP/1.1\r\nContent-Length: 40\r\n\r\n" + junk;
        ::send(s, junk.data(), junk.size(), MSG_NOSIGNAL);
        ::shutdown(s, SHUT_WR);
        timeval timeout{5, 0};
        ::setsockopt(s, SOL_SOCKET, SO_RCVTIMEO, &timeout, sizeof timeout);
        char buffer[4096];
        while (::recv(s, buffer, sizeof buffer, 0) > 0) {
        }
        ::close(s);
    }

    httplib::Client client = server.Client();
    // A body declared larger than the limit is refused from its headers.
    auto large = client.Post(Path, std::string(200 * 1024, 'a'), "application/x-www-form-urlencoded");
    ASSERT_TRUE(large);
    EXPECT_EQ(large->status, 413);

    auto page = client.Get(Path);
    ASSERT_TRUE(page);
    EXPECT_EQ(page->status, 200);
    EXPECT_EQ(Query(server.Database(), "SELECT count(*) || '' FROM submission"), "0");
    EXPECT_EQ(server.Stop(), 0);
}
