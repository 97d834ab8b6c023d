#include "SolutionText.h"

#include <charconv>
#include <sstream>

namespace tolva::levelgen {
namespace {

bool ReadInt(const std::string& text, std::size_t& pos, int& value) {
    const char* begin = text.data() + pos;
    const auto [end, error] = std::from_chars(begin, text.data() + text.size(), value);
    if (error != std::errc() || end == begin) return false;
    pos += static_cast<std::size_t>(end - begin);
    return true;
}

} // namespace

std::string FormatSolution(const SolutionLine& solution) {
    std::string text = "level " + std::to_string(solution.level) + ":";
    if (!solution.solved) return text + " unsolved";
    for (const auto& c : solution.clicks) text += " " + std::to_string(c.x) + "," + std::to_string(c.y);
    return text;
}

bool ParseSolution(const std::string& text, SolutionLine& out) {
    const std::string head = "level ";
    if (text.compare(0, head.size(), head) != 0) return false;
    std::size_t pos = head.size();
    SolutionLine line;
    if (!ReadInt(text, pos, line.level) || pos >= text.size() || text[pos] != ':') return false;
    ++pos;
    std::string rest = text.substr(pos);
    while (!rest.empty() && (rest.back() == '\r' || rest.back() == ' ')) rest.pop_back();
    if (rest == " unsolved") {
        out = line;
        return true;
    }
    std::size_t at = 0;
    while (at < rest.size()) {
        if (rest[at] != ' ') return false;
        ++at;
        Cell c;
        if (!ReadInt(rest, at, c.x) || at >= rest.size() || rest[at] != ',') return false;
        ++at;
        if (!ReadInt(rest, at, c.y)) return false;
        line.clicks.push_back(c);
    }
    line.solved = true;
    out = line;
    return true;
}

std::vector<SolutionLine> ParseSolutions(const std::string& text) {
    std::vector<SolutionLine> all;
    std::istringstream in(text);
    std::string row;
    while (std::getline(in, row)) {
        SolutionLine line;
        if (ParseSolution(row, line)) all.push_back(line);
    }
    return all;
}

} // namespace tolva::levelgen
