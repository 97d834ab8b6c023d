// tolva2-cli play DIR --level N [--seed S]: plays a level of the set in DIR on a board
// without a screen, driven by the board's commands on standard input, one a line (click,
// arm, wait, grid, spells: see CliBoardCommands.h). Blank lines and lines starting with '#' are passed over. Every board event is printed
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
#include "CliBoardCommands.h"
#include "CliCommand.h"
#include "CliSessionParts.h"

#include "board/TolvaBoard.h"
#include "levels/LevelSetReader.h"
#include "session/GameBuilder.h"
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


// One game of the command: the platform, the game variables, the session and the board.
class PlayGame {
public:
    explicit PlayGame(std::uint64_t seed)
        : host_(seed), game_(std::make_unique<LevelModule>()),
          built_(GameParts{*game_, settings_, host_.Platform(), view_, SessionServices{hiscores_, stats_, idle_, windows_}}),
          session_(built_.Session()), printer_(std::cout, session_), board_(built_.BuildBoard(&printer_)) {
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
    CliPlatform host_;
    std::unique_ptr<LevelModule> game_;
    SilentView view_;
    GameSettings settings_;
    StatLog stats_{AppPath() + "stat.ini"};
    TableFreeHiscores hiscores_;
    NoIdleMascot idle_;
    WindowOpener windows_;
    GameBuilder built_;
    GameSession& session_;
    PrintingListener printer_;
    TolvaBoard& board_;
};

std::string PlayGame::Run(const std::string& line) {
    const auto words = CommandWords(line);
    if (words.empty()) return {};
    if (auto result = RunBoardCommand(words, {*game_, session_, board_, host_.Loop, std::cout})) return *result;
    return "unknown command '" + words[0] + "'; use click, arm, wait, grid or spells";
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
