// Which tables the game can make: the places, names, levels and scores it can write.
#include "TableRules.h"

#include <gtest/gtest.h>

using namespace tolva::hiscored;
using tolva::HiscoreEntry;
using tolva::Hiscores;

namespace {

Hiscores::Table TableOf(std::vector<HiscoreEntry> places) {
    Hiscores::Table table{};
    for (std::size_t i = 0; i < places.size(); ++i) table[i] = places[i];
    return table;
}

std::string ProblemOf(std::vector<HiscoreEntry> places) {
    return CheckGameTable(TableOf(std::move(places))).value_or("");
}

} // namespace

TEST(TableRules, TakesWhatTheGameWritesAndRefusesTheRestSayingWhichPlace) {
    const struct {
        std::vector<HiscoreEntry> places;
        const char* problem;
    } cases[] = {
        // What the game writes: free places; equal scores in any order of level and name;
        // names of blanks (Enter at once), punctuation, capitals with accents, control keys
        // and fewer than three characters.
        {{}, ""},
        {{{"ZOE", 100, MaxScore}, {"ZOE", 100, MaxScore - 1}}, ""},
        {{{"   ", 0, 5}, {"ZZ", 9, 5}, {"<\xC4!", 1, 5}, {"\x01" "A-", 50, 1}, {"\xDF\xFF\xF7", 2, 1}}, ""},
        {{{"ABCD", 1, 10}}, "place 1 has a name"},
        {{{"", 1, 10}}, "place 1 has a name"},
        {{{"abc", 1, 10}}, "place 1 has a name"},      // the window writes capitals
        {{{"\xE9T\xC9", 1, 10}}, "place 1 has a name"}, // small e acute too
        {{{"A.B", 1, 10}}, "place 1 has a name"},      // '.' and ',' are ignored
        {{{"A\x08", 1, 10}}, "place 1 has a name"},    // Backspace takes away
        {{{"A\r", 1, 10}}, "place 1 has a name"},      // Enter ends the entry
        {{{"...", 1, 10}}, "place 1 has a name"},      // only a free place is "..."
        {{{"ABC", 1, 10}, {"ABC", 1, 11}}, "place 2 has a higher score"},
        {{{"ABC", -1, 10}}, "place 1 has a level outside"},
        {{{"ABC", 101, 10}}, "place 1 has a level outside"},
        {{{"ABC", 1, 0.5}}, "place 1 has a score the game cannot reach"},
        {{{"ABC", 1, 10.5}}, "place 1 has a score the game cannot reach"},
        {{{"ABC", 1, MaxScore + 1}}, "place 1 has a score the game cannot reach"},
        {{{"ABC", 1, -3}}, "place 1 has a score the game cannot reach"},
        {{{"ABC", 1, 0}}, "place 1 has a score the game cannot reach"},
        {{{"ABC", 1, 10}, {"...", 4, 0}}, "place 2 is free but holds a level"},
        {{{"ABC", 1, 10}, {}, {"DEF", 1, 5}}, "place 3 holds a score below a free place"},
    };
    for (const auto& c : cases) {
        const std::string problem = ProblemOf(c.places);
        EXPECT_EQ(problem.substr(0, *c.problem ? std::string(c.problem).size() : std::string::npos), c.problem)
            << c.problem << " / " << problem;
    }
    EXPECT_EQ(MaxScore, 346000000.0);
}
