// tolva2-cli levels check|seal|solve, run as a level maker runs them.
#include "LevelSetTestFiles.h"
#include "support/TempFolder.h"

#include "CliRunner.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <sys/wait.h>

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

TEST(CliLevels, ADamagedDefaultSetFails) {
    TempFolder f;
    std::string text = tolva::testing::TinyPairSet();
    MakeSet(f, "default", text);
    ASSERT_EQ(Cli("levels seal " + Quote(f / "default")).status, 0);
    const std::string sealed = f.Read("default/levels.set");

    std::string changed = sealed;
    changed.replace(changed.find("r1=6,7"), 6, "r1=6,1");
    f.Write("default/levels.set", changed);
    EXPECT_EQ(Cli("levels check " + Quote(f / "default")).status, 1);

    std::string cut = sealed.substr(0, sealed.size() - 1);
    cut = cut.substr(0, cut.rfind('\n') + 1);
    f.Write("default/levels.set", cut);
    CliRun r = Cli("levels check " + Quote(f / "default"));
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.out.find("integrity: failed"), std::string::npos);

    std::filesystem::remove(f / "default/levels.set");
    EXPECT_EQ(Cli("levels check " + Quote(f / "default")).status, 1);
    EXPECT_EQ(Cli("levels seal " + Quote(f / "default")).status, 1);

    // A folder of that name is no set either, for any set.
    std::filesystem::create_directories(f / "default/levels.set");
    std::filesystem::create_directories(f / "other/levels.set");
    EXPECT_EQ(Cli("levels check " + Quote(f / "default")).status, 1);
    EXPECT_EQ(Cli("levels check " + Quote(f / "other")).status, 1);
    EXPECT_EQ(Cli("levels seal " + Quote(f / "other")).status, 1);
}

TEST(CliLevels, UsageErrorsGiveTwo) {
    TempFolder f;
    EXPECT_EQ(Cli("levels").status, 2);
    EXPECT_EQ(Cli("levels check").status, 2);
    EXPECT_EQ(Cli("levels check a b").status, 2);
    EXPECT_EQ(Cli("levels check " + Quote(f / "missing")).status, 2);
    EXPECT_EQ(Cli("levels tidy " + Quote(f.Path())).status, 2);
    EXPECT_EQ(Cli("levels solve " + Quote(f.Path()) + " --level").status, 2);
    EXPECT_EQ(Cli("levels solve " + Quote(f.Path()) + " --level x").status, 2);
    EXPECT_EQ(Cli("levels solve " + Quote(f.Path()) + " --budget -1").status, 2);
    // Level numbers run from 1: 0 is refused like -1 and 101, before any level is solved.
    MakeSet(f, "pair", "[main]\nlevelset=Pair\n[level1]\nlevelbricks=10\nlevelgfxfolder=\nLevelName=A\n"
                       "r0=1,1,2,2\nr1=-1\n");
    for (const char* command : {"solve", "rate"})
        for (const char* level : {"0", "-1", "101"}) {
            const CliRun r = Cli(std::string("levels ") + command + " " + Quote(f / "pair") + " --level " + level);
            EXPECT_EQ(r.status, 2) << command << " --level " << level;
            EXPECT_TRUE(r.out.empty()) << command << " --level " << level << ": " << r.out;
        }
}

TEST(CliLevels, SolveRefusesABudgetItCannotCount) {
    TempFolder f;
    MakeSet(f, "pair", "[main]\nlevelset=Pair\n[level1]\nlevelbricks=10\nlevelgfxfolder=\nLevelName=A\n"
                       "r0=1,1,2,2\nr1=-1\n");
    for (const char* budget : {"inf", "nan", "-inf", "1e400", "0", "-1", "5s"})
        EXPECT_EQ(Cli("levels solve " + Quote(f / "pair") + " --budget " + budget).status, 2) << budget;
    // A huge but finite budget is cut to one the clock can count, and the level solves.
    CliRun r = Cli("levels solve " + Quote(f / "pair") + " --budget 1e12");
    EXPECT_EQ(r.status, 0);
    ASSERT_EQ(r.Lines().size(), 1u);
    EXPECT_EQ(r.Lines()[0].rfind("level 1: ", 0), 0u);
    EXPECT_EQ(r.Lines()[0].find("unsolved"), std::string::npos);
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

    EXPECT_EQ(Cli("levels rate").status, 2);
    EXPECT_EQ(Cli("levels rate " + Quote(f / "missing")).status, 2);
    EXPECT_EQ(Cli("levels rate " + Quote(f / "three") + " --tries 0").status, 2);
    EXPECT_EQ(Cli("levels rate " + Quote(f / "three") + " --tries x").status, 2);
    EXPECT_EQ(Cli("levels rate " + Quote(f / "three") + " --seed -1").status, 2);
    EXPECT_EQ(Cli("levels rate " + Quote(f / "three") + " --level 4").status, 2);
    EXPECT_EQ(Cli("levels rate " + Quote(f / "three") + " --colour 4").status, 2);
    EXPECT_EQ(Cli("levels rate " + Quote(f.Path())).status, 1);   // no levels.set there
}
