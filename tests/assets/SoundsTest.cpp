// The wave effects: mono, taken in by the game's own reader, no clipping, starting at
// once and ending in silence.
#include "AssetFiles.h"
#include "audio/WaveClip.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <map>
#include <optional>
#include <vector>

using namespace assets_test;

namespace {

// The effect as the game's own reader takes it in; nothing where it refuses the file.
std::optional<tolva::WaveClip> ReadEffect(int n)
{
    return tolva::WaveClip::Parse(ReadAll(GamePath(QStringLiteral("data/%1.wav").arg(n))).toStdString());
}

const int Numbers[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 15};

} // namespace

TEST(Sounds, EveryEffectIsCleanMonoPcmAndFitsItsEvent)
{
    std::map<int, double> seconds;
    std::map<int, std::vector<int16_t>> data;
    for (int n : Numbers) {
        SCOPED_TRACE("data/" + std::to_string(n) + ".wav");
        const auto clip = ReadEffect(n);
        ASSERT_TRUE(clip) << "the game's reader refuses it";
        const tolva::WaveClip& w = *clip;
        EXPECT_EQ(w.Channels(), 1);
        ASSERT_EQ(w.SampleRate(), 44100);
        const std::vector<int16_t>& samples = w.Samples();
        ASSERT_FALSE(samples.empty());
        int peak = 0;
        double sum = 0;
        for (int16_t s : samples) {
            peak = std::max(peak, std::abs(static_cast<int>(s)));
            sum += s;
        }
        EXPECT_LT(peak, 31500) << "too close to full scale";
        EXPECT_GT(peak, 12000) << "too quiet";
        EXPECT_LT(std::abs(sum / samples.size()), 300.0) << "off-centre";
        // Starts at once, ends in at least 25 ms of true silence.
        size_t first = 0;
        while (first < samples.size() && std::abs(samples[first]) < 200) {
            ++first;
        }
        EXPECT_LT(first, static_cast<size_t>(w.SampleRate() / 100));
        const size_t tail = static_cast<size_t>(w.SampleRate() / 40);
        for (size_t i = samples.size() - tail; i < samples.size(); ++i) {
            ASSERT_EQ(samples[i], 0) << "sample " << i << " of the padding";
        }
        EXPECT_LT(w.DurationMs(), 2500);
        seconds[n] = w.Frames() / static_cast<double>(w.SampleRate());
        data[n] = samples;
    }
    // The count ticks every 130 ms and the goodbye is waited for: both are short.
    EXPECT_LT(seconds[5], 0.2);
    EXPECT_LT(seconds[4], 1.6);
    EXPECT_LT(seconds[8], 0.4);
    // The grand fanfare is the longest of the four.
    for (int n : {11, 12, 13}) {
        EXPECT_GT(seconds[10], seconds[n]);
    }
    // No two effects are the same sound.
    for (auto a = data.begin(); a != data.end(); ++a) {
        for (auto b = std::next(a); b != data.end(); ++b) {
            EXPECT_NE(a->second, b->second) << a->first << " and " << b->first;
        }
    }
}
