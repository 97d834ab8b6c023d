#pragma once
// The hiscore view without a screen, for tolva2-cli and the tests: every drawing of the
// table is recorded with its texts and colours, and the entry of initials is answered
// from a queue of typed keys, fed through the same key rules as frmHiscore. An answer
// that does not finish the entry is finished with Enter; with nothing queued the answer
// is Enter alone, three blanks.
#include "hiscores/HiscoreRows.h"
#include "hiscores/HiscoreView.h"

#include <array>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace tolva {

class HeadlessHiscoreView final : public HiscoreView {
public:
    struct Drawing {
        std::int16_t HighlightPlace = -1;
        std::int32_t HighlightColor = 0;
        std::int32_t HighlightTextColor = 0;
        std::array<HiscoreRow, Hiscores::Places> Rows;
    };

    void Print(const Hiscores& table, std::int16_t highlightPlace, std::int32_t highlightColor,
               std::int32_t highlightTextColor) override;
    std::string AskInitials() override;

    // The keys of the next entry of initials, as character codes ("\r" is Enter, "\b"
    // Backspace, "\x1b" Escape).
    void QueueKeys(std::string keys) { queued_.push_back(std::move(keys)); }

    // Runs before each key is typed (and before the closing Enter), so that a test can
    // let time pass on its clock while the "player" types.
    std::function<void()> BeforeEachKey;

    const std::vector<Drawing>& Drawings() const { return drawings_; }
    // The initials shown in the entry window after each key that changed them.
    const std::vector<std::string>& ShownInitials() const { return shownInitials_; }
    int InitialsAsked() const { return asked_; }

private:
    std::deque<std::string> queued_;
    std::vector<Drawing> drawings_;
    std::vector<std::string> shownInitials_;
    int asked_ = 0;
};

} // namespace tolva
