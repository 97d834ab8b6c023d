#pragma once
// The game's tune, "Tolva Drift": a relaxed piece in F major for bass, drums, a plucked
// broken-chord part and a flute-like lead (a bell in places), about two and a quarter
// minutes before it loops back past its intro. Each pattern is four bars of one chord
// each; sections differ in chords, melody, drum groove and which voices play, so that
// the loop stays easy on the ear over a long session.
//
// Channels: 0 bass, 1 drums, 2 broken chords or pad, 3 lead or bell.
#include "ModModule.h"

#include <string>
#include <vector>

class ModComposer {
public:
    static ModModule Compose();

    enum class Drums { None, Light, Full, Half };
    enum class Top { None, Lead, Bell };
    struct Section {
        std::vector<std::string> chords;    // four chord names: F, Dm, Bb, C, Am, Gm
        std::vector<std::string> melody;    // four bars of eight tokens, or empty
        Top top = Top::None;
        Drums drums = Drums::None;
        bool walkingBass = true;
        bool padChords = false;
        bool fill = false;
        int jumpTo = -1;                    // order position to jump to after the last row
    };
    // Parses a note name such as "Bb4" or "F#5" to a MIDI number; -1 if it is none.
    static int ParseNote(const std::string& name);
    static std::vector<Section> Sections();
    static std::vector<int> Order();

private:
    static ModModule::Pattern Write(const Section& section, bool first);
};
