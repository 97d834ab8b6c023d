#include "SoundEffects.h"

#include "Synth.h"

#include <cmath>
#include <numbers>

namespace {

// Frequency of a MIDI note number (69 is A 440).
double Midi(int note)
{
    return 440.0 * std::pow(2.0, (note - 69) / 12.0);
}

// A soft brass voice: a saw and a square an octave apart through a closing low-pass.
void Brass(Synth& s, double start, double length, int note, double amp)
{
    Voice v;
    v.start = start;
    v.length = length;
    v.freq = Midi(note);
    v.amp = amp;
    v.wave = Wave::Saw;
    v.attack = 0.02;
    v.release = std::min(0.12, length * 0.4);
    v.cutoff = Midi(note) * 6;
    v.cutoffEnd = Midi(note) * 2.5;
    v.vibrato = length > 0.3 ? 0.12 : 0;
    v.vibratoRate = 5.2;
    s.Add(v);
    v.wave = Wave::Square;
    v.freq = Midi(note - 12);
    v.amp = amp * 0.35;
    v.cutoff = Midi(note) * 3;
    v.cutoffEnd = Midi(note) * 1.5;
    s.Add(v);
}

} // namespace

std::vector<int> SoundEffects::Numbers()
{
    return {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 15};
}

std::vector<int16_t> SoundEffects::Render(int number)
{
    switch (number) {
    case 1: return CheatOn();
    case 2: return MascotHop();
    case 3: return MascotWhistle();
    case 4: return Goodbye();
    case 5: return BonusTick();
    case 6: return Explosion();
    case 7: return Bomb();
    case 8: return Refused();
    case 9: return NewSpell();
    case 10: return Fanfare(0);
    case 11: return Fanfare(1);
    case 12: return Fanfare(2);
    case 13: return Fanfare(3);
    case 15: return Saw();
    default: return {};
    }
}

std::vector<int16_t> SoundEffects::CheatOn()
{
    // A quick, slightly mischievous rising run in square waves, ending on a sparkle.
    Synth s(SampleRate, 11);
    const int run[] = {60, 64, 67, 72, 76, 79, 84};
    for (int i = 0; i < 7; ++i) {
        Voice v{.start = i * 0.045, .length = 0.09, .freq = Midi(run[i]), .amp = 0.3, .wave = Wave::Square,
                .attack = 0.002, .release = 0.03, .decay = 12, .pulse = 0.25};
        s.Add(v);
    }
    s.Bell(0.32, Midi(96), 0.25, 0.3, 1.2);
    s.Echo(0.07, 0.3, 0.4);
    return s.Finish(0.8, TailSilence);
}

std::vector<int16_t> SoundEffects::MascotHop()
{
    // "Boing": a sine that springs up and wobbles.
    Synth s(SampleRate, 12);
    s.Add({.start = 0, .length = 0.28, .freq = 220, .freqEnd = 660, .amp = 0.6, .wave = Wave::Sine,
           .attack = 0.003, .release = 0.08, .decay = 6, .vibrato = 1.2, .vibratoRate = 18});
    s.Add({.start = 0, .length = 0.2, .freq = 440, .freqEnd = 1320, .amp = 0.15, .wave = Wave::Triangle,
           .attack = 0.003, .release = 0.06, .decay = 10});
    return s.Finish(0.7, TailSilence);
}

std::vector<int16_t> SoundEffects::MascotWhistle()
{
    // A cheerful two-note whistle, up then down: "hi-ho".
    Synth s(SampleRate, 13);
    s.Add({.start = 0, .length = 0.16, .freq = 1100, .freqEnd = 1480, .amp = 0.45, .wave = Wave::Sine,
           .attack = 0.02, .release = 0.05, .vibrato = 0.3, .vibratoRate = 9});
    s.Add({.start = 0.18, .length = 0.22, .freq = 1320, .freqEnd = 990, .amp = 0.45, .wave = Wave::Sine,
           .attack = 0.02, .release = 0.08, .vibrato = 0.3, .vibratoRate = 9});
    s.Add({.start = 0, .length = 0.4, .freq = 2400, .amp = 0.02, .wave = Wave::Noise, .attack = 0.02,
           .release = 0.1, .cutoff = 3000});
    return s.Finish(0.65, TailSilence);
}

std::vector<int16_t> SoundEffects::Goodbye()
{
    // A gentle falling chime, G E C, and a low C under the last note: see you.
    Synth s(SampleRate, 14);
    const int notes[] = {79, 76, 72};
    for (int i = 0; i < 3; ++i) {
        s.Bell(i * 0.18, Midi(notes[i]), 0.4, i == 2 ? 0.75 : 0.45, 1.6);
    }
    s.Add({.start = 0.36, .length = 0.7, .freq = Midi(48), .amp = 0.3, .wave = Wave::Triangle, .attack = 0.01,
           .release = 0.3, .decay = 2.5});
    s.Echo(0.1, 0.2, 0.25);
    return s.Finish(0.8, TailSilence);
}

std::vector<int16_t> SoundEffects::BonusTick()
{
    // A coin-like double blip, over before the next tick of the count.
    Synth s(SampleRate, 15);
    s.Add({.start = 0, .length = 0.035, .freq = Midi(88), .amp = 0.35, .wave = Wave::Square, .attack = 0.001,
           .release = 0.01, .pulse = 0.5});
    s.Add({.start = 0.035, .length = 0.07, .freq = Midi(93), .amp = 0.35, .wave = Wave::Square, .attack = 0.001,
           .release = 0.04, .decay = 25, .pulse = 0.5});
    return s.Finish(0.55, 0.03);
}

std::vector<int16_t> SoundEffects::Explosion()
{
    // A short, punchy burst: a thump under noise that darkens as it dies.
    Synth s(SampleRate, 16);
    s.NoiseBurst(0, 0.42, 0.9, 6000, 300, 0, 9);
    s.Add({.start = 0, .length = 0.3, .freq = 110, .freqEnd = 38, .amp = 0.9, .wave = Wave::Sine,
           .attack = 0.001, .release = 0.08, .decay = 9});
    return s.Finish(0.85, TailSilence);
}

std::vector<int16_t> SoundEffects::Bomb()
{
    // The fuse fizzes while the strip shows it burning down, then the bomb goes off.
    Synth s(SampleRate, 17);
    s.NoiseBurst(0, 1.0, 0.25, 9000, 7000, 2500, 0.4);
    for (int i = 0; i < 14; ++i) {
        s.NoiseBurst(0.05 + i * 0.07, 0.02, 0.35, 8000, 4000, 1500, 60);
    }
    s.NoiseBurst(1.0, 0.9, 1.0, 5000, 150, 0, 4.5);
    s.Add({.start = 1.0, .length = 0.8, .freq = 80, .freqEnd = 28, .amp = 1.1, .wave = Wave::Sine,
           .attack = 0.002, .release = 0.2, .decay = 4});
    return s.Finish(0.88, TailSilence);
}

std::vector<int16_t> SoundEffects::Refused()
{
    // A soft wooden "bonk-bonk", low and falling: no, not there / look here.
    Synth s(SampleRate, 18);
    s.Add({.start = 0, .length = 0.07, .freq = Midi(64), .amp = 0.5, .wave = Wave::Triangle, .attack = 0.002,
           .release = 0.03, .decay = 20});
    s.Add({.start = 0.075, .length = 0.1, .freq = Midi(59), .amp = 0.5, .wave = Wave::Triangle, .attack = 0.002,
           .release = 0.05, .decay = 18});
    s.NoiseBurst(0, 0.02, 0.12, 3000, 1500, 400, 80);
    return s.Finish(0.6, TailSilence);
}

std::vector<int16_t> SoundEffects::NewSpell()
{
    // A magic shimmer: a rising bell arpeggio in E major over a soft glissando.
    Synth s(SampleRate, 19);
    const int notes[] = {76, 80, 83, 88, 92};
    for (int i = 0; i < 5; ++i) {
        s.Bell(i * 0.06, Midi(notes[i]), 0.28, 0.45, 1.4);
    }
    s.Add({.start = 0, .length = 0.4, .freq = Midi(64), .freqEnd = Midi(88), .amp = 0.12, .wave = Wave::Triangle,
           .attack = 0.05, .release = 0.2});
    s.Echo(0.09, 0.35, 0.35);
    return s.Finish(0.75, TailSilence);
}

std::vector<int16_t> SoundEffects::Fanfare(int variant)
{
    // Brass fanfares: the grand one (0) climbs to a held chord; the three level fanfares
    // are shorter figures in neighbouring keys, so that they differ but belong together.
    Synth s(SampleRate, 20 + static_cast<uint32_t>(variant));
    struct Step {
        double at;
        double length;
        int note;
    };
    std::vector<Step> steps;
    int root = 60;
    switch (variant) {
    case 0:
        steps = {{0, 0.12, 67}, {0.12, 0.12, 67}, {0.24, 0.12, 67}, {0.36, 0.3, 72}, {0.66, 0.14, 67},
                 {0.8, 0.8, 76}, {0.8, 0.8, 72}, {0.8, 0.8, 79}};
        root = 48;
        break;
    case 1:
        steps = {{0, 0.1, 67}, {0.1, 0.1, 72}, {0.2, 0.1, 76}, {0.3, 0.55, 79}, {0.3, 0.55, 76}};
        root = 48;
        break;
    case 2:
        steps = {{0, 0.14, 69}, {0.14, 0.1, 69}, {0.24, 0.1, 72}, {0.34, 0.55, 77}, {0.34, 0.55, 72}};
        root = 53;
        break;
    default:
        steps = {{0, 0.1, 74}, {0.1, 0.1, 71}, {0.2, 0.1, 74}, {0.3, 0.55, 79}, {0.3, 0.55, 74}};
        root = 55;
        break;
    }
    double end = 0;
    for (const Step& st : steps) {
        Brass(s, st.at, st.length, st.note, 0.3);
        end = std::max(end, st.at + st.length);
    }
    const double chordAt = steps.back().at;
    s.Add({.start = chordAt, .length = end - chordAt, .freq = Midi(root), .amp = 0.35, .wave = Wave::Triangle,
           .attack = 0.01, .release = 0.15, .decay = 1.5});
    s.NoiseBurst(chordAt, 0.5, 0.12, 9000, 6000, 4000, 6);
    s.Echo(0.11, 0.25, 0.3);
    return s.Finish(0.82, TailSilence);
}

std::vector<int16_t> SoundEffects::Saw()
{
    // A buzz saw spinning up: a growling saw wave chopped by the teeth, a rising whine,
    // and sawdust noise, fading as the saw runs off.
    Synth s(SampleRate, 21);
    s.Add({.start = 0, .length = 1.3, .freq = 90, .freqEnd = 150, .amp = 0.45, .wave = Wave::Saw, .attack = 0.03,
           .release = 0.5, .vibrato = 0.6, .vibratoRate = 38, .cutoff = 1800, .cutoffEnd = 900});
    s.Add({.start = 0, .length = 1.3, .freq = 1400, .freqEnd = 2600, .amp = 0.12, .wave = Wave::Square,
           .attack = 0.15, .release = 0.6, .vibrato = 0.3, .vibratoRate = 30, .pulse = 0.3, .cutoff = 5000});
    s.NoiseBurst(0, 1.3, 0.25, 7000, 4000, 1200, 1.2);
    // The teeth: an amplitude flutter at 40 Hz over the whole sound.
    auto& b = s.Buffer();
    for (size_t i = 0; i < b.size(); ++i) {
        const double t = i / double(SampleRate);
        b[i] *= static_cast<float>(0.75 + 0.25 * std::sin(2 * std::numbers::pi * 40 * t));
    }
    return s.Finish(0.8, TailSilence);
}
