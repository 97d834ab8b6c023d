#include "levels/LevelSetReader.h"

#include "LevelSetTestFiles.h"
#include "support/ZenkorModule.h"

#include <gtest/gtest.h>

#include <random>

#include <cmath>
#include <memory>
#include <sstream>

using namespace tolva;
using tolva::testing::TinyPairSet;
using tolva::testing::TinyPairSum;

namespace {

struct Loaded {
    std::unique_ptr<LevelModule> game = std::make_unique<LevelModule>();
    LevelSetLoad load;
    const LevelRecord& Level(int n) const { return game->Levels[static_cast<std::size_t>(n - 1)]; }
};

Loaded LoadText(const std::string& text, const std::string& setPath = "levels\\other\\") {
    Loaded l;
    LevelSetReader reader(*l.game);
    reader.LevelSetPath = setPath;
    std::istringstream in(text);
    l.load = reader.Load(in);
    EXPECT_EQ(reader.LevelChecksum, l.load.LevelChecksum);
    return l;
}

std::string Head(const std::string& name, const std::string& side = "10") {
    return "[level]\nlevelbricks=" + side + "\nlevelgfxfolder=\nLevelName=" + name + "\n";
}

std::string Seal(double sum) { return "checksum=" + EncryptNumber(NumberText(sum), DefaultSetKey) + "\n"; }

} // namespace

TEST(LevelSetReader, ScanTakesLevelsByOrderAndRowsByPosition) {
    // Line ends of all kinds read alike.
    std::string lf = TinyPairSet(), crlf, cr;
    for (char c : lf) {
        crlf += c == '\n' ? std::string("\r\n") : std::string(1, c);
        cr += c == '\n' ? '\r' : c;
    }
    for (const auto& text : {lf, crlf, cr}) {
        SCOPED_TRACE(text.find('\r') == std::string::npos ? "LF" : text.find('\n') == std::string::npos ? "CR" : "CRLF");
        const Loaded l = LoadText(text + "checksum=x");
        EXPECT_EQ(l.load.SetName, "Tiny Pair");
        EXPECT_EQ(l.load.LevelHeads, 2);
        EXPECT_EQ(l.load.LevelChecksum, TinyPairSum);

        const LevelRecord& one = l.Level(1);
        EXPECT_EQ(one.LevelName, "One");
        EXPECT_EQ(one.levelbricks, 10);          // 4 is raised to 10
        EXPECT_EQ(one.levelgfxfolder, "crystal");
        EXPECT_EQ(one.BrickGrid(0, 0), 1);       // "R99" is row 0: it stands first
        EXPECT_EQ(one.BrickGrid(1, 0), 0);       // the empty field
        EXPECT_EQ(one.BrickGrid(2, 0), 3);
        EXPECT_EQ(one.BrickGrid(3, 0), CellEmpty);
        EXPECT_EQ(one.BrickGrid(1, 1), 2);
        EXPECT_EQ(one.BrickGrid(2, 1), CellEmpty); // the trailing comma adds no cell
        EXPECT_EQ(one.BrickGrid(3, 2), 3);
        for (int y = 0; y < 3; ++y)
            for (int x = 0; x < 10; ++x) EXPECT_EQ(one.SpellGrid(x, y), NoSpell);

        const LevelRecord& two = l.Level(2);
        EXPECT_EQ(two.LevelName, "Two");
        EXPECT_EQ(two.levelbricks, 25);
        EXPECT_EQ(two.BrickGrid(1, 1), 7);
        EXPECT_EQ(two.BrickGrid(0, 2), 8);
        EXPECT_EQ(two.BrickGrid(0, 3), CellEmpty);
        EXPECT_TRUE(l.Level(3).LevelName.empty());
    }
}

TEST(LevelSetReader, EveryLevelCountsInTheSumButOnlyAHundredAreStored) {
    // A row too long for the grid is the untrusted values' test, the weights of the
    // fields the row test's. 101 levels: the last is read, counted and dropped.
    std::string many;
    for (int n = 1; n <= 101; ++n) many += Head("L" + std::to_string(n)) + "r0=0,1\ns0=-1,-1\n";
    const Loaded l = LoadText(many);
    EXPECT_EQ(l.load.LevelHeads, 101);
    EXPECT_EQ(l.load.LevelsStored(), 100);
    EXPECT_EQ(l.Level(100).LevelName, "L100");
    EXPECT_EQ(l.load.LevelChecksum, 101.0 - 101.0);   // 1 * (0 + 1) and -1 * (0 + 1) per level
}

TEST(LevelSetReader, PositionalLinesAreCutByLength) {
    Loaded l = LoadText("[level]\nXXXXXXXXXXXX25\nshort\nLevelName\nr0=1,1\ns0=-1,-1\n");
    EXPECT_EQ(l.Level(1).levelbricks, 25);     // whatever the key, 12 characters go
    EXPECT_EQ(l.Level(1).levelgfxfolder, "");  // too short: left as it was
    EXPECT_EQ(l.Level(1).LevelName, "");

    const struct { const char* text; int side; } sides[] = {
        {"4", 10}, {"", 10}, {"-7", 10}, {"99", 40}, {"24.5", 24}, {"25.5", 26}, {"12abc", 12}, {"70000", 40}};
    for (const auto& s : sides) {
        l = LoadText(Head("S", s.text) + "r0=1\n");
        EXPECT_EQ(l.Level(1).levelbricks, s.side) << s.text;
        EXPECT_EQ(l.load.SidesCut, s.side == 40 ? 1 : 0) << s.text;
    }
}

TEST(LevelSetReader, PendingLinesDecideWhereLevelsEnd) {
    // A blank line between levels swallows the next level's head.
    Loaded l = LoadText(Head("A") + "r0=1,1\ns0=0,-1\n\n" + Head("B") + "r0=2,2\ns0=-1,-1\n");
    EXPECT_EQ(l.load.LevelHeads, 1);
    EXPECT_EQ(l.Level(1).SpellGrid(0, 0), 0);

    // A level of 40 rows must end with a spell row, or the next head is dropped.
    std::string full = Head("Full", "40");
    for (int y = 0; y < 40; ++y) full += "r=1\n" + std::string(y < 39 ? "s=-1\n" : "");
    l = LoadText(full + Head("Lost") + "r0=1\n");
    EXPECT_EQ(l.load.LevelHeads, 1);

    // A brick row without a spell row, then the next head: both levels load.
    l = LoadText(Head("A") + "r0=1,1\n" + Head("B") + "r0=2,2\ns0=4,4\n");
    EXPECT_EQ(l.load.LevelHeads, 2);
    EXPECT_EQ(l.Level(2).SpellGrid(1, 0), 4);

    // A spell row counts only right behind its brick row.
    l = LoadText(Head("A") + "r0=1,1\nnote\ns1=3,3\n");
    EXPECT_EQ(l.Level(1).SpellGrid(0, 0), NoSpell);
    EXPECT_EQ(l.Level(1).BrickGrid(0, 1), CellEmpty);
    EXPECT_EQ(l.load.LevelChecksum, 1.0);

    // Past the end the last line stays: a last brick row with nothing after it is read
    // again for every row down to 39.
    l = LoadText(Head("Echo") + "r0=2");
    EXPECT_EQ(l.Level(1).BrickGrid(0, 39), 2);
    EXPECT_EQ(l.load.LevelChecksum, 2.0 * 780);

    // A level head as the very last line starts one more (empty) level and the scan ends.
    l = LoadText(Head("A") + "r0=1,1\ns0=-1,-1\n[level2]");
    EXPECT_EQ(l.load.LevelHeads, 2);
    EXPECT_EQ(l.Level(2).BrickGrid(0, 0), CellEmpty);
}

TEST(LevelSetReader, DefaultSetsMustCarryTheSumOfTheirLastLine) {
    const std::string sealed = TinyPairSet() + Seal(TinyPairSum);
    EXPECT_EQ(LoadText(sealed, "levels\\default\\").load.Integrity, LevelSetIntegrity::Ok);

    std::string changed = sealed;
    changed.replace(changed.find("r1=6,7"), 6, "r1=6,8");
    const Loaded bad = LoadText(changed, "levels\\default\\");
    EXPECT_EQ(bad.load.Integrity, LevelSetIntegrity::Failed);
    EXPECT_EQ(bad.load.StoredChecksum, "74");
    EXPECT_EQ(LoadText(TinyPairSet(), "levels\\default\\").load.Integrity, LevelSetIntegrity::Failed);
    // The checksum line must be the last line.
    EXPECT_EQ(LoadText(sealed + "\n", "levels\\default\\").load.Integrity, LevelSetIntegrity::Failed);
    // Blanks around the deciphered number are trimmed.
    const std::string padded = TinyPairSet() + "checksum=" + EncryptNumber("  74 ", DefaultSetKey);
    EXPECT_EQ(LoadText(padded, "levels\\default\\").load.Integrity, LevelSetIntegrity::Ok);

    // Other sets are never checked, and they decipher with the other key.
    const Loaded other = LoadText(TinyPairSet() + "checksum=" + EncryptNumber("9", OtherSetKey), "levels\\mine\\");
    EXPECT_EQ(other.load.Integrity, LevelSetIntegrity::NotChecked);
    EXPECT_EQ(other.load.StoredChecksum, "9");
    EXPECT_EQ(other.load.SetKey, OtherSetKey);
}

TEST(LevelSetReader, DefaultIsATestOfTheEndingAlone) {
    for (const char* path : {"levels\\default\\", "levels\\default", "levels\\DEFAULT\\", "levels\\notdefault\\"})
        EXPECT_TRUE(LevelSetReader::IsDefault(path)) << path;
    for (const char* path : {"levels\\defaults\\", "levels\\default\\\\", ""}) EXPECT_FALSE(LevelSetReader::IsDefault(path)) << path;
}

TEST(LevelSetReader, UntrustedValuesStayInsideTheGrids) {
    // A row of 100 KB: 50,000 fields, 40 stored, all counted.
    std::string row = "r0=";
    for (int x = 0; x < 50000; ++x) row += "1,";
    Loaded l = LoadText(Head("Long", "99999") + row + "\ns0=1e300,-1e300,abc,32767.5\n");
    EXPECT_EQ(l.Level(1).BrickGrid(39, 0), 1);
    EXPECT_EQ(l.Level(1).SpellGrid(0, 0), 32767);
    EXPECT_EQ(l.Level(1).SpellGrid(1, 0), -32768);
    EXPECT_EQ(l.Level(1).SpellGrid(2, 0), 0);
    EXPECT_EQ(l.Level(1).SpellGrid(3, 0), 32767);
    l = LoadText(Head("Long") + row + "\ns0=\n");
    EXPECT_EQ(l.load.LevelChecksum, 49999.0 * 50000 / 2);
}

TEST(LevelSetReader, FieldsReadDirectlyAgreeWithVal) {
    // Plain whole numbers take the direct way; everything else goes through Val. Both
    // must give the same value, sign of a zero included, or the set's sum would change.
    for (const char* text : {"0", "7", "-1", "-0", "12", "9999", "-9999", "10000", "32767", "999999999", "1000000000", "-999999999", "", "-", "+5",
                             " 5", "5 ", "1.5", "2e3", "&H10", "x", ",", "3,", "00012", "-00", "4a"}) {
        const double direct = LevelSetReader::FieldValue(text);
        const double val = Val(text);
        EXPECT_EQ(direct, val) << '"' << text << '"';
        EXPECT_EQ(std::signbit(direct), std::signbit(val)) << '"' << text << '"';
        std::int16_t small = 0;
        if (LevelSetReader::SmallWholeField(text, small)) {
            EXPECT_EQ(small, CInt(val)) << '"' << text << '"';
            EXPECT_EQ(static_cast<double>(small), val) << '"' << text << '"';
            EXPECT_FALSE(std::signbit(val)  && small == 0) << '"' << text << '"';
        }
    }
}

TEST(LevelSetReader, RowsReadAsTheirFieldsReadOneByOne) {
    // A row is read in one pass; every cell and the set's sum must be what splitting it at
    // its commas and reading each field with Val gives, odd fields and a final comma too.
    const std::vector<std::string> fields = {"7", "-1", "0", "12", "9999", "-9999", "10000", "-32768", "40000", "00012",
                                             "", "-", "-0", "+5", " 5", "5 ", "1.5", "2e3", "x", "99999999999999999999"};
    std::mt19937 pick(20261123);
    for (int round = 0; round < 200; ++round) {
        std::vector<std::string> row;
        const int count = 1 + static_cast<int>(pick() % 45);
        for (int i = 0; i < count; ++i) row.push_back(fields[pick() % fields.size()]);
        std::string text;
        for (std::size_t i = 0; i < row.size(); ++i) text += (i ? "," : "") + row[i];
        if (pick() % 4 == 0) text += ",";
        if (text.empty()) continue;
        SCOPED_TRACE(text);

        // The fields as the game has always split them: the last character joins the last field.
        std::vector<std::string> split(1);
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text[i] == ',' && i + 1 < text.size()) split.emplace_back();
            else split.back() += text[i];
        }
        // The row ends the file, so it stands for all forty rows of the level.
        Loaded l = LoadText(Head("A", "40") + "r0=" + text + "\n");
        double sum = 0;
        for (int y = 0; y < 40; ++y) {
            for (std::size_t f = 0; f < split.size(); ++f) {
                const double value = Val(split[f]);
                sum += value * (y + static_cast<double>(f));
                if (f < 40) {
                    EXPECT_EQ(l.Level(1).BrickGrid(static_cast<int>(f), y), CInt(value)) << "field " << f;
                }
            }
        }
        EXPECT_EQ(l.load.LevelChecksum, sum);
    }
}
