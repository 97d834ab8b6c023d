#include "CliCommand.h"

#include "support/GameFolders.h"

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

bool UseInstalledGameFolders() {
    const GameFolders folders = DefaultGameFolders();
    if (!folders.Installed) return false;
    if (!UseGameFolders(folders)) std::cerr << "tolva2-cli: the player's folder " << folders.GameFolder << " could not be made\n";
    return true;
}

namespace {

void PrintHelp() {
    std::cout << "usage: tolva2-cli COMMAND [ARGUMENTS]\n\ncommands:\n";
    auto table = CommandTable();
    std::sort(table.begin(), table.end(), [](const auto& a, const auto& b) { return a.name < b.name; });
    for (const auto& c : table) std::cout << "  " << c.usage << '\n';
    std::cout << "  version\n  --help\n";
}

// Every command ends here: what it printed is flushed, and a write that failed at any
// point (a full disk, a closed pipe, /dev/full) is one line on standard error and status 1,
// whatever the command itself answered.
int FinishOutput(const std::string& command, int status) {
    std::cout.flush();
    if (std::cout) return status;
    std::cerr << "tolva2-cli: " << command << ": could not write to standard output\n";
    return ExitFailed;
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
        return FinishOutput(command, ExitOk);
    }
    if (command == "version" || command == "--version") {
        if (argc > 2) return UsageError("version takes no arguments");
        std::cout << "tolva2-cli " << TOLVA_VERSION << '\n';
        return FinishOutput(command, ExitOk);
    }
    std::vector<std::string> args(argv + 2, argv + argc);
    for (const auto& c : CommandTable())
        if (c.name == command) return FinishOutput(command, c.run(args));
    return UsageError("unknown command '" + command + "'; try tolva2-cli --help");
}
