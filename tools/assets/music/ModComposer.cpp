#include "ModComposer.h"

#include "ModInstruments.h"

#include <array>
#include <sstream>
#include <stdexcept>

namespace {

enum SampleNumber { Bass = 1, Pluck, Lead, Bell, Pad, Kick, Snare, Hat, Shaker };

struct Triad {
    int root;   // MIDI, octave 4 (60-71)
    int third;  // semitones above the root
};

Triad ChordOf(const std::string& name)
{
    static const std::array<std::pair<const char*, Triad>, 6> chords = {{{"F", {65, 4}}, {"Dm", {62, 3}},
                                                                         {"Bb", {70, 4}}, {"C", {60, 4}},
                                                                         {"Am", {69, 3}}, {"Gm", {67, 3}}}};
    for (const auto& [n, t] : chords) {
        if (name == n) {
            return t;
        }
    }
    throw std::invalid_argument("unknown chord " + name);
}

// Tracker note index (0 = C-1) of a MIDI note on an instrument whose C-2 sounds `base`.
int Index(int midi, int base)
{
    return midi - base + 12;
}

void Put(ModModule::Pattern& p, int row, int channel, int midi, int base, int sample, int effect = 0, int param = 0)
{
    ModCell& c = p[static_cast<size_t>(row * ModModule::Channels + channel)];
    if (midi >= 0) {
        c.period = ModModule::Period(Index(midi, base));
        c.sample = sample;
    }
    if (effect != 0 || param != 0) {
        c.effect = effect;
        c.param = param;
    }
}

void Hit(ModModule::Pattern& p, int row, int sample, int volume)
{
    // Drums are recorded at twice the rate, so they sound right at C-3.
    ModCell& c = p[static_cast<size_t>(row * ModModule::Channels + 1)];
    c.period = ModModule::Period(24);
    c.sample = sample;
    c.effect = 0xC;
    c.param = volume;
}

void DrumBar(ModModule::Pattern& p, int bar, ModComposer::Drums kind, bool fill)
{
    const int r = bar * 16;
    switch (kind) {
    case ModComposer::Drums::None:
        break;
    case ModComposer::Drums::Light:
        Hit(p, r, Kick, 44);
        for (int row : {2, 6, 10, 14}) {
            Hit(p, r + row, Hat, row % 4 == 2 ? 30 : 22);
        }
        Hit(p, r + 8, Shaker, 26);
        break;
    case ModComposer::Drums::Full:
        Hit(p, r, Kick, 60);
        Hit(p, r + 2, Hat, 24);
        Hit(p, r + 4, Snare, 46);
        Hit(p, r + 6, Hat, 30);
        Hit(p, r + 8, Kick, 52);
        Hit(p, r + 10, Kick, 40);
        Hit(p, r + 12, Snare, 46);
        Hit(p, r + 14, Hat, 28);
        Hit(p, r + 15, Hat, 16);
        break;
    case ModComposer::Drums::Half:
        Hit(p, r, Kick, 54);
        Hit(p, r + 4, Shaker, 22);
        Hit(p, r + 8, Snare, 40);
        Hit(p, r + 12, Shaker, 22);
        Hit(p, r + 14, Hat, 20);
        break;
    }
    if (fill && kind != ModComposer::Drums::None) {
        for (int i = 0; i < 4; ++i) {
            Hit(p, r + 12 + i, Snare, 22 + i * 8);
        }
    }
}

void BassBar(ModModule::Pattern& p, int bar, const Triad& chord, const Triad& next, bool walking)
{
    const int r = bar * 16;
    const int root = chord.root - 24 >= 43 ? chord.root - 36 : chord.root - 24; // F2 .. E3
    const int fifth = root + 7;
    if (!walking) {
        Put(p, r, 0, root, ModInstruments::BassBase, Bass);
        Put(p, r + 8, 0, fifth - 12 >= 28 ? fifth - 12 : fifth, ModInstruments::BassBase, Bass, 0xC, 36);
        return;
    }
    const int nextRoot = next.root - 24 >= 43 ? next.root - 36 : next.root - 24;
    Put(p, r, 0, root, ModInstruments::BassBase, Bass);
    Put(p, r + 6, 0, root, ModInstruments::BassBase, Bass, 0xC, 34);
    Put(p, r + 8, 0, root + 12, ModInstruments::BassBase, Bass, 0xC, 40);
    Put(p, r + 10, 0, fifth, ModInstruments::BassBase, Bass, 0xC, 34);
    // Lead into the next chord from a step above or below.
    const int approach = nextRoot > root ? nextRoot - 2 : nextRoot + 2;
    Put(p, r + 14, 0, approach == root ? fifth : approach, ModInstruments::BassBase, Bass, 0xC, 38);
}

void ChordBar(ModModule::Pattern& p, int bar, const Triad& chord, bool pad, int variant)
{
    const int r = bar * 16;
    if (pad) {
        Put(p, r, 2, chord.root, ModInstruments::PadBase, Pad);
        Put(p, r + 8, 2, chord.root + 7 > 71 ? chord.root - 5 : chord.root + 7, ModInstruments::PadBase, Pad, 0xC, 22);
        return;
    }
    const int tones[4] = {chord.root, chord.root + chord.third, chord.root + 7, chord.root + 12};
    static const int shapes[2][8] = {{0, 1, 2, 3, 2, 1, 2, 1}, {0, 2, 3, 2, 1, 2, 3, 2}};
    static const int volumes[8] = {40, 24, 32, 26, 34, 24, 30, 26};
    for (int i = 0; i < 8; ++i) {
        int note = tones[shapes[variant][i]];
        if (note > 76) {
            note -= 12;
        }
        Put(p, r + i * 2, 2, note, ModInstruments::PluckBase, Pluck, 0xC, volumes[i]);
    }
}

void MelodyBar(ModModule::Pattern& p, int bar, const std::string& tokens, ModComposer::Top top, int& heldFor)
{
    std::istringstream in(tokens);
    std::string token;
    const int base = top == ModComposer::Top::Bell ? ModInstruments::BellBase : ModInstruments::LeadBase;
    const int sample = top == ModComposer::Top::Bell ? Bell : Lead;
    int slot = 0;
    while (in >> token) {
        if (slot >= 8) {
            throw std::invalid_argument("more than eight notes in a bar: " + tokens);
        }
        const int row = bar * 16 + slot * 2;
        if (token == ".") {
            Put(p, row, 3, -1, base, sample, 0xC, 0);
            heldFor = -1;
        } else if (token == "-") {
            if (heldFor >= 0 && top == ModComposer::Top::Lead) {
                ++heldFor;
                // A held lead note breathes with a gentle vibrato.
                Put(p, row, 3, -1, base, sample, 0x4, 0x42);
                Put(p, row + 1, 3, -1, base, sample, 0x4, 0x42);
            }
        } else {
            const int midi = ModComposer::ParseNote(token);
            if (midi < 0) {
                throw std::invalid_argument("bad note " + token);
            }
            Put(p, row, 3, midi, base, sample);
            heldFor = 0;
        }
        ++slot;
    }
    if (slot != 8) {
        throw std::invalid_argument("a bar needs eight notes: " + tokens);
    }
}

} // namespace

int ModComposer::ParseNote(const std::string& name)
{
    static const int letters[7] = {9, 11, 0, 2, 4, 5, 7}; // A B C D E F G
    if (name.size() < 2 || name[0] < 'A' || name[0] > 'G') {
        return -1;
    }
    int semitone = letters[name[0] - 'A'];
    size_t i = 1;
    if (name[i] == '#') {
        ++semitone;
        ++i;
    } else if (name[i] == 'b') {
        --semitone;
        ++i;
    }
    if (i + 1 != name.size() || name[i] < '0' || name[i] > '9') {
        return -1;
    }
    return (name[i] - '0' + 1) * 12 + semitone;
}

ModModule::Pattern ModComposer::Write(const Section& section, bool first)
{
    ModModule::Pattern p{};
    int heldFor = -1;
    for (int bar = 0; bar < 4; ++bar) {
        const Triad chord = ChordOf(section.chords[static_cast<size_t>(bar)]);
        const Triad next = ChordOf(section.chords[static_cast<size_t>((bar + 1) % 4)]);
        BassBar(p, bar, chord, next, section.walkingBass);
        DrumBar(p, bar, section.drums, section.fill && bar == 3);
        ChordBar(p, bar, chord, section.padChords, section.drums == Drums::Full ? 1 : 0);
        if (section.top != Top::None && !section.melody.empty()) {
            MelodyBar(p, bar, section.melody[static_cast<size_t>(bar)], section.top, heldFor);
        }
    }
    if (first) {
        // Speed 6 ticks a row at 112 beats a minute: a row lasts about 0.134 seconds.
        ModCell& speed = p[0];
        ModCell& tempo = p[3];
        if (speed.effect != 0 || tempo.effect != 0) {
            throw std::logic_error("the first row needs two free effect slots");
        }
        speed.effect = 0xF;
        speed.param = 6;
        tempo.effect = 0xF;
        tempo.param = 112;
    }
    if (section.jumpTo >= 0) {
        ModCell& jump = p[static_cast<size_t>(63 * ModModule::Channels + 0)];
        if (jump.effect != 0) {
            throw std::logic_error("the last row of the closing pattern needs a free effect slot");
        }
        jump.effect = 0xB;
        jump.param = section.jumpTo;
    }
    return p;
}

ModModule ModComposer::Compose()
{
    ModModule module;
    module.title = "Tolva Drift";
    module.samples = {ModInstruments::Bass(),  ModInstruments::Pluck(), ModInstruments::Lead(),
                      ModInstruments::Bell(),  ModInstruments::Pad(),   ModInstruments::Kick(),
                      ModInstruments::Snare(), ModInstruments::Hat(),   ModInstruments::Shaker()};
    const std::vector<Section> sections = Sections();
    for (size_t i = 0; i < sections.size(); ++i) {
        module.patterns.push_back(Write(sections[i], i == 0));
    }
    module.order = Order();
    return module;
}
