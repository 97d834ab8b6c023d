// tolva2-cli play DIR --level N [--seed S]: plays a level of the set in DIR on a board
// without a screen, driven by commands on standard input, one a line:
//   click X Y [BUTTON]   a click on cell (X, Y), by the road automatic play takes
//                        (BUTTON 1 left, the default, 2 right)
//   arm SPELL            arms a spell as its button does, with stock or without; SPELL is
//                        its number 0..5 or its name ("gun", "test tube"); "none" disarms
//   wait MS              lets MS milliseconds of game time pass (0..3600000)
//   grid                 the cell values of the board, a line per row from the top
//   spells               the hidden spell numbers of the board, the same way
// Blank lines and lines starting with '#' are passed over. Every board event is printed
// as it is raised, one a line: its name, then its arguments in decimal, booleans as
// true/false. A malformed command prints a line "error: ..." in its place and play goes
// on; the exit status is then 1.
//
// The game around the board is the real session (score, spell stock, the disarming of a
// used spell, the bonus count-up, the level flow), with a display that shows nothing: the
// command's own output is the events and the grids. Time is virtual: it passes only in a
// wait, or inside a click whose effects wait (a saw runs four seconds of game time). The
// settings are the game's defaults, except that nothing is logged to stat.ini: playing a
// set from the command line writes no file.
#include "CliCommand.h"
#include "CliSessionParts.h"

#include "board/TolvaBoard.h"
#include "levels/LevelSetReader.h"
#include "session/GameSession.h"
#include "shared/GameText.h"
#include "settings/GameSettings.h"
#include "support/ZenkorModule.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace tolva::cli {
namespace {

namespace fs = std::filesystem;

constexpr std::int64_t LongestWait = 3'600'000;

// Prints each board event, then hands it to the session.
class PrintingListener final : public BoardListener {
public:
    PrintingListener(std::ostream& out, BoardListener& session) : out_(out), session_(session) {}

    void BricksRemoved(std::int16_t n) override { Print("BricksRemoved", {Int(n)}), session_.BricksRemoved(n); }
    void MouseMove(std::int16_t x, std::int16_t y) override { Print("MouseMove", {Int(x), Int(y)}), session_.MouseMove(x, y); }
    void GameOver() override { Print("GameOver", {}), session_.GameOver(); }
    void NewScore(double p) override { Print("NewScore", {NumberText(p)}), session_.NewScore(p); }
    void NewSpell(std::int16_t s) override { Print("NewSpell", {Int(s)}), session_.NewSpell(s); }
    void NewLevel(std::int16_t l) override { Print("NewLevel", {Int(l)}), session_.NewLevel(l); }
    void SpellUsed(std::int16_t s) override { Print("SpellUsed", {Int(s)}), session_.SpellUsed(s); }
    void BonusScore(double b, std::int16_t t) override {
        Print("BonusScore", {NumberText(b), Int(t)});
        session_.BonusScore(b, t);
    }
    void BonusTimes(std::int16_t t) override { Print("BonusTimes", {Int(t)}), session_.BonusTimes(t); }
    void CanDoNextMove() override { Print("CanDoNextMove", {}), session_.CanDoNextMove(); }
    void ResourceLoaded(const std::string& r) override { Print("ResourceLoaded", {r}), session_.ResourceLoaded(r); }
    void SpellInUse(bool u) override { Print("SpellInUse", {u ? "true" : "false"}), session_.SpellInUse(u); }
    void RemoveClick(std::int16_t l) override { Print("RemoveClick", {Int(l)}), session_.RemoveClick(l); }
    void SpellClick(std::int16_t s, std::int16_t l) override {
        Print("SpellClick", {Int(s), Int(l)});
        session_.SpellClick(s, l);
    }

private:
    static std::string Int(std::int16_t v) { return std::to_string(v); }
    void Print(const char* name, const std::vector<std::string>& args) {
        out_ << name;
        for (const auto& a : args) out_ << ' ' << a;
        out_ << '\n';
    }

    std::ostream& out_;
    BoardListener& session_;
};


std::optional<std::int64_t> WholeNumber(const std::string& text) {
    std::int64_t value = 0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
    return value;
}

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text;
}

// A spell by number or by name, blanks, '-' and '_' alike; NoSpell for "none", nullopt
// for anything else.
std::optional<std::int16_t> SpellByName(const std::string& text) {
    std::string key = Lower(text);
    std::replace(key.begin(), key.end(), '-', ' ');
    std::replace(key.begin(), key.end(), '_', ' ');
    if (key == "none" || key == "-1") return NoSpell;
    if (const auto n = WholeNumber(key); n && *n >= 0 && *n < SpellCount) return static_cast<std::int16_t>(*n);
    for (std::size_t i = 0; i < SpellNameList.size(); ++i)
        if (key == Lower(std::string(SpellNameList[i]))) return static_cast<std::int16_t>(i);
    return std::nullopt;
}

// One game of the command: the platform, the game variables, the session and the board.
class PlayGame {
public:
    explicit PlayGame(std::uint64_t seed)
        : host_(seed), game_(std::make_unique<LevelModule>()),
          session_(*game_, settings_, host_.Platform(), view_, SessionServices{hiscores_, stats_, idle_, windows_}),
          printer_(std::cout, session_), board_(*game_, settings_, host_.Platform(), printer_) {
        session_.AttachBoard(board_);
        settings_.MakeStat = false;
        board_.ApplySettings(settings_);
    }

    LevelModule& Game() { return *game_; }
    TolvaBoard& Board() { return board_; }
    GameSession& Session() { return session_; }
    StatLog& Stats() { return stats_; }

    // Runs one command line; gives an error text for a malformed one, empty otherwise.
    std::string Run(const std::string& line);

private:
    std::string Click(const std::vector<std::string>& words);
    std::string Arm(const std::vector<std::string>& words);
    std::string Wait(const std::vector<std::string>& words);
    void PrintGrid(const CellGrid& grid);

    CliPlatform host_;
    std::unique_ptr<LevelModule> game_;
    SilentView view_;
    GameSettings settings_;
    StatLog stats_{AppPath() + "stat.ini"};
    TableFreeHiscores hiscores_;
    NoIdleMascot idle_;
    WindowOpener windows_;
    GameSession session_;
    PrintingListener printer_;
    TolvaBoard board_;
};

std::string PlayGame::Run(const std::string& line) {
    std::istringstream in(line);
    std::vector<std::string> words;
    for (std::string w; in >> w;) words.push_back(w);
    if (words.empty() || words[0][0] == '#') return {};
    const std::string command = Lower(words[0]);
    std::string error;
    if (command == "click") error = Click(words);
    else if (command == "arm") error = Arm(words);
    else if (command == "wait") error = Wait(words);
    else if (command == "grid" || command == "spells") {
        if (words.size() != 1) return command + " takes no arguments";
        PrintGrid(command == "grid" ? board_.Bricks : board_.Spells);
    } else {
        return "unknown command '" + words[0] + "'; use click, arm, wait, grid or spells";
    }
    // What the board painted and played is not shown; keep the records from piling up.
        return error;
}

std::string PlayGame::Click(const std::vector<std::string>& words) {
    if (words.size() != 3 && words.size() != 4) return "click needs X Y [BUTTON]";
    const auto x = WholeNumber(words[1]);
    const auto y = WholeNumber(words[2]);
    const auto button = words.size() == 4 ? WholeNumber(words[3]) : std::optional<std::int64_t>(1);
    if (!x || !y || *x < -MaxBricks || *x > 2 * MaxBricks || *y < -MaxBricks || *y > 2 * MaxBricks)
        return "click needs whole cell numbers X and Y";
    if (!button || *button < 1 || *button > 3) return "the button of a click is 1, 2 or 3";
    float fx = static_cast<float>(*x);
    float fy = static_cast<float>(*y);
    board_.ClickOnBrick(fx, fy, static_cast<std::int16_t>(*button));
    return {};
}

std::string PlayGame::Arm(const std::vector<std::string>& words) {
    if (words.size() < 2) return "arm needs a spell: 0..5 or its name";
    std::string name = words[1];
    for (std::size_t i = 2; i < words.size(); ++i) name += " " + words[i];
    const auto spell = SpellByName(name);
    if (!spell) return "no spell '" + name + "'; use 0..5 or a name such as gun or test tube";
    if (*spell == NoSpell) {
        session_.ActiveSpell_Click();
    } else if (game_->ActiveSpell != *spell) {
        // The spell button's own rule, with the stock left out of it: for the length of
        // the press the game is in cheat mode, in which a button arms without stock.
        const bool cheat = game_->CheatMode;
        game_->CheatMode = true;
        session_.sp_Click(*spell);
        game_->CheatMode = cheat;
    }
    return {};
}

std::string PlayGame::Wait(const std::vector<std::string>& words) {
    const auto ms = words.size() == 2 ? WholeNumber(words[1]) : std::nullopt;
    if (!ms || *ms < 0 || *ms > LongestWait) return "wait needs milliseconds from 0 to " + std::to_string(LongestWait);
    // A timer marks the end of the wait, and the game runs until it has ticked. What is
    // due meanwhile may wait in turn (a level's bonus count-up inside the closing up of
    // the board); the clock then goes on past the end, and never back.
    bool done = false;
    auto end = host_.Loop.CreateTimer(true);
    end->SetInterval(static_cast<std::int32_t>(*ms));
    end->OnTick = [&] {
        done = true;
        end->SetEnabled(false);
    };
    end->SetEnabled(true);
    host_.Loop.WaitUntil([&] { return done; });
    return {};
}

void PlayGame::PrintGrid(const CellGrid& grid) {
    const int n = board_.xBricks();
    for (int y = 0; y < n; ++y) {
        for (int x = 0; x < n; ++x) std::cout << (x > 0 ? " " : "") << grid(x, y);
        std::cout << '\n';
    }
}

struct PlayOptions {
    std::string dir;
    std::int64_t level = 0;
    std::uint64_t seed = 1;
};

std::optional<PlayOptions> ReadOptions(const std::vector<std::string>& args, std::string& error) {
    PlayOptions o;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        // The number behind an option, -1 when there is none.
        const std::int64_t value = i + 1 < args.size() ? WholeNumber(args[i + 1]).value_or(-1) : -1;
        if (a == "--level") {
            if (value < 1 || value > MaxLevels) {
                error = "--level needs a level number from 1 to 100";
                return std::nullopt;
            }
            o.level = value;
            ++i;
        } else if (a == "--seed") {
            if (value < 0) {
                error = "--seed needs a whole number, 0 or more";
                return std::nullopt;
            }
            o.seed = static_cast<std::uint64_t>(value);
            ++i;
        } else if (o.dir.empty() && a.rfind("--", 0) != 0) {
            o.dir = a;
        } else {
            error = "unexpected argument '" + a + "'";
            return std::nullopt;
        }
    }
    if (o.dir.empty() || o.level == 0) {
        error = "play needs DIR and --level N";
        return std::nullopt;
    }
    return o;
}

// Points the game folder at DIR's parent and loads the set in DIR as the game loads
// levels\<folder>\. Gives an error text, empty when the set can be played.
std::string LoadSet(const std::string& dir, PlayGame& play) {
    std::error_code ec;
    if (!fs::is_directory(dir, ec)) return "no such folder: " + dir;
    fs::path path = fs::absolute(dir, ec).lexically_normal();
    if (!path.has_filename()) path = path.parent_path();
    SetAppPath(path.parent_path().string());
    play.Stats() = StatLog(AppPath() + "stat.ini");
    LevelSetReader reader(play.Game());
    reader.LevelSetPath = path.filename().string() + "\\";
    const LevelSetLoad load = reader.InitLevels();
    if (!load.FileFound) return dir + " holds no levels.set";
    if (load.LevelsStored() == 0 || play.Game().Levels[0].LevelName.empty()) return dir + " holds no level to play";
    if (load.Integrity == LevelSetIntegrity::Failed) return "the default set in " + dir + " fails its integrity test";
    play.Board().LevelRoot(AppPath() + reader.LevelSetPath);
    play.Session().IsDefaultSet = load.DefaultSet;
    return {};
}

int RunPlay(const std::vector<std::string>& args) {
    std::string error;
    const auto options = ReadOptions(args, error);
    if (!options) return UsageError("play: " + error);
    PlayGame play(options->seed);
    error = LoadSet(options->dir, play);
    if (!error.empty()) {
        std::cerr << "tolva2-cli: play: " << error << '\n';
        return ExitFailed;
    }
    bool malformed = false;
    try {
        play.Session().NewGame(static_cast<std::int16_t>(options->level));
        for (std::string line; std::getline(std::cin, line);) {
            if (!line.empty() && line.back() == '\r') line.pop_back();
            const std::string refused = play.Run(line);
            if (refused.empty()) continue;
            std::cout << "error: " << refused << '\n';
            malformed = true;
        }
    } catch (const std::exception& e) {
        std::cout << std::flush;
        std::cerr << "tolva2-cli: play: " << e.what() << '\n';
        return ExitFailed;
    }
    std::cout << std::flush;
    return malformed ? ExitFailed : ExitOk;
}

const CliRegistration registration{CliCommand{
    "play",
    "play DIR --level N [--seed S]     play level N of the set in DIR from commands on standard\n"
    "                                    input: click X Y [BUTTON], arm SPELL, wait MS, grid, spells",
    RunPlay}};

} // namespace
} // namespace tolva::cli
