#pragma once
// TolvaBoard: the board of the game and its rules. A square of at most 40 x 40 cells on
// which a click takes away a connected group of one value; the rest falls, empty columns
// close towards the left, spells that reach the bottom row are collected, and the end of
// each move is judged (level cleared, no move left, or play goes on).
//
// Why it looks the way it does:
//  - The board holds no score and no spell stock. It counts (RemovedBricks, BonusTimes)
//    and reports through the 14 events of BoardListener, synchronously; the owner adds up.
//  - Everything outside the grids (timers, letting events run, Pause, painting, pictures,
//    strips, sounds, random numbers) is reached through BoardPlatform, so that a board
//    plays in a test on a virtual clock with nothing on a screen.
//  - Handlers run in the middle of the board's own operations and may let pending events
//    run, so that a Timer1 tick or another click can arrive inside CleanArray or
//    BoardClick. The operations are therefore written to read the grids afresh after
//    every event, and the copying steps of the compaction raise no event at all.
//  - The board must survive any level data: cell values outside -1..16, spell numbers
//    above 5, a level side out of range. Every grid access is bounded by the 40 x 40 of
//    the grids, and xBricks is kept within 1..40.
//
//  - Spells and effects wait for their strips and timers while letting events run, so a
//    tick or a click can come in during a spell. SpellClickPending turns the board's
//    clicks away and SpellRunning (in LevelModule) the spell buttons; BoardReady false
//    keeps a repaint from painting over an effect.
//
// The operations are split over files by concern: TolvaBoard.cpp (creation, properties,
// score and level-end events), TolvaBoardRules.cpp (group search and compaction),
// TolvaBoardLevel.cpp (level start and level pictures), TolvaBoardClick.cpp (the mouse),
// TolvaBoardFinders.cpp (moves and hints), TolvaBoardDrawing.cpp (what a paint pass draws),
// TolvaBoardSpells.cpp (the spell path of a click and the spells), TolvaBoardSaw.cpp (the
// bouncing saw), TolvaBoardColour.cpp (recolouring, the flashing marker, clearing the
// rest), TolvaBoardBonus.cpp (the bonus count-up and the effect strips).
#include "board/BoardListener.h"
#include "board/MoveWatcher.h"
#include "settings/GameSettings.h"
#include "shared/LevelModule.h"
#include "support/platform/BoardPlatform.h"
#include "support/platform/PicturePanel.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>

namespace tolva {

using DrawnGrid = Grid<float>;

class TolvaBoard {
public:
    static constexpr std::int16_t DefaultSide = 20;
    static constexpr std::int32_t DefaultUpdateDelay = 200;
    static constexpr double LevelBonus = 100000;
    static constexpr std::int16_t MaxBonusTimes = 9;
    // Timing of the effects, in milliseconds.
    static constexpr std::int32_t SawStepInterval = 180;
    static constexpr std::int32_t SawRunTime = 4000;
    static constexpr std::int16_t SawPasses = 400;
    static constexpr std::int32_t FlashInterval = 30;
    static constexpr std::int16_t FlashStep = 30;
    static constexpr std::int32_t BonusStepInterval = 130;
    static constexpr std::int32_t BonusLingerTime = 1000;
    static constexpr int UmbrellaDeals = 11;
    static constexpr int RainbowMaxPicks = 50000;

    TolvaBoard(LevelModule& game, const GameSettings& settings, const BoardPlatform& platform,
               BoardListener& listener);
    ~TolvaBoard();
    TolvaBoard(const TolvaBoard&) = delete;
    TolvaBoard& operator=(const TolvaBoard&) = delete;

    // ---- properties ------------------------------------------------------------------
    // Side of the board in use; kept within 1..40 whatever is asked.
    std::int16_t xBricks() const { return xBricks_; }
    void SetxBricks(std::int16_t side);
    // The interval of Timer1: the pause between a removal and the closing up.
    std::int32_t UpdateDelay() const;
    void SetUpdateDelay(std::int32_t ms);
    // True: a removed group shows as holes until Timer1 fires. False: it closes at once.
    bool AniDraw = true;
    // The values of the player's settings that the board keeps as properties of its own
    // (UpdateDelay, AniDraw, the hunt delay) are given to it here, and taken back here.
    void ApplySettings(const GameSettings& settings);
    // The same without the hunt delay: what the settings window hands on while it is open.
    void ApplyActionSettings(const GameSettings& settings);
    void TakeSettings(GameSettings& settings) const;
    // The board takes the size of its background picture.
    void SetAutoSize(bool autoSize);

    // ---- level start (TolvaBoardLevel.cpp) ---------------------------------------------
    // Starts level xLevel (1..100), or the next one for -1; a number outside the table or
    // a free slot starts level 1. On return xLevel holds the level started.
    void NewGame(std::int16_t& xLevel);
    void RandomizeBricks(bool AvoidEmptyBriks);
    void SetDefaultLevel();
    // Loads 0.bmp..9.bmp and background.bmp of a level folder under LevelRootPath. Adds
    // a closing backslash to `folder`, in the caller's text too.
    void LoadLevelGfx(std::string& folder);
    void LevelRoot(const std::string& lPath) { LevelRootPath = lPath; }
    void SetBackgroundPicture(const std::string& path);
    void SetBrickPicture(std::int16_t PictureNumber, const std::string& newPicture);
    // Loads the bonus screen, the digits, the spells and the effect strips from the data
    // folder, raising ResourceLoaded after each (TolvaBoardResources.cpp). With
    // whenFirstNeeded only the spells are loaded now; the bonus screen with its digits and
    // each effect strip are loaded, with their events, just before they are first shown.
    void LoadResources(bool whenFirstNeeded = false);

    // ---- group search and compaction (TolvaBoardRules.cpp) ------------------------------
    float GetX(float X) const;
    float GetY(float Y) const;
    // Bricks(x, y); 0 for x or y outside 0..39. A fraction rounds to the nearest cell.
    std::int16_t GetBrick(double x, double y) const;
    bool IsValid(int x, int y) const;
    void Hunt(int x, int y);
    void CleanArray();
    bool IsColEmpty(int Col) const;
    bool CheckIfFinished() const;
    bool HasMoves() const;
    // A left click on (x, y) with no spell armed: the plain removal.
    void BoardClick(int x, int y);
    void SetHuntDelay(std::int16_t DelayValue) { HuntDelay = DelayValue; }

    // ---- spells (TolvaBoardSpells.cpp) --------------------------------------------------
    // Carries out spell SpellNo on cell (X, Y) and spends it, whether it changed anything
    // or not; any other number does nothing but is spent all the same.
    void UseSpell(std::int16_t SpellNo, int X, int Y);
    // Takes one brick away as a spell does: a brick with a spell hidden under it turns
    // into that spell, anything else becomes a hole. Paints nothing.
    void SpellBrick(int X, int Y);
    // The strip of frmMain that plays between the two clicks of the "TEST TUBE"; the
    // window that owns it hands it over. nullptr for none.
    void SetTestTubeAnimation(PictureStrip* strip) { testTubeAnimation_ = strip; }

    // ---- the bouncing saw (TolvaBoardSaw.cpp) -------------------------------------------
    // Runs the saw from cell (x, y) for four seconds and returns when it has ended and
    // the board has closed up.
    void MakeBounce(int x, int y);

    // ---- recolouring and clearing (TolvaBoardColour.cpp) --------------------------------
    // Gives the group of (x, y) the value SetColor, painting cell by cell.
    void HuntAndSetColor(int x, int y, std::int16_t SetColor);
    // Takes every colour brick off the board, without points, and closes the board up.
    void ClearRestOfBoardNow();

    // ---- the bonus display and the effect strips (TolvaBoardBonus.cpp) -----------------
    // Counts Times steps of Bonus up on the bonus screen, one step every 130 ms, and
    // returns when the count is done; the screen stays one more second.
    void ShowBonusMovie(double Bonus, std::int16_t Times);
    // Shows a text of digits and points in PicObject with the digit pictures, centred on
    // the bonus screen.
    void ShowBonus(PicturePanel& PicObject, const std::string& sNumber);
    // 100000 -> "100.000", 0 -> "000.00": at least five digits, a point after every
    // third counted from the left.
    static std::string FormatBonus(double Point);
    // The width of a number written with the digit pictures No(0..10).
    std::int32_t GetWidthOfPictures(const std::string& strNo) const;
    // Play the explosion or the bomb at a pixel position and return when it has played.
    // Both give false if the level flow was dropped meanwhile (a new game, a game ended).
    bool AnimationEffect(double X, double Y);
    bool BomEffect(double X, double Y);

    // ---- score and level end (TolvaBoard.cpp) -------------------------------------------
    void SetScoreEvents();
    void SetGameOver();
    void SetGameIsOverToTrue() { GameIsOver = true; }
    // The board stands still and waits for the player: a game on, nothing painting over
    // it, no spell armed or under way, no effect, bonus count or closing up to come.
    bool AwaitsClick() const;
    // No effect, bonus count or closing up under way, and no spell at work: the board may
    // be set back to an earlier state. A spell may be armed.
    bool EffectsIdle() const;
    // Counts the level starts and the ends of play (a game over): a state kept under one
    // count belongs to a level that is no longer in play under another.
    std::uint64_t LevelStarts() const { return levelStarts_; }
    // Who is told before each move; nullptr for none.
    void SetMoveWatcher(MoveWatcher* watcher) { moveWatcher_ = watcher; }
    std::int16_t CurLevel() const { return game_.CurLevelNo; }
    void JumpToLevel(std::int16_t Level);

    // ---- the mouse (TolvaBoardClick.cpp) ------------------------------------------------
    // Button 1 left, 2 right; X, Y in surface units. Shift is not looked at.
    void UserControl_MouseUp(std::int16_t Button, std::int16_t Shift, float X, float Y);
    void UserControl_MouseMove(std::int16_t Button, std::int16_t Shift, float X, float Y);
    // Clicks the middle of cell (X, Y). Adds 1 to X and Y in place, as callers expect.
    void ClickOnBrick(float& X, float& Y, std::int16_t Button);

    // ---- moves and hints (TolvaBoardFinders.cpp) ---------------------------------------
    void ShowHint();
    // Each writes a cell into x and y; with no candidate they are left alone.
    void GetFirstMoveableBrick(float& x, float& y) const;
    void GetRandomMoveableBrick(float& x, float& y);
    void GetRandomBrick(float& x, float& y);

    // ---- drawing (TolvaBoardDrawing.cpp) ------------------------------------------------
    // setX -1: the whole board, skipping unchanged cells when Fast and the player's
    // DrawUsingBackBuffer allow it; otherwise the one cell (setX, SetY).
    void DrawBoard(std::int16_t setX, std::int16_t SetY, bool Fast);
    void UserControl_Paint();
    void UserControl_Resize();
    // The board's background picture (BackPicture): into TmpBack and the surface.
    void SetBackPicture(const PictureHolder& picture);

    // ---- parts supplied by the platform ------------------------------------------------
    PictureHolder& Gfx(int i) { return *gfx_.at(static_cast<std::size_t>(i)); }
    PictureHolder& ss(int i) { return *ss_.at(static_cast<std::size_t>(i)); }
    PictureHolder& TmpBack() { return *tmpBack_; }
    PictureStrip& AniHint() { return *aniHint_; }
    Timer& Timer1() { return *timer1_; }
    // The bonus screen, and the three lines on it: bonus per step, steps, total.
    PicturePanel& BonusPic() { return *bonusPic_; }
    PicturePanel& LevBonus() { return *levBonus_; }
    PicturePanel& picTimes() { return *picTimes_; }
    PicturePanel& picBonus() { return *picBonus_; }
    // The digits 0 to 9 of the bonus display and, in No(10), its point.
    PictureHolder& No(int i) { return *no_.at(static_cast<std::size_t>(i)); }
    // The pointer shown between the two clicks of the "TEST TUBE".
    PictureHolder& Pipette() { return *pipette_; }
    PictureStrip& Animation() { return *animation_; }
    PictureStrip& BOM() { return *bom_; }
    PictureStrip& Bounce() { return *bounce_; }
    Timer& FlashTimer() { return *flashTimer_; }
    Timer& BounceTimer() { return *bounceTimer_; }
    Timer& BounceOn() { return *bounceOn_; }
    Timer& BonusTimer() { return *bonusTimer_; }
    Timer& RemoveBonusTimer() { return *removeBonusTimer_; }

    // ---- the state of the board ----------------------------------------------------------
    // Kept public like the fields of a record: the board's own files and the tests read
    // them; the session goes through the operations.
    CellGrid Bricks;
    CellGrid Spells;
    CellGrid WorkBricks;
    CellGrid WorkSpells;
    DrawnGrid DrawnBricks;

    std::int32_t HuntDelay = 0;
    std::string LevelRootPath;
    bool GameIsOver = true;
    bool BoardReady = false;
    std::int16_t RemovedBricks = 0;
    std::int16_t TestTubeColor = -1;
    std::int16_t TestTubeX = -1;
    std::int16_t TestTubeY = -1;
    bool SpellClickPending = false;
    std::int16_t FlashX = 0;
    std::int16_t FlashY = 0;

    // The saw's heading; kept from one saw to the next.
    bool BounceRight = false;
    bool BounceDown = false;
    // The colour of the next flash of the test tube's marker; kept from one use to the next.
    struct FlashColour {
        std::int16_t Red = 0;
        std::int16_t Green = 0;
        std::int16_t Blue = 0;
        bool Falling = false;
    } TestTubeFlash;
    // The bonus count-up: steps counted, steps to count, points per step.
    std::int16_t BonusCounted = 0;
    std::int16_t BonusSteps = 0;
    double BonusPerStep = 0;
    // An effect strip is playing; its Finish clears it.
    bool EffectPlaying = false;

private:
    void StartLevel(std::int16_t& xLevel);
    // The spell path of a click on an occupied cell with a spell armed.
    void SpellClickPath(int x, int y);
    void MarkTestTubeCell(int x, int y);
    void PourTestTube(int x, int y);
    // A level start ends whatever a spell left half done: no click pending, no spell
    // running, no marker, no test tube animation, the default pointer.
    void ReturnSpellsToIdle();
    void Rainbow(int x, int y);
    void Gun(int x, int y);
    bool GunShot(int x, int y);
    void Bomb(int x, int y);
    void Umbrella();
    // The size of one cell on the surface.
    double CellWidth() const;
    double CellHeight() const;
    void SizeToCell(PictureStrip& strip);
    void PlayDataWave(const std::string& name);

    void BounceTimer_Timer();
    bool SawMayWalkOn(int x, int y) const;
    void PlaceBounce();
    void FlashTimer_Timer();
    void BonusTimer_Timer();
    void RemoveBonusTimer_Timer();
    // Plays an effect strip once at a pixel position; false if the level flow was dropped
    // while it played.
    bool PlayEffect(PictureStrip& strip, const std::string& wave, double X, double Y);
    void CreateEffectParts();
    // The closing up after a removal shown as holes.
    void Timer1_Timer();
    // The move test of the finders, with its strict bounds on the right and below.
    bool PassesMoveTest(int x, int y) const;
    void PaintCell(int x, int y);
    void PlayRefusalSound();
    void CreateParts();

    // Ends every effect that is running or waiting (the bonus count, the saw, the effect
    // strips, the pending closing up) and marks the level flow they belong to as dropped:
    // a new level or the end of the game takes over from them.
    void DropRunningEffects();
    // True when the level (or game) that was in play at `levelStart` has been replaced
    // since: a routine that waited must then not carry on with its part of the old flow.
    bool FlowDropped(std::uint64_t levelStart) const { return levelStarts_ != levelStart; }

    LevelModule& game_;
    const GameSettings& settings_;
    BoardPlatform platform_;
    std::uint64_t levelStarts_ = 0;
    BoardListener& listener_;
    MoveWatcher* moveWatcher_ = nullptr;
    void BeforeMove() {
        if (moveWatcher_ != nullptr) moveWatcher_->BeforeMove();
    }

    std::int16_t xBricks_ = DefaultSide;
    bool autoSize_ = true;

    std::array<std::unique_ptr<PictureHolder>, 10> gfx_;
    std::array<std::unique_ptr<PictureHolder>, SpellCount> ss_;
    std::unique_ptr<PictureHolder> tmpBack_;
    std::unique_ptr<PicturePanel> bonusPic_;
    std::unique_ptr<PicturePanel> levBonus_;
    std::unique_ptr<PicturePanel> picTimes_;
    std::unique_ptr<PicturePanel> picBonus_;
    std::array<std::unique_ptr<PictureHolder>, 11> no_;
    std::unique_ptr<PictureHolder> pipette_;
    std::unique_ptr<PictureStrip> aniHint_;
    std::unique_ptr<PictureStrip> animation_;
    std::unique_ptr<PictureStrip> bom_;
    std::unique_ptr<PictureStrip> bounce_;
    PictureStrip* testTubeAnimation_ = nullptr;
    // The data folder's pictures that LoadResources left for their first showing.
    enum class BoardResource : std::uint8_t { BonusScreen, Explosion, Saw, Bomb, Hint, Count };
    std::array<bool, static_cast<std::size_t>(BoardResource::Count)> pendingResources_{};
    void LoadResource(BoardResource resource);
    // Loads the resource if it is still waiting for its first showing.
    void NeedResource(BoardResource resource);
    std::unique_ptr<Timer> timer1_;
    std::unique_ptr<Timer> soundTimer_;
    std::unique_ptr<Timer> flashTimer_;
    std::unique_ptr<Timer> bounceTimer_;
    std::unique_ptr<Timer> bounceOn_;
    std::unique_ptr<Timer> bonusTimer_;
    std::unique_ptr<Timer> removeBonusTimer_;
    // The saw's cell; Bounce stands on it.
    int bounceCol_ = 0;
    int bounceRow_ = 0;
};

} // namespace tolva
