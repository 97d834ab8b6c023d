#include "audio/WaveClip.h"

#include "support/ZenkorModule.h"

#include <algorithm>
#include <cmath>

namespace tolva {

namespace {

constexpr std::uint16_t FormatPcm = 1;
constexpr std::uint16_t FormatExtensible = 0xFFFE;
// The rates sound devices play, from the lowest of old sound cards to the highest of
// today's; a wave outside them is a damaged file, not a sound to convert (one at 1 Hz
// would hold the game for minutes while its few bytes play).
constexpr int MinSampleRate = 4000;
constexpr int MaxSampleRate = 192000;
// A wave effect of the game lasts seconds; a file claiming more is not one of ours.
constexpr std::size_t MaxFileBytes = 64u << 20;

std::uint32_t Le(const std::string& bytes, std::size_t at, int width) {
    std::uint32_t value = 0;
    for (int i = width - 1; i >= 0; --i) value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
    return value;
}

struct Format {
    std::uint16_t tag = 0;
    int channels = 0;
    int sampleRate = 0;
    int bits = 0;
};

std::optional<Format> ReadFormat(const std::string& bytes, std::size_t at, std::size_t size) {
    if (size < 16) return std::nullopt;
    Format format;
    format.tag = static_cast<std::uint16_t>(Le(bytes, at, 2));
    format.channels = static_cast<int>(Le(bytes, at + 2, 2));
    const std::uint32_t rate = Le(bytes, at + 4, 4);
    const std::uint32_t blockAlign = Le(bytes, at + 12, 2);
    format.bits = static_cast<int>(Le(bytes, at + 14, 2));
    // The extensible header names its real format in the first two bytes of its GUID.
    if (format.tag == FormatExtensible && size >= 26) format.tag = static_cast<std::uint16_t>(Le(bytes, at + 24, 2));
    if (format.tag != FormatPcm) return std::nullopt;
    if (format.channels < 1 || format.channels > 2) return std::nullopt;
    if (format.bits != 8 && format.bits != 16) return std::nullopt;
    if (rate < MinSampleRate || rate > MaxSampleRate) return std::nullopt;
    // A PCM frame is its samples side by side: any other block size is no PCM we know.
    if (blockAlign != static_cast<std::uint32_t>(format.channels * format.bits / 8)) return std::nullopt;
    format.sampleRate = static_cast<int>(rate);
    return format;
}

std::vector<std::int16_t> DecodeSamples(const std::string& bytes, std::size_t at, std::size_t size, const Format& format) {
    const std::size_t bytesPerFrame = static_cast<std::size_t>(format.channels * format.bits / 8);
    const std::size_t frames = size / bytesPerFrame;
    std::vector<std::int16_t> samples(frames * format.channels);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        if (format.bits == 8) {
            samples[i] = static_cast<std::int16_t>((static_cast<unsigned char>(bytes[at + i]) - 128) * 256);
        } else {
            samples[i] = static_cast<std::int16_t>(Le(bytes, at + 2 * i, 2));
        }
    }
    return samples;
}

} // namespace

std::optional<WaveClip> WaveClip::Parse(const std::string& bytes) {
    if (bytes.size() < 12 || bytes.compare(0, 4, "RIFF") != 0 || bytes.compare(8, 4, "WAVE") != 0) return std::nullopt;
    std::optional<Format> format;
    std::size_t at = 12;
    while (at + 8 <= bytes.size()) {
        const std::string id = bytes.substr(at, 4);
        const std::size_t declared = Le(bytes, at + 4, 4);
        const std::size_t body = at + 8;
        // A chunk running past the end of the file keeps what the file holds of it.
        const std::size_t size = std::min(declared, bytes.size() - body);
        if (id == "fmt ") {
            format = ReadFormat(bytes, body, size);
            if (!format) return std::nullopt;
        } else if (id == "data") {
            if (!format) return std::nullopt;
            return WaveClip(format->sampleRate, format->channels, DecodeSamples(bytes, body, size, *format));
        }
        if (declared > bytes.size() - body) break;
        at = body + declared + (declared & 1);   // chunks are padded to an even length
    }
    return std::nullopt;
}

std::optional<WaveClip> WaveClip::Load(const std::string& storedPath) {
    std::string bytes;
    if (!ReadWholeFile(storedPath, bytes, MaxFileBytes)) return std::nullopt;
    return Parse(bytes);
}

WaveClip WaveClip::SquareTone(std::int32_t frequency, std::int32_t milliseconds, int sampleRate) {
    const std::int64_t frames = std::max<std::int64_t>(0, static_cast<std::int64_t>(milliseconds) * sampleRate / 1000);
    std::vector<std::int16_t> samples(static_cast<std::size_t>(frames), 0);
    if (frequency > 0 && frequency <= sampleRate / 2) {
        constexpr std::int16_t level = 16384;
        for (std::int64_t i = 0; i < frames; ++i) {
            // The first half of every period high, the second low.
            const std::int64_t phase = (i * frequency * 2 / sampleRate) % 2;
            samples[static_cast<std::size_t>(i)] = phase == 0 ? level : static_cast<std::int16_t>(-level);
        }
    }
    return WaveClip(sampleRate, 1, std::move(samples));
}

WaveClip WaveClip::ConvertedTo(int sampleRate, int channels) const {
    if (sampleRate <= 0 || channels < 1 || channels > 2 || Frames() == 0) return WaveClip(sampleRate, channels, {});
    const std::int64_t frames = Frames();
    const std::int64_t outFrames = sampleRate_ == 0 ? 0 : (frames * sampleRate + sampleRate_ - 1) / sampleRate_;
    std::vector<std::int16_t> out(static_cast<std::size_t>(outFrames * channels));
    auto sampleAt = [&](std::int64_t frame, int channel) -> double {
        frame = std::min(frame, frames - 1);
        if (channels_ == 1) return samples_[static_cast<std::size_t>(frame)];
        if (channels == 1) return (samples_[2 * frame] + samples_[2 * frame + 1]) / 2.0;
        return samples_[static_cast<std::size_t>(2 * frame + channel)];
    };
    for (std::int64_t i = 0; i < outFrames; ++i) {
        const double source = static_cast<double>(i) * sampleRate_ / sampleRate;
        const auto left = static_cast<std::int64_t>(source);
        const double t = source - static_cast<double>(left);
        for (int c = 0; c < channels; ++c) {
            const double value = sampleAt(left, c) * (1.0 - t) + sampleAt(left + 1, c) * t;
            out[static_cast<std::size_t>(i * channels + c)] = static_cast<std::int16_t>(std::lround(value));
        }
    }
    return WaveClip(sampleRate, channels, std::move(out));
}

} // namespace tolva
