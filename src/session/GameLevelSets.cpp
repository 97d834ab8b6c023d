#include "session/GameLevelSets.h"

#include "board/TolvaBoard.h"
#include "session/GameSession.h"
#include "session/SessionView.h"
#include "shared/GameText.h"
#include "support/platform/Dialogs.h"
#include "support/platform/EventLoop.h"

namespace tolva {

GameLevelSets::GameLevelSets(LevelModule& game, GameSession& session, TolvaBoard& board, SessionView& view,
                             Dialogs& dialogs, EventLoop& loop)
    : game_(game), session_(session), board_(board), view_(view), dialogs_(dialogs), loop_(loop) {}

bool GameLevelSets::InitLevels() {
    LevelSetReader reader(game_, this);
    reader.LevelSetPath = LevelSetPath;
    corrupted_ = false;
    lastLoad_ = reader.InitLevels();
    session_.IsDefaultSet = IsDefault();
    return !corrupted_;
}

void GameLevelSets::SetSpellName(int spellNo, const std::string& name) {
    if (spellNo >= 0 && spellNo < SpellCount) session_.SpellNames[static_cast<std::size_t>(spellNo)] = name;
}

void GameLevelSets::ShowLoading() { view_.ShowLoading(); }

void GameLevelSets::SetLoadingLabel(const std::string& text) { view_.ShowLoadingText(text); }

void GameLevelSets::SetSpellToolTip(int spellNo, const std::string& name) { view_.SetSpellToolTip(spellNo, name); }

void GameLevelSets::LoadHiscores(std::int16_t setKey) {
    if (HiscoreLoader) HiscoreLoader(setKey);
}

void GameLevelSets::ClearLevelMenu() {
    for (int i = 0; i < MaxLevels; ++i) view_.SetLevelMenuEntry(i, "");
}

void GameLevelSets::SetLevelMenuEntry(int index, const std::string& caption) {
    view_.SetLevelMenuEntry(index, caption);
}

void GameLevelSets::SetTitle(const std::string& title) { view_.SetTitle(title); }

void GameLevelSets::DoEvents() { loop_.DoEvents(); }

void GameLevelSets::DefaultSetCorrupted() {
    // The Loading window stands on top of everything; the message must be seen.
    view_.SetLoadingTopMost(false);
    dialogs_.MessageBox("ERROR! Default level corrupted, please re-install TOLVA II", std::string(GameTitle),
                        MessageIcon::Stop, MessageButtons::Ok);
    corrupted_ = true;
}

void GameLevelSets::LevelRoot(const std::string& path) { board_.LevelRoot(path); }

} // namespace tolva
