#include "stats/StatTable.h"

#include "support/ZenkorModule.h"

#include <algorithm>

namespace tolva {
namespace {

// One key as a 16-bit number: false, with `field` untouched, when the stored value
// lies outside that range.
bool ReadField(const std::string& file, const std::string& section, const std::string& key,
               std::int16_t& field) {
    const double value = Val(ReadIni(file, section, key));
    if (value < -32768.5 || value >= 32767.5) return false;
    field = CInt(value);
    return true;
}

// The fields of a record in column order, for adding row to row.
std::array<std::int16_t*, StatColumnCount> Fields(StatRecord& r) {
    return {&r.MinClicks,      &r.MaxClicks,      &r.Spell[0].Low, &r.Spell[0].High,
            &r.Spell[1].Low,   &r.Spell[1].High,  &r.Spell[2].Low, &r.Spell[2].High,
            &r.Spell[3].Low,   &r.Spell[3].High,  &r.Spell[4].Low, &r.Spell[4].High,
            &r.Spell[5].Low,   &r.Spell[5].High,  &r.GameOver,     &r.Played};
}

} // namespace

std::array<std::int16_t, StatColumnCount> ColumnValues(const StatRecord& record) {
    StatRecord copy = record;
    std::array<std::int16_t, StatColumnCount> values{};
    const auto fields = Fields(copy);
    for (std::size_t c = 0; c < fields.size(); ++c) values[c] = *fields[c];
    return values;
}

std::string StatNumberText(std::int32_t value) {
    return (value < 0 ? "" : " ") + std::to_string(value) + " ";
}

void StatTable::Clear() { rows_.fill(StatRecord{}); }

void StatTable::OpenStatFile(const std::string& statPath, const LevelProgress& progress) {
    for (int n = 1; n <= LevelCount; ++n) {
        if (progress) progress(n);
        const std::string section = "LEVEL" + std::to_string(n);
        StatRecord& row = Row(n - 1);
        ReadField(statPath, section, "gameover", row.GameOver);
        ReadField(statPath, section, "maxclicks", row.MaxClicks);
        ReadField(statPath, section, "minclicks", row.MinClicks);
        ReadField(statPath, section, "played", row.Played);
        for (int k = 0; k < 6; ++k) {
            const std::string spell = "SPELL" + std::to_string(k);
            ReadField(statPath, section, spell + "_min", row.Spell[static_cast<std::size_t>(k)].Low);
            ReadField(statPath, section, spell + "_max", row.Spell[static_cast<std::size_t>(k)].High);
        }
    }
}

void StatTable::AddToTotals(int level) {
    const auto values = ColumnValues(Row(level - 1));
    const auto totals = Fields(rows_[TotalsRow]);
    for (std::size_t c = 0; c < totals.size(); ++c) {
        const std::int32_t sum = std::int32_t{*totals[c]} + values[c];
        if (sum >= -32768 && sum <= 32767) *totals[c] = static_cast<std::int16_t>(sum);
    }
}

std::int16_t StatTable::SumAllLevels() {
    rows_[TotalsRow] = StatRecord{};
    std::int16_t played = 0;
    for (int level = 1; level <= LevelCount; ++level) {
        if (IsPlayed(level)) ++played;
        AddToTotals(level);
    }
    return played;
}

std::int16_t StatTable::SumPlayedLevels() {
    rows_[TotalsRow] = StatRecord{};
    std::int16_t printed = 0;
    for (int level = 1; level <= LevelCount; ++level) {
        if (!IsPlayed(level)) continue;
        ++printed;
        AddToTotals(level);
    }
    return printed;
}

std::vector<int> StatTable::ProgressBars() const {
    std::vector<int> bars;
    bool marked = false;
    for (int i = 1; i <= LevelCount; ++i) {
        if (i == LevelCount) {
            if (IsPlayed(LevelCount)) bars.push_back(i);
        } else if (!IsPlayed(i + 1) && !marked) {
            bars.push_back(i);
            marked = true;
        }
    }
    return bars;
}

int StatTable::BarReach() const {
    const auto bars = ProgressBars();
    return bars.empty() ? 0 : *std::max_element(bars.begin(), bars.end());
}

} // namespace tolva
