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
}
