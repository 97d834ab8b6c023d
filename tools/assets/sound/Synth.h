#pragma once
// A small additive synthesizer for the wave effects and the tracker instruments. Voices
// are mixed into a float buffer; oscillators are band-limited (polyBLEP) so that bright
// tones do not alias into grit. Everything is deterministic: noise comes from a seeded
// generator, so a build always writes the same bytes.
#include <cstddef>
#include <cstdint>
#include <vector>

enum class Wave { Sine, Triangle, Square, Saw, Noise };

struct Voice {
    double start = 0;       // seconds
    double length = 0.1;    // seconds, release included
    double freq = 440;      // Hz at the start
    double freqEnd = 0;     // Hz at the end (exponential glide); 0 keeps freq
    double amp = 0.5;
    Wave wave = Wave::Sine;
    double attack = 0.004;  // seconds
    double release = 0.03;  // seconds
    double decay = 0;       // exponential decay per second after the attack
    double vibrato = 0;     // depth in semitones
    double vibratoRate = 5.5;
    double pulse = 0.5;     // duty cycle of the square
    double cutoff = 0;      // low-pass cutoff in Hz at the start; 0 leaves the tone open
    double cutoffEnd = 0;   // cutoff at the end; 0 keeps cutoff
    double pan = 0;         // unused for mono, kept so voices read alike everywhere
};

class Synth {
public:
    explicit Synth(int sampleRate = 44100, uint32_t seed = 1);

    void Add(const Voice& v);
    // A struck bell or chime: two-operator FM with a long, bright decay.
    void Bell(double start, double freq, double amp, double length, double brightness = 2.0);
    // Noise through a sweeping low-pass and high-pass, with its own decay.
    void NoiseBurst(double start, double length, double amp, double lowFrom, double lowTo, double highPass,
                    double decay);
    // A feedback echo over the whole buffer.
    void Echo(double delay, double feedback, double mix);

    // Scales the buffer so that its peak is `peak` (below 1: never clips), fades the last
    // milliseconds to nothing and appends `silence` seconds of silence.
    std::vector<int16_t> Finish(double peak, double silence);

    std::vector<float>& Buffer() { return buffer_; }
    int SampleRate() const { return rate_; }

private:
    double NextNoise();
    void Ensure(size_t samples);

    int rate_;
    uint32_t noiseState_;
    std::vector<float> buffer_;
};
