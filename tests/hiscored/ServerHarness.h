#pragma once
// The real tolva2-hiscored process for the tests: spawned on a free port of 127.0.0.1
// with its output in files of the test's folder, stopped with SIGTERM. Every wait has
// a deadline.
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

namespace tolva::testing::hiscored {

using Clock = std::chrono::steady_clock;
constexpr const char* Path = "/tolva2/updatehiscore.asp";

// A port of 127.0.0.1 that nobody listens on just now.
inline int FreePort() {
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

// A connection to the port of 127.0.0.1, from the loopback address `from` if given; -1
// if it fails.
inline int Connect(int port, std::uint32_t from = 0) {
    const int s = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(from);
    if (from == 0 || ::bind(s, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0) {
        address.sin_port = htons(static_cast<std::uint16_t>(port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        if (::connect(s, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0) return s;
    }
    ::close(s);
    return -1;
}

// Runs the server binary; its output goes to files in `folder`.
inline pid_t Spawn(const std::vector<std::string>& args, const TempFolder& folder) {
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
inline int WaitExit(pid_t pid, std::chrono::milliseconds limit) {
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
    // `extra` options after --listen and --db, an SQLite file in the folder.
    explicit Server(const TempFolder& folder, std::vector<std::string> extra = {})
        : port_(FreePort()), db_(folder / "hiscores.sqlite") {
        std::vector<std::string> args = {"--listen", "127.0.0.1:" + std::to_string(port_), "--db", db_};
        args.insert(args.end(), extra.begin(), extra.end());
        pid_ = Spawn(args, folder);
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

// Runs `sql` on the SQLite file with a connection of its own; the first value of its
// last statement as bytes, or "(error)".
inline std::string Query(const std::string& path, const char* sql) {
    sqlite3* db = nullptr;
    sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    std::string value = "(error)";
    for (const char* rest = sql; rest && *rest;) {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(db, rest, -1, &statement, &rest) != SQLITE_OK || !statement) break;
        if (sqlite3_step(statement) == SQLITE_ROW)
            value.assign(static_cast<const char*>(sqlite3_column_blob(statement, 0)) ?: "",
                         static_cast<std::size_t>(sqlite3_column_bytes(statement, 0)));
        sqlite3_finalize(statement);
    }
    sqlite3_close(db);
    return value;
}

inline std::string FormOf(const tolva::Hiscores& table) {
    return "hiscoredata=" + tolva::hiscored::EncodeFormValue(table.MakeHiscoreString(tolva::DefaultSetKey)) + "&stat=" +
           tolva::hiscored::EncodeFormValue("[LEVEL1]\r\nScore=120\r\n");
}

} // namespace tolva::testing::hiscored
