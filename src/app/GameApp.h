#pragma once
// GameApp: the composition root of the game on screen. It builds the running game once,
// in one place, and wires it: the platform objects (the event loop it is given, the board's
// widget and picture store, dialogs, random numbers, sound effects and music), the one
// settings object, the game session and its board, the session's services (hiscore table,
// statistics log, idle mascot, the windows opened by keys and menus), the main window as a
// view over them, and the start-up and shutdown sequence.
//
// Every subsystem's window is registered here with one line; the main window only names
// the window it wants (GameWindow) and never knows how it is made.
#include "session/GameBuilder.h"
#include "session/GameStartup.h"
#include "settings/GameSettings.h"
#include "shared/LevelModule.h"
#include "stats/StatLog.h"
#include "support/WindowOpener.h"

#include <QObject>
#include <QPointer>
#include <QRect>
#include <QString>

#include <cstdint>
#include <memory>

namespace tolva {

class AudioPluginLoader;
class GameBuilder;
class GameSaver;
class Dialogs;
class EventLoop;
class GameLevelSets;
class GameSession;
class QtDialogs;
class QtPictureHolder;
class QtPictureStore;
class QtPictureStrip;
class SeededRandom;
class SoundEffects;
class TolvaBoard;
class frmMain;
class frmStatistics;
class HiscoreDisplay;
class HiscoreKeeper;
class IdleAnimation;
class MusicPlayer;

class GameApp final : public QObject, public StartupHost {
public:
    // `dialogs` answers the message and input boxes; by default they are Qt's own, a test
    // gives scripted ones.
    GameApp(EventLoop& loop, std::string commandLine, Dialogs* dialogs = nullptr);
    ~GameApp() override;
    GameApp(const GameApp&) = delete;
    GameApp& operator=(const GameApp&) = delete;

    // The whole start-up; false when a stop message ended it. `seed` seeds the random
    // numbers (the clock, by default).
    bool Start(std::uint64_t seed);

    frmMain& Window() { return *window_; }
    GameSession& Session() { return built_->Session(); }
    TolvaBoard& Board() { return built_->Board(); }
    GameSettings& Settings() { return settings_; }
    GameLevelSets& LevelSets() { return *levelSets_; }
    LevelModule& Game() { return *game_; }
    WindowOpener& Windows() { return windows_; }
    HiscoreKeeper& Hiscores() { return *hiscores_; }

    // ---- StartupHost ---------------------------------------------------------------------
    int ScreenHeight() const override;
    void LoadGfx() override;
    void ShowAboutFirstTime() override;
    void ShowMainWindow() override;

    // An entry of "Change level-set" was chosen.
    void ChooseLevelSet(int index);
    // "Save game and quit": the game put away, then the shutdown without its questions.
    void SaveAndQuit();
    // "Resume saved game".
    void ResumeSavedGame();

private:
    void MakeServices();
    QRect BoardOnScreen() const;
    void StartMusic();
    void StartPendingMusicSoon();
    void LoadUnseenPictures();
    bool eventFilter(QObject* watched, QEvent* event) override;
    void StopMusicUnlessStopped();

    EventLoop& loop_;
    std::string commandLine_;
    std::unique_ptr<LevelModule> game_;
    GameSettings settings_;
    std::unique_ptr<frmMain> window_;
    std::unique_ptr<QtDialogs> qtDialogs_;
    Dialogs* dialogs_ = nullptr;
    std::unique_ptr<QtPictureStore> pictures_;
    std::unique_ptr<SeededRandom> rng_;
    std::unique_ptr<AudioPluginLoader> audio_;
    std::unique_ptr<SoundEffects> sound_;
    std::unique_ptr<MusicPlayer> music_;
    std::unique_ptr<QtPictureStrip> testTube_;
    std::unique_ptr<QtPictureHolder> eBack_;
    StatLog stats_;
    std::unique_ptr<HiscoreDisplay> hiscoreView_;
    std::unique_ptr<HiscoreKeeper> hiscores_;
    std::unique_ptr<QtPictureStrip> kedelig_;
    std::unique_ptr<IdleAnimation> idle_;
    WindowOpener windows_;
    QPointer<frmStatistics> statistics_;
    // The settings asked for music at start-up; it waits for the first window shown.
    bool musicPending_ = false;
    std::unique_ptr<GameBuilder> built_;
    std::unique_ptr<GameSaver> saver_;
    std::unique_ptr<GameLevelSets> levelSets_;
    std::unique_ptr<GameStartup> startup_;
};

} // namespace tolva
