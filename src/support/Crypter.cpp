// Crypter: the cipher of hiscore.hi and of the checksum line of a level set.
//
// Each code is stepped `key` times, one up (EncryptNumber) or one down (DecryptNumber),
// wrapping within 32..255. Stepping one at a time costs `key` steps a byte; the same
// result comes from one modular step, worked out here for every start code:
//
//  - Up from c >= 32 the code goes round the ring of the 224 codes 32..255, so it ends
//    at 32 + (c - 32 + key) mod 224. A code below 32 first climbs unwrapped to 32 and
//    then joins the ring, which the same formula covers as long as c + key >= 32;
//    before that it is simply c + key.
//  - Down from c >= 32 it goes round the same ring the other way. A code below 32 drops
//    below 32 at the first step, becomes 255 and goes on round the ring from there.
//
// So both are inverse on codes 32..255, and a key of k and of k + 224 agree there.
//
// The two keys of the level sets are chosen so that a hiscore file stays a well-formed
// ini file: under keys from 62 to 108 (the set keys plus the entry numbers 0..9) every
// code from 32 to 127 maps to a code of 94 or more that is none of '[', ']', '=', ';',
// a blank or a quote, so no enciphered name or number can open a section, end a key,
// start a comment or lose a byte to the trimming of values.
#include "support/GameError.h"
#include "support/ZenkorModule.h"

namespace tolva {

const std::int16_t DefaultSetKey = 73;
const std::int16_t OtherSetKey = 86;

namespace {

constexpr int RingStart = 32;
constexpr int RingSize = 224;
constexpr std::int32_t MaxKey = 32766;

void CheckKey(std::int32_t key, const char* function) {
    if (key > MaxKey) {
        throw GameError(10, "Crypter",
                        std::string("'") + function + "' is an integer, and may not be greater than 32766!");
    }
}

unsigned char StepUp(unsigned char code, std::int32_t key) {
    const int reached = code + key;
    if (reached < RingStart) return static_cast<unsigned char>(reached);
    return static_cast<unsigned char>(RingStart + (reached - RingStart) % RingSize);
}

unsigned char StepDown(unsigned char code, std::int32_t key) {
    int start = code;
    std::int32_t steps = key;
    if (start < RingStart) {  // the first step wraps it to the top of the ring
        start = RingStart + RingSize - 1;
        --steps;
    }
    const int offset = ((start - RingStart - steps) % RingSize + RingSize) % RingSize;
    return static_cast<unsigned char>(RingStart + offset);
}

} // namespace

std::string EncryptNumber(const std::string& text, std::int32_t key) {
    CheckKey(key, "EncryptNumber");
    if (key <= 0) return text;
    std::string result(text);
    for (char& c : result) c = static_cast<char>(StepUp(static_cast<unsigned char>(c), key));
    return result;
}

std::string DecryptNumber(const std::string& text, std::int32_t key) {
    CheckKey(key, "DecryptNumber");
    if (key <= 0) return text;
    std::string result(text);
    for (char& c : result) c = static_cast<char>(StepDown(static_cast<unsigned char>(c), key));
    return result;
}

} // namespace tolva
