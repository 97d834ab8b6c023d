#pragma once
// A board with the real game session around it, for the spell tests that need the
// session's side of a spell: the stock, the spell buttons, the disarming at SpellUsed and
// the bonus count-up that the session starts. Every board event is written down (as the
// board tests' RecordingListener writes it) and then handed to the session. The session's
// view and services write down what it shows and asks for; the game folder is a fresh
// temporary folder, so the statistics file lands there.
#include "BoardFixture.h"
#include "session/SessionFixture.h"
#include "session/GameBuilder.h"
#include "session/GameSession.h"
#include "testsupport/RecordingSessionView.h"
#include "support/TempFolder.h"
#include "support/ZenkorModule.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tolva::testing {

// Writes each event down, then hands it to the session.
class RecordAndForward final : public BoardListener {
public:
    RecordAndForward(RecordingListener& log, BoardListener& target) : log_(log), target_(target) {}

    void BricksRemoved(std::int16_t n) override { log_.BricksRemoved(n), target_.BricksRemoved(n); }
    void MouseMove(std::int16_t x, std::int16_t y) override { log_.MouseMove(x, y), target_.MouseMove(x, y); }
    void GameOver() override { log_.GameOver(), target_.GameOver(); }
    void NewScore(double p) override { log_.NewScore(p), target_.NewScore(p); }
    void NewSpell(std::int16_t s) override { log_.NewSpell(s), target_.NewSpell(s); }
    void NewLevel(std::int16_t l) override { log_.NewLevel(l), target_.NewLevel(l); }
    void SpellUsed(std::int16_t s) override { log_.SpellUsed(s), target_.SpellUsed(s); }
    void BonusScore(double b, std::int16_t t) override { log_.BonusScore(b, t), target_.BonusScore(b, t); }
    void BonusTimes(std::int16_t t) override { log_.BonusTimes(t), target_.BonusTimes(t); }
    void CanDoNextMove() override { log_.CanDoNextMove(), target_.CanDoNextMove(); }
    void ResourceLoaded(const std::string& r) override { log_.ResourceLoaded(r), target_.ResourceLoaded(r); }
    void SpellInUse(bool u) override { log_.SpellInUse(u), target_.SpellInUse(u); }
    void RemoveClick(std::int16_t l) override { log_.RemoveClick(l), target_.RemoveClick(l); }
    void SpellClick(std::int16_t s, std::int16_t l) override { log_.SpellClick(s, l), target_.SpellClick(s, l); }

private:
    RecordingListener& log_;
    BoardListener& target_;
};

class SpellSessionFixture {
public:
    explicit SpellSessionFixture(Random* rng = nullptr)
        : Game(std::make_unique<LevelModule>()),
          Stats(Folder / "stat.ini"),
          Built(GameParts{*Game, Settings, WithRandom(Host, rng), View, SessionServices{Services, Stats, Services, Windows}}),
          Session(Built.Session()),
          Forward(Events, Session),
          Board(Built.BuildBoard(&Forward)) {
        SetAppPath(Folder.Path());
    }

    TempFolder Folder;
    HeadlessPlatform Host;
    GameSettings Settings;
    std::unique_ptr<LevelModule> Game;
    RecordingListener Events;
    RecordingView View;
    RecordingServices Services;
    WindowOpener Windows;
    StatLog Stats;
    GameBuilder Built;
    GameSession& Session;
    RecordAndForward Forward;
    TolvaBoard& Board;

    void SetLevel(int number, const std::vector<std::string>& rows, const std::vector<std::string>& spells = {}) {
        FillLevel(Game->Levels[static_cast<std::size_t>(number - 1)], "LEVEL " + std::to_string(number), rows, spells);
    }
    // Starts a game at level 1 with these cells; the events of the start are dropped.
    void StartGame(const std::vector<std::string>& rows, const std::vector<std::string>& spells = {}) {
        SetLevel(1, rows, spells);
        ASSERT_TRUE(Session.NewGame(1));
        Events.Take();
        Host.Sound.ClearCalls();
    }
    void Click(int x, int y, std::int16_t button = 1) { ClickCell(Board, x, y, button); }
    std::vector<std::string> Rows() const { return BoardRows(Board); }
    std::int16_t Stock(int spell) const { return Session.SpellStock[static_cast<std::size_t>(spell)]; }

};

} // namespace tolva::testing
