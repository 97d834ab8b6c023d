// The score of "Tolva Drift": which chords, melodies and grooves each pattern has, and
// the order they play in. Melodies are written eight eighth-notes to a bar: a note name,
// "-" to hold the note before, "." to stop it.
#include "ModComposer.h"

std::vector<ModComposer::Section> ModComposer::Sections()
{
    using D = Drums;
    using T = Top;
    const std::vector<std::string> home = {"F", "Dm", "Bb", "C"};
    const std::vector<std::string> answer = {"F", "Am", "Bb", "C"};
    const std::vector<std::string> away = {"Dm", "Bb", "Gm", "C"};
    const std::vector<std::string> turn = {"Bb", "C", "Am", "Dm"};
    const std::vector<std::string> theme = {"A4 - C5 - F5 - E5 D5", "D5 - - - A4 - F4 A4",
                                            "D5 - C5 - Bb4 - D5 -", "C5 - - - G4 - . -"};
    const std::vector<std::string> themeHigh = {"A5 - C6 - F6 - E6 D6", "D6 - - - A5 - F5 A5",
                                                "D6 - C6 - Bb5 - D6 -", "C6 - - - G5 - - -"};
    return {
        // 0: intro, broken chords and a calm bass.
        {home, {}, T::None, D::None, false, false, false, -1},
        // 1: the groove comes in.
        {home, {}, T::None, D::Light, true, false, true, -1},
        // 2: the theme.
        {home, theme, T::Lead, D::Full, true, false, false, -1},
        // 3: its answer.
        {answer,
         {"A4 - C5 - F5 - G5 A5", "G5 - E5 - C5 - E5 -", "F5 - D5 - Bb4 - C5 D5", "C5 - - - - - . -"},
         T::Lead, D::Full, true, false, true, -1},
        // 4: away from home, in D minor.
        {away,
         {"F5 - E5 - D5 - A4 -", "Bb4 - C5 D5 F5 - D5 -", "G5 - F5 - D5 - Bb4 -", "C5 - D5 - E5 - G5 -"},
         T::Lead, D::Full, true, false, false, -1},
        // 5: turning back.
        {turn,
         {"F5 - - D5 F5 - G5 -", "E5 - - C5 E5 - G5 -", "A5 - G5 - E5 - C5 -", "D5 - - - - - . -"},
         T::Lead, D::Full, true, false, true, -1},
        // 6: a breather: pad, half-time drums and a bell.
        {{"Dm", "Bb", "F", "C"},
         {"A5 - - - F5 - D5 -", "F5 - - - D5 - Bb4 -", "C5 - F5 - A5 - C6 -", "G5 - - - E5 - - -"},
         T::Bell, D::Half, false, true, false, -1},
        // 7: the bridge climbs.
        {turn,
         {"D6 - - - C6 - Bb5 -", "C6 - - - G5 - - -", "A5 - C6 - E6 - C6 -", "D6 - - - A5 - - -"},
         T::Lead, D::Full, true, false, false, -1},
        // 8: and comes home.
        {{"Gm", "C", "F", "F"},
         {"Bb5 - A5 - G5 - D5 -", "E5 - F5 - G5 - C6 -", "A5 - - - - - - -", ". - - - - - - -"},
         T::Lead, D::Full, true, false, true, -1},
        // 9: the theme again, rung on the bell an octave up.
        {home, themeHigh, T::Bell, D::Light, true, false, false, -1},
        // 10: closing phrase; then back to the groove.
        {answer,
         {"A4 - C5 - F5 - - -", "E5 - - - C5 - - -", "D5 - - - F5 - - -", "E5 - - - G5 - - ."},
         T::Lead, D::Full, true, false, true, 1},
    };
}

std::vector<int> ModComposer::Order()
{
    return {0, 1, 2, 3, 4, 5, 2, 3, 6, 7, 8, 9, 3, 4, 5, 10};
}
