#pragma once
// GameLevelSets: the session's side of the level sets. It knows which set is loaded
// (LevelSetPath), loads it with the steps that belong to the game around the board (the
// spell names and tool tips, the Loading window's texts, the hiscore table of the set, the
// test menu's level list, the window's title, the board's root folder) and answers the
// integrity failure of the default set with its stop message.
//
// The reader (levels/LevelSetReader) does the file; this class is the set of hooks it
// calls, so that a game without a screen (tolva2-cli, the tests) loads a set exactly as
// the game on screen does.
#include "levels/LevelSetHooks.h"
#include "levels/LevelSetReader.h"
#include "session/SessionView.h"

#include <cstdint>
#include <functional>
#include <string>

namespace tolva {

class Dialogs;
class EventLoop;
class GameSession;
class SessionView;
class TolvaBoard;

class GameLevelSets final : public LevelSetHooks {
public:
    GameLevelSets(LevelModule& game, GameSession& session, TolvaBoard& board, SessionView& view, Dialogs& dialogs,
                  EventLoop& loop);

    // The set in use, relative to the game folder, with a closing backslash.
    std::string LevelSetPath = "levels\\default\\";
    bool IsDefault() const { return LevelSetReader::IsDefault(LevelSetPath); }

    // Loads the set of LevelSetPath (InitLevels). False when the default set failed its
    // integrity test: the stop message has been shown and the program must end.
    bool InitLevels();
    const LevelSetLoad& LastLoad() const { return lastLoad_; }

    // The hiscore half of a load: the set's table read with the set's Crypter key and
    // drawn. The composition root gives it to the hiscore table of the game.
    std::function<void(std::int16_t setKey)> HiscoreLoader;
    // Writes the table of the set in use to its hiscore.hi (before the set changes).
    std::function<void()> HiscoreSaver;

    // ---- the choice of a set ---------------------------------------------------------------
    // Lists the folders under levels\ whose levels.set names a set, for the menu.
    void RefreshLevelSets();
    // The player chose entry `index` of the menu: ends a running game (after asking),
    // saves the old set's table and loads the new set. False when nothing changed.
    bool LevelList_Click(int index);
    const std::vector<LevelSetEntry>& Entries() const { return entries_; }

    // ---- LevelSetHooks ------------------------------------------------------------------
    void SetSpellName(int spellNo, const std::string& name) override;
    void ShowLoading() override;
    void SetLoadingLabel(const std::string& text) override;
    void SetSpellToolTip(int spellNo, const std::string& name) override;
    void LoadHiscores(std::int16_t setKey) override;
    void ClearLevelMenu() override;
    void SetLevelMenuEntry(int index, const std::string& caption) override;
    void SetTitle(const std::string& title) override;
    void DoEvents() override;
    void DefaultSetCorrupted() override;
    void LevelRoot(const std::string& path) override;

private:
    LevelModule& game_;
    GameSession& session_;
    TolvaBoard& board_;
    SessionView& view_;
    Dialogs& dialogs_;
    EventLoop& loop_;
    bool corrupted_ = false;
    LevelSetLoad lastLoad_;
    std::vector<LevelSetEntry> entries_;
};

} // namespace tolva
