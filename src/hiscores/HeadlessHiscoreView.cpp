#include "hiscores/HeadlessHiscoreView.h"

#include "hiscores/InitialsEntry.h"

namespace tolva {

std::string HeadlessHiscoreView::AskInitials() {
    std::string keys;
    if (!queued_.empty()) {
        keys = std::move(queued_.front());
        queued_.pop_front();
    }
    keys += '\r';  // whatever was typed, Enter ends an entry that is still open
    InitialsEntry entry;
    for (const char key : keys) {
        if (entry.Done()) break;
        BeforeKey();
        if (entry.Key(static_cast<unsigned char>(key)).Changed) InitialsShown(entry.Text());
    }
    return entry.Text();
}

} // namespace tolva
