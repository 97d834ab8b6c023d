#pragma once
// A sound ready for an output device: interleaved signed 16-bit samples at a known rate.
//
// The game's effects are plain RIFF wave files, PCM, 8 or 16 bits, mono or stereo. They
// are read here rather than by the platform so that a damaged file is turned away by code
// that the tests can reach: a file that is not such a wave, that declares a format no
// sound device plays (a rate outside 4000 to 192000 Hz, no channels, a block size that is
// not its frame's), or that is cut short before its first sample, gives no clip at all;
// one cut short inside its samples plays what is there. The PC-speaker tone of the test mode is made here too, as a clip.
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tolva {

class WaveClip {
public:
    // The wave file's bytes as a clip, or nothing if they are no PCM wave we can play.
    static std::optional<WaveClip> Parse(const std::string& bytes);
    // The wave file at a stored path (game folder plus "data\8.wav").
    static std::optional<WaveClip> Load(const std::string& storedPath);
    // A square wave of `frequency` Hz lasting `milliseconds`, mono, at half full scale.
    // A frequency of 0 or less, or above half the rate, gives silence of that length.
    static WaveClip SquareTone(std::int32_t frequency, std::int32_t milliseconds, int sampleRate);

    int SampleRate() const { return sampleRate_; }
    int Channels() const { return channels_; }
    const std::vector<std::int16_t>& Samples() const { return samples_; }
    std::int64_t Frames() const { return channels_ == 0 ? 0 : static_cast<std::int64_t>(samples_.size()) / channels_; }
    std::int64_t DurationMs() const { return sampleRate_ == 0 ? 0 : Frames() * 1000 / sampleRate_; }

    // The clip at another rate (linear interpolation) and channel count (1 or 2): a mono
    // clip is doubled to both sides, a stereo one mixed down to their mean.
    WaveClip ConvertedTo(int sampleRate, int channels) const;

private:
    WaveClip(int sampleRate, int channels, std::vector<std::int16_t> samples)
        : sampleRate_(sampleRate), channels_(channels), samples_(std::move(samples)) {}

    int sampleRate_ = 0;
    int channels_ = 0;
    std::vector<std::int16_t> samples_;
};

} // namespace tolva
