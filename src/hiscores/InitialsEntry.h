#pragma once
// InitialsEntry: the keys of frmHiscore in plain code, so that the window and the
// headless view type initials by the same rules. Keys come as character codes of the
// game's 8-bit code page (Latin-1):
//  - "," and "." are ignored, and so is every key once three characters are in;
//  - Enter (13) and Escape (27) pad the text with blanks to three and end the entry;
//  - Backspace (8) takes the last character away (nothing on an empty text);
//  - any other code is added in upper case, and the third character ends the entry.
#include <string>

namespace tolva {

class InitialsEntry {
public:
    static constexpr std::size_t Length = 3;

    struct KeyResult {
        bool Changed = false;  // the text changed: show it again
        bool Done = false;     // the entry is over: close the window
    };

    // One key by its character code, 0 to 255.
    KeyResult Key(unsigned char code);

    const std::string& Text() const { return text_; }
    bool Done() const { return done_; }

    // Upper case in Latin-1: a-z and the accented small letters that have a capital in
    // the code page (not sharp s, y with diaeresis or the division sign).
    static unsigned char UpperCase(unsigned char code);

private:
    std::string text_;
    bool done_ = false;
};

} // namespace tolva
