#pragma once
// The music player of the game (ZenkorPlayer): one piece of background music at a time.
// Tracker modules (mod, xm, it, s3m, 669) play through a module renderer, any other file
// (wav, mp3) through the platform's media player; StopMod stops whichever plays.
//
// State: 0 before anything played, 1 playing, 2 stopped, 4 paused. A file that cannot be
// played leaves the state as it was and says nothing: the game then runs without music.
#include <cstdint>
#include <functional>
#include <string>

namespace tolva {

class MusicPlayer {
public:
    static constexpr std::int32_t StateNone = 0;
    static constexpr std::int32_t StatePlaying = 1;
    static constexpr std::int32_t StateStopped = 2;
    static constexpr std::int32_t StatePaused = 4;

    virtual ~MusicPlayer() = default;

    virtual std::int32_t State() const = 0;
    // The last position of the loaded module.
    virtual std::int32_t MaxPos() const = 0;
    // Plays a tracker module from `position`, looping if `loop`. An empty name keeps
    // the remembered file name but loads the empty name.
    virtual void PlayMod(const std::string& fileName, bool loop, std::int32_t position) = 0;
    // Plays any other file (wave, mp3) through the media player.
    virtual void PlayAnyFile(const std::string& filePath) = 0;
    virtual void StopMod() = 0;
    // Pauses or resumes the module; gives true if it is paused now.
    virtual bool PauseMod() = 0;
    virtual void SetCurrentPos(std::int32_t position) = 0;
    virtual std::int32_t GetCurrentPos() const = 0;
    virtual std::int32_t GetVuMeter() const = 0;
    virtual void SetVolume(std::int32_t volume) = 0;
    virtual bool IsPaused() const = 0;
    virtual std::string ModFileName() const = 0;

    // Raised once per module when it reaches its end.
    std::function<void()> Finished;
};

} // namespace tolva
