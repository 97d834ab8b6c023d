#pragma once
// The command line of tolva2-hiscored.
#include <optional>
#include <string>
#include <vector>

namespace tolva::hiscored {

struct ServerOptions {
    std::string Host = "127.0.0.1";
    int Port = 8080;  // 0: any free port, which the server prints when it listens
    std::string Database = "hiscores.sqlite";
    bool Help = false;
};

// The options of `args` (the words after the program's name), or none with `error`
// saying in one line what is wrong.
std::optional<ServerOptions> ParseServerOptions(const std::vector<std::string>& args, std::string& error);

// The text of --help.
std::string ServerUsage();

} // namespace tolva::hiscored
