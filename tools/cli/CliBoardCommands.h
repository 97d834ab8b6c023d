#pragma once
// The commands that play a board from standard input, shared by `play` and `session`:
//   click X Y [BUTTON]   a click on cell (X, Y), by the road automatic play takes
//                        (BUTTON 1 left, the default, 2 right)
//   arm SPELL            arms a spell as its button does, with stock or without; SPELL is
//                        its number 0..5 or its name ("gun", "test tube"); "none" disarms
//   wait MS              lets MS milliseconds of game time pass (0..3600000)
//   grid                 the cell values of the board, a line per row from the top
//   spells               the hidden spell numbers of the board, the same way
#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace tolva {
class GameSession;
class HeadlessEventLoop;
class TolvaBoard;
struct LevelModule;
} // namespace tolva

namespace tolva::cli {

std::optional<std::int64_t> WholeNumber(const std::string& text);
std::string Lower(std::string text);
// The words of a command line; none for a blank line or a comment ('#').
std::vector<std::string> CommandWords(const std::string& line);

// The board a command acts on.
struct BoardCommandTarget {
    LevelModule& Game;
    GameSession& Session;
    TolvaBoard& Board;
    HeadlessEventLoop& Loop;
    std::ostream& Out;
};

// Runs `words` if it is one of the board's commands. Gives nullopt when the command is
// not one of them, an error text for a malformed one, and empty when it ran.
std::optional<std::string> RunBoardCommand(const std::vector<std::string>& words, const BoardCommandTarget& target);

} // namespace tolva::cli
