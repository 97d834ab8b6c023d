#pragma once
// LevelSetHooks: the steps of a level-set load that belong to the main window. The
// reader runs them in the game's order; the session implements them with its title,
// level menu, Loading window, spell buttons, hiscore table and board. A load without
// hooks (the command-line tool, benchmarks) does the file's part alone.
#include <cstdint>
#include <string>

namespace tolva {

class LevelSetHooks {
public:
    virtual ~LevelSetHooks() = default;

    // The name of spell `spellNo` (0..5), before the Loading window shows.
    virtual void SetSpellName(int spellNo, const std::string& name) = 0;
    // The Loading window, shown without waiting for it.
    virtual void ShowLoading() = 0;
    // Loading.SetLabel: the progress text; it lets pending events run itself.
    virtual void SetLoadingLabel(const std::string& text) = 0;
    virtual void SetSpellToolTip(int spellNo, const std::string& name) = 0;
    // The hiscore half of the load: the set's hiscore.hi read with `setKey` (the
    // Crypter key chosen for this set), then shown with PrintHiScore.
    virtual void LoadHiscores(std::int16_t setKey) = 0;
    // All 100 entries of mnuLevList: caption empty, hidden.
    virtual void ClearLevelMenu() = 0;
    // Entry `index` (0..99) gets `caption` and is shown.
    virtual void SetLevelMenuEntry(int index, const std::string& caption) = 0;
    // The main window's title, from the set-name line.
    virtual void SetTitle(const std::string& title) = 0;
    // Lets the platform run pending events once.
    virtual void DoEvents() = 0;
    // A default set failed its integrity test: the session's stop message and end of
    // the program. The load returns right after this call without giving the board
    // its root folder.
    virtual void DefaultSetCorrupted() = 0;
    // The board's LevelRoot with the set's full folder, the last step of a load.
    virtual void LevelRoot(const std::string& path) = 0;
};

} // namespace tolva
