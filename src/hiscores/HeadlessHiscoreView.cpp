#include "hiscores/HeadlessHiscoreView.h"

#include "hiscores/InitialsEntry.h"

namespace tolva {

void HeadlessHiscoreView::Print(const Hiscores& table, std::int16_t highlightPlace, std::int32_t highlightColor,
                                std::int32_t highlightTextColor) {
    drawings_.push_back(Drawing{highlightPlace, highlightColor, highlightTextColor, HiscoreRows(table)});
}

std::string HeadlessHiscoreView::AskInitials() {
    ++asked_;
    std::string keys;
    if (!queued_.empty()) {
        keys = std::move(queued_.front());
        queued_.pop_front();
    }
    keys += '\r';  // whatever was typed, Enter ends an entry that is still open
    InitialsEntry entry;
    for (const char key : keys) {
        if (entry.Done()) break;
        if (BeforeEachKey) BeforeEachKey();
        if (entry.Key(static_cast<unsigned char>(key)).Changed) shownInitials_.push_back(entry.Text());
    }
    return entry.Text();
}

} // namespace tolva
