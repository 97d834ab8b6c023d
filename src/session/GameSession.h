#pragma once
// GameSession: the game as the player sees it, around the board. The board knows the
// rules and nothing of a game; the session keeps the score, the spell stock, the click
// counters of the level, the flow from level to level and the end of a game, by handling
// the board's 14 events and by its own NewGame.
//
// It is plain C++ so that a whole game can be played in a test or in tolva2-cli without
// a window: what it shows goes through SessionView (labels and the spell panel), what it
// asks of the hiscore table, the statistics log, the mascot and the PC speaker goes
// through SessionServices, and message boxes, sounds, timers and random numbers through
// the board's platform seam. The main window is a thin layer of widgets over it.
#include "board/BoardListener.h"
#include "board/LevelModule.h"
#include "session/SessionServices.h"
#include "session/SessionView.h"
#include "support/platform/BoardPlatform.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>

namespace tolva {

class TolvaBoard;

class GameSession final : public BoardListener {
public:
    GameSession(LevelModule& game, const BoardPlatform& platform, SessionView& view, SessionServices& services);
    ~GameSession() override;
    GameSession(const GameSession&) = delete;
    GameSession& operator=(const GameSession&) = delete;

    // The board is made after the session, since it needs the session as its listener.
    void AttachBoard(TolvaBoard& board) { board_ = &board; }
    TolvaBoard& Board() { return *board_; }

    // ---- the game ---------------------------------------------------------------------
    // Starts a game at a level, asking first if one is running. False if the player
    // kept the running game.
    bool NewGame(std::int16_t StartAtLevel);
    void UpdateScore(double ScoreP);
    // 1234 -> "000.001.234": at least nine digits, a point after every third.
    static std::string FormatScore(double Value);
    void UpdateSpells();

    // ---- the spell bar ------------------------------------------------------------------
    void sp_Click(std::int16_t Index);
    void ActiveSpell_Click();

    // ---- the PC speaker signals of the test mode (0, 1 and 3) ----------------------------
    void SpeakerEvent(std::int16_t EventSound);

    // ---- autoplay: one automatic move ----------------------------------------------------
    void AutoPlay();

    // ---- the board's events ----------------------------------------------------------------
    void BricksRemoved(std::int16_t numberOfBricks) override;
    void MouseMove(std::int16_t xIndex, std::int16_t yIndex) override;
    void GameOver() override;
    void NewScore(double point) override;
    void NewSpell(std::int16_t spellNumber) override;
    void NewLevel(std::int16_t levelNo) override;
    void SpellUsed(std::int16_t spellNumber) override;
    void BonusScore(double bonus, std::int16_t xTimes) override;
    void BonusTimes(std::int16_t bonusTimesNow) override;
    void CanDoNextMove() override;
    void ResourceLoaded(const std::string& resource) override;
    void SpellInUse(bool inUse) override;
    void RemoveClick(std::int16_t cLevel) override;
    void SpellClick(std::int16_t spellNumber, std::int16_t cLevel) override;

    // ---- the state of a game ----------------------------------------------------------------
    bool GameRunning = false;
    double Score = 0;
    bool ScoreFrozen = false;
    bool KeepScoreInCheat = false;
    std::array<std::int16_t, 7> SpellStock{};
    std::array<std::string, 7> SpellNames{};
    std::array<std::int16_t, 6> SpellClicks{};
    std::int16_t LevelClicks = 0;
    std::int16_t LastClickCount = 0;
    std::int16_t ClickTarget = -1;
    std::int16_t LastLevel = 0;
    bool AutoClearing = false;
    bool SilentGameOver = false;
    bool NoSpellBusy = true;
    // The check items of the test menu: "Autoplay (TESTMODE)" and
    // "PC-SPEAKER ENABLED ON EVENTS".
    bool AutoplayChecked = false;
    bool SpeakerEnabled = true;
    // The set in play is the default one (level codes, click targets).
    bool IsDefaultSet = true;

    Timer& SoundTimer() { return *soundTimer_; }
    Timer& Timer2() { return *timer2_; }

private:
    void PlayDataWave(const std::string& name);
    void ShowClicks();
    void ReadClickTarget(std::int16_t levelNo);
    void RestartIdleTimer(std::int32_t ms);
    void WaitLettingEventsRun(std::int32_t ms);

    LevelModule& game_;
    BoardPlatform platform_;
    SessionView& view_;
    SessionServices& services_;
    TolvaBoard* board_ = nullptr;
    std::unique_ptr<Timer> soundTimer_;
    std::unique_ptr<Timer> timer2_;
};

} // namespace tolva
