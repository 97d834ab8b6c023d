// tolva2-cli levels check|seal|solve, run as a level maker runs them.
#include "LevelSetTestFiles.h"
#include "support/TempFolder.h"

#include "CliRunner.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <sys/wait.h>
#include <utility>
#include <vector>

using tolva::testing::TempFolder;

namespace {

using tolva::testing::Cli;
using tolva::testing::CliRun;
using tolva::testing::Quote;

void MakeSet(const TempFolder& f, const std::string& name, const std::string& text) {
    std::filesystem::create_directories(f / name);
    f.Write(name + "/levels.set", text);
}

} // namespace

TEST(CliLevels, CheckReportsTheSetAndItsIntegrity) {
    TempFolder f;
    MakeSet(f, "mine", tolva::testing::TinyPairSet());
    CliRun r = Cli("levels check " + Quote(f / "mine"));
    EXPECT_EQ(r.status, 0);
    // Nothing follows the last row, so the scan reads it again for rows 3 to 39:
    // 74 + 8 * (3 + ... + 39).
    EXPECT_EQ(r.out, "set: Tiny Pair\nlevels: 2\nchecksum: 6290\ndefault: no\nintegrity: not checked\n"
                     "level 1: size 10, folder \"crystal\", name \"One\"\n"
                     "level 2: size 25, folder \"\", name \"Two\"\n");

    // The same file in a default folder has no checksum line yet: it fails, until sealed.
    MakeSet(f, "mydefault", tolva::testing::TinyPairSet());
    r = Cli("levels check " + Quote(f / "mydefault") + "/");
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.out.find("default: yes\nintegrity: failed\n"), std::string::npos);

    r = Cli("levels seal " + Quote(f / "mydefault"));
    EXPECT_EQ(r.status, 0);
    EXPECT_NE(r.out.find("checksum: 74\n"), std::string::npos);   // with the checksum line behind the last row
    const std::string sealed = f.Read("mydefault/levels.set");
    EXPECT_EQ(sealed.rfind(tolva::testing::TinyPairSet(), 0), 0u);   // the levels stay as they were
    r = Cli("levels check " + Quote(f / "mydefault"));
    EXPECT_EQ(r.status, 0);
    EXPECT_NE(r.out.find("integrity: ok\n"), std::string::npos);

    // Sealing again replaces the line rather than adding one.
    EXPECT_EQ(Cli("levels seal " + Quote(f / "mydefault")).status, 0);
    EXPECT_EQ(f.Read("mydefault/levels.set"), sealed);
    EXPECT_EQ(f.EntryCount(), 2u);
}

TEST(CliLevels, RatePrintsOneTabSeparatedLineALevel) {
    TempFolder f;
    // Level 1 is one group; level 2 strands a 1 whatever is clicked; level 3 clears for
    // the players who take the 2s first.
    MakeSet(f, "three", "[main]\nlevelset=Three\n"
                        "[level1]\nlevelbricks=10\nlevelgfxfolder=\nLevelName=A\nr0=1,1\nr1=1,1\n"
                        "[level2]\nlevelbricks=10\nlevelgfxfolder=\nLevelName=B\nr0=0\nr1=1,1\n"
                        "[level3]\nlevelbricks=10\nlevelgfxfolder=\nLevelName=C\nr0=1\nr1=2\nr2=2\nr3=1,1\n"
                        "r4=-1\n");   // the last row is read again for the rows left: keep them empty
    CliRun r = Cli("levels rate " + Quote(f / "three") + " --tries 40 --seed 3");
    EXPECT_EQ(r.status, 0);
    const auto lines = r.Lines();
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[0], "level\tside\tbricks\tcolours\tspells\tcleared\ttries\trate\tleft%");
    EXPECT_EQ(lines[1], "1\t10\t4\t1\t0\t40\t40\t1.000\t0.0");
    EXPECT_EQ(lines[2], "2\t10\t3\t2\t0\t0\t40\t0.000\t33.3");   // the 0 of three cells is left
    EXPECT_EQ(lines[3].rfind("3\t10\t5\t2\t0\t", 0), 0u);
    EXPECT_EQ(lines[3].find("\t0\t40\t0.000\t"), std::string::npos);
    EXPECT_EQ(lines[3].find("\t40\t40\t1.000\t"), std::string::npos);

    // The same seed gives the same lines, also for one level on its own.
    EXPECT_EQ(Cli("levels rate " + Quote(f / "three") + " --tries 40 --seed 3").out, r.out);
    r = Cli("levels rate " + Quote(f / "three") + " --tries 40 --seed 3 --level 3");
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.Lines().size(), 2u);
    EXPECT_EQ(r.Lines().back(), lines[3]);
}

TEST(CliLevels, BadArgumentsGiveTwoAndAFolderWithoutASetOne) {
    // Whether a set fails its test or reads at all is the reader's part; here only how the
    // command line answers what it cannot use. A usage error prints nothing on its way out.
    TempFolder f;
    MakeSet(f, "pair", "[main]\nlevelset=Pair\n[level1]\nlevelbricks=10\nlevelgfxfolder=\nLevelName=A\n"
                       "r0=1,1,2,2\nr1=-1\n");
    std::filesystem::create_directories(f / "folder/levels.set");
    const std::string pair = " " + Quote(f / "pair"), none = " " + Quote(f.Path());
    std::vector<std::pair<std::string, int>> cases = {
        {"", 2}, {"check", 2}, {"check a b", 2}, {"check " + Quote(f / "missing"), 2}, {"tidy" + none, 2},
        {"solve" + none + " --level", 2}, {"solve" + none + " --level x", 2}, {"rate", 2},
        {"rate " + Quote(f / "missing"), 2}, {"rate" + pair + " --tries 0", 2}, {"rate" + pair + " --tries x", 2},
        {"rate" + pair + " --seed -1", 2}, {"rate" + pair + " --level 2", 2}, {"rate" + pair + " --colour 4", 2},
        {"check" + none, 1}, {"seal" + none, 1}, {"rate" + none, 1},
        {"check " + Quote(f / "folder"), 1}, {"seal " + Quote(f / "folder"), 1}};
    for (const char* budget : {"inf", "nan", "-inf", "1e400", "0", "-1", "5s"})
        cases.push_back({"solve" + pair + " --budget " + budget, 2});
    // Level numbers run from 1: 0 is refused like -1 and 101, before any level is solved.
    for (const std::string command : {"solve", "rate"})
        for (const char* level : {"0", "-1", "101"}) cases.push_back({command + pair + " --level " + level, 2});
    for (const auto& [arguments, status] : cases) {
        const CliRun r = Cli("levels " + arguments);
        EXPECT_EQ(r.status, status) << arguments;
        if (status == 2) {
            EXPECT_TRUE(r.out.empty()) << arguments << ": " << r.out;
        }
    }
}
