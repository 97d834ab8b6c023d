// The real tolva2-hiscored process on 127.0.0.1: a table the game built posted the way
// the game's page posts it, read back from the public page, a tampered one refused, and
// the server still answering after a run of garbage. Every wait has a deadline.
// The same round through the game's own submission window is tests/qt/HiscoreServer_test.
#include "FormFields.h"

#include "hiscores/Hiscores.h"
#include "support/TempFolder.h"
#include "support/ZenkorModule.h"

#include <httplib.h>

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <arpa/inet.h>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <netinet/in.h>
#include <random>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

using tolva::DefaultSetKey;
using tolva::Hiscores;
using tolva::hiscored::EncodeFormValue;
using tolva::testing::TempFolder;

namespace {

using Clock = std::chrono::steady_clock;
constexpr const char* Path = "/tolva2/updatehiscore.asp";

// A port of 127.0.0.1 that nobody listens on just now.
int FreePort() {
    const int s = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ::bind(s, reinterpret_cast<sockaddr*>(&address), sizeof address);
    socklen_t length = sizeof address;
    ::getsockname(s, reinterpret_cast<sockaddr*>(&address), &length);
    ::close(s);
    return ntohs(address.sin_port);
}

int Connect(int port) {
    const int s = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::connect(s, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0) return s;
    ::close(s);
    return -1;
}

// Runs the server binary; its output goes to files in `folder`.
pid_t Spawn(const std::vector<std::string>& args, const TempFolder& folder) {
    std::vector<std::string> words = {TOLVA_HISCORED};
    words.insert(words.end(), args.begin(), args.end());
    std::vector<char*> argv;
    for (std::string& w : words) argv.push_back(w.data());
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    const std::string out = folder / "stdout.txt", err = folder / "stderr.txt";
    posix_spawn_file_actions_addopen(&actions, 1, out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    posix_spawn_file_actions_addopen(&actions, 2, err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    pid_t pid = -1;
    if (posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), environ) != 0) pid = -1;
    posix_spawn_file_actions_destroy(&actions);
    return pid;
}

// The exit status of `pid`, waiting at most `limit`; -1 if it did not end (it is then
// killed) or ended by a signal.
int WaitExit(pid_t pid, std::chrono::milliseconds limit) {
    const auto deadline = Clock::now() + limit;
    int status = 0;
    while (::waitpid(pid, &status, WNOHANG) == 0) {
        if (Clock::now() > deadline) {
            ::kill(pid, SIGKILL);
            ::waitpid(pid, &status, 0);
            return -1;
        }
        ::usleep(10'000);
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

class Server {
public:
    explicit Server(const TempFolder& folder) : port_(FreePort()), db_(folder / "hiscores.sqlite") {
        pid_ = Spawn({"--listen", "127.0.0.1:" + std::to_string(port_), "--db", db_}, folder);
        // Poll for the port to open; the server may also have failed to start.
        const auto deadline = Clock::now() + std::chrono::seconds(10);
        while (pid_ > 0 && Clock::now() < deadline) {
            if (const int s = Connect(port_); s >= 0) {
                ::close(s);
                return;
            }
            int status = 0;
            if (::waitpid(pid_, &status, WNOHANG) == pid_) {
                pid_ = -1;
                break;
            }
            ::usleep(10'000);
        }
        ADD_FAILURE() << "the server did not open 127.0.0.1:" << port_ << ": " << folder.Read("stderr.txt");
    }
    ~Server() {
        if (pid_ > 0) Stop();
    }
    // SIGTERM, and the exit status.
    int Stop() {
        ::kill(pid_, SIGTERM);
        const int status = WaitExit(pid_, std::chrono::seconds(10));
        pid_ = -1;
        return status;
    }
    bool Running() const { return pid_ > 0; }
    int Port() const { return port_; }
    const std::string& Database() const { return db_; }

    httplib::Client Client() const {
        httplib::Client client("127.0.0.1", port_);
        client.set_connection_timeout(5);
        client.set_read_timeout(5);
        client.set_write_timeout(5);
        return client;
    }

private:
    int port_;
    std::string db_;
    pid_t pid_ = -1;
};

long long Count(const std::string& db, const char* table) {
    sqlite3* handle = nullptr;
    sqlite3_open_v2(db.c_str(), &handle, SQLITE_OPEN_READONLY, nullptr);
    sqlite3_stmt* statement = nullptr;
    long long n = -1;
    const std::string sql = std::string("SELECT count(*) FROM ") + table;
    if (sqlite3_prepare_v2(handle, sql.c_str(), -1, &statement, nullptr) == SQLITE_OK &&
        sqlite3_step(statement) == SQLITE_ROW)
        n = sqlite3_column_int64(statement, 0);
    sqlite3_finalize(statement);
    sqlite3_close(handle);
    return n;
}

std::string FormOf(const Hiscores& table) {
    return "hiscoredata=" + EncodeFormValue(table.MakeHiscoreString(DefaultSetKey)) + "&stat=" +
           EncodeFormValue("[LEVEL1]\r\nScore=120\r\n");
}

} // namespace

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

TEST(ServerProcess, StoresTheGamesTableShowsItAndRefusesATamperedOne) {
    TempFolder folder;
    Server server(folder);
    ASSERT_TRUE(server.Running());
    httplib::Client client = server.Client();

    Hiscores table;
    table[0] = {"<s>", 12, 98765};
    table[1] = {"A\"B", 4, 1200};
    table[2] = {"\xC4\xC4\xC4", 2, 33};
    auto posted = client.Post(Path, FormOf(table), "application/x-www-form-urlencoded");
    ASSERT_TRUE(posted) << httplib::to_string(posted.error());
    EXPECT_EQ(posted->status, 200) << posted->body;
    EXPECT_NE(posted->body.find("Stored 3 entries"), std::string::npos);
    EXPECT_EQ(Count(server.Database(), "entry"), 3);

    auto page = client.Get(Path);
    ASSERT_TRUE(page);
    EXPECT_EQ(page->status, 200);
    EXPECT_EQ(page->get_header_value("Content-Type"), "text/html; charset=utf-8");
    EXPECT_NE(page->body.find("<td>1</td><td>&lt;s&gt;</td><td>12</td><td>000.098.765</td>"), std::string::npos)
        << page->body;
    EXPECT_NE(page->body.find("<td>2</td><td>A&quot;B</td><td>4</td><td>000.001.200</td>"), std::string::npos);
    EXPECT_NE(page->body.find("<td>3</td><td>\xC3\x84\xC3\x84\xC3\x84</td>"), std::string::npos);

    // The same table with one score raised and the checksum left as it was.
    std::string plain = tolva::DecryptNumber(table.MakeHiscoreString(DefaultSetKey), DefaultSetKey);
    plain.replace(plain.find("98765"), 5, "99765");
    const std::string tampered = "hiscoredata=" + EncodeFormValue(tolva::EncryptNumber(plain, DefaultSetKey));
    auto refused = client.Post(Path, tampered, "application/x-www-form-urlencoded");
    ASSERT_TRUE(refused);
    EXPECT_EQ(refused->status, 400);
    EXPECT_NE(refused->body.find("the checksum does not match the entries"), std::string::npos) << refused->body;
    EXPECT_EQ(Count(server.Database(), "submission"), 1);
    EXPECT_EQ(Count(server.Database(), "entry"), 3);
    auto after = client.Get(Path);
    ASSERT_TRUE(after);
    EXPECT_EQ(after->body, page->body);

    EXPECT_EQ(server.Stop(), 0);
}

TEST(ServerProcess, KeepsAnsweringAfterGarbageAndOversizedBodies) {
    TempFolder folder;
    Server server(folder);
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
    EXPECT_EQ(Count(server.Database(), "submission"), 0);
    EXPECT_EQ(server.Stop(), 0);
}
