// tolva2-cli stats: the statistics table of a game folder as the statistics screen would
// show it, read through the game's own code (StatTable), for scripts and for checking a
// hand-edited stat.ini.
//
//   stats show GAMEDIR   100 lines LEVEL, then the 16 values in the screen's column order
//                        (CLL CLH S0L S0H ... S5H GAMEOVER PLAYED), tab-separated; then
//                        "totals", the number of played levels and the 16 totals; then
//                        "bar: N", the lowest row the screen's green bar reaches.
//
// A folder without stat.ini shows a table of zeros, as the screen's "Refresh" would.
#include "CliCommand.h"

#include "stats/StatTable.h"
#include "support/ZenkorModule.h"

#include <array>
#include <cstdint>
#include <iostream>
#include <string>
#include <vector>

namespace tolva::cli {

namespace {

void PrintValues(const std::array<std::int16_t, StatColumnCount>& values) {
    for (std::size_t c = 0; c < values.size(); ++c) std::cout << (c == 0 ? "" : "\t") << values[c];
    std::cout << '\n';
}

int RunStatsShow(const std::vector<std::string>& args) {
    if (args.size() > 2 || (args.size() == 1 && !UseInstalledGameFolders()))
        return UsageError("stats show needs one argument: GAMEDIR");
    std::string folder;
    if (args.size() == 1) {
        folder = AppPath();
    } else {
        folder = args[1];
        if (folder.empty() || !FolderExists(folder)) return UsageError("stats show: no such folder '" + folder + "'");
        if (folder.back() != '/' && folder.back() != '\\') folder += '/';
    }

    StatTable table;
    table.OpenStatFile(folder + "stat.ini");
    const std::int16_t played = table.SumAllLevels();
    for (int level = 1; level <= StatTable::LevelCount; ++level) {
        std::cout << level << '\t';
        PrintValues(ColumnValues(table.Row(level - 1)));
    }
    std::cout << "totals\t" << played << '\t';
    PrintValues(ColumnValues(table.Totals()));
    std::cout << "bar: " << table.BarReach() << '\n';
    std::cout.flush();
    return std::cout ? ExitOk : ExitFailed;
}

int RunStats(const std::vector<std::string>& args) {
    if (args.empty()) return UsageError("stats needs a subcommand: show");
    if (args[0] == "show") return RunStatsShow(args);
    return UsageError("unknown stats subcommand '" + args[0] + "'; use show");
}

const CliRegistration registration{CliCommand{
    "stats",
    "stats show [GAMEDIR]              the statistics table of GAMEDIR/stat.ini (installed: may be left out\n"
    "                                    for the game's own), its totals and\n"
    "                                    the row the green bar reaches",
    RunStats}};

} // namespace
} // namespace tolva::cli
