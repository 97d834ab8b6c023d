// tolva2-cli autoplay DIR [--seed S] [--levels N] [--anidraw on|off]: the game plays the
// set in DIR by itself, as the test menu's "Autoplay (TESTMODE)" plays it, on a board
// without a screen and on the virtual clock. It starts a game at level 1, switches cheat
// mode on and autoplay with it, and runs through N level starts; without --levels it runs
// until play has gone from the last level of the set back to level 1. A line is printed
// for each level reached, with what happened in the level left, and a summary at the end.
//
// It is a long-run check of the rules and the session together, made for sanitizer
// builds: every board event is counted on its way to the session, and at each level start
// the session's counters are held against the count (clicks of the level, spell stock,
// score, the order of the levels). Anything that disagrees, a game over while autoplay
// runs, a message box or an exception is a fault: it is printed as "fault: ..." and the
// exit status is 1. The score counts in spite of cheat mode, as with the start-up word
// "quietlanternshade", so that it can be held against the points of the board.
//
// A chain of automatic moves can stop by itself: a "TEST TUBE" aimed at a spell lying on
// the board is refused and raises no next move. The tester at the window then uses the
// menu again; so does this command, after a minute of game time without a move, and it
// counts these restarts. A chain that does not start again is a fault.
//
// The settings are the game's defaults (AniDraw on unless --anidraw off), and nothing is
// written: no stat.ini, no hiscore.
#include "CliCommand.h"
#include "CliSessionParts.h"

#include "board/TolvaBoard.h"
#include "levels/LevelSetReader.h"
#include "session/GameBuilder.h"
#include "session/GameSession.h"
#include "settings/GameSettings.h"
#include "support/ZenkorModule.h"

#include <array>
#include <charconv>
#include <cstdio>
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

constexpr std::int64_t StallMs = 60'000;      // game time without a move: the chain stopped
constexpr int MaxRestartsWithoutMove = 20;
constexpr std::int64_t SliceMs = 600'000;
constexpr std::int64_t MaxLevelStarts = 1'000'000;


// What happened in one level, and in the whole run.
struct LevelTallies {
    int clicks = 0;
    int spellsUsed = 0;
    bool deadEnd = false;
    std::int16_t bonusTimes = 0;
    double points = 0;
    int restarts = 0;
};

struct RunOptions {
    std::string dir;
    std::uint64_t seed = 1;
    std::int64_t levels = 0;   // 0: until play is back at level 1
    std::optional<bool> aniDraw;
};

class AutoplayRun final : public BoardListener {
public:
    explicit AutoplayRun(const RunOptions& options);

    std::string LoadSet();
    // Plays until the level starts are done or a fault; gives the exit status.
    int Play();

    // ---- the board's events, counted and handed on to the session -----------------
    void BricksRemoved(std::int16_t n) override { session_.BricksRemoved(n); }
    void MouseMove(std::int16_t x, std::int16_t y) override { session_.MouseMove(x, y); }
    void GameOver() override;
    void NewScore(double p) override;
    void NewSpell(std::int16_t s) override;
    void NewLevel(std::int16_t l) override;
    void SpellUsed(std::int16_t s) override;
    void BonusScore(double b, std::int16_t t) override;
    void BonusTimes(std::int16_t t) override { session_.BonusTimes(t); }
    void CanDoNextMove() override;
    void ResourceLoaded(const std::string& r) override { session_.ResourceLoaded(r); }
    void SpellInUse(bool u) override { session_.SpellInUse(u); }
    void RemoveClick(std::int16_t l) override;
    void SpellClick(std::int16_t s, std::int16_t l) override { session_.SpellClick(s, l); }

private:
    void Fault(const std::string& what);
    void CheckCounters(std::int16_t levelNo);
    void PrintLevelLine(std::int16_t levelNo) const;
    void PrintSummary() const;
    void Finish();
    bool RestartChain();
    bool Stalled() const { return host_.Loop.NowMs() - lastMoveMs_ >= StallMs; }
    std::int16_t NextLevelOf(std::int16_t levelNo) const;

    RunOptions options_;
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
    TolvaBoard& board_;

    std::int64_t levelStarts_ = 0;
    std::int16_t currentLevel_ = 0;
    LevelTallies level_;
    LevelTallies total_;
    long levelsPlayed_ = 0;
    long deadEnds_ = 0;
    double points_ = 0;
    std::array<long, SpellCount> collected_{};
    std::array<long, SpellCount> used_{};
    std::int64_t lastMoveMs_ = 0;
    long moves_ = 0;
    bool finished_ = false;
    std::string fault_;
};

AutoplayRun::AutoplayRun(const RunOptions& options)
    : options_(options), host_(options.seed), game_(std::make_unique<LevelModule>()),
      built_(GameParts{*game_, settings_, host_.Platform(), view_, SessionServices{hiscores_, stats_, idle_, windows_}}),
      session_(built_.Session()), board_(built_.BuildBoard(this)) {
    settings_.MakeStat = false;
    settings_.AniDraw = options.aniDraw.value_or(settings_.AniDraw);
    board_.ApplySettings(settings_);
    session_.KeepScoreInCheat = true;
}

// Points the game folder at DIR's parent and loads the set in DIR as the game loads
// levels\<folder>\. Gives an error text, empty when the set can be played.
std::string AutoplayRun::LoadSet() {
    std::error_code ec;
    if (!fs::is_directory(options_.dir, ec)) return "no such folder: " + options_.dir;
    fs::path path = fs::absolute(options_.dir, ec).lexically_normal();
    if (!path.has_filename()) path = path.parent_path();
    SetAppPath(path.parent_path().string());
    stats_ = StatLog(AppPath() + "stat.ini");
    LevelSetReader reader(*game_);
    reader.LevelSetPath = path.filename().string() + "\\";
    const LevelSetLoad load = reader.InitLevels();
    if (!load.FileFound) return options_.dir + " holds no levels.set";
    if (load.LevelsStored() == 0 || game_->Levels[0].LevelName.empty()) return options_.dir + " holds no level to play";
    if (load.Integrity == LevelSetIntegrity::Failed) return "the default set in " + options_.dir + " fails its integrity test";
    board_.LevelRoot(AppPath() + reader.LevelSetPath);
    session_.IsDefaultSet = load.DefaultSet;
    return {};
}

int AutoplayRun::Play() {
    // A timer that never stops, so that the clock can always move on while the command
    // waits for the next move, whatever the game has running.
    auto watch = host_.Loop.CreateTimer(true);
    watch->SetInterval(1000);
    watch->OnTick = [] {};
    watch->SetEnabled(true);
    try {
        session_.NewGame(1);
        session_.ChangeCheatMode();
        if (!finished_) session_.mnuAutoplay_Click();
        while (!finished_) {
            // In slices, since one wait of the virtual clock may not run for ever.
            const std::int64_t sliceEnd = host_.Loop.NowMs() + SliceMs;
            host_.Loop.WaitUntil([&] { return finished_ || Stalled() || host_.Loop.NowMs() >= sliceEnd; });
            if (!finished_ && Stalled() && !RestartChain())
                Fault("autoplay stopped at level " + std::to_string(currentLevel_) + " and does not start again");
        }
    } catch (const std::exception& e) {
        Fault(std::string("the game stopped with an error: ") + e.what());
    }
    if (fault_.empty() && host_.Dialog.Shown > 0) Fault("a message box came up: " + host_.Dialog.FirstText);
    PrintSummary();
    return fault_.empty() ? ExitOk : ExitFailed;
}

bool AutoplayRun::RestartChain() {
    // As a tester would: the menu entry twice, off and on again, which makes a move.
    for (int i = 0; i < MaxRestartsWithoutMove && !finished_; ++i) {
        const long movesBefore = moves_;
        ++level_.restarts;
        ++total_.restarts;
        session_.mnuAutoplay_Click();
        session_.mnuAutoplay_Click();
        lastMoveMs_ = host_.Loop.NowMs();
        host_.Loop.WaitUntil([&] { return finished_ || moves_ != movesBefore || Stalled(); });
        if (moves_ != movesBefore || finished_) return true;
    }
    return finished_;
}

void AutoplayRun::Fault(const std::string& what) {
    if (fault_.empty()) {
        fault_ = what;
        std::cout << "fault: " << what << '\n';
    }
    Finish();
}

void AutoplayRun::Finish() {
    finished_ = true;
    // The tester unchecks the menu entry: no further move is made.
    if (session_.AutoplayChecked) session_.mnuAutoplay_Click();
}

// ---- counting the events ---------------------------------------------------------------

void AutoplayRun::GameOver() {
    if (!session_.AutoplayChecked) {
        session_.GameOver();
        if (!finished_) Fault("game over at level " + std::to_string(currentLevel_) + " while autoplay was on");
        return;
    }
    level_.deadEnd = true;
    session_.GameOver();
}

void AutoplayRun::NewScore(double p) {
    points_ += p;
    level_.points += p;
    session_.NewScore(p);
}

void AutoplayRun::NewSpell(std::int16_t s) {
    if (s >= 0 && s < SpellCount) ++collected_[static_cast<std::size_t>(s)];
    session_.NewSpell(s);
}

void AutoplayRun::SpellUsed(std::int16_t s) {
    if (s >= 0 && s < SpellCount) ++used_[static_cast<std::size_t>(s)];
    ++level_.spellsUsed;
    session_.SpellUsed(s);
}

void AutoplayRun::BonusScore(double b, std::int16_t t) {
    level_.bonusTimes = t;
    session_.BonusScore(b, t);
}

void AutoplayRun::RemoveClick(std::int16_t l) {
    ++level_.clicks;
    session_.RemoveClick(l);
}

void AutoplayRun::CanDoNextMove() {
    ++moves_;
    lastMoveMs_ = host_.Loop.NowMs();
    // What the board painted and played is not looked at; keep the records from piling up.
        session_.CanDoNextMove();
}

std::int16_t AutoplayRun::NextLevelOf(std::int16_t levelNo) const {
    if (levelNo >= MaxLevels || game_->Levels[static_cast<std::size_t>(levelNo)].LevelName.empty()) return 1;
    return static_cast<std::int16_t>(levelNo + 1);
}

void AutoplayRun::CheckCounters(std::int16_t levelNo) {
    if (currentLevel_ != 0 && levelNo != NextLevelOf(currentLevel_))
        return Fault("level " + std::to_string(levelNo) + " followed level " + std::to_string(currentLevel_));
    if (currentLevel_ != 0 && session_.LevelClicks != level_.clicks)
        return Fault("level " + std::to_string(currentLevel_) + " took " + std::to_string(level_.clicks) +
                     " clicks, the session counted " + std::to_string(session_.LevelClicks));
    if (session_.Score != points_)
        return Fault("score " + NumberText(session_.Score) + " against " + NumberText(points_) + " points scored");
    for (std::size_t s = 0; s < used_.size(); ++s) {
        const long held = collected_[s] - used_[s];
        if (session_.SpellStock[s] != held || held < 0)
            return Fault("spell " + std::to_string(s) + ": stock " + std::to_string(session_.SpellStock[s]) +
                         ", collected less used " + std::to_string(held));
    }
    // The first level starts inside NewGame, before the game counts as running.
    if (currentLevel_ != 0 && !session_.GameRunning)
        Fault("the game stopped running at level " + std::to_string(currentLevel_));
}

void AutoplayRun::NewLevel(std::int16_t l) {
    CheckCounters(l);
    if (finished_) {
        session_.NewLevel(l);
        return;
    }
    const bool wrapped = levelStarts_ > 0 && l == 1;
    ++levelStarts_;
    PrintLevelLine(l);
    if (currentLevel_ != 0) {
        ++levelsPlayed_;
        if (level_.deadEnd) ++deadEnds_;
    }
    total_.clicks += level_.clicks;
    total_.spellsUsed += level_.spellsUsed;
    level_ = LevelTallies{};
    currentLevel_ = l;
    session_.NewLevel(l);
    if (session_.LevelClicks != 0) Fault("the clicks of level " + std::to_string(l) + " did not start at 0");
    const bool enough = options_.levels > 0 ? levelStarts_ >= options_.levels : wrapped;
    if (enough) Finish();
}

// ---- printing ----------------------------------------------------------------------------

std::string Seconds(std::int64_t ms) {
    std::ostringstream out;
    out << ms / 1000 << '.' << (ms % 1000) / 100 << " s";
    return out.str();
}

void AutoplayRun::PrintLevelLine(std::int16_t levelNo) const {
    const LevelRecord& record = game_->Levels[static_cast<std::size_t>(levelNo - 1)];
    char head[32];
    std::snprintf(head, sizeof head, "level %3d  %2dx%-2d  ", levelNo, record.levelbricks, record.levelbricks);
    std::cout << head << '"' << record.LevelName << '"';
    if (currentLevel_ != 0) {
        std::cout << "  left level " << currentLevel_ << ": " << level_.clicks << " clicks, " << level_.spellsUsed
                  << " spells, " << (level_.deadEnd ? "dead end cleared" : "cleared") << ", bonus x"
                  << level_.bonusTimes << ", " << NumberText(level_.points) << " points";
        if (level_.restarts > 0) std::cout << ", " << level_.restarts << " restarts";
    }
    std::cout << "  at " << Seconds(host_.Loop.NowMs()) << '\n';
}

void AutoplayRun::PrintSummary() const {
    long collected = 0;
    for (long c : collected_) collected += c;
    std::cout << "autoplay: " << levelStarts_ << " level starts, " << levelsPlayed_ << " levels played ("
              << levelsPlayed_ - deadEnds_ << " cleared, " << deadEnds_ << " dead ends cleared), " << total_.clicks
              << " clicks, " << total_.spellsUsed << " spells used of " << collected << " collected, "
              << host_.Sound.Beeps << " speaker beeps, " << total_.restarts << " restarts, score "
              << GameSession::FormatScore(session_.Score) << ", " << Seconds(host_.Loop.NowMs()) << " of game time, "
              << (fault_.empty() ? "no fault" : "FAULT") << '\n'
              << std::flush;
}

// ---- the command line ----------------------------------------------------------------------

std::optional<std::int64_t> WholeNumber(const std::string& text) {
    std::int64_t value = 0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
    return value;
}

std::optional<RunOptions> ReadOptions(const std::vector<std::string>& args, std::string& error) {
    RunOptions o;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        const bool hasValue = i + 1 < args.size();
        const std::int64_t value = hasValue ? WholeNumber(args[i + 1]).value_or(-1) : -1;
        if (a == "--seed" && value >= 0) {
            o.seed = static_cast<std::uint64_t>(value);
        } else if (a == "--levels" && value >= 1 && value <= MaxLevelStarts) {
            o.levels = value;
        } else if (a == "--anidraw" && hasValue && (args[i + 1] == "on" || args[i + 1] == "off")) {
            o.aniDraw = args[i + 1] == "on";
        } else if (a == "--seed" || a == "--levels" || a == "--anidraw") {
            error = a == "--seed"     ? "--seed needs a whole number, 0 or more"
                    : a == "--levels" ? "--levels needs a number of level starts from 1 to 1000000"
                                      : "--anidraw needs on or off";
            return std::nullopt;
        } else if (o.dir.empty() && a.rfind("--", 0) != 0) {
            o.dir = a;
            continue;
        } else {
            error = "unexpected argument '" + a + "'";
            return std::nullopt;
        }
        ++i;
    }
    if (o.dir.empty()) {
        error = "autoplay needs the folder of a level set";
        return std::nullopt;
    }
    return o;
}

int RunAutoplay(const std::vector<std::string>& args) {
    std::string error;
    const auto options = ReadOptions(args, error);
    if (!options) return UsageError("autoplay: " + error);
    // The level table is large; the run lives on the heap.
    auto run = std::make_unique<AutoplayRun>(*options);
    error = run->LoadSet();
    if (!error.empty()) {
        std::cerr << "tolva2-cli: autoplay: " << error << '\n';
        return ExitFailed;
    }
    return run->Play();
}

const CliRegistration registration{CliCommand{
    "autoplay",
    "autoplay DIR [--seed S] [--levels N] [--anidraw on|off]\n"
    "                                    let the game play the set in DIR by itself in cheat mode,\n"
    "                                    through N level starts or back round to level 1",
    RunAutoplay}};

} // namespace
} // namespace tolva::cli
