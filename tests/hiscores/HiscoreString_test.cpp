// The Internet form of the table and its reading back.
#include "hiscores/Hiscores.h"
#include "support/ZenkorModule.h"

#include <gtest/gtest.h>

using tolva::DecryptNumber;
using tolva::DefaultSetKey;
using tolva::EncryptNumber;
using tolva::HiscoreStringProblem;
using tolva::Hiscores;
using tolva::OtherSetKey;

namespace {

Hiscores Sample() {
    Hiscores table;
    table[0] = {"\"><", 30, 123456789};   // quotes and markup go through untouched
    table[1] = {"&'/", 12, 5000};
    table[2] = {"\xC4\xD6\xDC", 9, 400.5};
    table[3] = {"AB ", -3, 98765432101};
    return table;
}

} // namespace

TEST(HiscoreString, HasTheFieldsAndAChecksumWithThePlaces) {
    Hiscores table;
    table[0] = {"ABC", 5, 1234};
    const std::string plain = DecryptNumber(table.MakeHiscoreString(DefaultSetKey), DefaultSetKey);
    const std::string fields = "ABC,5,1234,";
    ASSERT_EQ(plain.substr(0, fields.size()), fields);
    // 5 + 1234 and the places 0 + 1 + ... + 9, enciphered a second time at the end.
    const std::size_t tail = plain.size() - 4;
    EXPECT_EQ(DecryptNumber(plain.substr(tail), DefaultSetKey), "1284");
    std::string expected = fields;
    for (int i = 1; i < Hiscores::Places; ++i) expected += "...,0,0,";
    EXPECT_EQ(plain.substr(0, tail), expected);

    EXPECT_NE(table.MakeHiscoreString(DefaultSetKey), table.MakeHiscoreString(OtherSetKey));
}

TEST(HiscoreString, RoundTripsUnderBothKeysAndSaysWhyATextDoesNotCheckOut) {
    const Hiscores table = Sample();
    Hiscores big = table;
    big[5] = {"BIG", 1, 1E17};  // written as 1E+17
    for (const std::int16_t setKey : {DefaultSetKey, OtherSetKey}) {
        const auto parsed = tolva::ParseHiscoreString(big.MakeHiscoreString(setKey), setKey);
        ASSERT_TRUE(parsed.Ok()) << tolva::Describe(parsed.Problem);
        EXPECT_EQ(parsed.Entries, big.Entries);
    }
    const std::int16_t key = DefaultSetKey;
    const std::string plain = DecryptNumber(table.MakeHiscoreString(key), key);
    const auto parse = [&](const std::string& p) { return tolva::ParseHiscoreString(EncryptNumber(p, key), key).Problem; };

    std::string changed = plain;
    changed.replace(changed.find("5000"), 4, "5001");
    EXPECT_EQ(parse(changed), HiscoreStringProblem::BadChecksum);

    EXPECT_EQ(parse(""), HiscoreStringProblem::Truncated);
    EXPECT_EQ(parse(plain.substr(0, plain.rfind(',') - 1)), HiscoreStringProblem::Truncated);
    EXPECT_EQ(parse(plain.substr(0, plain.rfind(',') + 1)), HiscoreStringProblem::Truncated);

    for (const auto& [from, to] : std::vector<std::pair<std::string, std::string>>{
             {",30,", ",30x,"}, {",30,", ",,"}, {",5000,", ",5e3,"}, {",12,", ",40000,"}, {",12,", ",12.5,"},
             {",5000,", ",05000,"}}) {
        std::string bad = plain;
        bad.replace(bad.find(from), from.size(), to);
        EXPECT_EQ(parse(bad), HiscoreStringProblem::MalformedNumber) << to;
    }
    // A comma inside a name shifts every field after it.
    Hiscores comma = table;
    comma[0].Name = "A,B";
    EXPECT_FALSE(tolva::ParseHiscoreString(comma.MakeHiscoreString(key), key).Ok());
    EXPECT_FALSE(tolva::Describe(HiscoreStringProblem::BadChecksum).empty());
}
