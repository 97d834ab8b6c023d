// tolva2-cli session GAMEDIR [--seed S]: the whole game without a window, in a game folder.
// It starts as the game does (tolva2.ini, the set it names, that set's hiscore.hi), then
// takes commands on standard input, one a line:
//   click, arm, wait, grid, spells   the board's commands, as in `play`
//   newgame LEVEL      a new game from LEVEL (a running one is broken off, answered OK)
//   endgame            End game, answered OK
//   initials [TEXT]    what the next entry of initials types (Enter alone without TEXT)
//   set FOLDER         chooses the set in levels\FOLDER as the menu does, answered OK
//   table              the hiscore table as `hiscore show` prints it
//   labels             the session's labels, one NAME: TEXT a line
//   hover X Y          the pointer rests on cell (X, Y); prints "group<TAB>SIZE<TAB>POINTS"
//                      for the group outlined there, "group<TAB>0<TAB>0" for none
//   key NAME           a key of the main window: Left, Right, Up, Down, Space, Return,
//                      Delete, or 1 to 6
//   cursor             the keyboard's cursor: "cursor<TAB>X<TAB>Y", or "cursor<TAB>none"
//   undo               takes the last move of the level back (the game becomes a practice game)
//   save               Save game and quit: the game to savegame.sav, then the shutdown
//                      without its question; the commands end here
//   resume             Resume saved game
//   quit               the game's shutdown: the score offered to the table, the table and
//                      tolva2.ini saved; the commands end here
// Every message box is printed as "message: TEXT" and answered OK. Board events are not
// printed (that is `play`'s business); what the game shows is asked for with the commands.
// A stop message at start-up ends the run with status 1; a malformed command prints
// "error: ..." in its place, play goes on, and the status is then 1. Input that ends
// without `quit` leaves as a killed game would: nothing more is written.
#include "CliBoardCommands.h"
#include "CliCommand.h"
#include "CliHiscore.h"
#include "CliSessionParts.h"

#include "app/HeadlessGame.h"
#include "board/TolvaBoard.h"
#include "session/BoardFocus.h"
#include "session/GameSaver.h"
#include "session/UndoHistory.h"
#include "hiscores/HeadlessHiscoreView.h"
#include "hiscores/HiscoreKeeper.h"
#include "levels/LevelSetReader.h"
#include "session/GameLevelSets.h"
#include "session/GameSession.h"
#include "session/HeadlessSessionView.h"
#include "shared/LevelModule.h"
#include "support/ZenkorModule.h"

#include <filesystem>
#include <iostream>
#include <string>
#include <utility>
#include <unistd.h>
#include <vector>

namespace tolva::cli {
namespace {

namespace fs = std::filesystem;

constexpr std::pair<SessionLabel, const char*> LabelNames[] = {
    {SessionLabel::Score, "Score"},         {SessionLabel::Level, "Level"},
    {SessionLabel::Bonus, "Bonus"},         {SessionLabel::LevelName, "LevelName"},
    {SessionLabel::LevelCode, "LevelCode"}, {SessionLabel::Clicks, "Clicks"},
    {SessionLabel::Pointer, "Pointer"},
};

class SessionRun {
public:
    SessionRun(HeadlessGame& game, CliPlatform& host) : game_(game), host_(host) {}

    // Runs one command line; gives an error text for a malformed one, empty otherwise.
    // Sets Quitted after a shutdown.
    std::string Run(const std::string& line);
    bool Quitted = false;

private:
    std::string NewGame(const std::vector<std::string>& words);
    std::string Set(const std::vector<std::string>& words);
    std::string Hover(const std::vector<std::string>& words);
    std::string Key(const std::vector<std::string>& words);
    void PrintTable();
    void PrintLabels();

    HeadlessGame& game_;
    CliPlatform& host_;
};

std::string SessionRun::Run(const std::string& line) {
    const auto words = CommandWords(line);
    if (words.empty()) return {};
    if (auto result = RunBoardCommand(words, {game_.Game(), game_.Session(), game_.Board(), host_.Loop, std::cout}))
        return *result;
    const std::string command = Lower(words[0]);
    if (command == "newgame") return NewGame(words);
    if (command == "set") return Set(words);
    if (command == "hover") return Hover(words);
    if (command == "key") return Key(words);
    if (command == "initials") {
        // The rest of the line as typed, blanks and all; Enter ends the entry.
        const std::size_t at = line.find_first_not_of(" \t", line.find_first_of(" \t", line.find_first_not_of(" \t")));
        game_.HiscoreScreen().QueueKeys(words.size() > 1 && at != std::string::npos ? line.substr(at) + "\r" : "\r");
        return {};
    }
    if (words.size() != 1) return command + " takes no arguments";
    if (command == "endgame") game_.Session().mnuEndGame_Click();
    else if (command == "table") PrintTable();
    else if (command == "labels") PrintLabels();
    else if (command == "undo") game_.Undo().Undo();
    else if (command == "resume") {
        if (!game_.Saver().HasSave()) return "no saved game to resume";
        game_.Saver().Resume();
    }
    else if (command == "save") {
        if (!game_.Saver().Save()) return "save needs a running game that stands still, and a folder to write to";
        game_.Session().LeaveWithoutOffering();
        Quitted = game_.Quit();
    } else if (command == "cursor") {
        const auto& cursor = game_.Focus().Marks().Cursor;
        std::cout << "cursor\t" << (cursor ? std::to_string(cursor->X) + "\t" + std::to_string(cursor->Y) : "none") << '\n';
    }
    else if (command == "quit") Quitted = game_.Quit();
    else
        return "unknown command '" + words[0] +
               "'; use click, arm, wait, grid, spells, newgame, endgame, initials, set, table, labels, hover, key, "
               "cursor, undo, save, resume or quit";
    return {};
}

std::string SessionRun::NewGame(const std::vector<std::string>& words) {
    const auto level = words.size() == 2 ? WholeNumber(words[1]) : std::nullopt;
    if (!level || *level < 1 || *level > MaxLevels) return "newgame needs a level from 1 to 100";
    game_.Session().NewGame(static_cast<std::int16_t>(*level));
    return {};
}

std::string SessionRun::Set(const std::vector<std::string>& words) {
    if (words.size() != 2) return "set needs the FOLDER of a set under levels";
    for (const auto& entry : game_.LevelSets().Entries()) {
        std::string tag = Lower(entry.Tag);
        if (tag == Lower("levels\\" + words[1] + "\\") || tag == Lower(words[1])) {
            game_.ChooseLevelSet(words[1]);
            return {};
        }
    }
    return "no level set '" + words[1] + "' in the menu";
}

std::string SessionRun::Hover(const std::vector<std::string>& words) {
    const auto x = words.size() == 3 ? WholeNumber(words[1]) : std::nullopt;
    const auto y = words.size() == 3 ? WholeNumber(words[2]) : std::nullopt;
    if (!x || !y || *x < -MaxBricks || *x > 2 * MaxBricks || *y < -MaxBricks || *y > 2 * MaxBricks)
        return "hover needs whole cell numbers X and Y";
    // The pointer moves as the mouse would move it: the board hears it at the middle of the
    // cell, then the outline is worked out for the board as it stands.
    TolvaBoard& board = game_.Board();
    const double w = host_.Surface.ScaleWidth() / board.xBricks();
    const double h = host_.Surface.ScaleHeight() / board.xBricks();
    board.UserControl_MouseMove(0, 0, static_cast<float>((*x + 0.5) * w), static_cast<float>((*y + 0.5) * h));
    game_.Focus().PointerAt(static_cast<int>(*x), static_cast<int>(*y));
    game_.Focus().Refresh();
    const BoardMarks& marks = game_.Focus().Marks();
    std::cout << "group\t" << marks.Group.size() << '\t' << NumberText(marks.Points()) << '\n';
    return {};
}

std::string SessionRun::Key(const std::vector<std::string>& words) {
    static constexpr std::pair<const char*, std::int16_t> Keys[] = {
        {"left", BoardFocus::ArrowLeft},   {"right", BoardFocus::ArrowRight}, {"up", BoardFocus::ArrowUp},
        {"down", BoardFocus::ArrowDown},   {"space", BoardFocus::KeySpace}, {"return", BoardFocus::KeyReturn},
        {"delete", BoardFocus::KeyDelete},
    };
    if (words.size() != 2) return "key needs a NAME: Left, Right, Up, Down, Space, Return, Delete or 1 to 6";
    const std::string name = Lower(words[1]);
    std::int16_t code = -1;
    for (const auto& [keyName, keyCode] : Keys)
        if (name == keyName) code = keyCode;
    if (name.size() == 1 && name[0] >= '1' && name[0] <= '6')
        code = static_cast<std::int16_t>(BoardFocus::KeyFirstSpell + (name[0] - '1'));
    if (code < 0) return "no key '" + words[1] + "'; use Left, Right, Up, Down, Space, Return, Delete or 1 to 6";
    // As on the main window: the game's own keys hear it first, then the board's.
    game_.Session().Form_KeyDown(code);
    game_.Focus().KeyDown(code);
    return {};
}

void SessionRun::PrintTable() {
    // The table as it stands, written as the game would write it now and read back, so
    // that it prints exactly as `hiscore show` prints the file.
    const std::string setPath = game_.LevelSets().LevelSetPath;
    std::error_code ec;
    const fs::path file = fs::temp_directory_path(ec) / ("tolva2-session-table-" + std::to_string(::getpid()) + ".hi");
    game_.Hiscores().SaveForSet(AppPath(), setPath, file.string());
    std::cout << HiscoreShowText(file.string(), LevelSetReader::SetKeyFor(setPath));
    fs::remove(file, ec);
}

void SessionRun::PrintLabels() {
    for (const auto& [label, name] : LabelNames) std::cout << name << ": " << game_.View().Label(label) << '\n';
}

int RunSession(const std::vector<std::string>& args) {
    std::string dir;
    std::uint64_t seed = 1;
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--seed") {
            const auto value = i + 1 < args.size() ? WholeNumber(args[i + 1]) : std::nullopt;
            if (!value || *value < 0) return UsageError("session: --seed needs a whole number, 0 or more");
            seed = static_cast<std::uint64_t>(*value);
            ++i;
        } else if (dir.empty() && args[i].rfind("--", 0) != 0) {
            dir = args[i];
        } else {
            return UsageError("session: unexpected argument '" + args[i] + "'");
        }
    }
    std::error_code ec;
    if (dir.empty()) {
        if (!UseInstalledGameFolders()) return UsageError("session needs GAMEDIR");
    } else {
        if (!fs::is_directory(dir, ec)) return UsageError("session: no such folder: " + dir);
        SetAppPath(fs::absolute(dir, ec).lexically_normal().string());
    }

    CliPlatform host(seed, &std::cout);
    HeadlessGame game(host.Loop, host.Dialog);
    bool malformed = false;
    try {
        if (!game.Start("", seed)) {
            std::cout << std::flush;
            return ExitFailed;
        }
        SessionRun run(game, host);
        for (std::string line; !run.Quitted && std::getline(std::cin, line);) {
            if (!line.empty() && line.back() == '\r') line.pop_back();
            const std::string refused = run.Run(line);
            if (refused.empty()) continue;
            std::cout << "error: " << refused << '\n';
            malformed = true;
        }
    } catch (const std::exception& e) {
        std::cout << std::flush;
        std::cerr << "tolva2-cli: session: " << e.what() << '\n';
        return ExitFailed;
    }
    std::cout << std::flush;
    return malformed ? ExitFailed : ExitOk;
}

const CliRegistration registration{CliCommand{
    "session",
    "session [GAMEDIR] [--seed S]      the whole game without a window in GAMEDIR (installed: may be left\n"
    "                                    out for the game's own folders), from commands on standard\n"
    "                                    input: the board's, newgame LEVEL, endgame, initials [TEXT], set FOLDER,\n"
    "                                    table, labels, hover X Y, key NAME, cursor, undo, save, resume, quit",
    RunSession}};

} // namespace
} // namespace tolva::cli
