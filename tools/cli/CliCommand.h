#pragma once
// The command table of tolva2-cli. A command is a name, a one-line usage for --help and
// a function from its arguments (bytes, as given) to an exit status. Each Cli*.cpp adds
// its commands with a static CliRegistration.
#include <functional>
#include <string>
#include <vector>

namespace tolva::cli {

// Exit statuses shared by all commands.
inline constexpr int ExitOk = 0;
inline constexpr int ExitFailed = 1;
inline constexpr int ExitUsage = 2;

struct CliCommand {
    std::string name;
    std::string usage;   // shown by --help, one or more lines
    std::function<int(const std::vector<std::string>& args)> run;
};

std::vector<CliCommand>& CommandTable();

struct CliRegistration {
    explicit CliRegistration(CliCommand command) { CommandTable().push_back(std::move(command)); }
};

// Prints "tolva2-cli: MESSAGE" on standard error and gives ExitUsage.
int UsageError(const std::string& message);

// For a command whose game folder was left out: when this tolva2-cli is the installed
// one, makes the installed game's folders (the player's over the installed data) the
// game folder, as the game itself would, and gives true. A portable tolva2-cli has no
// game of its own to fall back on: false, and the folder stays required.
bool UseInstalledGameFolders();

} // namespace tolva::cli
