#include "stats/StatLog.h"

#include "support/ZenkorModule.h"

#include <optional>

namespace tolva {
namespace {

// A stored number as 16-bit, or nothing when it lies outside that range.
std::optional<std::int16_t> ReadShort(const std::string& file, const std::string& section, const std::string& key) {
    const double value = Val(ReadIni(file, section, key));
    if (value < -32768.5 || value >= 32767.5) return std::nullopt;
    return CInt(value);
}

bool WriteShort(const std::string& file, const std::string& section, const std::string& key, std::int32_t value) {
    return WriteIni(file, section, key, NumberText(value));
}

} // namespace

void StatLog::WriteStat(std::int16_t level, bool isGameOver, bool isDefaultSet, LevelTally& tally) const {
    if (!isDefaultSet) {
        tally.LevelClicks = 0;
        return;
    }
    const std::string section = "LEVEL" + NumberText(level);
    if (!isGameOver) {
        for (int k = 0; k < 6; ++k) {
            const std::int16_t used = tally.SpellClicks[static_cast<std::size_t>(k)];
            if (used < 1) continue;
            const std::string spell = "SPELL" + NumberText(k);
            const auto min = ReadShort(file_, section, spell + "_min");
            if (!min) return;
            if (used < *min || *min == 0) WriteShort(file_, section, spell + "_min", used);
            const auto max = ReadShort(file_, section, spell + "_max");
            if (!max) return;
            if (used > *max) WriteShort(file_, section, spell + "_max", used);
        }
        const auto maxClicks = ReadShort(file_, section, "MAXCLICKS");
        if (!maxClicks) return;
        if (tally.LevelClicks > *maxClicks) WriteShort(file_, section, "MAXCLICKS", tally.LevelClicks);
        const auto minClicks = ReadShort(file_, section, "MINCLICKS");
        if (!minClicks) return;
        if (tally.LevelClicks < *minClicks || *minClicks == 0)
            WriteShort(file_, section, "MINCLICKS", tally.LevelClicks);
    } else {
        const auto gameOver = ReadShort(file_, section, "GAMEOVER");
        if (!gameOver || *gameOver == 32767) return;
        WriteShort(file_, section, "GAMEOVER", *gameOver + 1);
    }
    const auto played = ReadShort(file_, section, "PLAYED");
    if (!played || *played == 32767) return;
    WriteShort(file_, section, "PLAYED", *played + 1);
    tally.SpellClicks.fill(0);
    tally.LevelClicks = 0;
}

std::optional<std::int16_t> StatLog::ClickTarget(std::int16_t level) const {
    const std::string text = ReadIni(file_, "LEVEL" + NumberText(level), "minclicks");
    if (text.empty()) return std::nullopt;
    return CInt(Val(text));
}

} // namespace tolva
