#pragma once
// The sound effects and the music as the game holds them: stand-ins that load the audio
// plug-in (AudioPlugin.h) at the first sound or tune and hand every call on to the real
// player it makes. Until then the music is stopped and silent, as a player that has not
// played yet is.
//
// A plug-in that cannot be found or loaded counts as a missing sound device: each sound
// shows "Unable to init SOUND-DECVICE" as the player does without a device, the music
// stays silent, and the game goes on.
//
// Destroy both before the application object.
#include "audio/MusicPlayer.h"
#include "support/platform/Dialogs.h"
#include "support/platform/SoundEffects.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

class QLibrary;

namespace tolva {

// The plug-in, looked for in the given folders in order, loaded once on first need.
class AudioPluginLoader {
public:
    explicit AudioPluginLoader(QStringList folders);
    ~AudioPluginLoader();
    AudioPluginLoader(const AudioPluginLoader&) = delete;
    AudioPluginLoader& operator=(const AudioPluginLoader&) = delete;

    // Null when the plug-in is not there or not usable.
    std::unique_ptr<SoundEffects> MakeSoundEffects(Dialogs& dialogs);
    std::unique_ptr<MusicPlayer> MakeMusicPlayer();
    // Whether a load was tried, and its error if it failed.
    bool Tried() const { return tried_; }
    QString Error() const { return error_; }

private:
    QFunctionPointer Resolve(const char* symbol);

    QStringList folders_;
    std::unique_ptr<QLibrary> library_;
    bool tried_ = false;
    QString error_;
};

class DeferredSoundEffects final : public SoundEffects {
public:
    DeferredSoundEffects(AudioPluginLoader& loader, Dialogs& dialogs) : loader_(loader), dialogs_(dialogs) {}
    ~DeferredSoundEffects() override;

    void PlayWave(const std::string& storedPath, bool wait = false) override;
    void SpeakerBeep(std::int32_t frequency, std::int32_t milliseconds) override;

    // The real player, once made.
    SoundEffects* Loaded() const { return real_.get(); }

private:
    SoundEffects* Real();

    AudioPluginLoader& loader_;
    Dialogs& dialogs_;
    std::unique_ptr<SoundEffects> real_;
    bool tried_ = false;
};

class DeferredMusicPlayer final : public MusicPlayer {
public:
    explicit DeferredMusicPlayer(AudioPluginLoader& loader) : loader_(loader) {}
    ~DeferredMusicPlayer() override;

    std::int32_t State() const override { return real_ ? real_->State() : StateNone; }
    std::int32_t MaxPos() const override { return real_ ? real_->MaxPos() : 0; }
    void PlayMod(const std::string& fileName, bool loop, std::int32_t position) override;
    void PlayAnyFile(const std::string& filePath) override;
    void StopMod() override;
    bool PauseMod() override { return real_ && real_->PauseMod(); }
    void SetCurrentPos(std::int32_t position) override;
    std::int32_t GetCurrentPos() const override { return real_ ? real_->GetCurrentPos() : 0; }
    std::int32_t GetVuMeter() const override { return real_ ? real_->GetVuMeter() : 0; }
    void SetVolume(std::int32_t volume) override;
    bool IsPaused() const override { return real_ && real_->IsPaused(); }
    std::string ModFileName() const override { return real_ ? real_->ModFileName() : std::string(); }

    MusicPlayer* Loaded() const { return real_.get(); }

private:
    MusicPlayer* Real();

    AudioPluginLoader& loader_;
    std::unique_ptr<MusicPlayer> real_;
    bool tried_ = false;
    std::optional<std::int32_t> volume_;
};

} // namespace tolva
