#pragma once
// The parts of a game session that tolva2-cli's headless games stand in for the window:
// a display that shows nothing (the commands print their own lines) and the rest of the
// game without a hiscore table, where a beep of the speaker takes its time on the game
// clock and is counted.
#include "session/SessionServices.h"
#include "session/SessionView.h"
#include "support/platform/EventLoop.h"

namespace tolva::cli {

class SilentView final : public SessionView {
public:
    void SetLabel(SessionLabel, const std::string&) override {}
    void ShowSpellPanel(const SpellPanel&) override {}
    void ShowLoadingText(const std::string&) override {}
    void ShowStandardBackground() override {}
    void ShowCheatMode(bool) override {}
    void ShowAutoplayChecked(bool) override {}
};

class TableFreeServices final : public SessionServices {
public:
    explicit TableFreeServices(EventLoop& loop) : loop_(loop) {}
    void CheckIfHiScore() override {}
    void PrintHiScore(std::int16_t, std::int32_t, std::int32_t) override {}
    std::int16_t CheckHiscorePlace() override { return -1; }
    void PlayKedelig() override {}
    void SpeakerBeep(std::int32_t, std::int32_t milliseconds) override {
        ++Beeps;
        loop_.Pause(milliseconds);
    }
    long Beeps = 0;

private:
    EventLoop& loop_;
};

} // namespace tolva::cli
