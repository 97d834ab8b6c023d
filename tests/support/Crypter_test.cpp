#include "support/GameError.h"
#include "support/ZenkorModule.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>
#include <vector>

using tolva::DecryptNumber;
using tolva::DefaultSetKey;
using tolva::EncryptNumber;
using tolva::GameError;
using tolva::OtherSetKey;

namespace {

// The cipher one step at a time, as the game first defined it; the library computes the
// rotation in one go and must agree with this for every code and key.
std::string SteppedEncrypt(std::string text, int key) {
    for (char& ch : text) {
        int c = static_cast<unsigned char>(ch);
        for (int i = 0; i < key; ++i)
            if (++c > 255) c = 32;
        ch = static_cast<char>(c);
    }
    return text;
}

std::string SteppedDecrypt(std::string text, int key) {
    for (char& ch : text) {
        int c = static_cast<unsigned char>(ch);
        for (int i = 0; i < key; ++i)
            if (--c < 32) c = 255;
        ch = static_cast<char>(c);
    }
    return text;
}

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
        ASSERT_EQ(EncryptNumber(every, k), SteppedEncrypt(every, k)) << "key " << k;
        ASSERT_EQ(DecryptNumber(every, k), SteppedDecrypt(every, k)) << "key " << k;
    }
}

TEST(Crypter, RoundTripsEveryPrintableCodeAndKeepsItsEdges) {
    // The stepped loop above fixes every code under every key; what is left is that
    // deciphering undoes enciphering and the edges of the text and of the key range.
    const std::string printable = AllCodes(32, 255);
    for (int k : {1, 223, 32766, static_cast<int>(DefaultSetKey), static_cast<int>(OtherSetKey)})
        EXPECT_EQ(DecryptNumber(EncryptNumber(printable, k), k), printable) << "key " << k;
    EXPECT_EQ(EncryptNumber("", 50), "");
    EXPECT_EQ(DecryptNumber(printable, -32768), printable);
}

TEST(Crypter, KeysAbove32766RaiseError10) {
    EXPECT_NO_THROW(EncryptNumber("x", 32766));
    const struct {
        bool encrypt;
        std::int32_t key;
        const char* description;
    } cases[] = {
        {true, 32767, "'EncryptNumber' is an integer, and may not be greater than 32766!"},
        {false, 32767, "'DecryptNumber' is an integer, and may not be greater than 32766!"},
        {true, 100000, "'EncryptNumber' is an integer, and may not be greater than 32766!"},
    };
    for (const auto& c : cases) {
        try {
            if (c.encrypt) {
                EncryptNumber("", c.key);
            } else {
                DecryptNumber("", c.key);
            }
            ADD_FAILURE() << "no error for key " << c.key;
        } catch (const GameError& e) {
            EXPECT_EQ(e.Number, 10);
            EXPECT_EQ(e.Source, "Crypter");
            EXPECT_EQ(e.Description, c.description);
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
