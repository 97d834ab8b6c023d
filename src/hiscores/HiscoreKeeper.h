#pragma once
// HiscoreKeeper: the hiscore table of the current level set, as the game session sees it.
// It holds the table, loads and saves the set's hiscore.hi, runs the end-of-game entry
// (CheckIfHiScore) and the flashing of the new entry while its initials are typed.
//
// Everything it shows goes through a HiscoreView, and its only timer comes from the
// EventLoop, so that a whole entry runs in a test on the virtual clock: the entry window
// is modal, and the flash timer ticks during that wait, drawing the new place in red and
// black by turns.
#include "hiscores/HiscoreService.h"
#include "hiscores/HiscoreView.h"
#include "hiscores/Hiscores.h"
#include "support/platform/Dialogs.h"
#include "support/platform/EventLoop.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace tolva {

class HiscoreKeeper final : public HiscoreService {
public:
    // Colours as 0xBBGGRR.
    static constexpr std::int32_t Red = 0x0000FF;
    static constexpr std::int32_t Green = 0x009600;
    static constexpr std::int32_t Black = 0x000000;
    static constexpr std::int32_t White = 0xFFFFFF;
    static constexpr std::int32_t FlashIntervalMs = 500;

    HiscoreKeeper(EventLoop& loop, HiscoreView& view);
    ~HiscoreKeeper() override;
    HiscoreKeeper(const HiscoreKeeper&) = delete;
    HiscoreKeeper& operator=(const HiscoreKeeper&) = delete;

    void CheckIfHiScore(double score, std::int16_t level) override;
    void PrintHiScore(std::int16_t highlightPlace, std::int32_t highlightColor,
                      std::int32_t highlightTextColor) override;
    std::int16_t CheckHiscorePlace(double score) const override;

    // Loads the table of the set at `levelSetPath` (relative, with its closing
    // backslash) under `gameFolder` (AppPath()), then draws it without a highlight.
    // `label` gets the Loading window's progress texts. A table that fails its checksum
    // is reset after the stop box "HISCORE TABLE IS CORRUPTED! RESETTING !";
    // `beforeMessage` and `afterMessage` run around that box, so that the Loading window
    // can give up its always-on-top state for it and take it back afterwards.
    HiscoreLoad LoadForSet(const std::string& gameFolder, const std::string& levelSetPath,
                           const std::function<void(const std::string&)>& label, Dialogs& dialogs,
                           const std::function<void()>& beforeMessage = {},
                           const std::function<void()>& afterMessage = {});

    // SaveScore: writes the table with the key of the set at `levelSetPath`, to `xPath`,
    // or to the set's hiscore.hi if `xPath` is empty (an export names its own file).
    bool SaveForSet(const std::string& gameFolder, const std::string& levelSetPath,
                    const std::string& xPath = {}) const;

    // The set's hiscore.hi as a stored path.
    static std::string HiscorePath(const std::string& gameFolder, const std::string& levelSetPath);

    Hiscores& Table() { return table_; }
    const Hiscores& Table() const { return table_; }

    // Runs when a new entry has its initials. The game writes the table to its file then,
    // besides at shutdown and before a change of set, so that a new place survives a
    // crash or a kill of the program.
    std::function<void()> EntryMade;

    // The 1-based place that flashes during an entry, -1 for none.
    std::int16_t HighlightedPlace = -1;
    // The initials typed at the last entry.
    std::string EnteredInitials;

    const Timer& FlashTimer() const { return *flashHiScoreTimer; }

private:
    void flashHiScoreTimer_Tick();

    HiscoreView& view_;
    Hiscores table_;
    std::unique_ptr<Timer> flashHiScoreTimer;
    // Which colour the next tick shows; kept from one entry to the next, as the flash
    // simply goes on where it stopped.
    std::int32_t FlashColor = 0;
};

} // namespace tolva
