#pragma once
// What the game session shows, as the session sees it: texts for the labels around the
// board, the spell panel, the Loading window and its progress line, the window's title and
// its menus' entries, and the standard background of the board between games. The main
// window implements it with widgets; tests and tolva2-cli implement it by writing the
// texts down.
#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace tolva {

enum class SessionLabel {
    Score,      // lScore, "000.000.000"
    Level,      // lLevel
    Bonus,      // lBonus, the multiplier earned in this level
    LevelName,  // levName
    LevelCode,  // lbLevelCode, "LEVEL-CODE:..." in the default set
    Clicks,     // lbClicks, "CLICKS: n" or "CLICKS: n / target"
    Pointer,    // Label1, "X:x,Y:y  TYPE:v"
    Group,      // the group a click would take: "8 BRICKS = 64", empty for none
};

// One entry of the "Change level-set" menu: the set's name, its folder as a stored path
// ("levels\\mine\\"), and whether it is the set in use.
struct LevelSetEntry {
    std::string Caption;
    std::string Tag;
    bool Checked = false;
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
    // The Loading window: shown (not modal), its progress text (which lets pending events
    // run so that it shows at once), its always-on-top state, and gone.
    virtual void ShowLoading() = 0;
    virtual void ShowLoadingText(const std::string& text) = 0;
    virtual void SetLoadingTopMost(bool onTop) = 0;
    virtual void CloseLoading() = 0;
    // The main window's title.
    virtual void SetTitle(const std::string& title) = 0;
    // The test menu's "Jump to level" list: entry `index` (0..99) shows `caption`, or is
    // hidden with an empty caption.
    virtual void SetLevelMenuEntry(int index, const std::string& caption) = 0;
    // The "Change level-set" menu: its entries, and the menu hidden when there are none.
    virtual void ShowLevelSets(const std::vector<LevelSetEntry>& entries) = 0;
    // The tool tip of a spell button.
    virtual void SetSpellToolTip(int spellNo, const std::string& name) = 0;
    // Clears the clipboard and puts a text on it.
    virtual void CopyToClipboard(const std::string& text) = 0;
    // Gives the board the standard background picture, as at a game over.
    virtual void ShowStandardBackground() = 0;
    // Shows or hides "CHEAT MODE ON", and the check mark of the autoplay entry.
    virtual void ShowCheatMode(bool on) = 0;
    virtual void ShowAutoplayChecked(bool checked) = 0;
    // Shows or hides "PRACTICE" where "CHEAT MODE ON" stands: a move of this game was taken
    // back.
    virtual void ShowPractice(bool on) = 0;
};

} // namespace tolva
