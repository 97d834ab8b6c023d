#pragma once
// HeadlessGame: the composition root of the game without a screen. It builds the same
// running game as the window does (the settings, the session and its board, the level
// sets, the hiscore table with its file, the statistics log, the idle mascot, start-up and
// shutdown) on the platform of the core: the virtual clock, pictures read but not shown,
// sounds not played. tolva2-cli's `session` command and the tests play whole
// games through it, writing the files the game writes in the game folder.
//
// The windows that keys and menus open (help, settings, statistics, about, the Internet
// hiscores) have no headless form: their entries do nothing here. The credits of the first
// start and the falling desktop are the screen's, so the start-up skips them.
#include "session/GameBuilder.h"
#include "session/GameStartup.h"
#include "settings/GameSettings.h"
#include "stats/StatLog.h"
#include "support/WindowOpener.h"

#include <cstdint>
#include <memory>
#include <string>

namespace tolva {

class GameSaver;
class Dialogs;
class GameLevelSets;
class GameSession;
class HeadlessEventLoop;
class HeadlessHiscoreView;
class HeadlessPictureStore;
class HeadlessPictureStrip;
class HeadlessSessionView;
class HeadlessSoundEffects;
class HeadlessSurface;
class HiscoreKeeper;
class IdleMascot;
class SeededRandom;
class TolvaBoard;
struct LevelModule;

class HeadlessGame final : public StartupHost {
public:
    // The game folder is AppPath(); `dialogs` answers every message and input box.
    HeadlessGame(HeadlessEventLoop& loop, Dialogs& dialogs);
    ~HeadlessGame() override;
    HeadlessGame(const HeadlessGame&) = delete;
    HeadlessGame& operator=(const HeadlessGame&) = delete;

    // The whole start-up; false when a stop message ended it.
    bool Start(const std::string& commandLine, std::uint64_t seed);
    // The whole shutdown; false when the player kept the running game.
    bool Quit();
    // Chooses the set in `folder` (a folder under levels\, any case) as the "Change
    // level-set" menu does. False, and nothing changed, when no set of the menu is there.
    bool ChooseLevelSet(const std::string& folder);

    GameSession& Session() { return built_->Session(); }
    TolvaBoard& Board() { return built_->Board(); }
    BoardFocus& Focus() { return built_->Focus(); }
    UndoHistory& Undo() { return built_->Undo(); }
    GameSaver& Saver() { return *saver_; }
    LevelModule& Game() { return *game_; }
    GameLevelSets& LevelSets() { return *levelSets_; }
    HiscoreKeeper& Hiscores() { return *hiscores_; }
    HeadlessHiscoreView& HiscoreScreen() { return *hiscoreView_; }
    HeadlessSessionView& View() { return *view_; }

    // ---- StartupHost ---------------------------------------------------------------------
    // A screen tall enough for the window.
    int ScreenHeight() const override { return 1080; }
    void LoadGfx() override;
    void ShowAboutFirstTime() override {}
    void ShowMainWindow() override;

private:
    HeadlessEventLoop& loop_;
    Dialogs& dialogs_;
    std::unique_ptr<LevelModule> game_;
    GameSettings settings_;
    std::unique_ptr<HeadlessSurface> surface_;
    std::unique_ptr<HeadlessPictureStore> pictures_;
    std::unique_ptr<HeadlessSoundEffects> sound_;
    std::unique_ptr<SeededRandom> rng_;
    std::unique_ptr<HeadlessSessionView> view_;
    std::unique_ptr<HeadlessPictureStrip> testTube_;
    std::unique_ptr<HeadlessPictureStrip> kedelig_;
    StatLog stats_;
    std::unique_ptr<HeadlessHiscoreView> hiscoreView_;
    std::unique_ptr<HiscoreKeeper> hiscores_;
    std::unique_ptr<IdleMascot> idle_;
    WindowOpener windows_;
    std::unique_ptr<GameBuilder> built_;
    std::unique_ptr<GameSaver> saver_;
    std::unique_ptr<GameLevelSets> levelSets_;
    std::unique_ptr<GameStartup> startup_;
};

} // namespace tolva
