// tolva2-cli when its standard streams fail: a closed standard input is a read error, and
// a standard output that refuses the bytes (/dev/full) is one line on standard error and
// status 1, for every command that prints.
#include "support/CliStreams.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using tolva::testing::CliStreams;
using tolva::testing::Quote;
using tolva::testing::RunCli;
using tolva::testing::TempFolder;

namespace {

std::string LastLine(std::string text) {
    if (!text.empty() && text.back() == '\n') text.pop_back();
    return text.substr(text.rfind('\n') + 1);
}

} // namespace

TEST(CliOutput, AClosedStandardInputIsAReadError) {
    TempFolder dir;
    for (const char* mode : {"enc", "dec"}) {
        const CliStreams r = RunCli(dir, std::string("crypt ") + mode + " 5 <&-");
        EXPECT_EQ(r.status, 1) << mode;
        EXPECT_EQ(r.err, "tolva2-cli: crypt: could not read standard input\n") << mode;
    }
    // A folder as standard input cannot be read either.
    EXPECT_EQ(RunCli(dir, "crypt enc 5 <" + Quote(dir.Path())).status, 1);
}

TEST(CliOutput, EveryCommandReportsAFailedWriteToStandardOutput) {
    TempFolder dir;
    const std::string game = TOLVA_GAME_DIR;
    const std::string set = "'" + game + "/levels/miniatures'";
    dir.Write("t.ini", "[main]\r\nlevelset=levels\\default\\\r\n");
    dir.Write("grid.txt", "grid\n");
    dir.Write("stat.ini", "[LEVEL1]\r\nclicks=3\r\n");
    ASSERT_EQ(RunCli(dir, "hiscore write " + Quote(dir / "hiscore.hi"), "ANA,3,1200\n").status, 0);

    const std::vector<std::string> commands = {
        "version",
        "--help",
        "crypt enc 5",
        "ini get '" + (dir / "t.ini") + "' main levelset",
        "levels check " + set,
        "levels solve " + set + " --level 1 --budget 5",
        "levels rate " + set + " --level 1 --tries 2",
        "hiscore show '" + (dir / "hiscore.hi") + "'",
        "hiscore string '" + (dir / "hiscore.hi") + "'",
        "stats show '" + dir.Path() + "'",
        "play " + set + " --level 1 <'" + (dir / "grid.txt") + "'",
        "autoplay " + set + " --levels 1",
    };
    for (const std::string& command : commands) {
        // The command works as such: to /dev/null it ends well.
        const CliStreams fine = RunCli(dir, command + " >/dev/null", "abc");
        ASSERT_EQ(fine.status, 0) << command << ": " << fine.err;
        const CliStreams full = RunCli(dir, command + " >/dev/full", "abc");
        EXPECT_EQ(full.status, 1) << command;
        const std::string name = command.substr(0, command.find(' '));
        EXPECT_EQ(LastLine(full.err), "tolva2-cli: " + name + ": could not write to standard output") << command;
    }
}
