// tolva2-hiscored-load: drives running tolva2-hiscored servers on 127.0.0.1 for the
// load, slow-client and hostile-input measurements (scripts/hiscored-load.sh runs it).
// Every loop is bounded in count, and every request in time.
//
//   load    PORTS COUNT CLIENTS ANSWERED  COUNT valid tables from CLIENTS threads, spread
//                                         over PORTS (comma-separated); the score of each
//                                         one answered 200 is appended to ANSWERED; a
//                                         port that stops answering is left for the
//                                         others; prints throughput, latencies and the
//                                         failures of each port
//   page    PORT COUNT                    COUNT requests of the best-100 page, timed
//   slow    PORT SOCKETS SECONDS          SOCKETS connections from many 127.x.y.z
//                                         addresses sending a request head one byte a
//                                         second, while a normal request is timed every
//                                         100 ms for SECONDS
//   hostile PORT DB                       the bad inputs, each kind counted, and checks
//                                         that nothing refused reached DB (an SQLite file)
//   verify  DB ANSWERED                   every answered score stored exactly once in DB
//                                         (an SQLite file or a postgresql:// URI)
#include "FormFields.h"

#include "hiscores/Hiscores.h"
#include "support/ZenkorModule.h"

#include <httplib.h>
#include <libpq-fe.h>
#include <sqlite3.h>

#include <algorithm>
#include <arpa/inet.h>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <fstream>
#include <map>
#include <poll.h>
#include <sstream>
#include <iostream>
#include <mutex>
#include <netinet/in.h>
#include <random>
#include <set>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace {

using namespace tolva;
using Clock = std::chrono::steady_clock;
constexpr const char* Path = "/tolva2/updatehiscore.asp";
constexpr const char* FormType = "application/x-www-form-urlencoded";
// No phase runs longer than this, whatever the server does.
constexpr auto PhaseLimit = std::chrono::minutes(5);

httplib::Client ClientFor(int port) {
    httplib::Client client("127.0.0.1", port);
    client.set_connection_timeout(5);
    client.set_read_timeout(5);
    client.set_write_timeout(5);
    return client;
}

// Table number n: one place, with a score no other table of the run has.
Hiscores TableNumber(int n) {
    Hiscores table;
    const std::string name = {static_cast<char>('A' + n % 26), static_cast<char>('A' + n / 26 % 26),
                              static_cast<char>('A' + n / 676 % 26)};
    table[0] = {name, static_cast<std::int16_t>(1 + n % 100), 1000000.0 + n};
    table[1] = {"ZZZ", 1, 10};
    return table;
}

std::string FormOf(const Hiscores& table) {
    return "hiscoredata=" + hiscored::EncodeFormValue(table.MakeHiscoreString(DefaultSetKey));
}

std::vector<int> PortsOf(const std::string& text) {
    std::vector<int> ports;
    std::stringstream in(text);
    for (std::string port; std::getline(in, port, ',');) ports.push_back(std::stoi(port));
    return ports;
}

int Load(const std::vector<int>& ports, int count, int clients, const std::string& answeredPath) {
    std::ofstream answered(answeredPath, std::ios::app);
    std::mutex answeredMutex;
    std::atomic<int> next{0}, ok{0}, failed{0};
    std::vector<std::atomic<int>> portFailures(ports.size());
    std::vector<std::atomic<bool>> portDown(ports.size());
    std::vector<std::vector<double>> latencies(static_cast<std::size_t>(clients));
    const auto start = Clock::now();
    const auto deadline = start + PhaseLimit;
    std::vector<std::thread> threads;
    for (int c = 0; c < clients; ++c) {
        threads.emplace_back([&, c] {
            for (int n = next++; n < count && Clock::now() < deadline; n = next++) {
                // The client's own port, or the next one up while it is down.
                std::size_t p = static_cast<std::size_t>(c) % ports.size();
                for (std::size_t tries = 0; tries < ports.size() && portDown[p]; ++tries) p = (p + 1) % ports.size();
                httplib::Client client = ClientFor(ports[p]);
                const std::string body = FormOf(TableNumber(n));
                const auto sent = Clock::now();
                auto reply = client.Post(Path, body, FormType);
                const double ms = std::chrono::duration<double, std::milli>(Clock::now() - sent).count();
                if (reply && reply->status == 200) {
                    ++ok;
                    latencies[static_cast<std::size_t>(c)].push_back(ms);
                    const std::lock_guard lock(answeredMutex);
                    answered << static_cast<long long>(1000000.0 + n) << '\n' << std::flush;
                } else {
                    ++failed;
                    ++portFailures[p];
                    if (!reply) {
                        // Down, or restarting: the next try comes a little later.
                        portDown[p] = true;
                        std::this_thread::sleep_for(std::chrono::milliseconds(50));
                    }
                }
            }
        });
    }
    for (auto& t : threads) t.join();
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    std::vector<double> all;
    for (const auto& l : latencies) all.insert(all.end(), l.begin(), l.end());
    std::sort(all.begin(), all.end());
    const auto percentile = [&](double p) {
        return all.empty() ? 0.0 : all[std::min(all.size() - 1, static_cast<std::size_t>(p * all.size()))];
    };
    std::cout << "load: " << ok << " answered 200, " << failed << " failed, of " << count << " from " << clients
              << " clients in " << seconds << " s: " << ok / seconds << " submissions/s, p50 " << percentile(0.50)
              << " ms, p99 " << percentile(0.99) << " ms\n";
    for (std::size_t p = 0; p < ports.size(); ++p)
        std::cout << "load: port " << ports[p] << ": " << portFailures[p] << " failed"
                  << (portDown[p] ? " (stopped answering)" : "") << "\n";
    return failed == 0 ? 0 : 1;
}

int Page(int port, int count) {
    httplib::Client client = ClientFor(port);
    std::vector<double> times;
    for (int i = 0; i < count; ++i) {
        const auto sent = Clock::now();
        auto reply = client.Get(Path);
        if (!reply || reply->status != 200) {
            std::cout << "page: request " << i << " failed\n";
            return 1;
        }
        times.push_back(std::chrono::duration<double, std::milli>(Clock::now() - sent).count());
    }
    std::sort(times.begin(), times.end());
    std::cout << "page: " << count << " requests of the best 100: median " << times[times.size() / 2]
              << " ms, p99 " << times[std::min(times.size() - 1, times.size() * 99 / 100)] << " ms\n";
    return 0;
}

long long CountRows(const std::string& db, const std::string& sql) {
    sqlite3* handle = nullptr;
    long long n = -1;
    if (sqlite3_open_v2(db.c_str(), &handle, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK) {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(handle, sql.c_str(), -1, &statement, nullptr) == SQLITE_OK &&
            sqlite3_step(statement) == SQLITE_ROW)
            n = sqlite3_column_int64(statement, 0);
        sqlite3_finalize(statement);
    }
    sqlite3_close(handle);
    return n;
}

// Sends raw bytes on a connection of its own and reads until the server closes it.
// True if the server answered with an HTTP status line or closed without one, within
// the time limit.
bool SendRaw(int port, const std::string& bytes) {
    const int s = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    timeval timeout{10, 0};
    ::setsockopt(s, SOL_SOCKET, SO_RCVTIMEO, &timeout, sizeof timeout);
    ::setsockopt(s, SOL_SOCKET, SO_SNDTIMEO, &timeout, sizeof timeout);
    if (::connect(s, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
        ::close(s);
        return false;
    }
    ::send(s, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    ::shutdown(s, SHUT_WR);
    char buffer[4096];
    ssize_t n = 0;
    while ((n = ::recv(s, buffer, sizeof buffer, 0)) > 0) {
    }
    const bool reset = n < 0 && errno == ECONNRESET;
    ::close(s);
    // Closed by the server, cleanly or with a reset for the bytes it left unread; not
    // timed out.
    return n == 0 || reset;
}

int Hostile(int port, const std::string& db) {
    httplib::Client client = ClientFor(port);
    std::mt19937 random(2024);
    int problems = 0;
    const auto report = [&](const char* kind, int sent, int asExpected) {
        std::cout << "hostile: " << kind << ": " << asExpected << " of " << sent << " answered as they should\n";
        if (asExpected != sent) ++problems;
    };
    const long long before = CountRows(db, "SELECT count(*) FROM submission");
    const auto refused = [&](const std::string& body, int status, const char* type = FormType) {
        auto reply = client.Post(Path, body, type);
        return reply && reply->status == status;
    };

    int n = 0;
    for (int i = 0; i < 50; ++i) n += refused(FormOf(TableNumber(i)) + "&stat=" + std::string(65 * 1024, 'x'), 413);
    report("bodies over 64 KiB refused (413)", 50, n);

    n = 0;
    const char* broken[] = {"%", "%4", "%G0", "%%", "%0z"};
    for (int i = 0; i < 500; ++i) {
        std::string body = FormOf(TableNumber(i));
        body.insert(random() % body.size(), broken[i % 5]);
        n += refused(body, 400);
    }
    report("malformed form encoding refused (400)", 500, n);

    n = 0;
    for (int i = 0; i < 500; ++i) {
        std::string plain = DecryptNumber(TableNumber(i).MakeHiscoreString(DefaultSetKey), DefaultSetKey);
        const std::size_t at = plain.find("100");
        plain[at] = '2';  // a score raised, the checksum kept
        n += refused("hiscoredata=" + hiscored::EncodeFormValue(EncryptNumber(plain, DefaultSetKey)), 400);
    }
    report("wrong checksum refused (400)", 500, n);

    n = 0;
    for (int i = 0; i < 500; ++i) {
        const std::string data = TableNumber(i).MakeHiscoreString(DefaultSetKey);
        n += refused("hiscoredata=" + hiscored::EncodeFormValue(data.substr(0, random() % data.size())), 400);
    }
    report("truncated hiscoredata refused (400)", 500, n);
    const long long afterRefused = CountRows(db, "SELECT count(*) FROM submission");
    std::cout << "hostile: submissions stored by the refused ones: " << afterRefused - before << "\n";
    if (afterRefused != before) ++problems;

    n = 0;
    const char* names[] = {"<B>", "\"'>", "&<&", "</T", "'OR"};
    const char* escapedNames[] = {"&lt;B&gt;", "&quot;&#39;&gt;", "&amp;&lt;&amp;", "&lt;/T", "&#39;OR"};
    for (int i = 0; i < 500; ++i) {
        Hiscores table;
        table[0] = {names[i % 5], 7, 5000000.0 + i};
        auto reply = client.Post(Path, FormOf(table), FormType);
        n += reply && reply->status == 200 &&
             reply->body.find(std::string("<td>") + escapedNames[i % 5] + "</td>") != std::string::npos;
    }
    const long long marked = CountRows(db, "SELECT count(*) FROM entry WHERE score >= 5000000 AND score < 5000500");
    auto page = client.Get(Path);
    const bool escaped = page && page->status == 200 && page->body.find("<B>") == std::string::npos &&
                         page->body.find("<td></T</td>") == std::string::npos &&
                         page->body.find("<td>&lt;/T</td>") != std::string::npos;
    report("names with markup or quotes stored and escaped", 500, marked == 500 && escaped ? n : 0);

    std::atomic<int> answered{0};
    std::atomic<int> next{0};
    std::vector<std::thread> threads;
    const auto deadline = Clock::now() + PhaseLimit;
    for (int t = 0; t < 16; ++t) {
        threads.emplace_back([&, t] {
            std::mt19937 own(static_cast<unsigned>(t));
            while (next++ < 10000 && Clock::now() < deadline) {
                std::string junk(own() % 3000, '\0');
                for (char& c : junk) c = static_cast<char>(own());
                // Half of them behind a valid request head, so that the body parser gets them.
                if (own() % 2)
                    junk = std::string("POST ") + Path + " HTTP/1.1\r\nContent-Type: " + FormType +
                           "\r\nContent-Length: " + std::to_string(junk.size()) + "\r\n\r\n" + junk;
                answered += SendRaw(port, junk);
            }
        });
    }
    for (auto& t : threads) t.join();
    report("random byte strings answered or closed", 10000, answered);

    auto still = client.Get(Path);
    std::cout << "hostile: the server still answers afterwards: " << (still && still->status == 200 ? "yes" : "NO")
              << "\n";
    if (!still || still->status != 200) ++problems;
    return problems == 0 ? 0 : 1;
}

// How often each score of the load (1,000,000 and up) stands in the entries of `db`;
// `integrity` gets SQLite's integrity check, or "ok" from PostgreSQL.
bool StoredScores(const std::string& db, std::map<long long, int>& stored, std::string& integrity) {
    const char* sql = "SELECT score FROM entry WHERE score >= 1000000";
    if (db.find("://") != std::string::npos) {
        PGconn* conn = PQconnectdb(db.c_str());
        PGresult* rows = PQstatus(conn) == CONNECTION_OK ? PQexec(conn, sql) : nullptr;
        const bool ok = rows && PQresultStatus(rows) == PGRES_TUPLES_OK;
        for (int row = 0; ok && row < PQntuples(rows); ++row) ++stored[std::atoll(PQgetvalue(rows, row, 0))];
        integrity = ok ? "ok" : PQerrorMessage(conn);
        PQclear(rows);
        PQfinish(conn);
        return ok;
    }
    sqlite3* handle = nullptr;
    if (sqlite3_open_v2(db.c_str(), &handle, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) return false;
    sqlite3_stmt* check = nullptr;
    integrity = "(no answer)";
    if (sqlite3_prepare_v2(handle, "PRAGMA integrity_check", -1, &check, nullptr) == SQLITE_OK &&
        sqlite3_step(check) == SQLITE_ROW)
        integrity = reinterpret_cast<const char*>(sqlite3_column_text(check, 0));
    sqlite3_finalize(check);
    sqlite3_stmt* scores = nullptr;
    if (sqlite3_prepare_v2(handle, sql, -1, &scores, nullptr) == SQLITE_OK)
        while (sqlite3_step(scores) == SQLITE_ROW) ++stored[sqlite3_column_int64(scores, 0)];
    sqlite3_finalize(scores);
    sqlite3_close(handle);
    return true;
}

int Verify(const std::string& db, const std::string& answeredPath) {
    std::map<long long, int> stored;
    std::string integrity;
    if (!StoredScores(db, stored, integrity)) {
        std::cout << "verify: cannot read the database: " << integrity << "\n";
        return 1;
    }
    std::ifstream in(answeredPath);
    long long answered = 0, missing = 0, repeated = 0;
    for (long long score; in >> score;) {
        ++answered;
        const int times = stored.count(score) ? stored[score] : 0;
        missing += times == 0;
        repeated += times > 1;
    }
    std::cout << "verify: integrity " << integrity << "; " << answered << " answered 200, " << missing
              << " of them missing, " << repeated << " stored more than once; " << stored.size()
              << " load entries stored in all\n";
    return integrity == "ok" && missing == 0 && repeated == 0 ? 0 : 1;
}

// A connection to `port` from the loopback address `source`, or -1.
int ConnectFrom(std::uint32_t source, int port) {
    const int s = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in from{};
    from.sin_family = AF_INET;
    from.sin_addr.s_addr = htonl(source);
    sockaddr_in to{};
    to.sin_family = AF_INET;
    to.sin_port = htons(static_cast<std::uint16_t>(port));
    to.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (s >= 0 && ::bind(s, reinterpret_cast<sockaddr*>(&from), sizeof from) == 0 &&
        ::connect(s, reinterpret_cast<sockaddr*>(&to), sizeof to) == 0)
        return s;
    if (s >= 0) ::close(s);
    return -1;
}

int Slow(int port, int sockets, int seconds) {
    const std::string head = std::string("GET ") + Path + " HTTP/1.1\r\nHost: slow\r\nX-Slow: " +
                             std::string(4000, 'a');
    struct SlowClient {
        int Socket;
        double ClosedAfter = -1;  // seconds, once the server closed it
    };
    std::vector<SlowClient> slow;
    for (int i = 0; i < sockets; ++i) {
        // 127.1.0.1, 127.1.0.2, ...: each slow client from an address of its own.
        const std::uint32_t source = (127u << 24) | (1u << 16) | static_cast<std::uint32_t>(i / 250 << 8) |
                                     static_cast<std::uint32_t>(i % 250 + 1);
        if (const int s = ConnectFrom(source, port); s >= 0) {
            ::fcntl(s, F_SETFL, O_NONBLOCK);
            slow.push_back({s});
        }
    }
    std::cout << "slow: " << slow.size() << " of " << sockets << " slow clients connected\n";
    std::atomic<bool> done{false};
    const auto start = Clock::now();
    std::thread trickle([&] {
        for (std::size_t sent = 0; !done && sent < head.size(); ++sent) {
            const double now = std::chrono::duration<double>(Clock::now() - start).count();
            for (SlowClient& client : slow) {
                if (client.ClosedAfter >= 0) continue;
                char peek;
                const bool gone = ::send(client.Socket, &head[sent], 1, MSG_NOSIGNAL) < 0 ||
                                  ::recv(client.Socket, &peek, 1, MSG_PEEK) == 0;
                if (gone) client.ClosedAfter = now;
            }
            for (int tick = 0; tick < 10 && !done; ++tick) std::this_thread::sleep_for(std::chrono::milliseconds(100));
        }
    });
    std::vector<double> times;
    int failed = 0;
    while (Clock::now() - start < std::chrono::seconds(seconds)) {
        httplib::Client client = ClientFor(port);
        const auto sent = Clock::now();
        auto reply = client.Get(Path);
        if (reply && reply->status == 200)
            times.push_back(std::chrono::duration<double, std::milli>(Clock::now() - sent).count());
        else
            ++failed;
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    done = true;
    trickle.join();
    std::sort(times.begin(), times.end());
    std::vector<double> closed;
    for (const SlowClient& client : slow) {
        if (client.ClosedAfter >= 0) closed.push_back(client.ClosedAfter);
        ::close(client.Socket);
    }
    std::sort(closed.begin(), closed.end());
    const double worst = times.empty() ? 0 : times.back();
    std::cout << "slow: normal requests beside them: " << times.size() << " answered, " << failed
              << " failed; median " << (times.empty() ? 0 : times[times.size() / 2]) << " ms, worst " << worst
              << " ms\n";
    std::cout << "slow: slow clients closed by the server: " << closed.size() << " of " << slow.size()
              << (closed.empty() ? std::string() : ", after " + std::to_string(closed.front()) + " to " +
                                                   std::to_string(closed.back()) + " s")
              << "\n";
    return failed == 0 && !times.empty() && worst < 100 ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> args(argv + 1, argv + argc);
    if (args.size() == 5 && args[0] == "load")
        return Load(PortsOf(args[1]), std::stoi(args[2]), std::stoi(args[3]), args[4]);
    if (args.size() == 3 && args[0] == "page") return Page(std::stoi(args[1]), std::stoi(args[2]));
    if (args.size() == 4 && args[0] == "slow") return Slow(std::stoi(args[1]), std::stoi(args[2]), std::stoi(args[3]));
    if (args.size() == 3 && args[0] == "hostile") return Hostile(std::stoi(args[1]), args[2]);
    if (args.size() == 3 && args[0] == "verify") return Verify(args[1], args[2]);
    std::cerr << "usage: tolva2-hiscored-load load PORTS COUNT CLIENTS ANSWERED | page PORT COUNT |\n"
                 "       slow PORT SOCKETS SECONDS | hostile PORT DB | verify DB ANSWERED\n";
    return 2;
}
