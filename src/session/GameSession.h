#pragma once
// GameSession: the game as the player sees it, around the board. The board knows the
// rules and nothing of a game; the session keeps the score, the spell stock, the click
// counters of the level, the flow from level to level and the end of a game, by handling
// the board's 14 events and by its own NewGame.
//
// It is plain C++ so that a whole game can be played in a test or in tolva2-cli without
// a window: what it shows goes through SessionView (labels, the spell panel, the Loading
// window), what it asks of the hiscore table, the statistics log, the idle mascot and the
// other windows goes through SessionServices, and message boxes, sounds, timers and random
// numbers through the board's platform seam. The player's settings are read from the one
// GameSettings object of the run. The main window is a thin layer of widgets over it.
//
// The commands of the Game menu live here too (new game, level code, end game, the copy
// of the level code), and so does the hidden test mode: the key word typed on the main
// window, cheat mode and what it freezes, and the test menu (jump to a level, play a
// sound, give a bonus, the PC speaker signals, autoplay). The window only turns its keys
// and menu clicks into these calls; a function key opens its window through the
// session's WindowOpener.
//
// Autoplay makes one move per AutoPlay and has no loop of its own: each move ends in the
// board's CanDoNextMove, whose handler asks for the next one. When the board closes up at
// once (AniDraw off) that event comes while the move that caused it is still on the stack;
// the next move is then made by that AutoPlay after its click has returned, instead of
// inside it, so that a game playing itself through a hundred levels keeps a flat stack.
// The order of the moves and the random numbers they draw are the same either way, and
// pending events run between any two moves.
#include "board/BoardListener.h"
#include "settings/GameSettings.h"
#include "shared/LevelModule.h"
#include "session/PlayState.h"
#include "session/SessionServices.h"
#include "session/SessionView.h"
#include "support/platform/BoardPlatform.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>

namespace tolva {

class TolvaBoard;

// Which entries of the Game menu (and the hiscore entries of the Options menu, which
// follow the Game menu's last opening) answer.
struct GameMenuState {
    bool EndGame = false;
    bool LevelCode = true;
    bool DefaultSetOnly = true;   // "Submit to Internet Hiscores", "Export hiscore file..."
};

class GameSession final : public BoardListener {
public:
    GameSession(LevelModule& game, const GameSettings& settings, const BoardPlatform& platform, SessionView& view,
                const SessionServices& services);
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
    // The score of a game broken off (a quit, a change of set) offered to the table.
    // A practice game's score is not: a message says why.
    void OfferScoreToTable();

    // ---- taking moves back, leaving and resuming ------------------------------------------
    // The state of play that a move changes, now.
    PlayState CapturePlay() const;
    // Sets the level in play back to `state` (of the same level) and shows it.
    void RestorePlay(const PlayState& state);
    // A move was taken back: from now on this game is played for practice, and its score
    // goes into no table.
    void MarkPractice();
    bool Practice() const { return practice_; }
    // Starts a new game at the state's level (asking first, as a new game does) and sets
    // it to `state`. The level start logs nothing. False if the player kept the running game.
    bool ResumeGame(const PlayState& state);
    // The game is put away, not ended: the next shutdown neither asks nor offers its score.
    void LeaveWithoutOffering() { GameRunning = false; }

    // ---- the Game menu ----------------------------------------------------------------
    void NewGameMnu_Click() { NewGame(1); }
    // Asks for a level code until it is right or cancelled, and starts a game there.
    void NewGameWithLevelCode_Click();
    // Ends the running game after asking, or ends a board that is not over yet.
    void mnuEndGame_Click();
    // The level code label was clicked: offers to copy the code to the clipboard.
    void lbLevelCode_Click();
    // Called before the Game menu opens: what it (and the hiscore entries) allows now.
    GameMenuState Game_Click();

    // ---- the spell bar ------------------------------------------------------------------
    void sp_Click(std::int16_t Index);
    void ActiveSpell_Click();

    // ---- the PC speaker signals of the test mode (0, 1 and 3) ----------------------------
    void SpeakerEvent(std::int16_t EventSound);

    // ---- the keys of the main window and the test mode ------------------------------------
    // A key went down on the main window; KeyCode is the classic 16-bit code (F1 112, F2 113,
    // F4 115, F5 116, F12 123, a letter its capital ASCII code), or -1 for a key that has
    // none. A function key and H act first; then every key, -1 included, goes towards the
    // key word, so that a key with no code breaks a word half typed.
    void Form_KeyDown(std::int16_t KeyCode);
    // Switches cheat mode; on: the score of the game is frozen (and cleared, unless kept).
    void ChangeCheatMode();
    // The entries of the test menu.
    void mnuLevList_Click(std::int16_t Index);
    void mnuPlaySound_Click();
    void mnuAutoplay_Click();
    void GiveBonus_Click();
    // Flips the check mark of the PC speaker entry and gives the new one.
    bool PCSPEAKERENABLED_Click();

    // ---- autoplay: one automatic move, and the moves its click asks for ------------------
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
    // The check items of the test menu: "Autoplay (TESTMODE)" and
    // "PC-SPEAKER ENABLED ON EVENTS".
    bool AutoplayChecked = false;
    bool SpeakerEnabled = true;
    // The set in play is the default one (level codes, click targets).
    bool IsDefaultSet = true;
    // The letters typed so far that match the start of the key word.
    std::string TypedKeys;

    const GameSettings& Settings() const { return settings_; }
    bool CheatMode() const { return game_.CheatMode; }

private:
    void PlayDataWave(const std::string& name);
    void ShowClicks();
    void ReadClickTarget(std::int16_t levelNo);
    void WaitLettingEventsRun(std::int32_t ms);
    void TypeKey(std::int16_t KeyCode);
    void SetAutoplayChecked(bool checked);
    // Asks for a number until it is at most `limit`; false on an empty answer or Cancel.
    bool AskNumber(const std::string& prompt, double limit, const std::string& tooBig, double& value);
    void MakeAutoMove();

    LevelModule& game_;
    const GameSettings& settings_;
    BoardPlatform platform_;
    SessionView& view_;
    SessionServices services_;
    TolvaBoard* board_ = nullptr;
    std::unique_ptr<Timer> soundTimer_;
    bool practice_ = false;
    bool resuming_ = false;
    // AutoPlay calls on the stack, and a next move asked for by CanDoNextMove meanwhile.
    int autoPlayDepth_ = 0;
    bool nextMoveDue_ = false;
};

} // namespace tolva
