#pragma once
// The text form of a solution, shared by `tolva2-cli levels solve`, the generator's
// solution files and the replay tests: "level N: X,Y X,Y ..." with the cells in click
// order, or "level N: unsolved".
#include "PlayBoard.h"

#include <string>
#include <vector>

namespace tolva::levelgen {

struct SolutionLine {
    int level = 0;
    bool solved = false;
    std::vector<Cell> clicks;
};

std::string FormatSolution(const SolutionLine& solution);
// False for a line that is not of this form. Blank lines and lines starting with '#'
// are no solutions either.
bool ParseSolution(const std::string& text, SolutionLine& out);
// Every solution line of a file's text, in order; other lines are skipped.
std::vector<SolutionLine> ParseSolutions(const std::string& text);

} // namespace tolva::levelgen
