#pragma once
// GameStartup: the start of the program and its end, in the game's order.
//
// Start-up (Form_Load) runs the steps one after the other; the steps marked "stop" end
// the program at once with their message and save nothing. Anything else that fails (a
// missing picture, a missing tolva2.ini) leaves its part out and the start goes on. The
// parts that only a screen has (the screen's height, the window's pictures, the credits
// at the first start, the falling desktop that shows the main window) are the host's:
// the Qt composition root on screen, a headless host in tolva2-cli and the tests.
//
// Shutdown (Form_Unload) asks if a game runs, offers its score to the table, saves the
// set's hiscores and tolva2.ini, stops the music and plays the last sound to its end.
#include <cstdint>
#include <functional>
#include <string>

namespace tolva {

class Dialogs;
class GameLevelSets;
class GameSession;
class Random;
class SessionView;
class SoundEffects;
class TolvaBoard;
struct GameSettings;
struct LevelModule;

class StartupHost {
public:
    virtual ~StartupHost() = default;
    // The height of the screen in pixels.
    virtual int ScreenHeight() const = 0;
    // Shows the Loading window and loads the pictures of the main window and the board.
    virtual void LoadGfx() = 0;
    // The credits, shown modally at the very first start.
    virtual void ShowAboutFirstTime() = 0;
    // The last step: the main window comes up (under its start-up effect), and the
    // Loading window goes.
    virtual void ShowMainWindow() = 0;
};

struct StartupParts {
    LevelModule& Game;
    GameSettings& Settings;
    GameSession& Session;
    TolvaBoard& Board;
    GameLevelSets& LevelSets;
    SessionView& View;
    Dialogs& Dialog;
    Random& Rng;
    SoundEffects& Sound;
    StartupHost& Host;
    // The music of the game: started when the settings ask for it, stopped at the end.
    std::function<void()> StartMusic;
    std::function<void()> StopMusic;
    // The hiscore table of the set in use, written to its hiscore.hi.
    std::function<void()> SaveHiscores;
};

class GameStartup {
public:
    explicit GameStartup(const StartupParts& parts) : p_(parts) {}

    // The whole start-up. `commandLine` is the whole command line as one text; the
    // start-up words are looked for anywhere in it. `seed` seeds the random numbers (the
    // clock, on screen). False when a stop message was shown: the program must end.
    bool Form_Load(const std::string& commandLine, std::uint64_t seed);
    // The whole shutdown. False when the player kept the running game.
    bool Form_Unload();

    static std::string IniFile();

private:
    void StopMessage(const std::string& text);
    bool ChooseLevelSet();

    StartupParts p_;
};

} // namespace tolva
