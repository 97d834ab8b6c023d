#pragma once
// GameSaver: "Save game and quit" and "Resume saved game". A save writes the running game
// whole to savegame.sav in the game folder; a resume reads it, changes to its level set if
// another one is in use, starts its level and sets it to the saved state, then deletes the
// file, so that a saved game is resumed once. A damaged or hand-changed file resumes
// nothing: one message says so and the file is moved aside to savegame.bad. A save whose
// level set is gone is refused with a message and kept for when the set is back.
#include <string>

namespace tolva {

class Dialogs;
class GameLevelSets;
class GameSession;
class TolvaBoard;
struct LevelModule;

class GameSaver {
public:
    static constexpr const char* SaveName = "savegame.sav";
    static constexpr const char* BadName = "savegame.bad";

    GameSaver(LevelModule& game, GameSession& session, TolvaBoard& board, GameLevelSets& levelSets, Dialogs& dialogs);

    // A game runs and stands still, so that it can be put away as it is.
    bool CanSave() const;
    // Writes the running game; false (after a message if the file could not be written)
    // when nothing was saved. The caller then quits without offering the score.
    bool Save();
    // A saved game waits in the game folder.
    bool HasSave() const;
    // Resumes the saved game; false when none was resumed.
    bool Resume();

private:
    void Tell(const std::string& text) const;
    bool ChooseSet(const std::string& setPath);

    LevelModule& game_;
    GameSession& session_;
    TolvaBoard& board_;
    GameLevelSets& levelSets_;
    Dialogs& dialogs_;
};

} // namespace tolva
