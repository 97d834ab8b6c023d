#pragma once
// The hiscore view of a game without a screen (tolva2-cli): there is no table to draw on,
// and the entry of initials is answered from a queue of typed keys, fed through the same
// key rules as frmHiscore. An answer that does not finish the entry is finished with
// Enter; with nothing queued the answer is Enter alone, three blanks.
#include "hiscores/HiscoreView.h"

#include <deque>
#include <string>

namespace tolva {

class HeadlessHiscoreView : public HiscoreView {
public:
    void Print(const Hiscores&, std::int16_t, std::int32_t, std::int32_t) override {}
    std::string AskInitials() override;

    // The keys of the next entry of initials, as character codes ("\r" is Enter, "\b"
    // Backspace, "\x1b" Escape).
    void QueueKeys(std::string keys) { queued_.push_back(std::move(keys)); }

protected:
    // Before each key is typed (the closing Enter too): the table keeps flashing meanwhile.
    virtual void BeforeKey() {}
    // The initials the entry shows after a key that changed them.
    virtual void InitialsShown(const std::string&) {}

private:
    std::deque<std::string> queued_;
};

} // namespace tolva
