// tolva2-cli when its standard streams fail: a closed standard input is a read error, and
// a standard output that refuses the bytes (/dev/full) is one line on standard error and
// status 1, for every command that prints.
#include "support/TempFolder.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <string>
#include <vector>

using tolva::testing::TempFolder;

namespace {

struct ShellRun {
    int status = -1;
    std::string err;
};

// Runs tolva2-cli with `arguments` and the redirections in `streams` through the shell.
ShellRun RunWith(const TempFolder& dir, const std::string& arguments, const std::string& streams) {
    const std::string command = std::string(TOLVA_CLI) + " " + arguments + " " + streams + " 2>'" + (dir / "err") + "'";
    const int status = std::system(command.c_str());
    ShellRun r;
    r.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    r.err = dir.Read("err");
    return r;
}

std::string LastLine(std::string text) {
    if (!text.empty() && text.back() == '\n') text.pop_back();
    return text.substr(text.rfind('\n') + 1);
}

} // namespace

TEST(CliOutput, AClosedStandardInputIsAReadError) {
    TempFolder dir;
    for (const char* mode : {"enc", "dec"}) {
        const ShellRun r = RunWith(dir, std::string("crypt ") + mode + " 5", "<&-");
        EXPECT_EQ(r.status, 1) << mode;
        EXPECT_EQ(r.err, "tolva2-cli: crypt: could not read standard input\n") << mode;
    }
    // A folder as standard input cannot be read either.
    const ShellRun r = RunWith(dir, "crypt enc 5", "<'" + dir.Path() + "'");
    EXPECT_EQ(r.status, 1);
}

TEST(CliOutput, EveryCommandReportsAFailedWriteToStandardOutput) {
    TempFolder dir;
    const std::string game = TOLVA_GAME_DIR;
    const std::string set = "'" + game + "/levels/miniatures'";
    dir.Write("t.ini", "[main]\r\nlevelset=levels\\default\\\r\n");
    dir.Write("in.txt", "abc");
    dir.Write("grid.txt", "grid\n");
    dir.Write("stat.ini", "[LEVEL1]\r\nclicks=3\r\n");
    dir.Write("rows.txt", "ANA,3,1200\n");
    ASSERT_EQ(RunWith(dir, "hiscore write '" + (dir / "hiscore.hi") + "'", "<'" + (dir / "rows.txt") + "' >/dev/null").status, 0);
    const std::string in = "<'" + (dir / "in.txt") + "'";

    const std::vector<std::string> commands = {
        "version",
        "--help",
        "crypt enc 5 " + in,
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
        const ShellRun fine = RunWith(dir, command, ">/dev/null");
        ASSERT_EQ(fine.status, 0) << command << ": " << fine.err;
        const ShellRun full = RunWith(dir, command, ">/dev/full");
        EXPECT_EQ(full.status, 1) << command;
        const std::string name = command.substr(0, command.find(' '));
        EXPECT_EQ(LastLine(full.err), "tolva2-cli: " + name + ": could not write to standard output") << command;
    }
}
