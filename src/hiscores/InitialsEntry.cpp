#include "hiscores/InitialsEntry.h"

namespace tolva {

namespace {
constexpr unsigned char Backspace = 8;
constexpr unsigned char Enter = 13;
constexpr unsigned char Escape = 27;
} // namespace

unsigned char InitialsEntry::UpperCase(unsigned char code) {
    if (code >= 'a' && code <= 'z') return static_cast<unsigned char>(code - 'a' + 'A');
    if (code >= 0xE0 && code <= 0xFE && code != 0xF7) return static_cast<unsigned char>(code - 0x20);
    return code;
}

InitialsEntry::KeyResult InitialsEntry::Key(unsigned char code) {
    KeyResult result;
    if (code == ',' || code == '.' || text_.size() >= Length) return result;
    if (code == Enter || code == Escape) {
        text_.resize(Length, ' ');
        done_ = true;
        result.Changed = true;
        result.Done = true;
        return result;
    }
    if (code == Backspace) {
        if (text_.empty()) return result;
        text_.pop_back();
        result.Changed = true;
        return result;
    }
    text_ += static_cast<char>(UpperCase(code));
    result.Changed = true;
    if (text_.size() == Length) {
        done_ = true;
        result.Done = true;
    }
    return result;
}

} // namespace tolva
