#include "LevelShapes.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <random>
#include <vector>

namespace tolva::levelgen {
namespace {

// A 5 x 7 font of the capitals the level names use; '#' is a brick.
const std::map<char, std::vector<std::string>>& Font() {
    static const std::map<char, std::vector<std::string>> font = {
        {'A', {".###.", "#...#", "#...#", "#####", "#...#", "#...#", "#...#"}},
        {'B', {"####.", "#...#", "#...#", "####.", "#...#", "#...#", "####."}},
        {'C', {".####", "#....", "#....", "#....", "#....", "#....", ".####"}},
        {'D', {"####.", "#...#", "#...#", "#...#", "#...#", "#...#", "####."}},
        {'E', {"#####", "#....", "#....", "####.", "#....", "#....", "#####"}},
        {'F', {"#####", "#....", "#....", "####.", "#....", "#....", "#...."}},
        {'G', {".####", "#....", "#....", "#.###", "#...#", "#...#", ".###."}},
        {'H', {"#...#", "#...#", "#...#", "#####", "#...#", "#...#", "#...#"}},
        {'I', {"#####", "..#..", "..#..", "..#..", "..#..", "..#..", "#####"}},
        {'J', {"..###", "...#.", "...#.", "...#.", "#..#.", "#..#.", ".##.."}},
        {'K', {"#...#", "#..#.", "#.#..", "##...", "#.#..", "#..#.", "#...#"}},
        {'L', {"#....", "#....", "#....", "#....", "#....", "#....", "#####"}},
        {'M', {"#...#", "##.##", "#.#.#", "#.#.#", "#...#", "#...#", "#...#"}},
        {'N', {"#...#", "##..#", "#.#.#", "#..##", "#...#", "#...#", "#...#"}},
        {'O', {".###.", "#...#", "#...#", "#...#", "#...#", "#...#", ".###."}},
        {'P', {"####.", "#...#", "#...#", "####.", "#....", "#....", "#...."}},
        {'R', {"####.", "#...#", "#...#", "####.", "#.#..", "#..#.", "#...#"}},
        {'S', {".####", "#....", "#....", ".###.", "....#", "....#", "####."}},
        {'T', {"#####", "..#..", "..#..", "..#..", "..#..", "..#..", "..#.."}},
        {'U', {"#...#", "#...#", "#...#", "#...#", "#...#", "#...#", ".###."}},
        {'V', {"#...#", "#...#", "#...#", "#...#", ".#.#.", ".#.#.", "..#.."}},
        {'W', {"#...#", "#...#", "#...#", "#.#.#", "#.#.#", "##.##", "#...#"}},
        {'X', {"#...#", ".#.#.", "..#..", "..#..", "..#..", ".#.#.", "#...#"}},
        {'Y', {"#...#", ".#.#.", "..#..", "..#..", "..#..", "..#..", "..#.."}},
        {'Z', {"#####", "....#", "...#.", "..#..", ".#...", "#....", "#####"}},
        {'!', {"..#..", "..#..", "..#..", "..#..", "..#..", ".....", "..#.."}},
        {' ', {".....", ".....", ".....", ".....", ".....", ".....", "....."}},
    };
    return font;
}

std::vector<std::string> SplitLines(const std::string& text) {
    std::vector<std::string> lines{""};
    for (char c : text) {
        if (c == '/') lines.emplace_back();
        else lines.back() += c;
    }
    return lines;
}

void DrawText(Mask& mask, int side, const std::string& text, int baseRows) {
    const auto lines = SplitLines(text);
    std::size_t longest = 0;
    for (const auto& l : lines) longest = std::max(longest, l.size());
    const int width = static_cast<int>(longest) * 6 - 1;
    const int height = static_cast<int>(lines.size()) * 8 - 1;
    const int scale = std::max(1, std::min(side / std::max(1, width), (side - baseRows) / std::max(1, height)));
    const int top = std::max(0, (side - baseRows - height * scale) / 2);
    for (std::size_t li = 0; li < lines.size(); ++li) {
        const auto& line = lines[li];
        const int left = (side - (static_cast<int>(line.size()) * 6 - 1) * scale) / 2;
        for (std::size_t ci = 0; ci < line.size(); ++ci) {
            const auto it = Font().find(line[ci]);
            if (it == Font().end()) continue;
            for (int gy = 0; gy < 7; ++gy)
                for (int gx = 0; gx < 5; ++gx) {
                    if (it->second[static_cast<std::size_t>(gy)][static_cast<std::size_t>(gx)] != '#') continue;
                    for (int sy = 0; sy < scale; ++sy)
                        for (int sx = 0; sx < scale; ++sx) {
                            const int x = left + (static_cast<int>(ci) * 6 + gx) * scale + sx;
                            const int y = top + (static_cast<int>(li) * 8 + gy) * scale + sy;
                            if (x >= 0 && y >= 0 && x < side && y < side) mask(x, y) = true;
                        }
                }
        }
    }
    for (int y = side - baseRows; y < side; ++y)
        for (int x = 0; x < side; ++x) mask(x, y) = true;
}

bool Inside(Shape shape, int x, int y, int side, std::mt19937& rng) {
    const double c = (side - 1) / 2.0;
    const double dx = x - c, dy = y - c, r = side / 2.0;
    const double dist = std::sqrt(dx * dx + dy * dy);
    switch (shape) {
    case Shape::Full: return true;
    case Shape::Diamond: return std::abs(dx) + std::abs(dy) <= r + 0.5;
    case Shape::Ring: return dist <= r + 0.3 && dist >= r * 0.45;
    case Shape::Heart: {
        const double u = dx / r * 1.25, v = -(dy / r * 1.25) + 0.25;
        const double a = u * u + v * v - 1.0;
        return a * a * a - u * u * v * v * v <= 0.0;
    }
    case Shape::Cross: return std::abs(dx) <= side / 6.0 + 0.5 || std::abs(dy) <= side / 6.0 + 0.5;
    case Shape::Frame: return !(std::abs(dx) < side / 5.0 && std::abs(dy) < side / 5.0);
    case Shape::Pillars: return (x % 4) != 3 || y >= side - side / 3;
    case Shape::Pyramid: return std::abs(dx) <= (y + 1) / 2.0 + 0.5 || y >= side - 2;
    case Shape::Hourglass: return std::abs(dx) < std::abs(dy) - 0.5 || std::abs(dy) >= r * 0.15 || std::abs(dx) < 2;
    case Shape::Arrow: return (y < side / 2 && std::abs(dx) <= y + 0.5) || (y >= side / 2 && std::abs(dx) <= side / 6.0 + 0.5);
    case Shape::Waves: return y >= side / 4.0 + std::sin(x * 6.2832 / (side / 2.0)) * side / 8.0;
    case Shape::Checker: return !((x % 4 == 1 || x % 4 == 2) && (y % 4 == 1 || y % 4 == 2) && ((x / 4 + y / 4) % 2 == 0));
    case Shape::Spiral: {
        const double angle = std::atan2(dy, dx);
        const double turn = dist / (side / 5.0) - angle / 6.2832;
        return (turn - std::floor(turn)) < 0.62 || dist < 2;
    }
    case Shape::Tree: return (y < side * 0.72 && std::abs(dx) <= y * 0.55 + 1) || (std::abs(dx) <= side / 10.0 + 0.5) || y >= side - 2;
    case Shape::Drop: return dist <= r * 0.62 + 0.5 || (y < c && std::abs(dx) <= (y + 1) * 0.35);
    case Shape::Flame: {
        const double width = r * (0.25 + 0.75 * std::sin(3.1416 * std::min(1.0, (y + 1.0) / side)));
        return std::abs(dx + std::sin(y * 0.5) * r * 0.12) <= width || y >= side - 3;
    }
    case Shape::Gem: return y < side / 3 ? std::abs(dx) <= r * 0.55 + y * 0.6 : std::abs(dx) <= (side - y) * 0.9 + 0.5;
    case Shape::Windows: return !(((x % 7 == 2) || (x % 7 == 3) || (x % 7 == 4)) && ((y % 7 == 2) || (y % 7 == 3)));
    case Shape::Scatter: return std::uniform_real_distribution<double>(0.0, 1.0)(rng) >= 0.12;
    case Shape::Text: return false;
    }
    return true;
}

} // namespace

Mask MakeShape(const LayoutRequest& layout, int side, unsigned seed) {
    Mask mask;
    mask.Fill(false);
    if (layout.shape == Shape::Text) {
        DrawText(mask, side, layout.text, layout.baseRows);
        return mask;
    }
    std::mt19937 rng(seed);
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) mask(x, y) = Inside(layout.shape, x, y, side, rng);
    return mask;
}

int MaskCount(const Mask& mask, int side) {
    int n = 0;
    for (int x = 0; x < side; ++x)
        for (int y = 0; y < side; ++y)
            if (mask(x, y)) ++n;
    return n;
}

} // namespace tolva::levelgen
