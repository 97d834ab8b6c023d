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
// The operations are split over files by concern: TolvaBoard.cpp (creation, properties,
// score and level-end events), TolvaBoardRules.cpp (group search and compaction),
// TolvaBoardLevel.cpp (level start and level pictures), TolvaBoardClick.cpp (the mouse),
// TolvaBoardFinders.cpp (moves and hints), TolvaBoardDrawing.cpp (what a paint pass draws).
#include "board/BoardListener.h"
#include "board/LevelModule.h"
#include "support/platform/BoardPlatform.h"

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

    TolvaBoard(LevelModule& game, const BoardPlatform& platform, BoardListener& listener);
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
    // The board takes the size of its background picture.
    bool AutoSize() const { return autoSize_; }
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

    // ---- score and level end (TolvaBoard.cpp) -------------------------------------------
    void SetScoreEvents();
    void SetGameOver();
    void SetGameIsOverToTrue() { GameIsOver = true; }
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
    PictureHolder& BonusPic() { return *bonusPic_; }
    PictureStrip& AniHint() { return *aniHint_; }
    Timer& Timer1() { return *timer1_; }
    Timer& SoundTimer() { return *soundTimer_; }

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

private:
    // The spell path of a click on an occupied cell with a spell armed.
    void SpellClickPath(int x, int y);
    // The closing up after a removal shown as holes.
    void Timer1_Timer();
    // The move test of the finders, with its strict bounds on the right and below.
    bool PassesMoveTest(int x, int y) const;
    void PaintCell(int x, int y);
    void PlayRefusalSound();
    void CreateParts();

    LevelModule& game_;
    BoardPlatform platform_;
    BoardListener& listener_;

    std::int16_t xBricks_ = DefaultSide;
    bool autoSize_ = true;

    std::array<std::unique_ptr<PictureHolder>, 10> gfx_;
    std::array<std::unique_ptr<PictureHolder>, SpellCount> ss_;
    std::unique_ptr<PictureHolder> tmpBack_;
    std::unique_ptr<PictureHolder> bonusPic_;
    std::unique_ptr<PictureStrip> aniHint_;
    std::unique_ptr<Timer> timer1_;
    std::unique_ptr<Timer> soundTimer_;
};

} // namespace tolva
