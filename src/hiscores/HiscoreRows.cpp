#include "hiscores/HiscoreRows.h"

#include "support/ZenkorModule.h"

namespace tolva {

std::array<HiscoreRow, Hiscores::Places> HiscoreRows(const Hiscores& table) {
    std::array<HiscoreRow, Hiscores::Places> rows;
    for (int i = 0; i < Hiscores::Places; ++i) {
        HiscoreRow& row = rows[static_cast<std::size_t>(i)];
        row.Place = std::to_string(i + 1);
        if (row.Place.size() < 2) row.Place.insert(0, 1, ' ');
        row.Name = table[i].Name;
        row.Level = NumberText(table[i].Level);
        row.Score = GroupDigits(NumberText(table[i].Score), 9);   // the score label's form
    }
    return rows;
}

} // namespace tolva
