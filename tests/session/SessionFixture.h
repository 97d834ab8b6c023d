#pragma once
// A whole game without a window: the board and the session on the headless platform, built
// as the game builds them, with a view and services that write down what the session shows
// and asks for. Between board and session every event is written down in Log (as the board
// tests' RecordingListener writes it) and counted by Events. The game folder is a fresh
// temporary folder, so stat.ini lands there. The random numbers may be given by the test.
#include "board/BoardFixture.h"
#include "levels/LevelSetTestFiles.h"
#include "session/CountingListener.h"
#include "session/GameBuilder.h"
#include "session/GameSession.h"
#include "testsupport/RecordingSessionView.h"
#include "support/TempFolder.h"
#include "support/ZenkorModule.h"

#include <map>

namespace tolva::testing {

using RecordingView = RecordingSessionView;

// The hiscore table and the idle mascot as the session calls them, written down.
class RecordingServices final : public HiscoreService, public IdleAnimation {
public:
    std::vector<std::string> Calls;
    std::int16_t Place = -1;   // what CheckHiscorePlace answers
    int IdleRestarts = 0;

    void CheckIfHiScore(double score, std::int16_t level) override {
        Calls.push_back("CheckIfHiScore(" + NumberText(score) + "," + std::to_string(level) + ")");
    }
    void PrintHiScore(std::int16_t place, std::int32_t hi, std::int32_t text) override {
        Calls.push_back("PrintHiScore(" + std::to_string(place) + "," + std::to_string(hi) + "," +
                        std::to_string(text) + ")");
    }
    std::int16_t CheckHiscorePlace(double) const override { return Place; }
    void RestartIdle() override { ++IdleRestarts; }
};

class SessionFixture {
public:
    explicit SessionFixture(Random* rng = nullptr)
        : Game(std::make_unique<LevelModule>()),
          Stats(Folder / "stat.ini"),
          Built(GameParts{*Game, Settings, WithRandom(Host, rng), View, SessionServices{Services, Stats, Services, Windows}}),
          Session(Built.Session()),
          Events(Session),
          Log(&Events),
          Board(Built.BuildBoard(&Log)) {
        SetAppPath(Folder.Path());
        Board.AniDraw = false;
    }

    TempFolder Folder;
    HeadlessPlatform Host;
    GameSettings Settings;
    std::unique_ptr<LevelModule> Game;
    RecordingView View;
    RecordingServices Services;
    WindowOpener Windows;
    StatLog Stats;
    GameBuilder Built;
    GameSession& Session;
    CountingListener Events;
    RecordingListener Log;
    TolvaBoard& Board;

    void SetLevel(int number, const std::vector<std::string>& rows, const std::vector<std::string>& spells = {}) {
        FillLevel(Game->Levels[static_cast<std::size_t>(number - 1)], "LEVEL " + std::to_string(number), rows, spells);
    }
    // Starts a game at level 1 with these cells; the events of the start are dropped.
    void StartGame(const std::vector<std::string>& rows, const std::vector<std::string>& spells = {}) {
        SetLevel(1, rows, spells);
        ASSERT_TRUE(Session.NewGame(1));
        Log.Take();
        Host.Sound.ClearCalls();
    }
    void Click(int x, int y, std::int16_t button = 1) { ClickCell(Board, x, y, button); }
    std::vector<std::string> Rows() const { return BoardRows(Board); }
    std::int16_t Stock(int spell) const { return Session.SpellStock[static_cast<std::size_t>(spell)]; }
    std::string Label(SessionLabel label) const { return View.Label(label); }
    std::string Stat(const std::string& section, const std::string& key) const {
        return ReadIni(Folder / "stat.ini", section, key);
    }
    // The level set shipped with the game, loaded as the game loads it; the game folder
    // stays the fixture's.
    void LoadDefaultSet() {
        ShippedSet shipped("default");
        SetAppPath(Folder.Path());
        ASSERT_EQ(shipped.load.LevelsStored(), MaxLevels);
        *Game = std::move(*shipped.game);
    }
    // The beeps of the PC speaker so far, as "Beep(hz,ms)".
    std::vector<std::string> BeepCalls() const {
        std::vector<std::string> out;
        for (const auto& b : Host.Sound.Beeps())
            out.push_back("Beep(" + std::to_string(b.Frequency) + "," + std::to_string(b.Milliseconds) + ")");
        return out;
    }
    // Types a word on the main window, a key a letter, by the capital's code.
    void Type(const std::string& word) {
        for (char c : word) Session.Form_KeyDown(static_cast<std::int16_t>(std::toupper(static_cast<unsigned char>(c))));
    }
};

} // namespace tolva::testing
