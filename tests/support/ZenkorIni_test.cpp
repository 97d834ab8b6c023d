#include "support/ZenkorModule.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

using tolva::ReadIni;
using tolva::WriteIni;
using tolva::testing::TempFolder;

namespace {

const std::string Crlf = "\r\n";

} // namespace

TEST(ZenkorIni, ReadsOddButLegalFiles) {
    TempFolder dir;
    const std::string high = "\xC4\xE9\xFF";  // bytes above 127 in names and values
    dir.Write("odd.ini",
              "stray=before any section\n"
              "\n"
              "; a comment\r\n"
              "  [  Main  ]  \r\n"
              ";skip=comment, never a key\n"
              "\t PlaySounds \t=\t 1 \t\n"
              "\n"
              "key=first\n"
              "keyboard=longer name\n"
              "KEY=second, ignored\n"
              "eq = a=b=c\n"
              "bare line without equals\n"
              "quoted=\"  kept inside  \"\n"
              "single='x'\n"
              "lonequote=\"x\n"
              "[mainly]\n"
              "key=prefix section\n"
              "[" + high + "]\r\n" +
              high + "=" + high + " value\r\n"
              "[main]\n"
              "later=second section of the same name is never read\n"
              "[last]\n"
              "tail=no line end");
    const std::string f = dir / "odd.ini";
    EXPECT_EQ(ReadIni(f, "main", "playsounds"), "1");
    EXPECT_EQ(ReadIni(f, "MAIN", "PLAYSOUNDS"), "1");
    EXPECT_EQ(ReadIni(f, "main", "key"), "first");
    EXPECT_EQ(ReadIni(f, "main", "keyboard"), "longer name");
    EXPECT_EQ(ReadIni(f, "main", "keyb"), "");
    EXPECT_EQ(ReadIni(f, "main", "eq"), "a=b=c");
    EXPECT_EQ(ReadIni(f, "main", "bare line without equals"), "");
    EXPECT_EQ(ReadIni(f, "main", ";skip"), "");
    EXPECT_EQ(ReadIni(f, "main", "quoted"), "  kept inside  ");
    EXPECT_EQ(ReadIni(f, "main", "single"), "x");
    EXPECT_EQ(ReadIni(f, "main", "lonequote"), "\"x");
    EXPECT_EQ(ReadIni(f, "main", "later"), "");
    EXPECT_EQ(ReadIni(f, "main", "stray"), "");
    EXPECT_EQ(ReadIni(f, "mainly", "key"), "prefix section");
    EXPECT_EQ(ReadIni(f, "mai", "key"), "");
    EXPECT_EQ(ReadIni(f, high, high), high + " value");
    // Only A-Z fold: the Latin-1 capital and small letter are different bytes.
    EXPECT_EQ(ReadIni(f, "\xE4\xE9\xFF", high), "");
    EXPECT_EQ(ReadIni(f, "last", "tail"), "no line end");
    EXPECT_EQ(ReadIni(f, "last", "key"), "");  // a key of another section
}

TEST(ZenkorIni, ReplacesAKeyWhereItStands) {
    TempFolder dir;
    dir.Write("s.ini", "[main]\nfirst=1\n  Middle = 2 \nlast=3\n\n[other]\nmiddle=9\nmiddle=dup\n");
    const std::string f = dir / "s.ini";
    ASSERT_TRUE(WriteIni(f, "MAIN", "middle", "two"));
    // The name keeps its spelling from the file; every line ends in CR LF after a rewrite.
    EXPECT_EQ(dir.Read("s.ini"), "[main]" + Crlf + "first=1" + Crlf + "Middle=two" + Crlf + "last=3" + Crlf + Crlf +
                                     "[other]" + Crlf + "middle=9" + Crlf + "middle=dup" + Crlf);
    // With duplicates the first key is the one replaced.
    ASSERT_TRUE(WriteIni(f, "other", "MIDDLE", "nine"));
    EXPECT_EQ(ReadIni(f, "other", "middle"), "nine");
    EXPECT_NE(dir.Read("s.ini").find("middle=dup\r\n"), std::string::npos);
    EXPECT_EQ(dir.EntryCount(), 1u);  // no temporary file left behind
}

TEST(ZenkorIni, AddsMissingKeysAtTheEndOfTheirSectionAndMissingSectionsAtTheEnd) {
    TempFolder dir;
    dir.Write("a.ini", "[a]\r\nx=1\r\n; about b\r\n\r\n[b]\r\ny=2\r\n[empty]\r\n\r\n[c]\r\nz=3");
    const std::string f = dir / "a.ini";
    ASSERT_TRUE(WriteIni(f, "a", "new", "n"));
    ASSERT_TRUE(WriteIni(f, "empty", "e", "5"));
    ASSERT_TRUE(WriteIni(f, "c", "zz", "4"));  // last section, which had no line end
    ASSERT_TRUE(WriteIni(f, "d", "w", "6"));
    EXPECT_EQ(dir.Read("a.ini"), "[a]\r\nx=1\r\nnew=n\r\n; about b\r\n\r\n[b]\r\ny=2\r\n[empty]\r\ne=5\r\n\r\n"
                                 "[c]\r\nz=3\r\nzz=4\r\n[d]\r\nw=6\r\n");

    ASSERT_TRUE(WriteIni(dir / "new.ini", "main", "playmusic", "1"));
    EXPECT_EQ(dir.Read("new.ini"), "[main]\r\nplaymusic=1\r\n");
    // A key that is a prefix of another does not take its place.
    ASSERT_TRUE(WriteIni(dir / "new.ini", "main", "play", "0"));
    EXPECT_EQ(dir.Read("new.ini"), "[main]\r\nplaymusic=1\r\nplay=0\r\n");
    // A comment that looks like the key is not replaced; in a section without keys the
    // new key goes right under the head.
    dir.Write("c.ini", "[s]\n;k=old\n");
    ASSERT_TRUE(WriteIni(dir / "c.ini", "s", "k", "v"));
    EXPECT_EQ(dir.Read("c.ini"), "[s]\r\nk=v\r\n;k=old\r\n");
}

TEST(ZenkorIni, RefusesWritesThatWouldLoseOrGarbleData) {
    TempFolder dir;
    const std::string before = "[s]\r\nk=v\r\n";
    dir.Write("r.ini", before);
    const std::string f = dir / "r.ini";
    EXPECT_FALSE(WriteIni(f, "s", "a=b", "1"));
    EXPECT_FALSE(WriteIni(f, "s", "k", "two\nlines"));
    EXPECT_FALSE(WriteIni(f, "s\r", "k", "1"));
    EXPECT_FALSE(WriteIni(f, "s", ";k", "1"));
    EXPECT_FALSE(WriteIni(f, "s", std::string("k\0x", 3), "1"));
    EXPECT_EQ(dir.Read("r.ini"), before);

    // A read-only file stays as it is until its attributes are cleared.
    ASSERT_EQ(::chmod(f.c_str(), 0444), 0);
    EXPECT_FALSE(WriteIni(f, "s", "k", "changed"));
    EXPECT_EQ(dir.Read("r.ini"), before);
    tolva::ClearFileAttributes(f);
    EXPECT_TRUE(WriteIni(f, "s", "k", "changed"));
    EXPECT_EQ(ReadIni(f, "s", "k"), "changed");

    EXPECT_FALSE(WriteIni(dir / "no-such-folder/x.ini", "s", "k", "v"));
    EXPECT_FALSE(WriteIni(dir.Path(), "s", "k", "v"));  // a folder
    for (const std::string& nothing : {dir / "no-such-folder/x.ini", dir.Path(), std::string()})
        EXPECT_EQ(ReadIni(nothing, "s", "k"), "") << nothing;
    EXPECT_EQ(dir.EntryCount(), 1u);
}

TEST(ZenkorIni, OpaqueBytesRoundTripAndStoredPathsAreMapped) {
    TempFolder dir;
    std::filesystem::create_directory(dir / "Sub");
    // A stored path with backslashes and the wrong case of the folder.
    const std::string stored = dir.Path() + "\\sub\\Round.ini";
    std::string everyByte = "x";
    for (int c = 32; c <= 255; ++c) everyByte += static_cast<char>(c);
    everyByte += "x";
    std::string highName;
    for (int c = 128; c <= 255; ++c) highName += static_cast<char>(c);

    ASSERT_TRUE(WriteIni(stored, highName, highName, everyByte));
    ASSERT_TRUE(WriteIni(stored, "plain", "k", "  padded  "));
    ASSERT_TRUE(WriteIni(stored, "x]y", "k", "bracket inside"));  // the last ']' closes the name
    ASSERT_TRUE(WriteIni(stored, "x", "k", "plain x"));
    EXPECT_TRUE(std::filesystem::exists(dir / "Sub/Round.ini"));
    EXPECT_EQ(ReadIni(stored, highName, highName), everyByte);
    EXPECT_EQ(ReadIni(dir / "Sub/round.INI", highName, highName), everyByte);
    EXPECT_EQ(ReadIni(stored, "plain", "k"), "padded");
    EXPECT_EQ(ReadIni(stored, "x]y", "k"), "bracket inside");
    EXPECT_EQ(ReadIni(stored, "x", "k"), "plain x");
    // Rewriting with the same value changes nothing else.
    const std::string once = dir.Read("Sub/Round.ini");
    ASSERT_TRUE(WriteIni(stored, highName, highName, everyByte));
    EXPECT_EQ(dir.Read("Sub/Round.ini"), once);
}

TEST(ZenkorIni, ReadsLargeFilesPieceByPieceAsIfWhole) {
    // Large files are read a piece at a time and only as far as needed. Lines that cross
    // a piece, a CR LF split between two pieces, a section far down the file, a last line
    // without a line end and a section that ends before its key must all read as before.
    TempFolder dir;
    for (const std::size_t pad : {std::size_t{0}, std::size_t{16383}, std::size_t{16384}, std::size_t{16385}, std::size_t{40000}}) {
        SCOPED_TRACE(pad);
        std::string text = "[main]\r\nlevelset=Default" + std::string(pad % 7, ' ') + "\r\n";
        text += "filler=" + std::string(pad, 'x') + "\r\n";
        for (int i = 0; i < 2000; ++i) text += "r" + std::to_string(i) + "=1,2,3,4,5,6,7,8,9\r\n";
        text += "[far]\r\nwanted=" + std::string(20000, 'y').substr(0, 2000) + "\r\n[last]\r\nend=tail";
        dir.Write("big.ini", text);
        EXPECT_EQ(ReadIni(dir / "big.ini", "main", "levelset"), "Default");
        EXPECT_EQ(ReadIni(dir / "big.ini", "main", "r1999"), "1,2,3,4,5,6,7,8,9");
        // Values are cut at 2047 bytes: 16383 and more give 2047, no less and no more.
        EXPECT_EQ(ReadIni(dir / "big.ini", "main", "filler").size(), std::min<std::size_t>(pad, 2047));
        EXPECT_EQ(ReadIni(dir / "big.ini", "main", "wanted"), "");     // the section ended first
        EXPECT_EQ(ReadIni(dir / "big.ini", "far", "wanted"), std::string(2000, 'y'));
        EXPECT_EQ(ReadIni(dir / "big.ini", "last", "end"), "tail");    // no line end after it
        EXPECT_EQ(ReadIni(dir / "big.ini", "nowhere", "end"), "");
    }
    // A file over the bound is damaged as a whole, whatever its first lines say.
    dir.Write("huge.ini", "[main]\r\nkey=1\r\n" + std::string(tolva::MaxIniBytes, ';'));
    EXPECT_EQ(ReadIni(dir / "huge.ini", "main", "key"), "");
}
