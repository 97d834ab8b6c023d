#include "ModInstruments.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

namespace {

constexpr double TwoPi = 2 * std::numbers::pi;

double Midi(int note)
{
    return 440.0 * std::pow(2.0, (note - 69) / 12.0);
}

// Additive tone: harmonics with fixed relative levels under an envelope that is constant
// from `steadyAt` on, so that everything after it repeats exactly every period.
std::vector<double> Additive(double freq, const std::vector<double>& harmonics, int samples, double rate,
                             double attack, double decayTo, double decayTime, double steadyAt)
{
    std::vector<double> out(static_cast<size_t>(samples));
    for (int i = 0; i < samples; ++i) {
        const double t = i / rate;
        double env = t < attack ? t / attack : 1.0;
        if (t >= attack && t < steadyAt) {
            const double u = (t - attack) / decayTime;
            env = decayTo + (1.0 - decayTo) * std::exp(-u * 3.0);
        } else if (t >= steadyAt) {
            env = decayTo + (1.0 - decayTo) * std::exp(-(steadyAt - attack) / decayTime * 3.0);
        }
        double s = 0;
        for (size_t h = 0; h < harmonics.size(); ++h) {
            if (freq * (h + 1) < rate / 2) {
                s += harmonics[h] * std::sin(TwoPi * freq * (h + 1) * t);
            }
        }
        out[static_cast<size_t>(i)] = s * env;
    }
    return out;
}

// The loop length, even, holding a whole number of periods of `freq` as near as can be,
// and the frequency that fits it exactly.
std::pair<int, double> FitLoop(double freq, double rate, int minimum)
{
    int bestLength = 0;
    double bestError = 1e9;
    for (int cycles = 1; cycles < 400; ++cycles) {
        const double exact = cycles * rate / freq;
        const int length = static_cast<int>(std::lround(exact / 2.0)) * 2;
        if (length < minimum) {
            continue;
        }
        const double cents = std::abs(1200 * std::log2(exact / length));
        if (cents < bestError - 1e-9) {
            bestError = cents;
            bestLength = length;
            if (cents < 0.5) {
                break;
            }
        }
    }
    const double cycles = std::round(bestLength * freq / rate);
    return {bestLength, cycles * rate / bestLength};
}

// Simple seeded noise for the drums.
struct Noise {
    uint32_t state;
    double Next()
    {
        state ^= state << 13;
        state ^= state >> 17;
        state ^= state << 5;
        return (state & 0xFFFFFF) / double(0x800000) - 1.0;
    }
};

ModSample Sustained(const std::string& name, int base, const std::vector<double>& harmonics, double attack,
                    double decayTo, double decayTime, int volume)
{
    const double rate = ModInstruments::BaseRate;
    const auto [loop, freq] = FitLoop(Midi(base), rate, 128);
    const int steadyAt = static_cast<int>(std::ceil((attack + decayTime) * rate / 2.0)) * 2;
    const int total = steadyAt + loop;
    ModSample s;
    s.name = name;
    std::vector<double> wave = Additive(freq, harmonics, total, rate, attack, decayTo, decayTime, steadyAt / rate);
    wave[0] = wave[1] = 0;
    s.volume = volume;
    s.loopStart = steadyAt;
    s.loopLength = loop;
    double peak = 0;
    for (double v : wave) {
        peak = std::max(peak, std::abs(v));
    }
    s.data.reserve(wave.size());
    for (double v : wave) {
        s.data.push_back(static_cast<int8_t>(std::lround(v / peak * 120)));
    }
    return s;
}

} // namespace

std::vector<int8_t> ModInstruments::Quantize(const std::vector<double>& wave, double peak)
{
    double top = 0;
    for (double v : wave) {
        top = std::max(top, std::abs(v));
    }
    std::vector<int8_t> out;
    out.reserve(wave.size() + 3);
    out.push_back(0);
    out.push_back(0);
    for (double v : wave) {
        out.push_back(static_cast<int8_t>(std::clamp(std::lround(v / top * peak), -127L, 127L)));
    }
    if (out.size() % 2 != 0) {
        out.push_back(0);
    }
    return out;
}

ModSample ModInstruments::Bass()
{
    // Round electric bass: strong fundamental, a little growl, plucked then steady.
    return Sustained("tolva bass", BassBase, {1.0, 0.55, 0.3, 0.18, 0.1, 0.05}, 0.006, 0.55, 0.25, 52);
}

ModSample ModInstruments::Lead()
{
    // A soft, hollow flute-like lead: odd harmonics, gently falling.
    return Sustained("tolva lead", LeadBase, {1.0, 0.12, 0.28, 0.05, 0.1}, 0.02, 0.7, 0.3, 38);
}

ModSample ModInstruments::Pad()
{
    // Two saws a few cents apart make a slow chorus; the loop holds whole periods of both.
    const double rate = BaseRate;
    const int loop = 3800;
    const double f1 = std::round(Midi(PadBase) * loop / rate) * rate / loop;
    const double f2 = (std::round(Midi(PadBase) * loop / rate) + 1) * rate / loop;
    const int attackSamples = 4000;
    std::vector<double> wave(static_cast<size_t>(attackSamples + loop));
    for (size_t i = 0; i < wave.size(); ++i) {
        const double t = i / rate;
        double s = 0;
        for (int h = 1; h <= 8; ++h) {
            if (f2 * h < rate / 2) {
                const double level = 1.0 / h * (h == 1 ? 1.0 : 0.6);
                s += level * (std::sin(TwoPi * f1 * h * t) + std::sin(TwoPi * f2 * h * t));
            }
        }
        const double env = std::min(1.0, static_cast<double>(i) / attackSamples);
        wave[i] = s * env * env;
    }
    ModSample s;
    s.name = "tolva pad";
    s.data = Quantize(wave, 110);
    s.volume = 30;
    s.loopStart = attackSamples + 2;
    s.loopLength = loop;
    return s;
}

ModSample ModInstruments::Pluck()
{
    // A marimba-like pluck for the broken chords: fundamental and a bright fourth partial
    // that dies quickly. One-shot.
    const double rate = BaseRate;
    const double f = Midi(PluckBase);
    const int n = static_cast<int>(rate * 0.9);
    std::vector<double> wave(static_cast<size_t>(n));
    for (int i = 0; i < n; ++i) {
        const double t = i / rate;
        const double body = std::sin(TwoPi * f * t) * std::exp(-t * 5.0);
        const double bright = 0.5 * std::sin(TwoPi * f * 4 * t) * std::exp(-t * 22.0);
        const double second = 0.25 * std::sin(TwoPi * f * 2 * t) * std::exp(-t * 9.0);
        wave[static_cast<size_t>(i)] = (body + bright + second) * std::min(1.0, t / 0.002);
    }
    ModSample s;
    s.name = "tolva pluck";
    s.data = Quantize(wave, 120);
    s.volume = 44;
    return s;
}

ModSample ModInstruments::Bell()
{
    // A glassy FM bell for the counter-melodies.
    const double rate = BaseRate;
    const double f = Midi(BellBase);
    const int n = static_cast<int>(rate * 1.4);
    std::vector<double> wave(static_cast<size_t>(n));
    for (int i = 0; i < n; ++i) {
        const double t = i / rate;
        const double index = 1.6 * std::exp(-t * 4);
        wave[static_cast<size_t>(i)] =
            std::sin(TwoPi * f * t + index * std::sin(TwoPi * f * 2 * t)) * std::exp(-t * 3.2) *
            std::min(1.0, t / 0.002);
    }
    ModSample s;
    s.name = "tolva bell";
    s.data = Quantize(wave, 120);
    s.volume = 40;
    return s;
}

ModSample ModInstruments::Kick()
{
    const double rate = BaseRate * 2;
    const int n = static_cast<int>(rate * 0.3);
    std::vector<double> wave(static_cast<size_t>(n));
    double phase = 0;
    for (int i = 0; i < n; ++i) {
        const double t = i / rate;
        const double f = 45 + 110 * std::exp(-t * 30);
        phase += f / rate;
        wave[static_cast<size_t>(i)] = std::sin(TwoPi * phase) * std::exp(-t * 11) * std::min(1.0, t / 0.001);
    }
    ModSample s;
    s.name = "tolva kick";
    s.data = Quantize(wave, 126);
    s.volume = 60;
    return s;
}

ModSample ModInstruments::Snare()
{
    const double rate = BaseRate * 2;
    const int n = static_cast<int>(rate * 0.22);
    std::vector<double> wave(static_cast<size_t>(n));
    Noise noise{0x51A2E};
    double low = 0;
    for (int i = 0; i < n; ++i) {
        const double t = i / rate;
        const double x = noise.Next();
        low += 0.5 * (x - low);
        const double tone = std::sin(TwoPi * 190 * t) * std::exp(-t * 30);
        wave[static_cast<size_t>(i)] = (0.8 * (x - 0.5 * low) * std::exp(-t * 18) + 0.6 * tone);
    }
    ModSample s;
    s.name = "tolva snare";
    s.data = Quantize(wave, 110);
    s.volume = 44;
    return s;
}

ModSample ModInstruments::Hat()
{
    const double rate = BaseRate * 2;
    const int n = static_cast<int>(rate * 0.06);
    std::vector<double> wave(static_cast<size_t>(n));
    Noise noise{0xC0FFEE};
    double prev = 0;
    for (int i = 0; i < n; ++i) {
        const double t = i / rate;
        const double x = noise.Next();
        wave[static_cast<size_t>(i)] = (x - prev) * std::exp(-t * 70);
        prev = x;
    }
    ModSample s;
    s.name = "tolva hat";
    s.data = Quantize(wave, 90);
    s.volume = 26;
    return s;
}

ModSample ModInstruments::Shaker()
{
    const double rate = BaseRate * 2;
    const int n = static_cast<int>(rate * 0.16);
    std::vector<double> wave(static_cast<size_t>(n));
    Noise noise{0xBEE5};
    double prev = 0;
    for (int i = 0; i < n; ++i) {
        const double t = i / rate;
        const double x = noise.Next();
        const double env = std::min(1.0, t / 0.03) * std::exp(-t * 22);
        wave[static_cast<size_t>(i)] = (x - prev) * env;
        prev = x;
    }
    ModSample s;
    s.name = "tolva shaker";
    s.data = Quantize(wave, 80);
    s.volume = 22;
    return s;
}
