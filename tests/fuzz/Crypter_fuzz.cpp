// Fuzz target of Crypter. The input is a key and a text. EncryptNumber and DecryptNumber
// must give exactly what the step-by-step loop gives (each code stepped `key` times
// through 32..255), raise error 10 of "Crypter" for a key above 32766, and undo each
// other for every text of codes 32 and above.
#include "fuzz/FuzzCheck.h"
#include "support/GameError.h"
#include "support/SteppedCipher.h"
#include "support/ZenkorModule.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace {

constexpr const char* Target = "crypter";

bool RaisesKeyError(bool up, const std::string& text, std::int32_t key) {
    try {
        up ? tolva::EncryptNumber(text, key) : tolva::DecryptNumber(text, key);
    } catch (const tolva::GameError& e) {
        return e.Number == 10 && e.Source == "Crypter";
    }
    return false;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider in(data, size);
    // Mostly keys in the range the game uses, sometimes any key at all.
    const std::int32_t key = in.ConsumeBool() ? in.ConsumeIntegralInRange<std::int32_t>(-300, 600)
                                              : in.ConsumeIntegral<std::int32_t>();
    // The reference loop costs key steps a code: the text stays short.
    const std::string text = in.ConsumeRandomLengthString(48);

    if (key > 32766) {
        tolva::fuzz::Check(RaisesKeyError(true, text, key) && RaisesKeyError(false, text, key), Target,
                           "a key above 32766 does not raise error 10 of Crypter");
        return 0;
    }
    const std::string enc = tolva::EncryptNumber(text, key);
    const std::string dec = tolva::DecryptNumber(text, key);
    tolva::fuzz::Check(enc == tolva::testing::SteppedCipher(text, key, true), Target, "EncryptNumber differs from the step-by-step loop");
    tolva::fuzz::Check(dec == tolva::testing::SteppedCipher(text, key, false), Target, "DecryptNumber differs from the step-by-step loop");

    bool printable = true;
    for (const char c : text) printable = printable && static_cast<unsigned char>(c) >= 32;
    if (printable) {
        tolva::fuzz::Check(tolva::DecryptNumber(enc, key) == text, Target, "DecryptNumber does not undo EncryptNumber");
        tolva::fuzz::Check(tolva::EncryptNumber(dec, key) == text, Target, "EncryptNumber does not undo DecryptNumber");
    }
    return 0;
}
