// The wave effects: plain PCM, no clipping, starting at once and ending in silence.
#include "AssetFiles.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <map>
#include <vector>

using namespace assets_test;

namespace {

struct Wave {
    int format = 0;
    int channels = 0;
    int rate = 0;
    int bits = 0;
    std::vector<int16_t> samples;
};

// Walks the RIFF chunks; a file without a fmt and a data chunk gives rate 0.
Wave ReadWave(const QByteArray& b)
{
    Wave w;
    if (b.size() < 12 || !b.startsWith("RIFF") || b.mid(8, 4) != "WAVE") {
        return w;
    }
    int at = 12;
    while (at + 8 <= b.size()) {
        const QByteArray id = b.mid(at, 4);
        const int size = static_cast<int>(Le(b, at + 4, 4));
        if (size < 0 || at + 8 + size > b.size()) {
            return Wave{};
        }
        if (id == "fmt ") {
            w.format = static_cast<int>(Le(b, at + 8, 2));
            w.channels = static_cast<int>(Le(b, at + 10, 2));
            w.rate = static_cast<int>(Le(b, at + 12, 4));
            w.bits = static_cast<int>(Le(b, at + 22, 2));
        } else if (id == "data") {
            for (int i = 0; i + 1 < size; i += 2) {
                w.samples.push_back(static_cast<int16_t>(Le(b, at + 8 + i, 2)));
            }
        }
        at += 8 + size + (size & 1);
    }
    return w;
}

const int Numbers[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 15};

} // namespace

TEST(Sounds, EveryEffectIsCleanMonoPcm)
{
    for (int n : Numbers) {
        SCOPED_TRACE("data/" + std::to_string(n) + ".wav");
        const Wave w = ReadWave(ReadAll(GamePath(QStringLiteral("data/%1.wav").arg(n))));
        ASSERT_EQ(w.format, 1);
        EXPECT_EQ(w.channels, 1);
        EXPECT_EQ(w.bits, 16);
        ASSERT_EQ(w.rate, 44100);
        ASSERT_FALSE(w.samples.empty());
        int peak = 0;
        double sum = 0;
        for (int16_t s : w.samples) {
            peak = std::max(peak, std::abs(static_cast<int>(s)));
            sum += s;
        }
        EXPECT_LT(peak, 31500) << "too close to full scale";
        EXPECT_GT(peak, 12000) << "too quiet";
        EXPECT_LT(std::abs(sum / w.samples.size()), 300.0) << "off-centre";
        // Starts at once, ends in at least 25 ms of true silence.
        size_t first = 0;
        while (first < w.samples.size() && std::abs(w.samples[first]) < 200) {
            ++first;
        }
        EXPECT_LT(first, static_cast<size_t>(w.rate / 100));
        const size_t tail = static_cast<size_t>(w.rate / 40);
        for (size_t i = w.samples.size() - tail; i < w.samples.size(); ++i) {
            ASSERT_EQ(w.samples[i], 0) << "sample " << i << " of the padding";
        }
        const double seconds = w.samples.size() / static_cast<double>(w.rate);
        EXPECT_LT(seconds, 2.5);
    }
}

TEST(Sounds, EffectsFitTheirEvents)
{
    std::map<int, double> seconds;
    std::map<int, std::vector<int16_t>> data;
    for (int n : Numbers) {
        const Wave w = ReadWave(ReadAll(GamePath(QStringLiteral("data/%1.wav").arg(n))));
        ASSERT_GT(w.rate, 0) << n;
        seconds[n] = w.samples.size() / static_cast<double>(w.rate);
        data[n] = w.samples;
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
