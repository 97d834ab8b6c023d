#pragma once
// The settings of tolva2.ini, section [main]: read once at start-up, written once at
// shutdown. One object of this type is the single owner of the player's settings for the
// whole run: every part of the game reads from it, and the settings window writes to it.
// The few values the board keeps as properties of its own (UpdateDelay, AniDraw, the hunt
// delay) are handed to it by TolvaBoard::ApplySettings and taken back by TakeSettings.
//
// Every key is one row of one table (GameSettings.cpp) with its default and its form, so
// that reading, writing and the defaults can never drift apart. The file is written key
// by key in place, so keys the game does not know (and `notfirstuse`) stay as they are.
#include <cstdint>
#include <string>

namespace tolva {

struct GameSettings {
    // The built-in address of the Internet hiscores, used while the file names none.
    static const char* const DefaultHiscoreUrl;
    static const char* const DefaultLevelSet;   // "levels\default\"

    std::string HiscoreUrl = DefaultHiscoreUrl;
    std::string LevelSetPath = DefaultLevelSet;
    std::int16_t PlaySounds = 1;
    std::int16_t ShowBonusCounter = 1;
    bool UseExternalMusicFile = false;
    std::string ExtMusicFile;
    std::string ExtMusicPath;
    bool MakeStat = true;
    bool SupplyStatFile = true;
    bool DrawUsingBackBuffer = true;
    bool PlayAnimations = true;
    std::int16_t PlayMusic = 1;
    std::int32_t UpdateDelay = 200;   // the board's pause before closing up, at least 2
    std::int16_t HuntDelay = 0;
    bool AniDraw = true;
    // Outline the group under the pointer or the keyboard's cursor, with its points.
    bool ShowGroup = true;

    // Reads every key; a missing or empty value takes its default, a value that is no
    // number counts 0. Never fails: a missing file gives all the defaults.
    static GameSettings Read(const std::string& iniFile);
    // Writes every key in the order the game has always written them, after making the
    // file writable. Gives false if the file could not be written.
    bool Write(const std::string& iniFile) const;

    // `notfirstuse`: the about window is shown until the file says "yes" (any case).
    static bool IsFirstUse(const std::string& iniFile);
    static bool MarkFirstUseDone(const std::string& iniFile);
};

} // namespace tolva
