#pragma once
// The statistics table: stat.ini read into 100 rows, one per level, and a totals row.
// The statistics screen and its printout both draw from it; what they add up, how many
// levels they count and where the screen's green bar runs is worked out here, in plain
// code, so that the window and the printer only place text.
//
// Every field is 16-bit signed like the file's values. A total that would pass the
// 16-bit range is not stored: that one total keeps what it had and the others go on,
// so a later, smaller row can still be added to it.
#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tolva {

struct SpellRange {
    std::int16_t Low = 0;    // SPELL<k>_min: fewest uses in a finished run
    std::int16_t High = 0;   // SPELL<k>_max: most uses in a finished run

    bool operator==(const SpellRange&) const = default;
};

struct StatRecord {
    std::int16_t MaxClicks = 0;
    std::int16_t MinClicks = 0;
    std::array<SpellRange, 6> Spell{};   // index = spell number
    std::int16_t GameOver = 0;
    std::int16_t Played = 0;

    bool operator==(const StatRecord&) const = default;
};

// Number of values of a row, level number left aside.
inline constexpr int StatColumnCount = 16;

// The values of a row in the order the list shows them: CLL, CLH, S0L, S0H ... S5H,
// Game Over, Played.
std::array<std::int16_t, StatColumnCount> ColumnValues(const StatRecord& record);

// A number as the list and the printout draw it: a blank in front of the digits (the
// minus sign takes its place) and one behind.
std::string StatNumberText(std::int32_t value);

class StatTable {
public:
    static constexpr int LevelCount = 100;
    static constexpr int TotalsRow = 100;

    // Called before each level's section is read, with the level number (1 to 100).
    using LevelProgress = std::function<void(int level)>;

    // All fields of all 101 rows to 0.
    void Clear();

    // Reads the sections LEVEL1 to LEVEL100 of `statPath` into rows 0 to 99, key by key,
    // whether or not a section exists. A value that is not a number reads as its numeric
    // prefix; one outside the 16-bit range leaves its field as it was (0 after Clear).
    // The totals row is not touched.
    void OpenStatFile(const std::string& statPath, const LevelProgress& progress = {});

    // Row `index` (0 to 100); row n - 1 holds level n, row 100 the totals.
    StatRecord& Row(int index) { return rows_.at(static_cast<std::size_t>(index)); }
    const StatRecord& Row(int index) const { return rows_.at(static_cast<std::size_t>(index)); }
    const StatRecord& Totals() const { return rows_[TotalsRow]; }

    // True if level `level` (1 to 100) was played at least once.
    bool IsPlayed(int level) const { return Row(level - 1).Played >= 1; }

    // The totals of the screen: the totals row from 0, every level added. Gives the
    // number of levels that were played.
    std::int16_t SumAllLevels();
    // The totals of the printout: the totals row from 0, only played levels added.
    // Gives the number of levels added, that is printed.
    std::int16_t SumPlayedLevels();
    // Adds the row of level `level` to the totals row, field by field.
    void AddToTotals(int level);

    // The screen's green bars, as the rows (1 to 100) at whose bottom each ends, in the
    // order they are drawn; every bar starts at the top of the list. The first stops at
    // the last row before the first gap in the run of played levels from level 2 on; a
    // played level 100 adds one covering all rows. There is always at least one.
    std::vector<int> ProgressBars() const;
    // The lowest row any green bar reaches.
    int BarReach() const;

private:
    std::array<StatRecord, LevelCount + 1> rows_{};
};

} // namespace tolva
