// tolva2-cli run as a user runs it. crypt and ini: bytes through pipes, the game's stored
// paths, and one line on standard error for every wrong use. Every command when its
// standard streams fail: a closed standard input is a read error, and a standard output
// that refuses the bytes (/dev/full) is one line on standard error and status 1.
#include "support/CliStreams.h"
#include "support/ZenkorModule.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

using tolva::testing::CliStreams;
using tolva::testing::Quote;
using tolva::testing::RunCli;
using tolva::testing::TempFolder;
using tolva::testing::Words;

namespace {

std::size_t LineCount(const std::string& text) { return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')); }

std::string LastLine(std::string text) {
    if (!text.empty() && text.back() == '\n') text.pop_back();
    return text.substr(text.rfind('\n') + 1);
}

} // namespace

TEST(CliCryptIni, CryptRoundTripsBytesThroughPipes) {
    TempFolder dir;
    std::string every;
    for (int c = 32; c <= 255; ++c) every += static_cast<char>(c);
    for (const std::string key : {"73", "+5", "-4", "0", "32766"}) {
        const CliStreams enc = RunCli(dir, "crypt enc " + key, every);
        ASSERT_EQ(enc.status, 0) << enc.err;
        EXPECT_EQ(enc.out, tolva::EncryptNumber(every, std::stoi(key)));  // no line end added
        const CliStreams dec = RunCli(dir, "crypt dec " + key, enc.out);
        ASSERT_EQ(dec.status, 0) << dec.err;
        EXPECT_EQ(dec.out, every);
    }
    EXPECT_EQ(RunCli(dir, "crypt enc 5").out, "");

    for (const std::string way : {"enc", "dec"}) {
        const CliStreams tooBig = RunCli(dir, "crypt " + way + " 32767", "abc");
        EXPECT_EQ(tooBig.status, 1) << way;
        EXPECT_EQ(tooBig.out, "") << way;
        const std::string name = way == "enc" ? "'EncryptNumber'" : "'DecryptNumber'";
        EXPECT_NE(tooBig.err.find("error 10 (Crypter): " + name + " is an integer, and may not be greater than 32766!"),
                  std::string::npos)
            << tooBig.err;
    }
}

TEST(CliCryptIni, IniGetAndSetWorkOnTheGameFiles) {
    TempFolder dir;
    const std::string file = Quote(dir.Path() + "\\Tolva2.ini");  // a stored path
    EXPECT_EQ(RunCli(dir, "ini set " + file + " main levelset 'levels\\default\\'").status, 0);
    EXPECT_EQ(RunCli(dir, "ini set " + file + " MAIN LevelSet 'levels\\mine\\'").status, 0);
    const std::string high = "\xE9t\xE9";  // bytes above 127 go through the arguments unchanged
    EXPECT_EQ(RunCli(dir, "ini set " + file + " " + Words({high, high, " " + high + " "})).status, 0);
    EXPECT_EQ(dir.Read("Tolva2.ini"), "[main]\r\nlevelset=levels\\mine\\\r\n[" + high + "]\r\n" + high + "= " + high + " \r\n");
    EXPECT_EQ(RunCli(dir, "ini get " + file + " " + Words({high, high})).out, high + "\n");

    CliStreams get = RunCli(dir, "ini get " + Quote(dir / "tolva2.INI") + " Main levelset");
    EXPECT_EQ(get.status, 0);
    EXPECT_EQ(get.out, "levels\\mine\\\n");
    get = RunCli(dir, "ini get " + file + " main missing");
    EXPECT_EQ(get.status, 0);
    EXPECT_EQ(get.out, "\n");

    const CliStreams refused = RunCli(dir, "ini set " + Quote(dir / "no/such/folder.ini") + " s k v");
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(LineCount(refused.err), 1u);
}

TEST(CliCryptIni, HelpVersionAndBadUsage) {
    TempFolder dir;
    const CliStreams help = RunCli(dir, "--help");
    for (const char* line : {"crypt enc|dec KEY", "ini get FILE SECTION KEY", "ini set FILE SECTION KEY VALUE"})
        EXPECT_NE(help.out.find(line), std::string::npos) << line;
    EXPECT_EQ(RunCli(dir, "version").out.rfind("tolva2-cli ", 0), 0u);
    const std::vector<std::vector<std::string>> bad{
        {"crypt"}, {"crypt", "enc"}, {"crypt", "enc", "abc"}, {"crypt", "enc", "12x"}, {"crypt", "enc", ""},
        {"crypt", "enc", "++3"}, {"crypt", "enc", "99999999999"}, {"crypt", "rot", "3"}, {"crypt", "enc", "3", "4"},
        {"ini"}, {"ini", "get", "f", "s"}, {"ini", "set", "f", "s", "k"}, {"ini", "get", "f", "s", "k", "x"},
        {"ini", "del", "f", "s", "k"}, {"nosuchcommand"}, {}};
    for (const auto& args : bad) {
        const CliStreams r = RunCli(dir, Words(args), "input");
        EXPECT_EQ(r.status, 2) << Words(args);
        EXPECT_EQ(r.out, "") << Words(args);
        EXPECT_EQ(LineCount(r.err), 1u) << Words(args) << r.err;
    }
    EXPECT_FALSE(tolva::FileExists(dir / "f"));
}

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
