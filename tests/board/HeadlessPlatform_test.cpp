// The headless platform that the board tests stand on: bitmap files read as the screen
// would show them, picture holders that keep their picture on a failed load, strips with
// the timing of the real control, and seeded random numbers.
#include "BmpWriter.h"
#include "support/TempFolder.h"
#include "support/platform/BmpFile.h"
#include "support/platform/HeadlessEventLoop.h"
#include "support/platform/HeadlessPicture.h"
#include "support/platform/HeadlessPictureStrip.h"
#include "support/platform/SeededRandom.h"

#include <gtest/gtest.h>

using tolva::BmpFile;
using tolva::testing::MakeBmp;
using tolva::testing::SolidBmp;

TEST(HeadlessPlatform, BitmapsOfEveryDepthGiveTheirSizeAndColours) {
    auto rgb = [](int x, int y) { return static_cast<std::uint32_t>(x * 0x100000 + y * 0x000100 + 0x07); };
    for (int bits : {24, 32}) {
        for (bool topDown : {false, true}) {
            BmpFile bmp;
            ASSERT_TRUE(bmp.Parse(MakeBmp(5, 3, bits, rgb, {}, topDown))) << bits;
            EXPECT_EQ(bmp.Width(), 5);
            EXPECT_EQ(bmp.Height(), 3);
            EXPECT_EQ(bmp.Pixel(0, 0), 0x000007);
            EXPECT_EQ(bmp.Pixel(4, 2), 0x400207) << bits << topDown;
            EXPECT_EQ(bmp.Pixel(5, 0), -1);
            EXPECT_EQ(bmp.Pixel(0, -1), -1);
        }
    }
    const std::vector<std::uint32_t> palette = {0x000000, 0xFF0000, 0x00FF00, 0x0000FF};
    for (int bits : {1, 4, 8}) {
        const int colours = bits == 1 ? 2 : 4;
        BmpFile bmp;
        ASSERT_TRUE(bmp.Parse(MakeBmp(13, 2, bits, [&](int x, int y) { return static_cast<std::uint32_t>((x + y) % colours); },
                                      std::vector<std::uint32_t>(palette.begin(), palette.begin() + colours))))
            << bits;
        for (int x = 0; x < 13; ++x)
            EXPECT_EQ(bmp.Pixel(x, 1), static_cast<std::int32_t>(palette[static_cast<std::size_t>((x + 1) % colours)]))
                << bits << " " << x;
    }
}

TEST(HeadlessPlatform, DamagedBitmapsAreRefusedAndChangeNothing) {
    BmpFile bmp;
    ASSERT_TRUE(bmp.Parse(SolidBmp(4, 4, 0x123456)));
    const std::string good = SolidBmp(8, 8);
    std::string cut = good.substr(0, good.size() - 1);
    std::string rle = good;
    rle[30] = 1;                                   // run-length data
    std::string huge = good;
    huge[21] = 0x7F;                               // a width of two thousand million
    std::string notBmp = good;
    notBmp[0] = 'X';
    for (const auto& bad : {cut, rle, huge, notBmp, std::string("BM"), std::string()}) {
        EXPECT_FALSE(bmp.Parse(bad));
        EXPECT_EQ(bmp.Width(), 4);
        EXPECT_EQ(bmp.Pixel(3, 3), 0x123456);
    }
}

TEST(HeadlessPlatform, PictureHolderKeepsItsPictureWhenALoadFails) {
    tolva::testing::TempFolder folder;
    folder.Write("a.bmp", SolidBmp(25, 20, 0xABCDEF));
    folder.Write("bad.bmp", "BM nothing");
    const std::string stored = folder.Path() + "\\";
    tolva::HeadlessPicture p("Gfx(0)");
    EXPECT_FALSE(p.HasPicture());
    EXPECT_EQ(p.Point(0, 0), -1);
    ASSERT_TRUE(p.LoadFile(stored + "A.BMP"));     // the stored name in another case
    EXPECT_FALSE(p.LoadFile(stored + "bad.bmp"));
    EXPECT_FALSE(p.LoadFile(stored + "missing.bmp"));
    EXPECT_FALSE(p.LoadFile(folder.Path()));       // a folder is no picture
    EXPECT_EQ(p.ScaleWidth(), 25);
    EXPECT_EQ(p.ScaleHeight(), 20);
    EXPECT_EQ(p.Point(24.9, 19.5), 0xABCDEF);
    EXPECT_EQ(p.Point(25, 0), -1);
    tolva::HeadlessPicture q("TmpBack");
    q.Assign(p);
    EXPECT_EQ(q.ScaleWidth(), 25);
    EXPECT_EQ(q.Source(), stored + "A.BMP");
    p.Clear();
    EXPECT_FALSE(p.HasPicture());
    EXPECT_EQ(q.Point(1, 1), 0xABCDEF);            // the copy keeps its picture
}

TEST(HeadlessPlatform, StripsKeepTheTimingOfTheRealControl) {
    tolva::testing::TempFolder folder;
    folder.Write("s.bmp", SolidBmp(10, 50 * 3));   // three frames of 50
    tolva::HeadlessEventLoop loop;
    tolva::HeadlessPictureStrip strip("Animation", loop);
    strip.SetInterval(20);
    strip.SetMoveHeight(50);
    ASSERT_TRUE(strip.LoadStrip(folder.Path() + "\\s.bmp"));
    std::vector<std::int64_t> finished;
    strip.OnFinish = [&] { finished.push_back(loop.NowMs()); };

    // Two passes of three frames: finished six intervals later, back on the first frame.
    strip.Play(2);
    loop.WaitUntil([&] { return !strip.IsPlaying(); });
    EXPECT_EQ(finished, (std::vector<std::int64_t>{120}));
    EXPECT_EQ(strip.LastFrameTop(), 0);
    EXPECT_EQ(strip.PassesDone(), 2);

    // Play(0) stops after one pass, as 1 does.
    strip.Play(0);
    loop.Advance(60);
    EXPECT_EQ(finished.size(), 2u);

    // Without an end it plays until stopped; Play again restarts with no Finish, and
    // StopPlay finishes at once.
    strip.Play();
    loop.Advance(500);
    strip.Play(-1);
    loop.Advance(500);
    EXPECT_EQ(finished.size(), 2u);
    strip.StopPlay();
    EXPECT_EQ(finished.size(), 3u);
    EXPECT_FALSE(strip.IsPlaying());

    // A strip with no picture counts a pass at every tick.
    tolva::HeadlessPictureStrip empty("BOM", loop);
    empty.SetInterval(120);
    int done = 0;
    empty.OnFinish = [&] { ++done; };
    empty.Play(3);
    loop.Advance(359);
    EXPECT_EQ(done, 0);
    loop.Advance(1);
    EXPECT_EQ(done, 1);
}

TEST(HeadlessPlatform, SeededRandomReplaysFromItsSeed) {
    tolva::SeededRandom a(42), b(7);
    std::vector<double> first;
    for (int i = 0; i < 1000; ++i) {
        const double v = a.Next();
        ASSERT_TRUE(v >= 0 && v < 1);
        first.push_back(v);
    }
    b.Seed(42);
    for (double v : first) ASSERT_EQ(b.Next(), v);
}
