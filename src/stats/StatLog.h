#pragma once
// The per-level log in stat.ini: one section LEVEL<n> per level with the fewest and
// most clicks of a finished run, the fewest and most uses of each spell, how often the
// level was played and how often it ended the game. Plain text the player may edit, so
// every value is read with the numeric reading and checked against the 16-bit range.
#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace tolva {

// The counters of the level in play, kept by the session.
struct LevelTally {
    std::int16_t LevelClicks = 0;
    std::array<std::int16_t, 6> SpellClicks{};
};

class StatLog {
public:
    explicit StatLog(std::string statFile) : file_(std::move(statFile)) {}

    // Logs a run of `level`: finished (isGameOver false) or lost. Outside the default
    // set nothing is logged and only the click count is cleared. A stored value outside
    // the 16-bit range, or a count that would pass 32767, stops the log where it stands
    // and leaves the counters as they are; otherwise the counters are cleared.
    void WriteStat(std::int16_t level, bool isGameOver, bool isDefaultSet, LevelTally& tally) const;

    // The click target of a level: its "minclicks" as it reads, or nothing when the key
    // is missing or empty. A hand-edited negative number is a target like any other.
    std::optional<std::int16_t> ClickTarget(std::int16_t level) const;

    const std::string& File() const { return file_; }

private:
    std::string file_;
};

} // namespace tolva
