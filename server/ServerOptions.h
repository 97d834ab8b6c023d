#pragma once
// The command line of tolva2-hiscored.
#include <optional>
#include <string>
#include <vector>

namespace tolva::hiscored {

struct ServerOptions {
    std::string Host = "127.0.0.1";
    int Port = 8080;  // 0: any free port, which the server prints when it listens
    // An SQLite file, or a PostgreSQL URI (postgresql://... or postgres://...).
    std::string Database = "hiscores.sqlite";
    // The whole of a request, head and body, must arrive within this time; an idle
    // kept-alive connection is closed after it as well.
    int RequestTimeoutSeconds = 5;
    int MaxConnections = 4000;           // open at once, in all
    int MaxConnectionsPerAddress = 32;   // open at once from one client address
    int MaxSubmissionsPerMinute = 10;    // stored ones, per client address; 0: any number
    std::string TrustedProxy;            // a normal address, or empty
    bool Help = false;
};

// The options of `args` (the words after the program's name), or none with `error`
// saying in one line what is wrong.
std::optional<ServerOptions> ParseServerOptions(const std::vector<std::string>& args, std::string& error);

// The text of --help.
std::string ServerUsage();

} // namespace tolva::hiscored
