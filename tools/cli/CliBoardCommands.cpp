#include "CliBoardCommands.h"

#include "board/TolvaBoard.h"
#include "session/GameSession.h"
#include "shared/GameText.h"
#include "shared/LevelModule.h"
#include "support/platform/HeadlessEventLoop.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <sstream>

namespace tolva::cli {
namespace {

constexpr std::int64_t LongestWait = 3'600'000;

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

std::string Click(const std::vector<std::string>& words, const BoardCommandTarget& t) {
    if (words.size() != 3 && words.size() != 4) return "click needs X Y [BUTTON]";
    const auto x = WholeNumber(words[1]);
    const auto y = WholeNumber(words[2]);
    const auto button = words.size() == 4 ? WholeNumber(words[3]) : std::optional<std::int64_t>(1);
    if (!x || !y || *x < -MaxBricks || *x > 2 * MaxBricks || *y < -MaxBricks || *y > 2 * MaxBricks)
        return "click needs whole cell numbers X and Y";
    if (!button || *button < 1 || *button > 3) return "the button of a click is 1, 2 or 3";
    float fx = static_cast<float>(*x);
    float fy = static_cast<float>(*y);
    t.Board.ClickOnBrick(fx, fy, static_cast<std::int16_t>(*button));
    return {};
}

std::string Arm(const std::vector<std::string>& words, const BoardCommandTarget& t) {
    if (words.size() < 2) return "arm needs a spell: 0..5 or its name";
    std::string name = words[1];
    for (std::size_t i = 2; i < words.size(); ++i) name += " " + words[i];
    const auto spell = SpellByName(name);
    if (!spell) return "no spell '" + name + "'; use 0..5 or a name such as gun or test tube";
    if (*spell == NoSpell) {
        t.Session.ActiveSpell_Click();
    } else if (t.Game.ActiveSpell != *spell) {
        // The spell button's own rule, with the stock left out of it: for the length of
        // the press the game is in cheat mode, in which a button arms without stock.
        const bool cheat = t.Game.CheatMode;
        t.Game.CheatMode = true;
        t.Session.sp_Click(*spell);
        t.Game.CheatMode = cheat;
    }
    return {};
}

std::string Wait(const std::vector<std::string>& words, const BoardCommandTarget& t) {
    const auto ms = words.size() == 2 ? WholeNumber(words[1]) : std::nullopt;
    if (!ms || *ms < 0 || *ms > LongestWait) return "wait needs milliseconds from 0 to " + std::to_string(LongestWait);
    // A timer marks the end of the wait, and the game runs until it has ticked. What is
    // due meanwhile may wait in turn (a level's bonus count-up inside the closing up of
    // the board); the clock then goes on past the end, and never back.
    bool done = false;
    auto end = t.Loop.CreateTimer(true);
    end->SetInterval(static_cast<std::int32_t>(*ms));
    end->OnTick = [&] {
        done = true;
        end->SetEnabled(false);
    };
    end->SetEnabled(true);
    t.Loop.WaitUntil([&] { return done; });
    return {};
}

void PrintGrid(const CellGrid& grid, const BoardCommandTarget& t) {
    const int n = t.Board.xBricks();
    for (int y = 0; y < n; ++y) {
        for (int x = 0; x < n; ++x) t.Out << (x > 0 ? " " : "") << grid(x, y);
        t.Out << '\n';
    }
}

} // namespace

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

std::vector<std::string> CommandWords(const std::string& line) {
    std::istringstream in(line);
    std::vector<std::string> words;
    for (std::string w; in >> w;) words.push_back(w);
    if (!words.empty() && words[0][0] == '#') words.clear();
    return words;
}

std::optional<std::string> RunBoardCommand(const std::vector<std::string>& words, const BoardCommandTarget& target) {
    const std::string command = Lower(words.at(0));
    if (command == "click") return Click(words, target);
    if (command == "arm") return Arm(words, target);
    if (command == "wait") return Wait(words, target);
    if (command == "grid" || command == "spells") {
        if (words.size() != 1) return command + " takes no arguments";
        PrintGrid(command == "grid" ? target.Board.Bricks : target.Board.Spells, target);
        return std::string();
    }
    return std::nullopt;
}

} // namespace tolva::cli
