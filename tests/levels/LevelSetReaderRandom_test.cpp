// The reader's fuzz target driven by a long randomised run: random bytes, and level
// sets with lines dropped, doubled, cut, swapped and blown up to 100 KB. The target
// aborts on any broken limit; under the sanitizer pass any stray write is caught too.
#include "LevelSetTestFiles.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

int Feed(const std::string& bytes) {
    return LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines{""};
    for (char c : text) {
        if (c == '\n') lines.emplace_back();
        else lines.back() += c;
    }
    return lines;
}

std::string Mutate(std::vector<std::string> lines, std::mt19937_64& rng) {
    const std::vector<std::string> pieces = {"[level", "levelbricks=", "r=", "s=", "checksum=", "levelset=", ",",
                                             "-32769", "1e308", "99999", "\r", "=", "", "-1,-1,-1"};
    const int edits = 1 + static_cast<int>(rng() % 12);
    for (int e = 0; e < edits && !lines.empty(); ++e) {
        const std::size_t i = rng() % lines.size();
        switch (rng() % 7) {
        case 0: lines.erase(lines.begin() + static_cast<long>(i)); break;
        case 1: lines.insert(lines.begin() + static_cast<long>(i), lines[i]); break;
        case 2: lines[i] = lines[i].substr(0, rng() % (lines[i].size() + 1)); break;
        case 3: std::swap(lines[i], lines[rng() % lines.size()]); break;
        case 4: lines[i] += pieces[rng() % pieces.size()]; break;
        case 5: lines.insert(lines.begin() + static_cast<long>(i), pieces[rng() % pieces.size()] + std::to_string(rng() % 70000)); break;
        case 6: {
            std::string big = "r=";
            const std::size_t fields = 1 + rng() % 20000;
            for (std::size_t f = 0; f < fields; ++f) big += std::to_string(static_cast<int>(rng() % 41) - 20) + ",";
            lines[i] = big;
            break;
        }
        }
    }
    std::string text;
    for (const auto& l : lines) text += l + "\n";
    return text;
}

} // namespace

TEST(LevelSetReaderRandom, SurvivesRandomBytesAndMangledSets) {
    std::mt19937_64 rng(20240611);
    std::string base = "[main]\nlevelset=Base\n";
    for (int n = 0; n < 3; ++n) base += tolva::testing::TinyPairSet();
    const auto lines = Lines(base);
    int runs = 0;
    for (int i = 0; i < 1200; ++i) {
        std::string bytes(rng() % 3000, '\0');
        for (auto& c : bytes) c = static_cast<char>(rng() % 8 == 0 ? "[lrs=,\n-"[rng() % 8] : rng() % 256);
        runs += Feed(bytes) == 0;
        runs += Feed(Mutate(lines, rng)) == 0;
    }
    EXPECT_EQ(runs, 2400);
    EXPECT_EQ(Feed(""), 0);
}
