// Runs the built tolva2-cli as a user would: arguments as bytes, standard input from a
// file, standard output and error captured, exit status checked.
#include "support/TempFolder.h"
#include "support/ZenkorModule.h"

#include <gtest/gtest.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>
#include <string>
#include <vector>

extern char** environ;

using tolva::testing::TempFolder;

namespace {

struct CliResult {
    int status = -1;
    std::string out;
    std::string err;
};

CliResult RunCli(const TempFolder& dir, const std::vector<std::string>& args, const std::string& input = "") {
    dir.Write("stdin", input);
    const std::string in = dir / "stdin", out = dir / "stdout", err = dir / "stderr";
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, in.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 1, out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    posix_spawn_file_actions_addopen(&actions, 2, err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);

    std::string program = TOLVA_CLI;
    std::vector<std::string> owned{program};
    owned.insert(owned.end(), args.begin(), args.end());
    std::vector<char*> argv;
    for (auto& a : owned) argv.push_back(a.data());
    argv.push_back(nullptr);

    CliResult result;
    pid_t pid = 0;
    const int spawned = posix_spawn(&pid, program.c_str(), &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (spawned != 0) {
        ADD_FAILURE() << "could not start " << program;
        return result;
    }
    int status = 0;
    waitpid(pid, &status, 0);
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    result.out = dir.Read("stdout");
    result.err = dir.Read("stderr");
    return result;
}

std::size_t LineCount(const std::string& text) { return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')); }

} // namespace

TEST(CliCryptIni, CryptRoundTripsBytesThroughPipes) {
    TempFolder dir;
    std::string every;
    for (int c = 32; c <= 255; ++c) every += static_cast<char>(c);
    for (const std::string key : {"73", "86", "+5", "-4", "0", "32766"}) {
        const CliResult enc = RunCli(dir, {"crypt", "enc", key}, every);
        ASSERT_EQ(enc.status, 0) << enc.err;
        EXPECT_EQ(enc.out, tolva::EncryptNumber(every, std::stoi(key)));  // no line end added
        const CliResult dec = RunCli(dir, {"crypt", "dec", key}, enc.out);
        ASSERT_EQ(dec.status, 0) << dec.err;
        EXPECT_EQ(dec.out, every);
    }
    EXPECT_EQ(RunCli(dir, {"crypt", "enc", "5"}, "").out, "");

    const CliResult tooBig = RunCli(dir, {"crypt", "dec", "32767"}, "abc");
    EXPECT_EQ(tooBig.status, 1);
    EXPECT_EQ(tooBig.out, "");
    EXPECT_NE(tooBig.err.find("'DecryptNumber' is an integer, and may not be greater than 32766!"), std::string::npos);
}

TEST(CliCryptIni, IniGetAndSetWorkOnTheGameFiles) {
    TempFolder dir;
    const std::string file = dir.Path() + "\\Tolva2.ini";  // a stored path
    const std::string high = "\xE9t\xE9";
    EXPECT_EQ(RunCli(dir, {"ini", "set", file, "main", "levelset", "levels\\default\\"}).status, 0);
    EXPECT_EQ(RunCli(dir, {"ini", "set", file, high, high, " " + high + " "}).status, 0);
    EXPECT_EQ(RunCli(dir, {"ini", "set", file, "MAIN", "LevelSet", "levels\\mine\\"}).status, 0);
    EXPECT_EQ(dir.Read("Tolva2.ini"), "[main]\r\nlevelset=levels\\mine\\\r\n[" + high + "]\r\n" + high + "= " + high + " \r\n");

    CliResult get = RunCli(dir, {"ini", "get", dir / "tolva2.INI", "Main", "levelset"});
    EXPECT_EQ(get.status, 0);
    EXPECT_EQ(get.out, "levels\\mine\\\n");
    EXPECT_EQ(RunCli(dir, {"ini", "get", file, high, high}).out, high + "\n");
    get = RunCli(dir, {"ini", "get", file, "main", "missing"});
    EXPECT_EQ(get.status, 0);
    EXPECT_EQ(get.out, "\n");
    EXPECT_EQ(RunCli(dir, {"ini", "get", dir / "none.ini", "s", "k"}).out, "\n");

    const CliResult refused = RunCli(dir, {"ini", "set", dir / "no/such/folder.ini", "s", "k", "v"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(LineCount(refused.err), 1u);
}

TEST(CliCryptIni, HelpVersionAndBadUsage) {
    TempFolder dir;
    const CliResult help = RunCli(dir, {"--help"});
    EXPECT_EQ(help.status, 0);
    for (const char* line : {"crypt enc|dec KEY", "ini get FILE SECTION KEY", "ini set FILE SECTION KEY VALUE"})
        EXPECT_NE(help.out.find(line), std::string::npos) << line;
    const CliResult version = RunCli(dir, {"version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.out.rfind("tolva2-cli ", 0), 0u);

    const std::vector<std::vector<std::string>> bad{
        {"crypt"}, {"crypt", "enc"}, {"crypt", "enc", "abc"}, {"crypt", "enc", "12x"}, {"crypt", "enc", ""},
        {"crypt", "enc", "++3"}, {"crypt", "enc", "99999999999"}, {"crypt", "rot", "3"}, {"crypt", "enc", "3", "4"},
        {"ini"}, {"ini", "get", "f", "s"}, {"ini", "set", "f", "s", "k"}, {"ini", "get", "f", "s", "k", "x"},
        {"ini", "del", "f", "s", "k"}, {"nosuchcommand"}, {}};
    for (const auto& args : bad) {
        const CliResult r = RunCli(dir, args, "input");
        std::string shown;
        for (const auto& a : args) shown += a + " ";
        EXPECT_EQ(r.status, 2) << shown;
        EXPECT_EQ(r.out, "") << shown;
        EXPECT_EQ(LineCount(r.err), 1u) << shown << r.err;
    }
    EXPECT_FALSE(tolva::FileExists(dir / "f"));
}
