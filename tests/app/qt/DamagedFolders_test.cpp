// The damaged-file matrix: the real start-up, built by the composition root as the game
// builds it, on game folders with one damaged file each. Every row says what the player
// meets: the stop message with its text, or a game that starts (maybe after a notice) and
// plays a few clicks. In every row the player's files (tolva2.ini, stat.ini, hiscore.hi,
// the level set) are afterwards byte for byte as they were, but for the one the game is
// meant to write (tolva2.ini gets notfirstuse=yes after a first start).
//
// A row is data: the file, what is done to it, what must happen. Adding a case is one line.
#include "qtsupport/GameWindowKit.h"
#include "qtsupport/HangBound.h"
#include "board/BmpWriter.h"
#include "hiscores/Hiscores.h"
#include "session/GameSession.h"

#include <QDialog>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <map>
#include <random>

using namespace tolva;
using namespace tolva::testing;
namespace fs = std::filesystem;

namespace {

// ---- what is done to a file --------------------------------------------------------------

enum class Damage {
    Remove,        // the file is gone
    Empty,         // zero bytes
    Truncate,      // cut in the middle of a line
    DropLastLine,  // the last line is gone
    Binary,        // 4 KiB of noise
    Huge,          // a sparse file of `arg` MiB and one byte: over any bound
    Fifo,          // a named pipe without a writer (from here to LinkToZero: in the file's place)
    Folder,        // a folder of that name
    LinkLoop,      // a symbolic link to itself
    LinkToZero,    // a symbolic link to /dev/zero
    ReadOnly,      // mode 0444
    Unreadable,    // mode 0000 (root reads it all the same)
    Replace,       // the bytes `arg`
    Edit,          // the first `arg` "from=>to" replaced
    StripOfWidth,  // a picture `arg` pixels wide (0 is a header that says so)
};

enum class Outcome {
    Stops,             // Start() fails after the message
    Plays,             // the game starts (after the message, if any) and plays
    PlaysAfterAbout,   // tolva2.ini unread: the first-start credits come, then the game
    NoLevels,          // the game starts with a chosen set that has no level to play
};

struct Row {
    const char* name;
    const char* file;      // relative to the game folder
    Damage damage;
    const char* arg;
    Outcome outcome;
    const char* message;   // the one box shown, or nullptr for none
    const char* ini = nullptr;   // tolva2.ini, where the row needs other settings
};

constexpr const char* NoDefault = "ERROR! Unable to locate default levels.\nPlease re-install TOLVA II.";
constexpr const char* Corrupted = "ERROR! Default level corrupted, please re-install TOLVA II";
constexpr const char* BadLevelSet = "TOLVA2.INI ERROR! UNABLE TO LOAD SELECTED LEVEL-SET.\nLOADING DEFAULT...";
constexpr const char* BadHiscores = "HISCORE TABLE IS CORRUPTED! RESETTING !";

constexpr const char* OtherSet = "[main]\r\nnotfirstuse=yes\r\nplaysounds=0\r\nlevelset=levels\\other\\\r\n";

constexpr const char* Set = "levels/default/levels.set";
constexpr const char* Ini = "tolva2.ini";
constexpr const char* Stat = "stat.ini";
constexpr const char* Hi = "levels/default/hiscore.hi";

const std::vector<Row>& Matrix() {
    static const std::vector<Row> rows = {
        // The default level set.
        {"set missing", Set, Damage::Remove, "", Outcome::Stops, NoDefault},
        {"set empty", Set, Damage::Empty, "", Outcome::Stops, Corrupted},
        {"set truncated", Set, Damage::Truncate, "", Outcome::Stops, Corrupted},
        {"set without its last line", Set, Damage::DropLastLine, "", Outcome::Stops, Corrupted},
        {"set binary", Set, Damage::Binary, "", Outcome::Stops, Corrupted},
        {"set huge", Set, Damage::Huge, "64", Outcome::Stops, Corrupted},
        {"set a pipe", Set, Damage::Fifo, "", Outcome::Stops, NoDefault},
        {"set a folder", Set, Damage::Folder, "", Outcome::Stops, NoDefault},
        {"set a link loop", Set, Damage::LinkLoop, "", Outcome::Stops, NoDefault},
        {"set a link to /dev/zero", Set, Damage::LinkToZero, "", Outcome::Stops, NoDefault},
        {"set wrong checksum", Set, Damage::Edit, "r0=7,6,7=>r0=7,6,8", Outcome::Stops, Corrupted},
        {"set read-only", Set, Damage::ReadOnly, "", Outcome::Plays, nullptr},
        {"set levelbricks too large", Set, Damage::Edit, "levelbricks=10=>levelbricks=99", Outcome::Plays, nullptr},
        {"set levelbricks negative", Set, Damage::Edit, "levelbricks=10=>levelbricks=-7", Outcome::Plays, nullptr},
        // Another set, chosen in the settings: never refused, and a load ends.
        {"chosen set a pipe", "levels/other/levels.set", Damage::Fifo, "", Outcome::NoLevels, nullptr, OtherSet},
        {"chosen set a folder", "levels/other/levels.set", Damage::Folder, "", Outcome::NoLevels, nullptr, OtherSet},
        {"chosen set huge", "levels/other/levels.set", Damage::Huge, "64", Outcome::NoLevels, nullptr, OtherSet},
        {"chosen set binary", "levels/other/levels.set", Damage::Binary, "", Outcome::NoLevels, nullptr, OtherSet},
        // The settings.
        {"ini names a missing set", Ini, Damage::Replace, "[main]\r\nnotfirstuse=yes\r\nlevelset=levels\\gone\\\r\n",
         Outcome::Plays, BadLevelSet},
        {"ini binary around its keys", Ini, Damage::Replace, "\x01\xff[\x80\r\n[main]\r\nnotfirstuse=yes\r\n\x7f=\xfe\r\n",
         Outcome::Plays, nullptr},
        {"ini absurd numbers", Ini, Damage::Replace,
         "[main]\r\nnotfirstuse=yes\r\nupdatedelay=1e308\r\nhuntdelay=-99999\r\nplaysounds=nan\r\nanidraw=x\r\n",
         Outcome::Plays, nullptr},
        {"ini read-only", Ini, Damage::ReadOnly, "", Outcome::Plays, nullptr},
        {"ini missing", Ini, Damage::Remove, "", Outcome::PlaysAfterAbout, nullptr},
        {"ini empty", Ini, Damage::Empty, "", Outcome::PlaysAfterAbout, nullptr},
        {"ini huge", Ini, Damage::Huge, "4", Outcome::PlaysAfterAbout, nullptr},
        {"ini a pipe", Ini, Damage::Fifo, "", Outcome::PlaysAfterAbout, nullptr},
        {"ini a folder", Ini, Damage::Folder, "", Outcome::PlaysAfterAbout, nullptr},
        // The statistics.
        {"stat binary", Stat, Damage::Binary, "", Outcome::Plays, nullptr},
        {"stat truncated", Stat, Damage::Truncate, "", Outcome::Plays, nullptr},
        {"stat huge", Stat, Damage::Huge, "4", Outcome::Plays, nullptr},
        {"stat a pipe", Stat, Damage::Fifo, "", Outcome::Plays, nullptr},
        {"stat a folder", Stat, Damage::Folder, "", Outcome::Plays, nullptr},
        {"stat unreadable", Stat, Damage::Unreadable, "", Outcome::Plays, nullptr},
        // The hiscore table.
        {"hiscores wrong checksum", Hi, Damage::DropLastLine, "", Outcome::Plays, BadHiscores},
        {"hiscores binary", Hi, Damage::Binary, "", Outcome::Plays, nullptr},
        {"hiscores empty", Hi, Damage::Empty, "", Outcome::Plays, nullptr},
        {"hiscores huge", Hi, Damage::Huge, "4", Outcome::Plays, nullptr},
        {"hiscores a pipe", Hi, Damage::Fifo, "", Outcome::Plays, nullptr},
        {"hiscores a folder", Hi, Damage::Folder, "", Outcome::Plays, nullptr},
        {"hiscores a link loop", Hi, Damage::LinkLoop, "", Outcome::Plays, nullptr},
        // Pictures of data\ and of the level's folder.
        {"mascot strip one pixel wide", "data/9.bmp", Damage::StripOfWidth, "1", Outcome::Plays, nullptr},
        {"mascot strip no pixel wide", "data/9.bmp", Damage::StripOfWidth, "0", Outcome::Plays, nullptr},
        {"explosion strip one pixel wide", "data/13.bmp", Damage::StripOfWidth, "1", Outcome::Plays, nullptr},
        {"main background a pipe", "data/0.bmp", Damage::Fifo, "", Outcome::Plays, nullptr},
        {"bonus background huge", "data/12.bmp", Damage::Huge, "64", Outcome::Plays, nullptr},
        {"digit a folder", "data/n0.bmp", Damage::Folder, "", Outcome::Plays, nullptr},
        {"bomb strip truncated", "data/14.bmp", Damage::Truncate, "", Outcome::Plays, nullptr},
        {"spell picture binary", "data/s0.bmp", Damage::Binary, "", Outcome::Plays, nullptr},
        {"level brick picture a pipe", "levels/default/0.bmp", Damage::Fifo, "", Outcome::Plays, nullptr},
        {"level background a link to /dev/zero", "levels/default/background.bmp", Damage::LinkToZero, "",
         Outcome::Plays, nullptr},
        // Sounds and the module.
        {"wave a pipe", "data/4.wav", Damage::Fifo, "", Outcome::Plays, nullptr},
        {"wave truncated", "data/1.wav", Damage::Truncate, "", Outcome::Plays, nullptr},
        {"module binary", "data/0.mod", Damage::Binary, "", Outcome::Plays, nullptr},
        {"module a pipe", "data/0.mod", Damage::Fifo, "", Outcome::Plays, nullptr},
    };
    return rows;
}

// ---- the game folder ---------------------------------------------------------------------

// A whole game folder: the shipped default set, the built pictures, sounds and module
// (linked, not copied), settings past the first start, a statistics log and a table.
void MakeGameFolder(const TempFolder& dir) {
    fs::create_directories(dir / "levels/default");
    dir.Write(Set, ReadSource("game/levels/default/levels.set"));
    dir.Write(Ini, "[main]\r\nnotfirstuse=yes\r\nplaysounds=0\r\nanidraw=0\r\nplayanimations=0\r\n");
    dir.Write(Stat, "[LEVEL1]\r\nclicks=12\r\nminclicks=12\r\nplayed=1\r\n[LEVEL2]\r\nclicks=40\r\n");
    fs::create_directories(dir / "data");
    for (const auto& entry : fs::directory_iterator(std::string(TOLVA_GAME_DIR) + "/data"))
        fs::create_symlink(entry.path(), dir / ("data/" + entry.path().filename().string()));
    Hiscores table;
    table[0] = HiscoreEntry{"ANA", 3, 1200};
    table[1] = HiscoreEntry{"BOB", 2, 640};
    ASSERT_TRUE(table.SaveScore(dir / Hi, DefaultSetKey));
}

std::string Noise(std::size_t size) {
    std::mt19937 random(2463534242u);
    std::string bytes(size, '\0');
    for (char& c : bytes) c = static_cast<char>(random());
    return bytes;
}

void Apply(const TempFolder& dir, const Row& row) {
    const std::string path = dir / row.file;
    const std::string arg = row.arg;
    std::error_code ignored;
    const auto replaceWith = [&](const std::string& bytes) {
        fs::remove(path, ignored);   // a data file is a link into the build: never write through it
        dir.Write(row.file, bytes);
    };
    if (row.ini != nullptr) dir.Write(Ini, row.ini);
    fs::create_directories(fs::path(path).parent_path());
    std::string old;
    if (fs::is_regular_file(path)) old = dir.Read(row.file);
    // A pipe, a folder or a link takes the file's place.
    if (row.damage >= Damage::Fifo && row.damage <= Damage::LinkToZero) fs::remove(path, ignored);
    switch (row.damage) {
    case Damage::Remove: fs::remove(path); break;
    case Damage::Empty: replaceWith(""); break;
    case Damage::Truncate: replaceWith(old.substr(0, old.size() / 2 + 3)); break;
    case Damage::DropLastLine: {
        std::string cut = old.substr(0, old.find_last_not_of("\r\n") + 1);
        replaceWith(cut.substr(0, cut.find_last_of('\n') + 1));
        break;
    }
    case Damage::Binary: replaceWith(Noise(4096)); break;
    case Damage::Huge:
        replaceWith("");
        ASSERT_EQ(::truncate(path.c_str(), static_cast<off_t>(std::stoul(arg)) * 1024 * 1024 + 1), 0);
        break;
    case Damage::Fifo: ASSERT_EQ(::mkfifo(path.c_str(), 0644), 0); break;
    case Damage::Folder: fs::create_directories(path); break;
    case Damage::LinkLoop: fs::create_symlink(path, path); break;
    case Damage::LinkToZero: fs::create_symlink("/dev/zero", path); break;
    case Damage::ReadOnly: ASSERT_EQ(::chmod(path.c_str(), 0444), 0); break;
    case Damage::Unreadable: ASSERT_EQ(::chmod(path.c_str(), 0), 0); break;
    case Damage::Replace: replaceWith(arg); break;
    case Damage::Edit: {
        const std::size_t split = arg.find("=>");
        const std::string from = arg.substr(0, split), to = arg.substr(split + 2);
        const std::size_t at = old.find(from);
        ASSERT_NE(at, std::string::npos) << row.name << ": no " << from;
        replaceWith(old.replace(at, from.size(), to));
        break;
    }
    case Damage::StripOfWidth: {
        const int width = std::stoi(arg);
        std::string bmp = tolva::testing::MakeBmp(std::max(width, 1), 64, 24, [](int, int y) { return y * 0x030201u; });
        if (width == 0) bmp.replace(18, 4, std::string(4, '\0'));   // a header that says 0 pixels
        replaceWith(bmp);
        break;
    }
    }
}

// What a path is now, without ever opening anything but a regular file.
std::string Snapshot(const std::string& path) {
    struct stat info {};
    if (::lstat(path.c_str(), &info) != 0) return "missing";
    if (S_ISLNK(info.st_mode)) return "link to " + fs::read_symlink(path).string();
    if (S_ISFIFO(info.st_mode)) return "pipe";
    if (S_ISDIR(info.st_mode)) return "folder";
    std::ifstream in(path, std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    return "mode " + std::to_string(info.st_mode & 0777) + " bytes " + std::to_string(std::hash<std::string>{}(bytes)) +
           " size " + std::to_string(bytes.size());
}

std::map<std::string, std::string> PlayerFiles(const TempFolder& dir) {
    std::map<std::string, std::string> files;
    for (const char* name : {Set, Ini, Stat, Hi}) files[name] = Snapshot(dir / name);
    return files;
}

void RunRow(const Row& row) {
    SCOPED_TRACE(row.name);
    BoundInTime(60, row.name);
    TempFolder dir;
    MakeGameFolder(dir);
    Apply(dir, row);
    if (::testing::Test::HasFatalFailure()) return;
    SetAppPath(dir.Path());
    const auto before = PlayerFiles(dir);

    HeadlessEventLoop loop;
    ScriptedDialogs dialogs;
    bool aboutShown = false;
    // The first-start credits are closed as the player's click closes them.
    if (row.outcome == Outcome::PlaysAfterAbout) AnswerModalWhenShown([&aboutShown](QWidget& credits) {
        aboutShown = true;
        if (auto* dialog = qobject_cast<QDialog*>(&credits)) dialog->accept();
    });
    {
        GameApp app(loop, "", &dialogs);
        const bool started = app.Start(1);
        // The loop's first turn after the window is up loads the pictures a game shows.
        loop.DoEvents();
        EXPECT_EQ(started, row.outcome != Outcome::Stops);
        if (row.message != nullptr) {
            ASSERT_EQ(dialogs.ShownBoxes().size(), 1u);
            EXPECT_EQ(dialogs.ShownBoxes()[0].Text, row.message);
            EXPECT_EQ(dialogs.ShownBoxes()[0].Icon, MessageIcon::Stop);
        } else {
            EXPECT_TRUE(dialogs.ShownBoxes().empty()) << dialogs.ShownBoxes()[0].Text;
        }
        EXPECT_EQ(aboutShown, row.outcome == Outcome::PlaysAfterAbout);
        if (started && row.outcome == Outcome::NoLevels) {
            EXPECT_TRUE(app.Game().Levels[0].LevelName.empty());
        } else if (started) {
            app.Window().show();
            app.Session().NewGameMnu_Click();
            ASSERT_TRUE(app.Session().GameRunning);
            EXPECT_EQ(app.Board().CurLevel(), 1);
            // The first clicks of level 1's solution score on whatever board it starts with.
            const auto solution = StoredSolution(1);
            for (std::size_t i = 0; i < 3 && i < solution.size(); ++i) ClickCell(app, solution[i].first, solution[i].second);
            // An edited set has other boards; the shipped one scores at every click.
            if (std::string(row.file) != Set) {
                EXPECT_GT(app.Session().Score, 0);
            }
            EXPECT_TRUE(app.Session().GameRunning);
        }
    }

    auto after = PlayerFiles(dir);
    // After a first start the game writes notfirstuse=yes into tolva2.ini, where there
    // is no file or an empty one; one it cannot read whole it leaves as it is.
    const bool iniRewritten = row.outcome == Outcome::PlaysAfterAbout &&
                              (before.at(Ini) == "missing" || before.at(Ini).ends_with(" size 0"));
    if (iniRewritten) {
        EXPECT_EQ(ReadIni(dir / Ini, "main", "notfirstuse"), "yes");
        after[Ini] = before.at(Ini);
    }
    EXPECT_EQ(after, before);
    BoundInTime(0, "");
}

} // namespace

TEST(DamagedFolders, EveryDamagedFileGivesItsMessageOrAGameAndLosesNothing) {
    InitBuiltinPictures();
    ASSERT_GE(Matrix().size(), 30u);
    for (const Row& row : Matrix()) RunRow(row);
}
