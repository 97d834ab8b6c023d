#pragma once
// What the game session shows, as the session sees it: texts for the labels around the
// board, the spell panel, the progress line of the Loading window, and the standard
// background of the board between games. The main window implements it with widgets;
// tests implement it by writing the texts down.
#include <array>
#include <cstdint>
#include <string>

namespace tolva {

enum class SessionLabel {
    Score,      // lScore, "000.000.000"
    Level,      // lLevel
    Bonus,      // lBonus, the multiplier earned in this level
    LevelName,  // levName
    LevelCode,  // lbLevelCode, "LEVEL-CODE:..." in the default set
    Clicks,     // lbClicks, "CLICKS: n" or "CLICKS: n / target"
    Pointer,    // Label1, "X:x,Y:y  TYPE:v"
};

// The spell panel: the count under each button, and the armed spell.
struct SpellPanel {
    std::array<std::string, 6> Counts;   // "0" for a stock below 1
    std::int16_t Active = -1;            // the armed spell, -1 for none
    std::string ActiveName;              // its name, empty for none
};

class SessionView {
public:
    virtual ~SessionView() = default;
    virtual void SetLabel(SessionLabel label, const std::string& text) = 0;
    virtual void ShowSpellPanel(const SpellPanel& panel) = 0;
    // The progress text of the Loading window while pictures and levels load.
    virtual void ShowLoadingText(const std::string& text) = 0;
    // Gives the board the standard background picture, as at a game over.
    virtual void ShowStandardBackground() = 0;
    // Shows or hides "CHEAT MODE ON", and the check mark of the autoplay entry.
    virtual void ShowCheatMode(bool on) = 0;
    virtual void ShowAutoplayChecked(bool checked) = 0;
};

} // namespace tolva
