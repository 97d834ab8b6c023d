#pragma once
// LevelSetReader: loads levels.set of the current set into the level table (InitLevels).
//
// The file format is a line scan, not an ini file, and its quirks are part of every set
// made for the game, so they are kept to the byte:
//  - a level starts at any line beginning "[level"; the number in it is not read,
//    levels are numbered by their order in the file;
//  - the three lines behind the head are taken by position and cut by length
//    (levelbricks= 12, levelgfxfolder= 15, LevelName= 10 characters), whatever they say;
//  - rows are numbered by their order, whatever digits follow "r" or "s"; a spell row
//    counts only right behind a brick row; a line read one step too early waits in
//    LinePending for the next row;
//  - every field of every row adds value * (x + y) to LevelChecksum, including fields
//    beyond the 40th and levels beyond the hundredth, which are never stored;
//  - reading past the end of the file leaves the last line in place, so the checksum
//    line is simply the line the scan ends on.
// The file is untrusted bytes: lines of any length, any values. Nothing outside the
// 40 x 40 grids or the 100 records is ever written.
//
// A load clears the whole table first, so that a set always plays the same whatever
// set was loaded before it, and a folder without levels.set leaves no level at all.
#include "shared/LevelModule.h"
#include "levels/LevelSetHooks.h"

#include <array>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>

namespace tolva {

class LevelSetLineSource;   // the file's lines, as the scan reads them

enum class LevelSetIntegrity { Ok, Failed, NotChecked };

// What one load found, for the session and for level makers' tools.
struct LevelSetLoad {
    bool FileFound = false;          // a regular file that could be read
    bool TooLarge = false;           // over MaxLevelSetBytes: damaged, read as no file
    std::string SetName;             // behind "=" of the last set-name line
    bool SetNameFound = false;
    int LevelHeads = 0;              // level heads read, those beyond 100 included
    int SidesCut = 0;                // stored levels whose levelbricks was above 40
    int LevelsStored() const { return LevelHeads < MaxLevels ? LevelHeads : MaxLevels; }
    double LevelChecksum = 0;
    bool ChecksumLineFound = false;
    std::string StoredChecksum;      // the checksum line deciphered with the set's key, trimmed
    bool DefaultSet = false;
    std::int16_t SetKey = 0;
    LevelSetIntegrity Integrity = LevelSetIntegrity::NotChecked;
    std::string LastLine;            // the line the scan ended on
};

class LevelSetReader {
public:
    // `hooks` may be null: then only the file's part of the load runs.
    explicit LevelSetReader(LevelModule& game, LevelSetHooks* hooks = nullptr);

    // The set's folder relative to the game folder, with a closing backslash.
    std::string LevelSetPath = "levels\\default\\";
    // The weighted sum of the last load.
    double LevelChecksum = 0;

    // The whole load of AppPath() + LevelSetPath + "levels.set", in the game's order:
    // spell names and tool tips, hiscores, level menu, the scan, the integrity test,
    // the board's root folder.
    LevelSetLoad InitLevels();
    // The scan and the integrity test on `file`, standing for the current set's
    // levels.set: table cleared, menu and title hooks called, no other session step.
    LevelSetLoad Load(std::istream& file);

    // One row text into level `Level` (1-based), row `Row`; spell grid or brick grid.
    void ParseRow(int Level, int Row, std::string_view Dta, bool ParseSpell);
    // The value of one field of a row, as Val reads it.
    static double FieldValue(std::string_view text);
    // A field that is a plain whole number of at most four digits, as most are: true with
    // its value, which is then exactly what CInt(FieldValue(text)) gives.
    static bool SmallWholeField(std::string_view text, std::int16_t& value);

    bool IsDefault() const { return IsDefault(LevelSetPath); }
    // True if the lower-cased path ends in "default" or "default\".
    static bool IsDefault(const std::string& levelSetPath);
    // DefaultSetKey for a default set, OtherSetKey for any other.
    static std::int16_t SetKeyFor(const std::string& levelSetPath);

private:
    LevelSetLoad Scan(std::istream* file);
    void ReadLevel(LevelSetLineSource& source, int n, bool& restart);
    void ReadRows(LevelSetLineSource& source, int n, bool& restart);
    void CheckIntegrity(LevelSetLoad& load, const std::string& lastLine) const;

    LevelModule& game;
    LevelSetHooks* hooks;
    std::string line;
    std::string brickText, spellText;   // kept between rows so that their room is reused
    bool LinePending = false;
    int cutSides = 0;
};

} // namespace tolva
