#include "Synth.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr double TwoPi = 2 * std::numbers::pi;

// The polyBLEP correction that takes the step out of a naive saw or square.
double PolyBlep(double t, double dt)
{
    if (t < dt) {
        t /= dt;
        return t + t - t * t - 1.0;
    }
    if (t > 1.0 - dt) {
        t = (t - 1.0) / dt;
        return t * t + t + t + 1.0;
    }
    return 0.0;
}

} // namespace

Synth::Synth(int sampleRate, uint32_t seed) : rate_(sampleRate), noiseState_(seed ? seed : 1) {}

double Synth::NextNoise()
{
    noiseState_ ^= noiseState_ << 13;
    noiseState_ ^= noiseState_ >> 17;
    noiseState_ ^= noiseState_ << 5;
    return (noiseState_ & 0xFFFFFF) / double(0x800000) - 1.0;
}

void Synth::Ensure(size_t samples)
{
    if (buffer_.size() < samples) {
        buffer_.resize(samples, 0.0f);
    }
}

void Synth::Add(const Voice& v)
{
    const size_t first = static_cast<size_t>(v.start * rate_);
    const size_t count = static_cast<size_t>(v.length * rate_);
    Ensure(first + count);
    double phase = 0;
    double low = 0;
    const double endFreq = v.freqEnd > 0 ? v.freqEnd : v.freq;
    const double endCut = v.cutoffEnd > 0 ? v.cutoffEnd : v.cutoff;
    for (size_t i = 0; i < count; ++i) {
        const double t = i / double(rate_);
        const double u = count > 1 ? i / double(count - 1) : 0;
        double freq = v.freq * std::pow(endFreq / v.freq, u);
        if (v.vibrato > 0) {
            freq *= std::pow(2.0, v.vibrato * std::sin(TwoPi * v.vibratoRate * t) / 12.0);
        }
        const double dt = std::min(0.5, freq / rate_);
        double s = 0;
        switch (v.wave) {
        case Wave::Sine: s = std::sin(TwoPi * phase); break;
        case Wave::Triangle: s = 1.0 - 4.0 * std::abs(phase - 0.5); break;
        case Wave::Saw: s = 2.0 * phase - 1.0 - PolyBlep(phase, dt); break;
        case Wave::Square: {
            const double q = std::fmod(phase + 1.0 - v.pulse, 1.0);
            s = (phase < v.pulse ? 1.0 : -1.0) + PolyBlep(phase, dt) - PolyBlep(q, dt);
            break;
        }
        case Wave::Noise: s = NextNoise(); break;
        }
        phase += dt;
        phase -= std::floor(phase);
        if (v.cutoff > 0) {
            const double cut = v.cutoff * std::pow(endCut / v.cutoff, u);
            const double k = 1.0 - std::exp(-TwoPi * cut / rate_);
            low += k * (s - low);
            s = low;
        }
        double env = 1.0;
        if (t < v.attack) {
            env = t / v.attack;
        } else if (v.decay > 0) {
            env = std::exp(-v.decay * (t - v.attack));
        }
        const double left = v.length - t;
        if (left < v.release) {
            env *= std::max(0.0, left / v.release);
        }
        buffer_[first + i] += static_cast<float>(s * env * v.amp);
    }
}

void Synth::Bell(double start, double freq, double amp, double length, double brightness)
{
    const size_t first = static_cast<size_t>(start * rate_);
    const size_t count = static_cast<size_t>(length * rate_);
    Ensure(first + count);
    for (size_t i = 0; i < count; ++i) {
        const double t = i / double(rate_);
        const double env = std::min(1.0, t / 0.002) * std::exp(-t * 4.0 / length);
        const double index = brightness * std::exp(-t * 6.0 / length);
        const double mod = index * std::sin(TwoPi * freq * 3.5 * t);
        const double s = std::sin(TwoPi * freq * t + mod) * 0.8 + 0.2 * std::sin(TwoPi * freq * 2.0 * t) * env;
        const double tail = std::min(1.0, (length - t) / 0.02);
        buffer_[first + i] += static_cast<float>(s * env * amp * tail);
    }
}

void Synth::NoiseBurst(double start, double length, double amp, double lowFrom, double lowTo, double highPass,
                       double decay)
{
    const size_t first = static_cast<size_t>(start * rate_);
    const size_t count = static_cast<size_t>(length * rate_);
    Ensure(first + count);
    double low = 0;
    double slow = 0;
    for (size_t i = 0; i < count; ++i) {
        const double t = i / double(rate_);
        const double u = i / double(count);
        const double cut = lowFrom * std::pow(lowTo / lowFrom, u);
        const double k = 1.0 - std::exp(-TwoPi * cut / rate_);
        low += k * (NextNoise() - low);
        const double kh = 1.0 - std::exp(-TwoPi * highPass / rate_);
        slow += kh * (low - slow);
        const double s = highPass > 0 ? low - slow : low;
        const double env = std::min(1.0, t / 0.002) * std::exp(-decay * t) * std::min(1.0, (length - t) / 0.02);
        buffer_[first + i] += static_cast<float>(s * env * amp);
    }
}

void Synth::Echo(double delay, double feedback, double mix)
{
    const size_t d = static_cast<size_t>(delay * rate_);
    const size_t tail = static_cast<size_t>(d * std::log(0.01) / std::log(std::max(feedback, 0.01)));
    Ensure(buffer_.size() + tail);
    std::vector<float> wet(buffer_.size(), 0.0f);
    for (size_t i = d; i < buffer_.size(); ++i) {
        wet[i] = static_cast<float>((buffer_[i - d] + wet[i - d]) * feedback);
    }
    for (size_t i = 0; i < buffer_.size(); ++i) {
        buffer_[i] += static_cast<float>(wet[i] * mix);
    }
}

std::vector<int16_t> Synth::Finish(double peak, double silence)
{
    // Take out any offset (a narrow pulse wave has one), which would waste headroom and
    // thump when the sound starts and stops: a DC blocker at about 30 Hz.
    double previousIn = 0;
    double previousOut = 0;
    for (float& sample : buffer_) {
        const double out = sample - previousIn + 0.9957 * previousOut;
        previousIn = sample;
        previousOut = out;
        sample = static_cast<float>(out);
    }
    // Trim the silent tail an echo may have left, then normalise.
    size_t end = buffer_.size();
    while (end > 0 && std::abs(buffer_[end - 1]) < 1e-4f) {
        --end;
    }
    buffer_.resize(end);
    float top = 0;
    for (float s : buffer_) {
        top = std::max(top, std::abs(s));
    }
    const double gain = top > 0 ? peak / top : 0;
    const size_t fade = std::min(buffer_.size(), static_cast<size_t>(0.006 * rate_));
    std::vector<int16_t> out;
    out.reserve(buffer_.size() + static_cast<size_t>(silence * rate_));
    for (size_t i = 0; i < buffer_.size(); ++i) {
        double s = buffer_[i] * gain;
        const size_t fromEnd = buffer_.size() - i;
        if (fromEnd <= fade) {
            s *= (fromEnd - 1) / double(fade);
        }
        out.push_back(static_cast<int16_t>(std::lround(std::clamp(s, -1.0, 1.0) * 32767.0)));
    }
    out.resize(out.size() + static_cast<size_t>(silence * rate_), 0);
    return out;
}
