// hiscore.hi: loading, saving, the checksum and what a changed or unwritable file does.
#include "hiscores/Hiscores.h"
#include "support/TempFolder.h"
#include "support/ZenkorModule.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>

#include <cstdio>
#include <string>
#include <vector>

using tolva::DefaultSetKey;
using tolva::HiscoreEntry;
using tolva::HiscoreLoad;
using tolva::Hiscores;
using tolva::OtherSetKey;
using tolva::testing::TempFolder;

namespace {

Hiscores SampleTable() {
    Hiscores table;
    table[0] = {"ZEN", 41, 1234567};
    table[1] = {"A\xC9\xFF", 12, 40321};   // Latin-1 bytes stay bytes
    table[2] = {"\"Q'", 7, 8810};          // quotes inside, not around
    table[3] = {"   ", 3, 225};            // initials left blank
    table[4] = {"X", 1, 2.5};
    return table;
}

std::vector<std::string> Labels(Hiscores& table, const std::string& path, std::int16_t key, HiscoreLoad& load) {
    std::vector<std::string> labels;
    load = table.Load(path, key, [&](const std::string& text) { labels.push_back(text); });
    return labels;
}

// The game's way of writing the file: one ini write per key, in order.
std::string WrittenKeyByKey(const TempFolder& dir, const Hiscores& table, std::int16_t setKey) {
    const std::string path = dir / "keybykey.hi";
    std::remove(path.c_str());
    double sum = 0;
    for (int i = 0; i < Hiscores::Places; ++i) {
        const int key = setKey + i;
        const std::string section = tolva::EncryptNumber("NO" + std::to_string(i), key);
        const auto write = [&](const char* name, const std::string& value) {
            EXPECT_TRUE(tolva::WriteIni(path, section, tolva::EncryptNumber(name, key), tolva::EncryptNumber(value, key)));
        };
        write("NAME", table[i].Name);
        write("LEVEL", tolva::NumberText(table[i].Level));
        write("SCORE", tolva::NumberText(table[i].Score));
        sum = sum + table[i].Level + table[i].Score;
    }
    EXPECT_TRUE(tolva::WriteIni(path, tolva::EncryptNumber("CHECKSUM", setKey), tolva::EncryptNumber("VALUE", setKey),
                                tolva::EncryptNumber(tolva::NumberText(sum), setKey)));
    return dir.Read("keybykey.hi");
}

// Replaces the first occurrence of `from` in the file by `to`.
void Patch(const TempFolder& dir, const std::string& name, const std::string& from, const std::string& to) {
    std::string bytes = dir.Read(name);
    const std::size_t at = bytes.find(from);
    ASSERT_NE(at, std::string::npos);
    bytes.replace(at, from.size(), to);
    dir.Write(name, bytes);
}

} // namespace

TEST(HiscoreFile, NoFileGivesTenFreePlacesWithTheirLabels) {
    TempFolder dir;
    Hiscores table = SampleTable();
    HiscoreLoad load{};
    const auto labels = Labels(table, dir / "hiscore.hi", DefaultSetKey, load);
    EXPECT_EQ(load, HiscoreLoad::Empty);
    ASSERT_EQ(labels.size(), 10u);
    EXPECT_EQ(labels.front(), "Levels_def_hiscore0");
    EXPECT_EQ(labels.back(), "Levels_def_hiscore9");
    for (const HiscoreEntry& entry : table.Entries) EXPECT_EQ(entry, (HiscoreEntry{"...", 0, 0}));
    EXPECT_EQ(table.FileChecksum(), "0");

    // A file that lacks the first entry counts as no table either.
    dir.Write("other.hi", "[main]\r\nx=1\r\n");
    EXPECT_EQ(table.Load(dir / "other.hi", DefaultSetKey), HiscoreLoad::Empty);
}

TEST(HiscoreFile, SaveWritesTheBytesOfTheKeyByKeySequenceAndLoadsBack) {
    TempFolder dir;
    const Hiscores table = SampleTable();
    for (const std::int16_t key : {DefaultSetKey, OtherSetKey, std::int16_t{30}, std::int16_t{150}, std::int16_t{32757}}) {
        SCOPED_TRACE(key);
        ASSERT_TRUE(table.SaveScore(dir / "hiscore.hi", key));
        EXPECT_EQ(dir.Read("hiscore.hi"), WrittenKeyByKey(dir, table, key));

        Hiscores loaded;
        HiscoreLoad load{};
        const auto labels = Labels(loaded, dir / "hiscore.hi", key, load);
        EXPECT_EQ(load, HiscoreLoad::Loaded);
        EXPECT_EQ(labels.front(), "Levels_hiscore0");
        EXPECT_EQ(labels.size(), 10u);
        EXPECT_EQ(loaded.Entries, table.Entries);
    }
    // Ten free places are a table too: stored with the checksum 0, and loaded as such.
    ASSERT_TRUE(Hiscores{}.SaveScore(dir / "hiscore.hi", DefaultSetKey));
    EXPECT_EQ(dir.Read("hiscore.hi"), WrittenKeyByKey(dir, Hiscores{}, DefaultSetKey));
    Hiscores emptied = table;
    EXPECT_EQ(emptied.Load(dir / "hiscore.hi", DefaultSetKey), HiscoreLoad::Loaded);
    EXPECT_EQ(emptied.Entries, Hiscores{}.Entries);
    EXPECT_EQ(dir.EntryCount(), 2u);  // the file and the reference: no temporary left

    // Under key 1 the "SCORE" key of entry 7 enciphers to a name starting with '[',
    // which no ini line can hold: the game's writer and the save both refuse it.
    EXPECT_FALSE(tolva::WriteIni(dir / "x.hi", "s", tolva::EncryptNumber("SCORE", 8), "v"));
    EXPECT_FALSE(table.SaveScore(dir / "hiscore.hi", 1));

    // The other set's key does not read the default set's file.
    Hiscores wrongKey = table;
    EXPECT_EQ(wrongKey.Load(dir / "hiscore.hi", OtherSetKey), HiscoreLoad::Empty);
}

TEST(HiscoreFile, AChangedScoreResetsButAChangedNameLoads) {
    TempFolder dir;
    const Hiscores table = SampleTable();
    const int key = DefaultSetKey + 1;
    ASSERT_TRUE(table.SaveScore(dir / "hiscore.hi", DefaultSetKey));

    // One digit of entry 1's score: 40321 -> 40331.
    Patch(dir, "hiscore.hi", tolva::EncryptNumber("SCORE", key) + "=" + tolva::EncryptNumber("40321", key),
          tolva::EncryptNumber("SCORE", key) + "=" + tolva::EncryptNumber("40331", key));
    Hiscores loaded;
    EXPECT_EQ(loaded.Load(dir / "hiscore.hi", DefaultSetKey), HiscoreLoad::Corrupted);
    Hiscores asStored;
    EXPECT_EQ(asStored.ReadAsStored(dir / "hiscore.hi", DefaultSetKey), HiscoreLoad::Corrupted);
    EXPECT_EQ(asStored[1].Score, 40331);

    ASSERT_TRUE(table.SaveScore(dir / "hiscore.hi", DefaultSetKey));
    Patch(dir, "hiscore.hi", tolva::EncryptNumber("NAME", key) + "=" + tolva::EncryptNumber("A\xC9\xFF", key),
          tolva::EncryptNumber("NAME", key) + "=" + tolva::EncryptNumber("BOB", key));
    EXPECT_EQ(loaded.Load(dir / "hiscore.hi", DefaultSetKey), HiscoreLoad::Loaded);
    EXPECT_EQ(loaded[1].Name, "BOB");
    EXPECT_EQ(loaded[1].Score, 40321);
}

// The file layer gives out in the middle of the write: the file size limit stops the
// temporary file after 100 bytes, as a full disk would.
TEST(HiscoreFile, ASaveThatFailsHalfwayLeavesTheOldFileWhole) {
    TempFolder dir;
    const Hiscores old = SampleTable();
    ASSERT_TRUE(old.SaveScore(dir / "hiscore.hi", DefaultSetKey));
    const std::string oldBytes = dir.Read("hiscore.hi");

    Hiscores changed = old;
    changed[0].Score = 9999999;
    struct rlimit saved {};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &saved), 0);
    const auto oldHandler = ::signal(SIGXFSZ, SIG_IGN);
    struct rlimit small = saved;
    small.rlim_cur = 100;
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const bool saved1 = changed.SaveScore(dir / "hiscore.hi", DefaultSetKey);
    ::setrlimit(RLIMIT_FSIZE, &saved);
    ::signal(SIGXFSZ, oldHandler);

    EXPECT_FALSE(saved1);
    EXPECT_EQ(dir.Read("hiscore.hi"), oldBytes);
    EXPECT_EQ(dir.EntryCount(), 1u);

    // A name that cannot stand in an ini line under this key is refused the same way.
    Hiscores unwritable = old;
    unwritable[2].Name = "A\nB";
    EXPECT_FALSE(unwritable.FileBytes(0).has_value());
    EXPECT_FALSE(unwritable.SaveScore(dir / "hiscore.hi", 0));
    EXPECT_FALSE(changed.SaveScore(dir / "missing/hiscore.hi", DefaultSetKey));
    EXPECT_EQ(dir.Read("hiscore.hi"), oldBytes);
}

TEST(HiscoreFile, ANameThatEnciphersToABlankOrQuoteAtAnEndComesBackWhole) {
    // Under the default set's key a "·" (0xB7) in the first place enciphers to a blank, a
    // "¹" (0xB9) to a double quote: values the ini reader would trim or unquote. Were the
    // first name to come back empty, the whole table would read as no table at all.
    TempFolder dir;
    Hiscores table;
    table[0] = {"\xB7\xB7\xB7", 9, 4000};
    table[1] = {"\xB8" "AB", 5, 300};   // a quote at the start only, under place 1's key
    table[2] = {"\xB7" "A\xB7", 2, 20};
    for (int i = 0; i < 3; ++i) ASSERT_TRUE(table.SaveScore(dir / "hiscore.hi", DefaultSetKey));
    Hiscores loaded;
    ASSERT_EQ(loaded.Load(dir / "hiscore.hi", DefaultSetKey), HiscoreLoad::Loaded);
    EXPECT_EQ(loaded.Entries, table.Entries);
    // And it stays so from save to save.
    ASSERT_TRUE(loaded.SaveScore(dir / "again.hi", DefaultSetKey));
    EXPECT_EQ(dir.Read("again.hi"), dir.Read("hiscore.hi"));
}
