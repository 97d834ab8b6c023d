#include "support/GameError.h"
#include "support/SteppedCipher.h"
#include "support/ZenkorModule.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>
#include <utility>
#include <vector>

using tolva::DecryptNumber;
using tolva::DefaultSetKey;
using tolva::EncryptNumber;
using tolva::GameError;
using tolva::OtherSetKey;
using tolva::testing::SteppedCipher;

namespace {

std::string AllCodes(int from, int to) {
    std::string text;
    for (int c = from; c <= to; ++c) text += static_cast<char>(c);
    return text;
}

// Every key a hiscore file uses: the set's key plus the entry number 0..9.
std::vector<int> HiscoreKeys() {
    std::vector<int> keys;
    for (int setKey : {static_cast<int>(DefaultSetKey), static_cast<int>(OtherSetKey)})
        for (int i = 0; i <= 9; ++i) keys.push_back(setKey + i);
    return keys;
}

std::string Lower(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return text;
}

} // namespace

TEST(Crypter, ComputedRotationAgreesWithTheSteppedLoopForEveryCode) {
    const std::string every = AllCodes(0, 255);
    std::vector<int> keys;
    for (int k = -3; k <= 700; ++k) keys.push_back(k);
    for (int k : {1000, 4567, 32765, 32766}) keys.push_back(k);
    for (int k : keys) {
        ASSERT_EQ(EncryptNumber(every, k), SteppedCipher(every, k, true)) << "key " << k;
        ASSERT_EQ(DecryptNumber(every, k), SteppedCipher(every, k, false)) << "key " << k;
    }
}

TEST(Crypter, KeepsTheEdgesOfTheTextAndOfTheKeyRange) {
    // The stepped loop fixes every code under every key, both ways; what is left is
    // the empty text and the lowest key.
    EXPECT_EQ(EncryptNumber("", 50), "");
    EXPECT_EQ(DecryptNumber(AllCodes(32, 255), -32768), AllCodes(32, 255));
}

TEST(Crypter, KeysAbove32766RaiseError10) {
    EXPECT_NO_THROW(EncryptNumber("x", 32766));
    for (const auto& [encrypt, key] : {std::pair{true, 32767}, std::pair{false, 32767}, std::pair{true, 100000}}) {
        const std::string name = encrypt ? "EncryptNumber" : "DecryptNumber";
        try {
            encrypt ? EncryptNumber("", key) : DecryptNumber("", key);
            ADD_FAILURE() << "no error for key " << key;
        } catch (const GameError& e) {
            EXPECT_EQ(e.Number, 10);
            EXPECT_EQ(e.Source, "Crypter");
            EXPECT_EQ(e.Description, "'" + name + "' is an integer, and may not be greater than 32766!");
        }
    }
}

TEST(Crypter, SetKeysKeepEncipheredHiscoreTextsValidIniNames) {
    EXPECT_NE(DefaultSetKey, OtherSetKey);
    for (int k : {static_cast<int>(DefaultSetKey), static_cast<int>(OtherSetKey)}) {
        EXPECT_GE(k, 51);
        EXPECT_LE(k, 99);
    }
    // What a hiscore file holds in names and values: the section and key words, "NO"
    // with a digit, initials (any typed character in capitals, "..." and blanks) and
    // numbers as decimal text ('-', '.', digits, an exponent). All of printable ASCII
    // covers them.
    const std::string alphabet = AllCodes(32, 126);
    for (int key : HiscoreKeys()) {
        for (char c : alphabet) {
            const std::string e = EncryptNumber(std::string(1, c), key);
            EXPECT_EQ(std::string("[]=;\"' \t").find(e[0]), std::string::npos)
                << "code " << int(static_cast<unsigned char>(c)) << " under key " << key;
        }
        for (const char* text : {"   ", " A ", "...", "-12.5", "1E+15", "0", "NO0", "CHECKSUM"}) {
            const std::string e = EncryptNumber(text, key);
            EXPECT_NE(e.front(), ' ');
            EXPECT_NE(e.back(), ' ');
        }
    }
    // The eleven section names stay apart under the case-blind lookup.
    for (int setKey : {static_cast<int>(DefaultSetKey), static_cast<int>(OtherSetKey)}) {
        std::set<std::string> folded{Lower(EncryptNumber("CHECKSUM", setKey))};
        for (int i = 0; i <= 9; ++i) folded.insert(Lower(EncryptNumber("NO" + std::to_string(i), setKey + i)));
        EXPECT_EQ(folded.size(), 11u);
    }
}
