// InitLevels from a game folder: the order of the session's steps, a damaged default
// set, and folders without levels.set.
#include "levels/LevelSetReader.h"

#include "LevelSetTestFiles.h"
#include "support/TempFolder.h"
#include "support/ZenkorModule.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

using namespace tolva;
using tolva::testing::TempFolder;
using tolva::testing::TinyPairSet;

namespace {

class RecordingHooks : public LevelSetHooks {
public:
    std::vector<std::string> calls;
    void SetSpellName(int i, const std::string& name) override { calls.push_back("name " + std::to_string(i) + " " + name); }
    void ShowLoading() override { calls.push_back("show loading"); }
    void SetLoadingLabel(const std::string& text) override { calls.push_back("label " + text); }
    void SetSpellToolTip(int i, const std::string& name) override { calls.push_back("tip " + std::to_string(i) + " " + name); }
    void LoadHiscores(std::int16_t key) override { calls.push_back("hiscores " + std::to_string(key)); }
    void ClearLevelMenu() override { calls.push_back("clear menu"); }
    void SetLevelMenuEntry(int i, const std::string& caption) override { calls.push_back("menu " + std::to_string(i) + " " + caption); }
    void SetTitle(const std::string& title) override { calls.push_back("title " + title); }
    void DoEvents() override { calls.push_back("events"); }
    void DefaultSetCorrupted() override { calls.push_back("corrupted"); }
    void LevelRoot(const std::string& path) override { calls.push_back("root " + path); }
};

struct Game {
    TempFolder folder;
    std::unique_ptr<LevelModule> module = std::make_unique<LevelModule>();
    RecordingHooks hooks;
    LevelSetReader reader{*module, &hooks};

    Game() { SetAppPath(folder.Path()); }
    void WriteSet(const std::string& set, const std::string& text) {
        std::filesystem::create_directories(folder / ("levels/" + set));
        folder.Write("levels/" + set + "/levels.set", text);
    }
    LevelSetLoad Load(const std::string& set) {
        reader.LevelSetPath = "levels\\" + set + "\\";
        return reader.InitLevels();
    }
};

std::string Sealed(const std::string& text, double sum) {
    return text + "checksum=" + EncryptNumber(NumberText(sum), DefaultSetKey);
}

} // namespace

TEST(LevelSetInit, RunsTheSessionStepsInTheGameOrder) {
    Game g;
    g.WriteSet("default", Sealed(TinyPairSet(), tolva::testing::TinyPairSum));
    const LevelSetLoad load = g.Load("default");
    EXPECT_EQ(load.Integrity, LevelSetIntegrity::Ok);

    std::vector<std::string> expected;
    const char* names[] = {"BOUNCING SAW", "RAINBOW", "GUN", "TEST TUBE", "BOMB", "UMBRELLA"};
    for (int i = 0; i < 6; ++i) expected.push_back("name " + std::to_string(i) + " " + names[i]);
    expected.push_back("show loading");
    for (int i = 0; i < 6; ++i) {
        expected.push_back("label Levels_tooltip" + std::to_string(i));
        expected.push_back("tip " + std::to_string(i) + " " + names[i]);
    }
    expected.insert(expected.end(), {"hiscores " + std::to_string(DefaultSetKey), "clear menu",
                                     "title TOLVA II  -  [Tiny Pair]", "menu 0 (1) - One", "label Level_1", "events",
                                     "menu 1 (2) - Two", "label Level_2", "events",
                                     "root " + AppPath() + "levels\\default\\"});
    EXPECT_EQ(g.hooks.calls, expected);
    EXPECT_EQ(g.module->Levels[1].LevelName, "Two");
}

TEST(LevelSetInit, DamagedDefaultSetStopsBeforeTheBoardIsTouched) {
    Game g;
    std::string text = Sealed(TinyPairSet(), tolva::testing::TinyPairSum);
    text.replace(text.find("r1=6,7"), 6, "r1=6,9");
    g.WriteSet("default", text);
    EXPECT_EQ(g.Load("default").Integrity, LevelSetIntegrity::Failed);
    ASSERT_FALSE(g.hooks.calls.empty());
    EXPECT_EQ(g.hooks.calls.back(), "corrupted");

    // The same bytes under another folder name are never checked.
    g.hooks.calls.clear();
    g.WriteSet("other", text);
    EXPECT_EQ(g.Load("other").Integrity, LevelSetIntegrity::NotChecked);
    EXPECT_EQ(g.hooks.calls.back(), "root " + AppPath() + "levels\\other\\");
    EXPECT_EQ(std::count(g.hooks.calls.begin(), g.hooks.calls.end(), "hiscores " + std::to_string(OtherSetKey)), 1);
}

TEST(LevelSetInit, ALoadLeavesNothingOfTheSetBefore) {
    Game g;
    g.WriteSet("Big", TinyPairSet());   // folder names match without regard to case
    EXPECT_TRUE(g.Load("big").FileFound);
    ASSERT_EQ(g.module->Levels[1].LevelName, "Two");

    // A shorter set after a longer one leaves nothing of the longer one behind.
    g.WriteSet("small", "[main]\nlevelset=Small\n[level1]\nlevelbricks=12\nlevelgfxfolder=\nLevelName=Solo\nr0=3,3\ns0=-1,-1\n");
    g.Load("small");
    EXPECT_EQ(g.module->Levels[0].LevelName, "Solo");
    EXPECT_EQ(g.module->Levels[0].BrickGrid(2, 0), CellEmpty);
    EXPECT_TRUE(g.module->Levels[1].LevelName.empty());
    EXPECT_EQ(g.module->Levels[1].BrickGrid(0, 0), CellEmpty);
}

TEST(LevelSetInit, NoFileAPipeAFolderOrAnEndlessFileIsNoSetAndTheLoadEnds) {
    Game g;
    // Nothing, a pipe, a folder or a link to an endless file where levels.set should be:
    // the load ends at once with no level and no menu entry; an enormous default set
    // fails its test, as a damaged one does.
    std::filesystem::create_directories(g.folder / "levels/empty");
    std::filesystem::create_directories(g.folder / "levels/pipe");
    ASSERT_EQ(::mkfifo((g.folder / "levels/pipe/levels.set").c_str(), 0644), 0);
    std::filesystem::create_directories(g.folder / "levels/folder/levels.set");
    std::filesystem::create_directories(g.folder / "levels/zero");
    std::filesystem::create_symlink("/dev/zero", g.folder / "levels/zero/levels.set");
    for (const char* set : {"empty", "pipe", "folder", "zero"}) {
        g.WriteSet("big", TinyPairSet());
        g.Load("big");
        g.hooks.calls.clear();
        const LevelSetLoad load = g.Load(set);
        EXPECT_FALSE(load.FileFound) << set;
        EXPECT_FALSE(load.TooLarge) << set;
        EXPECT_EQ(load.LevelHeads, 0) << set;
        EXPECT_EQ(load.Integrity, LevelSetIntegrity::NotChecked) << set;
        EXPECT_TRUE(g.module->Levels[0].LevelName.empty()) << set;
        EXPECT_EQ(std::count_if(g.hooks.calls.begin(), g.hooks.calls.end(),
                                [](const std::string& c) { return c.rfind("menu ", 0) == 0; }),
                  0) << set;
        EXPECT_EQ(g.hooks.calls.back(), "root " + AppPath() + "levels\\" + set + "\\") << set;
    }

    // An enormous file (sparse: it costs no disk) is damaged: the default set fails.
    g.WriteSet("default", Sealed(TinyPairSet(), tolva::testing::TinyPairSum));
    ASSERT_EQ(g.Load("default").Integrity, LevelSetIntegrity::Ok);
    ASSERT_EQ(::truncate((g.folder / "levels/default/levels.set").c_str(),
                         static_cast<off_t>(MaxLevelSetBytes) + 1), 0);
    const LevelSetLoad load = g.Load("default");
    EXPECT_TRUE(load.TooLarge);
    EXPECT_EQ(load.LevelHeads, 0);
    EXPECT_EQ(load.Integrity, LevelSetIntegrity::Failed);
    EXPECT_EQ(g.hooks.calls.back(), "corrupted");
}
