#include "session/GameSaver.h"

#include "board/TolvaBoard.h"
#include "session/GameLevelSets.h"
#include "session/GameSession.h"
#include "session/LevelCodes.h"
#include "session/SavedGame.h"
#include "shared/GameText.h"
#include "support/ZenkorModule.h"
#include "support/platform/Dialogs.h"

#include <filesystem>

namespace tolva {
namespace {

std::string SavePath() { return AppPath() + GameSaver::SaveName; }

bool SameFolder(std::string a, std::string b) {
    for (std::string* s : {&a, &b}) {
        for (char& c : *s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        while (!s->empty() && (s->back() == '\\' || s->back() == '/')) s->pop_back();
    }
    return a == b;
}

} // namespace

GameSaver::GameSaver(LevelModule& game, GameSession& session, TolvaBoard& board, GameLevelSets& levelSets,
                     Dialogs& dialogs)
    : game_(game), session_(session), board_(board), levelSets_(levelSets), dialogs_(dialogs) {}

bool GameSaver::CanSave() const { return session_.GameRunning && !session_.AutoplayChecked && board_.EffectsIdle(); }

bool GameSaver::Save() {
    if (!CanSave()) return false;
    SavedGame save;
    save.LevelSetPath = levelSets_.LevelSetPath;
    save.Play = session_.CapturePlay();
    if (session_.IsDefaultSet) save.LevelCode = LevelCodes::CodeOf(save.Play.Level);
    if (!save.Write(SavePath())) {
        Tell("The game could not be saved to " + NativePath(SavePath()) + ".");
        return false;
    }
    return true;
}

bool GameSaver::HasSave() const { return FileExists(SavePath()); }

void GameSaver::Tell(const std::string& text) const {
    dialogs_.MessageBox(text, std::string(GameTitle), MessageIcon::Exclamation, MessageButtons::Ok);
}

bool GameSaver::ChooseSet(const std::string& setPath) {
    if (SameFolder(setPath, levelSets_.LevelSetPath)) return true;
    const auto& entries = levelSets_.Entries();
    for (std::size_t i = 0; i < entries.size(); ++i)
        if (SameFolder(entries[i].Tag, setPath)) return levelSets_.LevelList_Click(static_cast<int>(i));
    Tell("The level set of the saved game is no longer there: the game cannot be resumed.");
    return false;
}

bool GameSaver::Resume() {
    SavedGame save;
    const auto read = SavedGame::Read(SavePath(), save);
    if (read == SavedGame::ReadResult::Missing) return false;
    const auto refuseDamaged = [this] {
        Tell("The saved game is damaged and cannot be resumed.");
        std::error_code ec;
        std::filesystem::rename(NativePath(SavePath()), NativePath(AppPath()) + BadName, ec);
        return false;
    };
    if (read == SavedGame::ReadResult::Damaged) return refuseDamaged();
    if (!ChooseSet(save.LevelSetPath)) return false;
    // The level must still be the one the game was saved in.
    const LevelRecord& level = game_.Levels[static_cast<std::size_t>(save.Play.Level - 1)];
    if (level.LevelName.empty() || level.levelbricks != save.Play.Side) return refuseDamaged();
    if (!session_.ResumeGame(save.Play)) return false;
    std::error_code ec;
    std::filesystem::remove(NativePath(SavePath()), ec);
    return true;
}

} // namespace tolva
