// The installed game's two layers and the choice between installed and portable.
#include "support/GameFolders.h"
#include "support/TempFolder.h"
#include "support/ZenkorModule.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

using tolva::testing::TempFolder;

namespace fs = std::filesystem;

namespace {

// Restores the portable game folder a test replaced.
class FoldersGuard {
public:
    FoldersGuard() : saved_(tolva::AppPath()) {}
    ~FoldersGuard() { tolva::SetAppPath(saved_); }

private:
    std::string saved_;
};

// A root as a package leaves it: <root>/usr/games and <root>/usr/share/games/tolva2.
struct InstalledRoot {
    TempFolder root;
    InstalledRoot() {
        fs::create_directories(root / "usr/games");
        fs::create_directories(root / "usr/share/games/tolva2/levels/default");
        fs::create_directories(root / "usr/share/games/tolva2/data");
    }
    std::string Data() const { return root / "usr/share/games/tolva2"; }
};

} // namespace

TEST(GameFolders, InstalledOnlyBesideTheDataFolderAndNeverWithAGameDir) {
    InstalledRoot installed;
    const auto games = installed.root / "usr/games";
    const auto found = tolva::DecideGameFolders(games, "", "/xdg", "/home/ana");
    EXPECT_TRUE(found.Installed);
    EXPECT_EQ(found.DataFolder, installed.Data());
    EXPECT_EQ(found.GameFolder, "/xdg/tolva2");
    EXPECT_EQ(found.PluginFolder, installed.root / "usr/lib/games/tolva2/plugins");
    // A trailing separator on the executable's folder changes nothing.
    EXPECT_TRUE(tolva::DecideGameFolders(games + "/", "", "", "/home/ana").Installed);

    // XDG_DATA_HOME counts only when absolute; HOME's .local/share otherwise.
    EXPECT_EQ(tolva::DecideGameFolders(games, "", "", "/home/ana").GameFolder, "/home/ana/.local/share/tolva2");
    EXPECT_EQ(tolva::DecideGameFolders(games, "", "rel", "/home/ana").GameFolder, "/home/ana/.local/share/tolva2");

    // --game-dir is portable even beside an installed data folder.
    const auto named = tolva::DecideGameFolders(games, "/tmp/mine", "", "/home/ana");
    EXPECT_FALSE(named.Installed);
    EXPECT_EQ(named.GameFolder, "/tmp/mine");
    EXPECT_TRUE(named.DataFolder.empty());

    // Not in a games/ folder, or no data folder beside it: the portable folder.
    fs::create_directories(installed.root / "usr/bin");
    const auto bin = tolva::DecideGameFolders(installed.root / "usr/bin", "", "", "/home/ana");
    EXPECT_FALSE(bin.Installed);
    EXPECT_EQ(bin.GameFolder, installed.root / "usr/bin");
    EXPECT_EQ(bin.PluginFolder, installed.root / "usr/bin/plugins");
    TempFolder bare;
    fs::create_directories(bare / "games");
    EXPECT_FALSE(tolva::DecideGameFolders(bare / "games", "", "", "/home/ana").Installed);
}

TEST(GameFolders, ReadsThePlayersFileFirstAndWritesOnlyThere) {
    FoldersGuard guard;
    InstalledRoot installed;
    TempFolder home;
    const std::string player = home / "share/tolva2";
    const auto folders = tolva::DecideGameFolders(installed.root / "usr/games", "", home / "share", "/none");
    ASSERT_TRUE(tolva::UseGameFolders(folders));
    ASSERT_TRUE(fs::is_directory(player));
    EXPECT_EQ(fs::status(player).permissions() & fs::perms::all, fs::perms::owner_all);
    EXPECT_TRUE(tolva::AppPathIsLayered());
    EXPECT_EQ(tolva::PluginFolder(), folders.PluginFolder);

    installed.root.Write("usr/share/games/tolva2/levels/default/levels.set", "[main]\r\nlevelset=Shipped\r\n");
    installed.root.Write("usr/share/games/tolva2/data/1.wav", "shipped");
    const std::string set = tolva::AppPath() + "levels\\default\\levels.set";
    EXPECT_EQ(tolva::AppPath(), player + "\\");
    EXPECT_EQ(tolva::NativePath(set), installed.Data() + "/levels/default/levels.set");
    EXPECT_TRUE(tolva::FileExists(set));
    EXPECT_TRUE(tolva::FolderExists(tolva::AppPath() + "LEVELS\\Default\\"));
    EXPECT_EQ(tolva::ReadIni(set, "main", "levelset"), "Shipped");

    // A write of a shipped file lands in the player's folder, folders made on the way;
    // the shipped file stays as it was, and from now on the player's copy is read.
    ASSERT_TRUE(tolva::WriteIni(set, "main", "levelset", "Mine"));
    EXPECT_EQ(installed.root.Read("usr/share/games/tolva2/levels/default/levels.set"), "[main]\r\nlevelset=Shipped\r\n");
    EXPECT_EQ(tolva::NativePath(set), player + "/levels/default/levels.set");
    EXPECT_EQ(tolva::ReadIni(set, "main", "levelset"), "Mine");

    // A new file goes to the player's folder; a missing one is looked for there.
    EXPECT_EQ(tolva::NativePath(tolva::AppPath() + "stat.ini"), player + "/stat.ini");
    ASSERT_EQ(tolva::WriteWholeFile(tolva::AppPath() + "levels\\own\\hiscore.hi", "x"), 0);
    EXPECT_TRUE(fs::is_regular_file(player + "/levels/own/hiscore.hi"));
    EXPECT_FALSE(fs::exists(installed.Data() + "/levels/own"));

    // Clearing the read-only mark of a shipped-only file touches the shipped file not.
    fs::permissions(installed.Data() + "/data/1.wav", fs::perms::owner_read);
    tolva::ClearFileAttributes(tolva::AppPath() + "data\\1.wav");
    EXPECT_EQ(fs::status(installed.Data() + "/data/1.wav").permissions() & fs::perms::owner_write, fs::perms::none);

    // A path that climbs out of the player's folder gets no folders made for it.
    EXPECT_NE(tolva::WriteWholeFile(tolva::AppPath() + "..\\..\\escaped\\x", "x"), 0);
    EXPECT_FALSE(fs::exists(home / "escaped"));
}

TEST(GameFolders, LevelFoldersOfBothLayersAreListedOnce) {
    FoldersGuard guard;
    InstalledRoot installed;
    TempFolder home;
    ASSERT_TRUE(tolva::UseGameFolders(tolva::DecideGameFolders(installed.root / "usr/games", "", home.Path(), "")));
    fs::create_directories(installed.Data() + "/levels/miniatures");
    fs::create_directories(home / "tolva2/levels/Default");   // the player's copy of a shipped set
    fs::create_directories(home / "tolva2/levels/mine");
    std::string levels = tolva::AppPath() + "levels";
    std::vector<std::string> names = tolva::ListSubfolders(levels);
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"Default", "mine", "miniatures"}));
    EXPECT_EQ(levels, tolva::AppPath() + "levels\\");

    // Back to a portable folder: one layer again.
    TempFolder portable;
    tolva::SetAppPath(portable.Path());
    EXPECT_FALSE(tolva::AppPathIsLayered());
    levels = tolva::AppPath() + "levels";
    EXPECT_TRUE(tolva::ListSubfolders(levels).empty());
}
