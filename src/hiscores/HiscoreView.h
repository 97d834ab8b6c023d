#pragma once
// HiscoreView: what the hiscore table shows. The window draws the table on the main
// window and asks for initials in frmHiscore; the headless view (tolva2-cli) draws
// nothing and answers from queued keys, and the tests' recorder keeps every drawing.
#include "hiscores/Hiscores.h"

#include <cstdint>
#include <string>

namespace tolva {

class HiscoreView {
public:
    virtual ~HiscoreView() = default;

    // Draws the whole table (PrintHiScore): `highlightPlace` 1-based or -1, the bar and
    // text colours of that place as 0xBBGGRR.
    virtual void Print(const Hiscores& table, std::int16_t highlightPlace, std::int32_t highlightColor,
                       std::int32_t highlightTextColor) = 0;

    // Shows the entry of initials modally and gives what was typed: always three
    // characters, padded with blanks (see InitialsEntry). Timers keep ticking meanwhile,
    // so the table flashes during the wait.
    virtual std::string AskInitials() = 0;
};

} // namespace tolva
