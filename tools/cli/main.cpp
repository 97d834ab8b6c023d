#include "CliCommand.h"

#include <algorithm>
#include <cstdio>
#include <iostream>

namespace tolva::cli {

std::vector<CliCommand>& CommandTable() {
    static std::vector<CliCommand> table;
    return table;
}

int UsageError(const std::string& message) {
    std::cerr << "tolva2-cli: " << message << '\n';
    return ExitUsage;
}

namespace {

void PrintHelp() {
    std::cout << "usage: tolva2-cli COMMAND [ARGUMENTS]\n\ncommands:\n";
    auto table = CommandTable();
    std::sort(table.begin(), table.end(), [](const auto& a, const auto& b) { return a.name < b.name; });
    for (const auto& c : table) std::cout << "  " << c.usage << '\n';
    std::cout << "  version\n  --help\n";
}

} // namespace
} // namespace tolva::cli

int main(int argc, char** argv) {
    using namespace tolva::cli;
    std::ios::sync_with_stdio(false);
    if (argc < 2) return UsageError("no command given; try tolva2-cli --help");
    const std::string command = argv[1];
    if (command == "--help" || command == "-h" || command == "help") {
        PrintHelp();
        return ExitOk;
    }
    if (command == "version" || command == "--version") {
        if (argc > 2) return UsageError("version takes no arguments");
        std::cout << "tolva2-cli " << TOLVA_VERSION << '\n';
        return ExitOk;
    }
    std::vector<std::string> args(argv + 2, argv + argc);
    for (const auto& c : CommandTable())
        if (c.name == command) return c.run(args);
    return UsageError("unknown command '" + command + "'; try tolva2-cli --help");
}
