// Level start: a level of the table goes onto the board exactly as stored, bricks, holes
// and hidden spells alike, with its size and its pictures. Nothing about a level start is
// random; random colours come in only through RandomizeBricks, which a spell calls in the
// middle of a level.
//
// A level's pictures are layered: a level folder may hold only some of 0.bmp..9.bmp and
// background.bmp, and whatever it lacks keeps the picture that was showing before. The
// picture holders guarantee that a file that can't be read changes nothing either.
#include "board/TolvaBoard.h"

#include "support/ZenkorModule.h"

#include <algorithm>
#include <array>
#include <string>

namespace tolva {

void TolvaBoard::NewGame(std::int16_t& xLevel) {
    // A level asked for by number comes from outside the board's own flow (a new game, a
    // level code, a jump): whatever the old level still had running or waiting is dropped,
    // so that it cannot go on paying points or start its next level over the new one. The
    // board's own next level (-1) comes at the end of that flow and drops nothing.
    if (xLevel != -1) DropRunningEffects();
    StartLevel(xLevel);
}

void TolvaBoard::StartLevel(std::int16_t& xLevel) {
    BoardReady = false;
    game_.BonusTimes = 0;
    game_.ActiveSpell = NoSpell;
    // The menus can start a level in the middle of a spell, or between the two clicks of
    // the test tube; whatever the spell left half done goes back to idle.
    ReturnSpellsToIdle();
    GameIsOver = false;
    if (xLevel == -1) {
        game_.CurLevelNo = static_cast<std::int16_t>(game_.CurLevelNo + 1);
        xLevel = game_.CurLevelNo;
    } else {
        game_.CurLevelNo = xLevel;
    }
    // After the last level of a set, or past 100, play goes on at level 1. Level 1 itself
    // is taken as it stands even from a free slot: there is nothing further to fall back
    // on, and an empty board is a clear result where a restart would never end.
    const bool outside = xLevel > MaxLevels || xLevel < 1;
    if (outside || (xLevel != 1 && game_.Levels[static_cast<std::size_t>(xLevel - 1)].LevelName.empty())) {
        game_.CurLevelNo = 1;
        xLevel = 1;
        StartLevel(xLevel);
        return;
    }
    listener_.NewLevel(xLevel);

    LevelRecord& record = game_.Levels[static_cast<std::size_t>(xLevel - 1)];
    LoadLevelGfx(record.levelgfxfolder);
    SetxBricks(record.levelbricks);
    // All 40 x 40 cells are copied, whatever the side in use.
    Bricks = record.BrickGrid;
    Spells = record.SpellGrid;
    for (int x = 0; x < MaxBricks; ++x)
        for (int y = 0; y < MaxBricks; ++y) DrawnBricks(x, y) = Bricks(x, y);
    DrawBoard(-1, -1, false);
    BoardReady = true;
}

void TolvaBoard::SetDefaultLevel() {
    // The board shown while no game runs; a level set replaces it. Its grids are left as
    // they stand.
    LevelRecord& first = game_.Levels[0];
    first.levelbricks = 10;
    first.levelgfxfolder.clear();
    first.LevelName = "DEF-LEVEL";
}

void TolvaBoard::LoadLevelGfx(std::string& folder) {
    // An empty folder becomes a single backslash: the set's own folder is searched.
    if (folder.empty() || folder.back() != '\\') folder += '\\';
    for (std::size_t i = 0; i < gfx_.size(); ++i) {
        const std::string file = LevelRootPath + folder + std::to_string(i) + ".bmp";
        if (FileExists(file)) gfx_[i]->LoadFile(file);
    }
    const std::string background = LevelRootPath + folder + "background.bmp";
    if (FileExists(background)) SetBackgroundPicture(background);
}

void TolvaBoard::SetBackgroundPicture(const std::string& path) {
    if (!tmpBack_->LoadFile(path)) return;
    platform_.Surface.SetBackPicture(*tmpBack_);
    UserControl_Resize();
}

void TolvaBoard::SetBrickPicture(std::int16_t PictureNumber, const std::string& newPicture) {
    if (PictureNumber < 0 || PictureNumber >= static_cast<int>(gfx_.size())) return;
    if (FileExists(newPicture)) gfx_[static_cast<std::size_t>(PictureNumber)]->LoadFile(newPicture);
}

void TolvaBoard::RandomizeBricks(bool AvoidEmptyBriks) {
    const int n = xBricks_;
    int empty = 0;
    if (AvoidEmptyBriks)
        for (int x = 0; x < n; ++x)
            for (int y = 0; y < n; ++y)
                if (Bricks(x, y) == CellEmpty) ++empty;
    // Nine colours in nearly even shares: a colour stops being drawn once it has its
    // share. The draw always ends, because nine full shares cover all the cells that draw.
    const double share = static_cast<double>(n * n - empty) / 9;
    std::array<int, 9> count{};
    for (int x = 0; x < n; ++x) {
        for (int y = 0; y < n; ++y) {
            if (AvoidEmptyBriks && Bricks(x, y) == CellEmpty) continue;
            int c = 0;
            do {
                c = std::clamp(static_cast<int>(Floor(platform_.Rng.Next() * 9)), 0, 8);
            } while (count[static_cast<std::size_t>(c)] >= share);
            ++count[static_cast<std::size_t>(c)];
            // A spell or a reserved cell keeps its value, yet its draw used up a share.
            if (Bricks(x, y) < ReservedCell) Bricks(x, y) = static_cast<std::int16_t>(c);
        }
    }
    DrawBoard(-1, -1, true);
}

} // namespace tolva
