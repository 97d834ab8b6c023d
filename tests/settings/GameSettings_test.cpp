#include "settings/GameSettings.h"

#include "board/BoardFixture.h"
#include "board/TolvaBoard.h"
#include "support/TempFolder.h"
#include "support/ZenkorModule.h"
#include "testsupport/HeadlessPlatform.h"

#include <gtest/gtest.h>

using tolva::GameSettings;
using namespace tolva;
using tolva::testing::RecordingListener;
using tolva::testing::TempFolder;

TEST(GameSettings, MissingFileGivesEveryDefaultAndANewObjectWritesThemByteForByte) {
    TempFolder dir;
    EXPECT_TRUE(GameSettings::IsFirstUse(dir / "tolva2.ini"));
    // Read from nothing and written, the settings are the defaults in the game's key order.
    ASSERT_TRUE(GameSettings::Read(dir / "missing.ini").Write(dir / "tolva2.ini"));
    EXPECT_EQ(dir.Read("tolva2.ini"),
              std::string("[main]\r\nHiscoreUrl=") + GameSettings::DefaultHiscoreUrl +
                  "\r\nlevelset=levels\\default\\\r\nshowbonuscounter=1\r\nplaysounds=1\r\nplaymusic=1\r\n"
                  "updatedelay=200\r\nhuntdelay=0\r\nanidraw=1\r\nmakestat=1\r\nsupplystatfile=1\r\n"
                  "drawusingbackbuffer=1\r\nplayanimations=1\r\nUseExternalMusicFile=0\r\nextmusicpath=\r\n"
                  "extmusicfile=\r\nshowgroup=1\r\n");
    EXPECT_TRUE(GameSettings::IsFirstUse(dir / "tolva2.ini"));
    ASSERT_TRUE(GameSettings::MarkFirstUseDone(dir / "tolva2.ini"));
    EXPECT_FALSE(GameSettings::IsFirstUse(dir / "tolva2.ini"));
}

TEST(GameSettings, ValuesAreReadInTheirFormsAndWrittenBackSo) {
    TempFolder dir;
    dir.Write("tolva2.ini",
              "[MAIN]\r\n"
              "makestat=2\r\n"           // a flag is true only for 1
              "playsounds=2\r\n"         // a number stays what it is
              "playmusic=yes\r\n"        // no number: 0
              "updatedelay=1\r\n"        // raised to 2
              "huntdelay= 7.5 \r\n"      // rounded to even
              "ANIDRAW=0\r\n"
              "levelset=\r\n"            // empty: the default set, no complaint
              "ExtMusicPath=/home/me/music\r\n"
              "extmusicfile=Song.XM\r\n"
              "notfirstuse=YES\r\n"
              "mine=kept\r\n");
    GameSettings s = GameSettings::Read(dir / "tolva2.ini");
    EXPECT_FALSE(s.MakeStat);
    EXPECT_EQ(s.PlaySounds, 2);
    EXPECT_EQ(s.PlayMusic, 0);
    EXPECT_EQ(s.UpdateDelay, 2);
    EXPECT_EQ(s.HuntDelay, 8);
    EXPECT_FALSE(s.AniDraw);
    EXPECT_EQ(s.LevelSetPath, "levels\\default\\");
    EXPECT_EQ(s.ExtMusicPath, "/home/me/music\\");
    EXPECT_EQ(s.ExtMusicFile, "Song.XM");
    EXPECT_FALSE(GameSettings::IsFirstUse(dir / "tolva2.ini"));

    // Keys the settings do not own survive the rewrite.
    ASSERT_TRUE(s.Write(dir / "tolva2.ini"));
    EXPECT_EQ(tolva::ReadIni(dir / "tolva2.ini", "main", "notfirstuse"), "YES");
    EXPECT_EQ(tolva::ReadIni(dir / "tolva2.ini", "main", "mine"), "kept");
}

TEST(GameSettings, EveryKeyRoundTripsThroughTheBoard) {
    // Every key away from its default; what the board keeps of its own goes there and back.
    TempFolder dir;
    dir.Write("tolva2.ini", "[main]\r\nHiscoreUrl=http://127.0.0.1:9/x.asp\r\nlevelset=levels\\mine\\\r\n"
                            "showbonuscounter=0\r\nplaysounds=2\r\nplaymusic=0\r\nupdatedelay=77\r\n"
                            "huntdelay=5\r\nanidraw=0\r\nmakestat=0\r\nsupplystatfile=0\r\n"
                            "drawusingbackbuffer=0\r\nplayanimations=0\r\nUseExternalMusicFile=1\r\n"
                            "extmusicpath=C:\\tunes\\\r\nextmusicfile=song.xm\r\n");
    GameSettings read = GameSettings::Read(dir / "tolva2.ini");
    HeadlessPlatform host;
    auto game = std::make_unique<LevelModule>();
    RecordingListener events;
    TolvaBoard board(*game, read, host.Platform(), events);
    board.ApplySettings(read);
    EXPECT_EQ(board.UpdateDelay(), 77);
    EXPECT_FALSE(board.AniDraw);
    EXPECT_EQ(board.HuntDelay, 5);

    GameSettings back = read;
    back.UpdateDelay = 1;
    back.AniDraw = true;
    board.TakeSettings(back);
    ASSERT_TRUE(back.Write(dir / "copy.ini"));
    for (const char* key : {"HiscoreUrl", "levelset", "showbonuscounter", "playsounds", "playmusic", "updatedelay",
                            "huntdelay", "anidraw", "makestat", "supplystatfile", "drawusingbackbuffer",
                            "playanimations", "UseExternalMusicFile", "extmusicpath", "extmusicfile"})
        EXPECT_EQ(ReadIni(dir / "copy.ini", "main", key), ReadIni(dir / "tolva2.ini", "main", key)) << key;
}

TEST(GameSettings, NumbersAndFlagsAreReachedByTheNameOfTheirKey) {
    GameSettings s;
    // Either spelling of a name, in any case; a flag counts 1 or 0.
    EXPECT_EQ(s.Number("MakeStat"), 1);
    EXPECT_EQ(s.Number("UPDATEDELAY"), 200);
    EXPECT_EQ(s.Number("UseExternalMusicFile"), 0);
    // A text setting or a name that is no key gives nothing and takes nothing.
    EXPECT_FALSE(s.Number("extmusicpath").has_value());
    EXPECT_FALSE(s.Number("notfirstuse").has_value());
    EXPECT_FALSE(s.SetNumber("levelset", 1));
    EXPECT_FALSE(s.SetNumber("", 1));
    EXPECT_EQ(s.LevelSetPath, GameSettings::DefaultLevelSet);

    // Setting one is reading it from the file, without the mending of a read.
    ASSERT_TRUE(s.SetNumber("makestat", 2));
    EXPECT_FALSE(s.MakeStat);
    ASSERT_TRUE(s.SetNumber("showgroup", 0));
    EXPECT_FALSE(s.ShowGroup);
    ASSERT_TRUE(s.SetNumber("updatedelay", 1));   // below the read's floor of 2
    EXPECT_EQ(s.UpdateDelay, 1);
}
