#include "support/GameError.h"
#include "support/TempFolder.h"
#include "support/ZenkorModule.h"

#include <gtest/gtest.h>

#include <algorithm>
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
    const std::string printable = AllCodes(32, 255);
    for (int k : {0, 1, 55, 223, 224, 225, 1000, 32766, static_cast<int>(DefaultSetKey), static_cast<int>(OtherSetKey)}) {
        const std::string enciphered = EncryptNumber(printable, k);
        EXPECT_EQ(enciphered.size(), printable.size());
        EXPECT_EQ(DecryptNumber(enciphered, k), printable) << "key " << k;
        if (k + 224 <= 32766) {
            EXPECT_EQ(EncryptNumber(printable, k + 224), enciphered) << "period of 224, key " << k;
        }
    }
    EXPECT_EQ(EncryptNumber("", 50), "");
    EXPECT_EQ(DecryptNumber("", 50), "");
    EXPECT_EQ(EncryptNumber(printable, 0), printable);
    EXPECT_EQ(EncryptNumber(printable, -5), printable);
    EXPECT_EQ(DecryptNumber(printable, -32768), printable);
    EXPECT_EQ(EncryptNumber("\xFF", 1), " ");      // past 255 goes on at 32
    EXPECT_EQ(DecryptNumber(" ", 1), "\xFF");      // below 32 goes on at 255
    EXPECT_EQ(EncryptNumber("A", 3), "D");
    EXPECT_EQ(DecryptNumber("\x05", 2), "\xFE");   // a control code drops to 255 at once
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

TEST(Crypter, HiscoreShapedFileRoundTripsThroughTheIniFunctions) {
    tolva::testing::TempFolder dir;
    const std::vector<std::string> names{"   ", "...", "A B", "Z9*", "***", "Q", "-=-", "[X]", ";;;", "O'K"};
    std::string previous;
    for (int setKey : {static_cast<int>(DefaultSetKey), static_cast<int>(OtherSetKey)}) {
        const std::string file = dir / ("hiscore" + std::to_string(setKey) + ".hi");
        for (int i = 0; i <= 9; ++i) {
            const int key = setKey + i;
            const std::string section = EncryptNumber("NO" + std::to_string(i), key);
            ASSERT_TRUE(tolva::WriteIni(file, section, EncryptNumber("NAME", key), EncryptNumber(names[i], key)));
            ASSERT_TRUE(tolva::WriteIni(file, section, EncryptNumber("LEVEL", key), EncryptNumber(std::to_string(-i), key)));
            ASSERT_TRUE(tolva::WriteIni(file, section, EncryptNumber("SCORE", key),
                                        EncryptNumber(tolva::NumberText(1234.5 * i), key)));
        }
        ASSERT_TRUE(tolva::WriteIni(file, EncryptNumber("CHECKSUM", setKey), EncryptNumber("VALUE", setKey),
                                    EncryptNumber("55539", setKey)));
        for (int i = 0; i <= 9; ++i) {
            const int key = setKey + i;
            const std::string section = EncryptNumber("NO" + std::to_string(i), key);
            EXPECT_EQ(DecryptNumber(tolva::ReadIni(file, section, EncryptNumber("NAME", key)), key), names[i]);
            EXPECT_EQ(DecryptNumber(tolva::ReadIni(file, section, EncryptNumber("LEVEL", key)), key), std::to_string(-i));
            EXPECT_EQ(tolva::Val(DecryptNumber(tolva::ReadIni(file, section, EncryptNumber("SCORE", key)), key)),
                      1234.5 * i);
        }
        EXPECT_EQ(DecryptNumber(tolva::ReadIni(file, EncryptNumber("CHECKSUM", setKey), EncryptNumber("VALUE", setKey)),
                                setKey),
                  "55539");
        const std::string bytes = dir.Read("hiscore" + std::to_string(setKey) + ".hi");
        EXPECT_EQ(std::count(bytes.begin(), bytes.end(), '\n'), 11 + 31);  // nothing added twice
        EXPECT_NE(bytes, previous);
        previous = bytes;
    }
}
