#include "ServerOptions.h"

#include "ClientAddress.h"

#include <algorithm>
#include <charconv>

namespace tolva::hiscored {

namespace {

// "HOST:PORT", with an IPv6 host in brackets ("[::1]:8080").
bool ParseAddress(const std::string& text, std::string& host, int& port) {
    const std::size_t colon = text.rfind(':');
    if (colon == std::string::npos || colon == 0 || colon + 1 == text.size()) return false;
    host = text.substr(0, colon);
    if (host.front() == '[') {
        if (host.size() < 3 || host.back() != ']') return false;
        host = host.substr(1, host.size() - 2);
    } else if (host.find(':') != std::string::npos) {
        return false;  // an IPv6 host needs its brackets
    }
    const char* first = text.data() + colon + 1;
    const char* last = text.data() + text.size();
    const auto [end, problem] = std::from_chars(first, last, port);
    return problem == std::errc() && end == last && port >= 0 && port <= 65535;
}

// A whole number from `low` to `high`, written as plain digits.
bool ParseCount(const std::string& text, int low, int high, int& value) {
    const char* last = text.data() + text.size();
    const auto [end, problem] = std::from_chars(text.data(), last, value);
    return !text.empty() && problem == std::errc() && end == last && value >= low && value <= high;
}

// The value of option `name`; false with `error` if it does not fit.
bool TakeValue(const std::string& name, const std::string& value, ServerOptions& options, std::string& error) {
    const auto count = [&](int low, int high, int& field) {
        if (ParseCount(value, low, high, field)) return true;
        error = name + " wants a whole number from " + std::to_string(low) + " to " + std::to_string(high) +
                ", not '" + value + "'";
        return false;
    };
    if (name == "--listen") {
        if (ParseAddress(value, options.Host, options.Port)) return true;
        error = "--listen wants HOST:PORT with a port from 0 to 65535, not '" + value + "'";
        return false;
    }
    if (name == "--db") {
        if (value.empty()) {
            error = "--db needs a file name or a postgresql:// URI";
            return false;
        }
        options.Database = value;
        return true;
    }
    if (name == "--trusted-proxy") {
        const std::optional<std::string> address = NormalAddress(value);
        if (!address) {
            error = "--trusted-proxy wants a numeric IPv4 or IPv6 address, not '" + value + "'";
            return false;
        }
        options.TrustedProxy = *address;
        return true;
    }
    if (name == "--request-timeout") return count(1, 3600, options.RequestTimeoutSeconds);
    if (name == "--max-connections") return count(1, 1000000, options.MaxConnections);
    if (name == "--max-connections-per-ip") return count(1, 1000000, options.MaxConnectionsPerAddress);
    return count(0, 1000000, options.MaxSubmissionsPerMinute);
}

} // namespace

std::optional<ServerOptions> ParseServerOptions(const std::vector<std::string>& args, std::string& error) {
    static const std::vector<std::string> valued = {"--listen",          "--db",
                                                    "--request-timeout", "--max-connections",
                                                    "--max-connections-per-ip", "--max-submissions-per-minute",
                                                    "--trusted-proxy"};
    ServerOptions options;
    for (std::size_t i = 0; i < args.size(); ++i) {
        std::string name = args[i];
        std::optional<std::string> value;
        if (const std::size_t equals = name.find('='); name.rfind("--", 0) == 0 && equals != std::string::npos) {
            value = name.substr(equals + 1);
            name = name.substr(0, equals);
        }
        if (name == "--help" || name == "-h") {
            if (value) {
                error = "--help takes no value";
                return std::nullopt;
            }
            options.Help = true;
            continue;
        }
        if (std::find(valued.begin(), valued.end(), name) == valued.end()) {
            error = "unknown argument '" + args[i] + "'; try --help";
            return std::nullopt;
        }
        if (!value) {
            if (i + 1 >= args.size()) {
                error = name + " needs a value";
                return std::nullopt;
            }
            value = args[++i];
        }
        if (!TakeValue(name, *value, options, error)) return std::nullopt;
    }
    return options;
}

std::string ServerUsage() {
    return R"(usage: tolva2-hiscored [--listen HOST:PORT] [--db FILE|URI] [options]

The hiscore server of TOLVA II. The game's "Submit to Internet Hiscores" posts its
table to /tolva2/updatehiscore.asp; the server checks the table's checksum and that
it is a table the game can make, and keeps its entries (each name, level and score
once), with the time, the sender's address and the statistics sent along. A plain
request of the same address shows the best 100 entries of all submissions.

  --listen HOST:PORT      where to listen (default 127.0.0.1:8080; [::1]:8080 for
                          IPv6; port 0 takes any free port, printed at start)
  --db FILE               an SQLite database, made if missing (default hiscores.sqlite)
  --db URI                a PostgreSQL database, as a libpq URI such as
                          postgresql://USER@HOST/DBNAME; its tables are made on the
                          first start, and any number of servers may share it
  --request-timeout S     seconds a request may take to arrive whole, head and body;
                          an idle kept-alive connection is closed after as long
                          (default 5)
  --max-connections N     connections open at once, in all (default 4000)
  --max-connections-per-ip N
                          connections open at once from one address (default 32)
  --max-submissions-per-minute N
                          tables one address may have stored in a minute, counted in
                          the database; more are answered 429 (default 10, 0: any)
  --trusted-proxy ADDR    a reverse proxy at ADDR: for its connections the sender is
                          the last address of X-Forwarded-For; the connection limits
                          then apply to the proxy as one address
  --help                  this text

Point the game at the server with the HiscoreUrl key of tolva2.ini, section [main]:
  HiscoreUrl=http://HOST:PORT/tolva2/updatehiscore.asp

Bodies over 64 KiB are refused (413), request heads over about 32 KiB too (431).
Every refusal is written to the standard error, one line each. The server runs until
SIGINT or SIGTERM. Exit status: 0 after a clean stop, 1 if the database or the address
cannot be used, 2 for bad arguments.
)";
}

} // namespace tolva::hiscored
