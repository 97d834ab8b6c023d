#include "support/SteppedCipher.h"
#include "support/ZenkorModule.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

using tolva::DecryptNumber;
using tolva::EncryptNumber;
using tolva::testing::SteppedCipher;

namespace {

std::string AllCodes(int from, int to) {
    std::string text;
    for (int c = from; c <= to; ++c) text += static_cast<char>(c);
    return text;
}

} // namespace

TEST(Crypter, ComputedRotationAgreesWithTheSteppedLoopForEveryCode) {
    const std::string every = AllCodes(0, 255);
    std::vector<int> keys;
    for (int k = -3; k <= 700; ++k) keys.push_back(k);
    for (int k : {-32768, 1000, 4567, 32765, 32766}) keys.push_back(k);
    for (int k : keys) {
        ASSERT_EQ(EncryptNumber(every, k), SteppedCipher(every, k, true)) << "key " << k;
        ASSERT_EQ(DecryptNumber(every, k), SteppedCipher(every, k, false)) << "key " << k;
    }
}

TEST(Crypter, SetKeysKeepEncipheredHiscoreTextsValidIniNames) {
    // Under a set's key plus the entry number 0..9, every printable code of a name or a
    // number enciphers to no byte that opens a section, ends a key, starts a comment or is
    // trimmed or unquoted off a value.
    for (const int setKey : {int{tolva::DefaultSetKey}, int{tolva::OtherSetKey}})
        for (int key = setKey; key <= setKey + 9; ++key)
            for (int c = 32; c <= 126; ++c)
                EXPECT_EQ(std::string("[]=;\"' \t").find(EncryptNumber(std::string(1, static_cast<char>(c)), key)[0]),
                          std::string::npos)
                    << "code " << c << " under key " << key;
}
