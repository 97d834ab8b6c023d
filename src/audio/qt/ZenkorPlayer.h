#pragma once
// The music player on screen. Tracker modules (mod, xm, it, s3m, 669) are rendered by
// libopenmpt (ModuleStream) into a QAudioSink that pulls, both on a thread of their own
// (MusicThread), so that no wait of the game's thread can starve the music; any other
// file (wav, mp3) goes to a QMediaPlayer. Only one plays at a time; StopMod stops both.
//
// Positions are milliseconds into the module: MaxPos is the module's length, and
// GetCurrentPos the place being heard (the rendered place less what waits in the buffers);
// a module played once stands at MaxPos when it is over. For a file of the media player
// the position is the media player's.
//
// Timer1 looks every 500 ms: the first time a module has played to its end (for a looping
// one, the end of its first pass), Finished is raised, once per module. Otherwise a
// position above 0 makes the state "playing" (1).
//
// Nothing touches the sound device before music is asked for: the sink is made by the
// first PlayMod that loads, the media player by the first PlayAnyFile, so that start-up
// stays fast. A file that does not load, or a device that does not open, leaves the state
// as it was and says nothing: the game runs without music. Destroy the player before the
// application object.
#include "audio/MusicPlayer.h"
#include "audio/qt/MusicThread.h"

#include <QTimer>

#include <memory>

class QAudioSink;
class QAudioOutput;
class QMediaPlayer;

namespace tolva {

class ModuleStream;

class ZenkorPlayer final : public MusicPlayer {
public:
    // Milliseconds of sound the sink keeps queued at the audio server. The music thread
    // tops it up whatever the game's thread is doing.
    static constexpr int SinkBufferMs = 500;

    ZenkorPlayer();
    ~ZenkorPlayer() override;
    ZenkorPlayer(const ZenkorPlayer&) = delete;
    ZenkorPlayer& operator=(const ZenkorPlayer&) = delete;

    std::int32_t State() const override { return state_; }
    std::int32_t MaxPos() const override { return maxPos_; }
    void PlayMod(const std::string& fileName, bool loop, std::int32_t position) override;
    void PlayAnyFile(const std::string& filePath) override;
    void StopMod() override;
    bool PauseMod() override;
    void SetCurrentPos(std::int32_t position) override;
    std::int32_t GetCurrentPos() const override;
    std::int32_t GetVuMeter() const override;
    void SetVolume(std::int32_t volume) override;
    bool IsPaused() const override { return paused_; }
    std::string ModFileName() const override { return modFile_; }

    // Whether a module is being rendered into the sound device now.
    bool ModuleSounding() const;

private:
    void Timer1_Tick();
    bool StartSink();
    void StopSink();

    // The module and its sink live on the music thread and are touched only in its jobs.
    mutable MusicThread music_;
    std::unique_ptr<ModuleStream> stream_;
    std::unique_ptr<QAudioSink> sink_;
    std::unique_ptr<QAudioOutput> mediaOutput_;
    std::unique_ptr<QMediaPlayer> media_;
    QTimer timer1_;

    std::int32_t state_ = StateNone;
    std::int32_t maxPos_ = 0;
    std::int32_t volume_ = 100;
    std::string modFile_;
    bool paused_ = false;
    bool modFinished_ = false;
};

} // namespace tolva
