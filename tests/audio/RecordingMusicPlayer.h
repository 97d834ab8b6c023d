#pragma once
// A music player for tests: plays nothing, writes down each call in order and keeps the
// state the real player would have after it, so that the choice of music can be checked.
#include "audio/MusicPlayer.h"

#include <string>
#include <vector>

namespace tolva::testing {

class RecordingMusicPlayer final : public MusicPlayer {
public:
    std::int32_t State() const override { return state_; }
    std::int32_t MaxPos() const override { return 0; }
    void PlayMod(const std::string& fileName, bool loop, std::int32_t position) override {
        Calls.push_back("PlayMod " + fileName + (loop ? " loop " : " once ") + std::to_string(position));
        state_ = StatePlaying;
    }
    void PlayAnyFile(const std::string& filePath) override {
        Calls.push_back("PlayAnyFile " + filePath);
        state_ = StatePlaying;
    }
    void StopMod() override {
        Calls.push_back("StopMod");
        state_ = StateStopped;
    }
    bool PauseMod() override { return false; }
    void SetCurrentPos(std::int32_t) override {}
    std::int32_t GetCurrentPos() const override { return 0; }
    std::int32_t GetVuMeter() const override { return 0; }
    void SetVolume(std::int32_t volume) override { Calls.push_back("SetVolume " + std::to_string(volume)); }
    bool IsPaused() const override { return false; }
    std::string ModFileName() const override { return {}; }

    std::vector<std::string> Calls;

private:
    std::int32_t state_ = StateNone;
};

} // namespace tolva::testing
