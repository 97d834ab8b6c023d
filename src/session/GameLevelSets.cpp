#include "session/GameLevelSets.h"

#include "board/TolvaBoard.h"
#include "session/GameSession.h"
#include "session/SessionView.h"
#include "shared/GameText.h"
#include "support/ZenkorModule.h"
#include "support/platform/Dialogs.h"
#include "support/platform/EventLoop.h"

#include <algorithm>

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

namespace {

std::string Lower(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return text;
}

} // namespace

void GameLevelSets::RefreshLevelSets() {
    entries_.clear();
    std::string levels = AppPath() + "levels\\";
    // By name, ignoring case, so that the menu reads the same on every machine whatever
    // order the file system lists the folders in; names equal but for case keep a fixed
    // order too.
    std::vector<std::string> folders = ListSubfolders(levels);
    std::sort(folders.begin(), folders.end(), [](const std::string& a, const std::string& b) {
        const std::string lowerA = Lower(a), lowerB = Lower(b);
        return lowerA != lowerB ? lowerA < lowerB : a < b;
    });
    for (const std::string& folder : folders) {
        const std::string tag = "levels\\" + folder + "\\";
        const std::string name = ReadIni(AppPath() + tag + "levels.set", "main", "levelset");
        if (name.empty()) continue;   // no level set
        entries_.push_back({name, tag, Lower(tag) == Lower(LevelSetPath)});
    }
    view_.ShowLevelSets(entries_);
}

bool GameLevelSets::LevelList_Click(int index) {
    if (index < 0 || index >= static_cast<int>(entries_.size())) return false;
    int checked = -1;
    for (int i = 0; i < static_cast<int>(entries_.size()) && i < MaxLevels; ++i)
        if (entries_[static_cast<std::size_t>(i)].Checked) checked = i;
    // The entry itself, not the one found checked: two folders equal but for case are
    // both checked, and either is the set in use.
    if (entries_[static_cast<std::size_t>(index)].Checked) return false;
    if (session_.GameRunning) {
        const auto answer = dialogs_.MessageBox("This will end your current game, sure to load new level-sets ?",
                                                std::string(GameTitle), MessageIcon::Warning, MessageButtons::OkCancel);
        if (answer != MessageResult::Ok) return false;
        // The game ends through GameOver without its message: the hiscore entry and the
        // statistics happen as at any game over.
        session_.SilentGameOver = true;
        board_.SetGameOver();
        session_.SilentGameOver = false;
    }
    if (HiscoreSaver) HiscoreSaver();   // still the old set's path
    // The first 100 entries, up to the first without a caption, lose their check mark.
    for (std::size_t i = 0; i < entries_.size() && i < static_cast<std::size_t>(MaxLevels); ++i) {
        if (entries_[i].Caption.empty()) break;
        entries_[i].Checked = false;
    }
    const std::string old = LevelSetPath;
    LevelSetPath = entries_[static_cast<std::size_t>(index)].Tag;
    if (!FolderExists(AppPath() + LevelSetPath)) {
        dialogs_.MessageBox("ERROR LOADING LEVEL-SET", std::string(GameTitle), MessageIcon::Stop, MessageButtons::Ok);
        LevelSetPath = old;
        if (checked >= 0) entries_[static_cast<std::size_t>(checked)].Checked = true;
        view_.ShowLevelSets(entries_);
        return false;
    }
    entries_[static_cast<std::size_t>(index)].Checked = true;
    view_.ShowLevelSets(entries_);
    const bool loaded = InitLevels();
    view_.CloseLoading();
    return loaded;
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
