#include "support/TempFolder.h"
#include "support/ZenkorModule.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

using tolva::testing::TempFolder;

namespace fs = std::filesystem;

namespace {

// Restores the game folder that a test changes.
class AppPathGuard {
public:
    AppPathGuard() : saved_(tolva::AppPath()) {}
    ~AppPathGuard() { tolva::SetAppPath(saved_); }

private:
    std::string saved_;
};

bool IsWritableByOwner(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && (info.st_mode & S_IWUSR) != 0;
}

} // namespace

TEST(ZenkorFiles, FileAndFolderTestsTellFilesFromFolders) {
    TempFolder dir;
    dir.Write("file.txt", "x");
    fs::create_directory(dir / "folder");
    const std::string file = dir / "file.txt";
    ASSERT_EQ(::chmod(file.c_str(), 0444), 0);  // read-only files count

    EXPECT_TRUE(tolva::FileExists(file));
    EXPECT_TRUE(tolva::FileExists(dir.Path() + "\\FILE.TXT"));
    EXPECT_FALSE(tolva::FileExists(dir / "folder"));
    EXPECT_FALSE(tolva::FileExists(dir / "missing"));
    EXPECT_FALSE(tolva::FileExists(""));
    EXPECT_TRUE(tolva::FolderExists(dir / "folder"));
    EXPECT_TRUE(tolva::FolderExists(dir.Path() + "\\Folder\\"));
    EXPECT_FALSE(tolva::FolderExists(file));
    EXPECT_FALSE(tolva::FolderExists(dir / "missing"));
    EXPECT_FALSE(tolva::FolderExists(""));

    tolva::ClearFileAttributes(file);
    EXPECT_TRUE(IsWritableByOwner(file));
    tolva::ClearFileAttributes(dir / "missing");  // nothing to do, nothing happens
    EXPECT_EQ(dir.EntryCount(), 2u);
}

TEST(ZenkorFiles, NativePathMapsSeparatorsAndFindsNamesRegardlessOfCase) {
    TempFolder dir;
    fs::create_directories(dir / "levels/Default");
    dir.Write("levels/Default/levels.set", "x");
    dir.Write("levels/Default/Exact", "1");
    dir.Write("levels/Default/exact", "2");
    const std::string root = dir.Path();

    EXPECT_EQ(tolva::NativePath(root + "\\levels\\default\\LEVELS.SET"), root + "/levels/Default/levels.set");
    EXPECT_EQ(tolva::NativePath(root + "\\\\LEVELS\\\\default\\\\"), root + "/levels/Default/");
    EXPECT_EQ(tolva::NativePath(root + "//levels///Default/levels.set"), root + "/levels/Default/levels.set");
    // The exact name wins where it exists.
    EXPECT_EQ(tolva::NativePath(root + "\\levels\\Default\\exact"), root + "/levels/Default/exact");
    EXPECT_EQ(tolva::NativePath(root + "\\levels\\Default\\Exact"), root + "/levels/Default/Exact");
    // A missing name keeps the rest of the path as it was given.
    EXPECT_EQ(tolva::NativePath(root + "\\LEVELS\\New Set\\Hiscore.HI"), root + "/levels/New Set/Hiscore.HI");
    EXPECT_EQ(tolva::NativePath("relative\\Path"), "relative/Path");
    EXPECT_EQ(tolva::NativePath("\\"), "/");
    EXPECT_EQ(tolva::NativePath(""), "");
}

TEST(ZenkorFiles, AppPathIsTheGameFolderWithOneClosingBackslash) {
    AppPathGuard guard;
    tolva::SetAppPath("/opt/tolva2");
    EXPECT_EQ(tolva::AppPath(), "/opt/tolva2\\");
    tolva::SetAppPath("/opt/tolva2/");
    EXPECT_EQ(tolva::AppPath(), "/opt/tolva2\\");
    tolva::SetAppPath("/opt/tolva2\\");  // already closed: nothing added
    EXPECT_EQ(tolva::AppPath(), "/opt/tolva2\\");
    tolva::SetAppPath("/");
    EXPECT_EQ(tolva::AppPath(), "\\");
    EXPECT_EQ(tolva::NativePath(tolva::AppPath() + "tmp"), "/tmp");
    tolva::SetAppPath("game");
    EXPECT_EQ(tolva::AppPath(), fs::current_path().string() + "/game\\");

    TempFolder dir;
    std::string prog = "tolva2", option = "--game-dir", value = dir.Path(), joined = "--game-dir=" + dir.Path();
    std::vector<char*> argv{prog.data(), option.data(), value.data()};
    tolva::InitAppPath(3, argv.data());
    EXPECT_EQ(tolva::AppPath(), dir.Path() + "\\");
    dir.Write("tolva2.ini", "[main]\r\nplaymusic=0\r\n");
    EXPECT_EQ(tolva::ReadIni(tolva::AppPath() + "tolva2.ini", "main", "playmusic"), "0");

    std::vector<char*> argvJoined{prog.data(), joined.data()};
    tolva::SetAppPath("/elsewhere");
    tolva::InitAppPath(2, argvJoined.data());
    EXPECT_EQ(tolva::AppPath(), dir.Path() + "\\");

    // Without the option, or with the option but no folder behind it: the executable's.
    const std::string exeFolder = fs::read_symlink("/proc/self/exe").parent_path().string();
    std::vector<char*> argvBare{prog.data(), option.data()};
    tolva::InitAppPath(2, argvBare.data());
    EXPECT_EQ(tolva::AppPath(), exeFolder + "\\");
}

TEST(ZenkorFiles, ListSubfoldersGivesFolderNamesOnly) {
    TempFolder dir;
    fs::create_directories(dir / "sets/alpha");
    fs::create_directories(dir / "sets/beta gamma");
    fs::create_directories(dir / "sets/alpha/inner");
    dir.Write("sets/file.txt", "x");
    fs::create_directory_symlink(dir / "sets/alpha", dir / "sets/link");
    fs::create_symlink(dir / "sets/file.txt", dir / "sets/filelink");

    std::string path = dir.Path() + "\\sets";
    std::vector<std::string> names = tolva::ListSubfolders(path);
    EXPECT_EQ(path, dir.Path() + "\\sets\\");  // the caller's text gets its backslash
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"alpha", "beta gamma", "link"}));

    std::string missing = dir / "nothing";
    EXPECT_TRUE(tolva::ListSubfolders(missing).empty());
    EXPECT_EQ(missing, dir.Path() + "/nothing\\");
}

TEST(ZenkorFiles, WholeFilesAreBytesAndAReplacementLosesNothing) {
    TempFolder dir;
    std::string every;
    for (int c = 0; c <= 255; ++c) every += static_cast<char>(c);
    const std::string file = dir / "page.htm";

    int events = 0;
    const auto doEvents = [&events] { ++events; };
    EXPECT_EQ(tolva::WriteWholeFile(file, every, doEvents), 0);
    EXPECT_EQ(events, 0);  // nothing to clear or delete on a new file
    std::string read = "untouched";
    ASSERT_TRUE(tolva::ReadWholeFile(file, read));
    EXPECT_EQ(read, every);

    // An existing read-only file is replaced, with pending events let run twice.
    ASSERT_EQ(::chmod(file.c_str(), 0444), 0);
    EXPECT_EQ(tolva::WriteWholeFile(dir.Path() + "\\PAGE.htm", "new", doEvents), 0);
    EXPECT_EQ(events, 2);
    EXPECT_EQ(dir.Read("page.htm"), "new");
    EXPECT_TRUE(tolva::WriteWholeFile(file, "") == 0 && dir.Read("page.htm").empty());

    // Failures: a missing folder, a folder in the way. Nothing is lost or left over.
    EXPECT_EQ(tolva::WriteWholeFile(dir / "missing/x.htm", "x"), -1);
    fs::create_directory(dir / "sub");
    EXPECT_EQ(tolva::WriteWholeFile(dir / "sub", "x"), -1);
    EXPECT_TRUE(fs::is_directory(dir / "sub"));
    EXPECT_EQ(dir.EntryCount(), 2u);

    EXPECT_FALSE(tolva::ReadWholeFile(dir / "missing.htm", read));
    EXPECT_FALSE(tolva::ReadWholeFile(dir / "sub", read));
    EXPECT_EQ(read, every);  // a failed read leaves the text as it was
}

TEST(ZenkorFiles, WritesThroughASymbolicLinkKeepTheLink) {
    TempFolder dir;
    fs::create_directory(dir / "real");
    dir.Write("real/stat.ini", "[LEVEL1]\r\nclicks=1\r\n");
    fs::create_symlink(dir / "real/stat.ini", dir / "stat.ini");
    ASSERT_TRUE(tolva::WriteIni(dir / "stat.ini", "level1", "clicks", "2"));
    EXPECT_TRUE(fs::is_symlink(dir / "stat.ini"));
    EXPECT_EQ(dir.Read("real/stat.ini"), "[LEVEL1]\r\nclicks=2\r\n");
}

TEST(ZenkorFiles, FileExtensionIsWhatStandsBehindTheLastDot) {
    EXPECT_EQ(tolva::GetFileExtension("song.old.mod", false), "mod");
    EXPECT_EQ(tolva::GetFileExtension("song.old.mod", true), ".mod");
    EXPECT_EQ(tolva::GetFileExtension("song", true), "");
    EXPECT_EQ(tolva::GetFileExtension("song.", false), "");
    EXPECT_EQ(tolva::GetFileExtension("song.", true), ".");
    EXPECT_EQ(tolva::GetFileExtension(".hi", false), "hi");
    EXPECT_EQ(tolva::GetFileExtension("C:\\music.d\\song", true), "");
    EXPECT_EQ(tolva::GetFileExtension("/home/a.b/tune.XM", false), "XM");
    EXPECT_EQ(tolva::GetFileExtension("", true), "");
}

TEST(ZenkorFiles, OnlyRegularFilesAreFilesAndAFileOverItsBoundIsDamaged) {
    TempFolder dir;
    std::string read = "untouched";
    // A pipe, a device and a link to an endless one are no files: they read as missing,
    // at once, and are never written through.
    ASSERT_EQ(::mkfifo((dir / "pipe").c_str(), 0644), 0);
    fs::create_symlink("/dev/zero", dir / "zero");
    fs::create_symlink(dir / "loop", dir / "loop");
    for (const char* name : {"pipe", "zero", "loop"}) {
        EXPECT_FALSE(tolva::FileExists(dir / name)) << name;
        EXPECT_EQ(tolva::ReadFileWithin(dir / name, read, 1024), tolva::FileRead::Missing) << name;
        EXPECT_FALSE(tolva::WriteIni(dir / name, "s", "k", "v")) << name;
        EXPECT_EQ(tolva::ReadIni(dir / name, "s", "k"), "") << name;
    }
    EXPECT_EQ(tolva::WriteWholeFile(dir / "pipe", "x"), -1);
    EXPECT_EQ(read, "untouched");

    // A file over the bound is damaged: it is not read, and an ini write leaves it whole
    // instead of rewriting it from nothing. A sparse file costs no disk.
    dir.Write("stat.ini", "[LEVEL1]\r\nclicks=3\r\n");
    ASSERT_EQ(::truncate((dir / "stat.ini").c_str(), static_cast<off_t>(tolva::MaxIniBytes) + 1), 0);
    EXPECT_EQ(tolva::ReadFileWithin(dir / "stat.ini", read, tolva::MaxIniBytes), tolva::FileRead::TooLarge);
    EXPECT_EQ(tolva::ReadIni(dir / "stat.ini", "LEVEL1", "clicks"), "");
    EXPECT_FALSE(tolva::WriteIni(dir / "stat.ini", "LEVEL1", "clicks", "4"));
    EXPECT_EQ(fs::file_size(dir / "stat.ini"), tolva::MaxIniBytes + 1);
    EXPECT_EQ(read, "untouched");
    // At the bound itself the file is whole.
    ASSERT_EQ(::truncate((dir / "stat.ini").c_str(), 4096), 0);
    EXPECT_EQ(tolva::ReadFileWithin(dir / "stat.ini", read, 4096), tolva::FileRead::Ok);
    EXPECT_EQ(read.substr(0, 20), "[LEVEL1]\r\nclicks=3\r\n");
    EXPECT_EQ(tolva::ReadFileWithin(dir / "stat.ini", read, 4095), tolva::FileRead::TooLarge);
}

TEST(ZenkorFiles, AWriteClearsTheTemporariesThatAKilledWriterLeft) {
    TempFolder dir;
    dir.Write("stat.ini", "[LEVEL1]\r\n");
    // Left by killed games: one of a process that is gone (no process number reaches
    // nine digits), one of this very process. One of a running process (1) is another
    // game writing now and stays, and so do other files' temporaries and look-alikes.
    const std::string gone = ".stat.ini.tmp999999999.3", mine = ".stat.ini.tmp" + std::to_string(::getpid()) + ".7";
    const std::vector<std::string> kept = {".stat.ini.tmp1.2", ".tolva2.ini.tmp999999999.1", ".stat.ini.tmpx.1",
                                           ".stat.ini.tmp999999999.", "stat.ini.tmp999999999.3"};
    dir.Write(gone, "half");
    dir.Write(mine, "half");
    for (const auto& name : kept) dir.Write(name, "other");

    ASSERT_TRUE(tolva::WriteIni(dir / "stat.ini", "LEVEL1", "clicks", "1"));
    EXPECT_FALSE(fs::exists(dir / gone));
    EXPECT_FALSE(fs::exists(dir / mine));
    for (const auto& name : kept) EXPECT_EQ(dir.Read(name), "other") << name;
    EXPECT_EQ(dir.EntryCount(), 1 + kept.size());
    EXPECT_EQ(dir.Read("stat.ini"), "[LEVEL1]\r\nclicks=1\r\n");

    // The whole-file writer clears them as well.
    dir.Write(".page.htm.tmp999999999.0", "half");
    EXPECT_EQ(tolva::WriteWholeFile(dir / "page.htm", "new"), 0);
    EXPECT_FALSE(fs::exists(dir / ".page.htm.tmp999999999.0"));
}
