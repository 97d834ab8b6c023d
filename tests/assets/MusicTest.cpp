// The music module: a real four-channel ProTracker file that plays through libopenmpt
// for more than a minute, never falls silent, and never clips.
#include "AssetFiles.h"
#include "ModComposer.h"
#include "ModModule.h"

#include <gtest/gtest.h>
#include <libopenmpt/libopenmpt.hpp>

#include <cmath>
#include <sstream>
#include <stdexcept>
#include <string>

using namespace assets_test;

namespace {

std::string ModuleBytes()
{
    const QByteArray bytes = ReadAll(GamePath("data/0.mod"));
    return std::string(bytes.constData(), static_cast<size_t>(bytes.size()));
}

} // namespace

TEST(Music, FileHasTheProTrackerLayout)
{
    const std::string mod = ModuleBytes();
    ASSERT_GT(mod.size(), 1084u);
    EXPECT_EQ(mod.substr(1080, 4), "M.K.");
    const auto u8 = [&](size_t at) { return static_cast<unsigned>(static_cast<unsigned char>(mod[at])); };
    const auto be16 = [&](size_t at) { return u8(at) * 256 + u8(at + 1); };
    const unsigned songLength = u8(950);
    ASSERT_GE(songLength, 1u);
    unsigned highest = 0;
    for (unsigned i = 0; i < songLength; ++i) {
        highest = std::max(highest, u8(952 + i));
    }
    size_t sampleBytes = 0;
    for (int s = 0; s < 31; ++s) {
        const size_t header = 20 + s * 30;
        const unsigned length = be16(header + 22) * 2;
        const unsigned loopStart = be16(header + 26) * 2;
        const unsigned loopLength = be16(header + 28) * 2;
        EXPECT_LE(u8(header + 25), 64u) << "volume of sample " << s + 1;
        if (loopLength > 2) {
            EXPECT_LE(loopStart + loopLength, length) << "loop of sample " << s + 1;
        }
        sampleBytes += length;
    }
    EXPECT_EQ(mod.size(), 1084 + (highest + 1) * 1024 + sampleBytes);
}

TEST(Music, PlaysForOverAMinuteThroughLibopenmpt)
{
    const std::string bytes = ModuleBytes();
    std::istringstream in(bytes);
    openmpt::module module(in);
    EXPECT_EQ(module.get_num_channels(), 4);
    EXPECT_GE(module.get_num_samples(), 6);
    const double duration = module.get_duration_seconds();
    EXPECT_GE(duration, 60.0);
    EXPECT_LT(duration, 600.0);

    // Render the whole first pass; every ten seconds must carry sound, and none may clip.
    const int rate = 44100;
    std::vector<float> buffer(static_cast<size_t>(rate) * 2);
    double windowEnergy = 0;
    size_t windowFrames = 0;
    size_t total = 0;
    float peak = 0;
    int quietWindows = 0;
    for (;;) {
        const size_t frames = module.read_interleaved_stereo(rate, static_cast<size_t>(rate) / 10, buffer.data());
        if (frames == 0) {
            break;
        }
        for (size_t i = 0; i < frames * 2; ++i) {
            ASSERT_TRUE(std::isfinite(buffer[i]));
            peak = std::max(peak, std::abs(buffer[i]));
            windowEnergy += buffer[i] * buffer[i];
        }
        windowFrames += frames;
        total += frames;
        if (windowFrames >= static_cast<size_t>(rate) * 10) {
            quietWindows += std::sqrt(windowEnergy / (windowFrames * 2)) < 0.02;
            windowEnergy = 0;
            windowFrames = 0;
        }
    }
    EXPECT_GE(total / static_cast<double>(rate), 60.0);
    EXPECT_EQ(quietWindows, 0);
    EXPECT_GT(peak, 0.1f);
    EXPECT_LT(peak, 1.0f);
}

TEST(Music, EncoderRejectsWhatDoesNotFitAndKeepsWhatDoes)
{
    ModModule module;
    module.title = "check";
    ModSample sample;
    sample.name = "square";
    for (int i = 0; i < 64; ++i) {
        sample.data.push_back(static_cast<int8_t>(i % 16 < 8 ? 100 : -100));
    }
    sample.loopStart = 0;
    sample.loopLength = 64;
    module.samples.push_back(sample);
    ModModule::Pattern pattern{};
    pattern[0].period = ModModule::Period(12);
    pattern[0].sample = 1;
    module.patterns.push_back(pattern);
    module.order = {0};

    const std::vector<uint8_t> bytes = module.Encode();
    ASSERT_EQ(bytes.size(), 1084u + 1024u + 64u);
    EXPECT_EQ(bytes[1084], 0x01);        // period 428 = 0x1AC, high nibble
    EXPECT_EQ(bytes[1085], 0xAC);
    EXPECT_EQ(bytes[1086], 0x10);        // sample 1, no effect
    std::istringstream in(std::string(bytes.begin(), bytes.end()));
    openmpt::module loaded(in);
    EXPECT_EQ(loaded.get_sample_names().at(0), "square");

    ModModule odd = module;
    odd.samples[0].data.push_back(0);
    EXPECT_THROW(odd.Encode(), std::invalid_argument);
    ModModule badOrder = module;
    badOrder.order = {1};
    EXPECT_THROW(badOrder.Encode(), std::invalid_argument);
    EXPECT_THROW(ModModule::Period(36), std::invalid_argument);
}

TEST(Music, NoteNamesOfTheScore)
{
    EXPECT_EQ(ModComposer::ParseNote("A4"), 69);
    EXPECT_EQ(ModComposer::ParseNote("Bb4"), 70);
    EXPECT_EQ(ModComposer::ParseNote("C#5"), 73);
    EXPECT_EQ(ModComposer::ParseNote("C6"), 84);
    for (const char* bad : {"", "H4", "A", "Bb", "A44", "-", "."}) {
        EXPECT_EQ(ModComposer::ParseNote(bad), -1) << bad;
    }
    // Every section has four chords and, if it has a melody, four bars of it; the whole
    // score composes without a note outside the instruments' range.
    for (const ModComposer::Section& s : ModComposer::Sections()) {
        EXPECT_EQ(s.chords.size(), 4u);
        EXPECT_TRUE(s.melody.empty() || s.melody.size() == 4u);
    }
    EXPECT_NO_THROW(ModComposer::Compose().Encode());
}
