#pragma once
// The settings of tolva2.ini, section [main]: read once at start-up, written once at
// shutdown. One object of this type is the single owner of the player's settings for the
// whole run: every part of the game reads from it, and the settings window writes to it.
// The few values the board keeps as properties of its own (UpdateDelay, AniDraw, the hunt
// delay) are handed to it by TolvaBoard::ApplySettings and taken back by TakeSettings.
//
// Every key is one row of one table (GameSettings.cpp): its names, its form, its default
// and its range. Reading, mending, writing and the defaults of a new object are each one
// loop over that table, so a new setting is one new row (and a member here). The file is
// written key by key in place, so keys the game does not know (and `notfirstuse`) stay as
// they are.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tolva {

struct GameSettings {
    // The built-in address of the Internet hiscores, used while the file names none.
    static const char* const DefaultHiscoreUrl;
    static const char* const DefaultLevelSet;   // "levels\default\"

    // No initialisers here: the constructor gives each member its key's default.
    std::string HiscoreUrl;
    std::string LevelSetPath;
    std::int16_t PlaySounds;
    std::int16_t ShowBonusCounter;
    bool UseExternalMusicFile;
    std::string ExtMusicFile;
    std::string ExtMusicPath;
    bool MakeStat;
    bool SupplyStatFile;
    bool DrawUsingBackBuffer;
    bool PlayAnimations;
    std::int16_t PlayMusic;
    std::int32_t UpdateDelay;   // the board's pause before closing up, at least 2 when read
    std::int16_t HuntDelay;
    bool AniDraw;
    // Outline the group under the pointer or the keyboard's cursor, with its points.
    bool ShowGroup;

    // Every setting at its default, as a missing file gives them.
    GameSettings();

    // Reads every key; a missing or empty value takes its default, a value that is no
    // number counts 0. Never fails: a missing file gives all the defaults.
    static GameSettings Read(const std::string& iniFile);
    // Writes every key in the order the game has always written them, after making the
    // file writable. Gives false if the file could not be written.
    bool Write(const std::string& iniFile) const;

    // A number or flag setting by the name of its key (either spelling, any case): the
    // number as it is, a flag as 1 or 0. Nothing for a text setting or an unknown name.
    std::optional<std::int32_t> Number(std::string_view key) const;
    // Sets it as reading the number from the file would, without mending it (a flag is
    // true only for 1); false, changing nothing, for a text setting or an unknown name.
    bool SetNumber(std::string_view key, std::int32_t value);

    // `notfirstuse`: the about window is shown until the file says "yes" (any case).
    static bool IsFirstUse(const std::string& iniFile);
    static bool MarkFirstUseDone(const std::string& iniFile);
};

} // namespace tolva
