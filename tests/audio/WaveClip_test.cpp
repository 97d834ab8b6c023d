// Reading wave files for the effects player, and the tone of the PC-speaker beeps.
#include "audio/WaveClip.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

using namespace tolva;
using tolva::testing::TempFolder;
using Samples = std::vector<std::int16_t>;

namespace {

void Put(std::string& b, std::uint32_t v, int width) {
    for (int i = 0; i < width; ++i) b.push_back(static_cast<char>((v >> (8 * i)) & 0xFF));
}

std::string Chunk(const std::string& id, const std::string& body) {
    std::string b = id;
    Put(b, static_cast<std::uint32_t>(body.size()), 4);
    b += body;
    if (body.size() % 2) b.push_back('\0');
    return b;
}

std::string Fmt(int tag, int channels, int rate, int bits) {
    std::string b;
    Put(b, tag, 2);
    Put(b, channels, 2);
    Put(b, rate, 4);
    Put(b, rate * channels * bits / 8, 4);
    Put(b, channels * bits / 8, 2);
    Put(b, bits, 2);
    return b;
}

std::string Riff(const std::string& chunks) {
    std::string b = "RIFF";
    Put(b, static_cast<std::uint32_t>(chunks.size() + 4), 4);
    return b + "WAVE" + chunks;
}

std::string Pcm16(const Samples& samples) {
    std::string b;
    for (auto s : samples) Put(b, static_cast<std::uint16_t>(s), 2);
    return b;
}

} // namespace

TEST(WaveClip, ReadsEightAndSixteenBitPcmInMonoAndStereo) {
    const auto eight = WaveClip::Parse(Riff(Chunk("fmt ", Fmt(1, 1, 11025, 8)) + Chunk("data", std::string("\x80\xFF\x00", 3))));
    ASSERT_TRUE(eight);
    EXPECT_EQ(eight->SampleRate(), 11025);
    EXPECT_EQ(eight->Channels(), 1);
    EXPECT_EQ(eight->Samples(), (Samples{0, 127 * 256, -128 * 256}));

    // Chunks the player does not need are stepped over, odd lengths with their pad byte.
    const auto sixteen = WaveClip::Parse(Riff(Chunk("fmt ", Fmt(1, 2, 44100, 16)) + Chunk("LIST", "odd") +
                                              Chunk("data", Pcm16({1, -1, 32767, -32768}))));
    ASSERT_TRUE(sixteen);
    EXPECT_EQ(sixteen->Channels(), 2);
    EXPECT_EQ(sixteen->Frames(), 2);
    EXPECT_EQ(sixteen->Samples(), (Samples{1, -1, 32767, -32768}));

    // The extensible header with the PCM format inside.
    std::string extensible = Fmt(0xFFFE, 1, 8000, 16);
    Put(extensible, 22, 2);
    Put(extensible, 16, 2);
    Put(extensible, 4, 4);
    Put(extensible, 1, 2);
    extensible += std::string(14, '\0');
    const auto ext = WaveClip::Parse(Riff(Chunk("fmt ", extensible) + Chunk("data", Pcm16({5, 6}))));
    ASSERT_TRUE(ext);
    EXPECT_EQ(ext->Samples(), (Samples{5, 6}));
    EXPECT_EQ(ext->DurationMs(), 0);
}

TEST(WaveClip, TurnsAwayWhatItCannotPlayAndKeepsWhatATruncatedFileHolds) {
    const std::string data = Chunk("data", Pcm16({1, 2, 3, 4}));
    EXPECT_FALSE(WaveClip::Parse(""));
    EXPECT_FALSE(WaveClip::Parse("RIFF\x04\0\0\0WAVX"));
    EXPECT_FALSE(WaveClip::Parse(Riff(Chunk("fmt ", Fmt(3, 1, 44100, 32)) + data)));   // float
    EXPECT_FALSE(WaveClip::Parse(Riff(Chunk("fmt ", Fmt(1, 1, 44100, 24)) + data)));
    EXPECT_FALSE(WaveClip::Parse(Riff(Chunk("fmt ", Fmt(1, 3, 44100, 16)) + data)));
    EXPECT_FALSE(WaveClip::Parse(Riff(Chunk("fmt ", Fmt(1, 1, 0, 16)) + data)));
    EXPECT_FALSE(WaveClip::Parse(Riff(Chunk("fmt ", Fmt(1, 0, 44100, 16)) + data)));    // no channels
    EXPECT_FALSE(WaveClip::Parse(Riff(Chunk("fmt ", Fmt(1, 1, 3999, 16)) + data)));     // below any device
    EXPECT_FALSE(WaveClip::Parse(Riff(Chunk("fmt ", Fmt(1, 1, 192001, 16)) + data)));   // above any device
    EXPECT_TRUE(WaveClip::Parse(Riff(Chunk("fmt ", Fmt(1, 1, 4000, 16)) + data)));
    EXPECT_TRUE(WaveClip::Parse(Riff(Chunk("fmt ", Fmt(1, 1, 192000, 16)) + data)));
    std::string absurdBlock = Fmt(1, 2, 44100, 16);
    absurdBlock[12] = '\xFF';
    absurdBlock[13] = '\x7F';
    EXPECT_FALSE(WaveClip::Parse(Riff(Chunk("fmt ", absurdBlock) + data)));
    // 8-bit mono at 1 Hz, 600 samples: a valid header for ten minutes of sound in 644 bytes.
    const std::string slow = Riff(Chunk("fmt ", Fmt(1, 1, 1, 8)) + Chunk("data", std::string(600, '\x90')));
    EXPECT_EQ(slow.size(), 644u);
    EXPECT_FALSE(WaveClip::Parse(slow));
    EXPECT_FALSE(WaveClip::Parse(Riff(data + Chunk("fmt ", Fmt(1, 1, 44100, 16)))));   // data before its format
    EXPECT_FALSE(WaveClip::Parse(Riff(Chunk("fmt ", Fmt(1, 1, 44100, 16)))));           // no data
    EXPECT_FALSE(WaveClip::Parse(Riff(Chunk("fmt ", Fmt(1, 1, 44100, 16)).substr(0, 14))));

    // A data chunk that claims more than the file holds plays the whole frames there are.
    std::string cut = Riff(Chunk("fmt ", Fmt(1, 2, 44100, 16)) + data);
    cut.resize(cut.size() - 2);
    const auto clip = WaveClip::Parse(cut);
    ASSERT_TRUE(clip);
    EXPECT_EQ(clip->Samples(), (Samples{1, 2}));

    // Every prefix of a good file is read without harm.
    const std::string good = Riff(Chunk("fmt ", Fmt(1, 2, 44100, 16)) + Chunk("LIST", "abc") + data);
    for (std::size_t n = 0; n <= good.size(); ++n) (void)WaveClip::Parse(good.substr(0, n));

    TempFolder folder;
    folder.Write("8.wav", good);
    folder.Write("bad.wav", "not a wave at all");
    EXPECT_TRUE(WaveClip::Load(folder.Path() + "\\8.wav"));
    EXPECT_FALSE(WaveClip::Load(folder.Path() + "\\bad.wav"));
    EXPECT_FALSE(WaveClip::Load(folder.Path() + "\\missing.wav"));
}

TEST(WaveClip, ConvertsRateAndChannels) {
    const auto mono = WaveClip::Parse(Riff(Chunk("fmt ", Fmt(1, 1, 22050, 16)) + Chunk("data", Pcm16({0, 1000, 2000}))));
    ASSERT_TRUE(mono);
    const WaveClip stereo = mono->ConvertedTo(44100, 2);
    EXPECT_EQ(stereo.SampleRate(), 44100);
    EXPECT_EQ(stereo.Samples(), (Samples{0, 0, 500, 500, 1000, 1000, 1500, 1500, 2000, 2000, 2000, 2000}));
    EXPECT_EQ(stereo.ConvertedTo(44100, 2).Samples(), stereo.Samples());

    const auto pair = WaveClip::Parse(Riff(Chunk("fmt ", Fmt(1, 2, 48000, 16)) + Chunk("data", Pcm16({100, 300, -32768, -32767}))));
    ASSERT_TRUE(pair);
    const WaveClip down = pair->ConvertedTo(24000, 1);
    EXPECT_EQ(down.Samples(), (Samples{200}));

    EXPECT_TRUE(mono->ConvertedTo(0, 2).Samples().empty());
    EXPECT_TRUE(mono->ConvertedTo(44100, 3).Samples().empty());
}

TEST(WaveClip, SquareToneHasThePitchAndLengthAsked) {
    const WaveClip tone = WaveClip::SquareTone(1000, 100, 8000);
    EXPECT_EQ(tone.Frames(), 800);
    EXPECT_EQ(tone.DurationMs(), 100);
    const Samples& s = tone.Samples();
    // Four samples up, four down: 1000 periods a second at 8000 samples.
    for (int i = 0; i < 800; ++i) ASSERT_EQ(s[i] > 0, i % 8 < 4) << i;
    int crossings = 0;
    for (int i = 1; i < 800; ++i) crossings += (s[i] > 0) != (s[i - 1] > 0);
    EXPECT_EQ(crossings, 199);

    // No pitch, or one above what the rate carries: silence of the same length.
    for (const WaveClip& quiet : {WaveClip::SquareTone(0, 50, 8000), WaveClip::SquareTone(5000, 50, 8000)}) {
        EXPECT_EQ(quiet.Frames(), 400);
        EXPECT_EQ(std::count(quiet.Samples().begin(), quiet.Samples().end(), 0), 400);
    }
    EXPECT_EQ(WaveClip::SquareTone(440, -5, 8000).Frames(), 0);
}
