#include "ServerOptions.h"

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

} // namespace

std::optional<ServerOptions> ParseServerOptions(const std::vector<std::string>& args, std::string& error) {
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
        if (name != "--listen" && name != "--db") {
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
        if (name == "--listen") {
            if (!ParseAddress(*value, options.Host, options.Port)) {
                error = "--listen wants HOST:PORT with a port from 0 to 65535, not '" + *value + "'";
                return std::nullopt;
            }
        } else {
            if (value->empty()) {
                error = "--db needs a file name";
                return std::nullopt;
            }
            options.Database = *value;
        }
    }
    return options;
}

std::string ServerUsage() {
    return R"(usage: tolva2-hiscored [--listen HOST:PORT] [--db FILE]

The hiscore server of TOLVA II. The game's "Submit to Internet Hiscores" posts its
table to /tolva2/updatehiscore.asp; the server checks the table's checksum and keeps
its entries, with the time, the sender's address and the statistics sent along. A
plain request of the same address shows the best 100 entries of all submissions.

  --listen HOST:PORT  where to listen (default 127.0.0.1:8080; [::1]:8080 for IPv6;
                      port 0 takes any free port, printed at start)
  --db FILE           the SQLite database, made if missing (default hiscores.sqlite)
  --help              this text

Point the game at the server with the HiscoreUrl key of tolva2.ini, section [main]:
  HiscoreUrl=http://HOST:PORT/tolva2/updatehiscore.asp

Bodies over 64 KiB are refused. The server runs until SIGINT or SIGTERM.
Exit status: 0 after a clean stop, 1 if the database or the address cannot be used,
2 for bad arguments.
)";
}

} // namespace tolva::hiscored
