#include "audio/qt/DeferredAudio.h"

#include "audio/qt/AudioPlugin.h"
#include "shared/GameText.h"
#include "support/ZenkorModule.h"

#include <QDir>
#include <QLibrary>

namespace tolva {

namespace {

// The plug-in keeps its own copy of the file helpers, which knows nothing of an installed
// game's two layers: it is handed the path the game itself reads from.
std::string ForPlugin(const std::string& storedPath) {
    return AppPathIsLayered() ? NativePath(storedPath) : storedPath;
}

} // namespace

AudioPluginLoader::AudioPluginLoader(QStringList folders) : folders_(std::move(folders)) {}

// The library stays loaded to the end of the program: the players it made may still be
// destroyed after this loader.
AudioPluginLoader::~AudioPluginLoader() = default;

QFunctionPointer AudioPluginLoader::Resolve(const char* symbol) {
    if (!tried_) {
        tried_ = true;
        for (const QString& folder : folders_) {
            auto library = std::make_unique<QLibrary>(QDir(folder).filePath(TOLVA_AUDIO_PLUGIN_NAME));
            if (library->load()) {
                library_ = std::move(library);
                break;
            }
            error_ = library->errorString();
        }
    }
    return library_ ? library_->resolve(symbol) : nullptr;
}

std::unique_ptr<SoundEffects> AudioPluginLoader::MakeSoundEffects(Dialogs& dialogs) {
    const auto make = reinterpret_cast<TolvaMakeSoundEffects>(Resolve(TOLVA_MAKE_SOUND_EFFECTS));
    return std::unique_ptr<SoundEffects>(make != nullptr ? make(&dialogs) : nullptr);
}

std::unique_ptr<MusicPlayer> AudioPluginLoader::MakeMusicPlayer() {
    const auto make = reinterpret_cast<TolvaMakeMusicPlayer>(Resolve(TOLVA_MAKE_MUSIC_PLAYER));
    return std::unique_ptr<MusicPlayer>(make != nullptr ? make() : nullptr);
}

// ---- sound effects ---------------------------------------------------------------------------

DeferredSoundEffects::~DeferredSoundEffects() = default;

SoundEffects* DeferredSoundEffects::Real() {
    if (!tried_) {
        tried_ = true;
        real_ = loader_.MakeSoundEffects(dialogs_);
    }
    return real_.get();
}

void DeferredSoundEffects::PlayWave(const std::string& storedPath, bool wait) {
    if (SoundEffects* real = Real()) {
        real->PlayWave(ForPlugin(storedPath), wait);
        return;
    }
    dialogs_.MessageBox("Unable to init SOUND-DECVICE", std::string(GameTitle), MessageIcon::Exclamation,
                        MessageButtons::Ok);
}

void DeferredSoundEffects::SpeakerBeep(std::int32_t frequency, std::int32_t milliseconds) {
    // Without a player the beep is still its length of silence: the test mode's timing
    // does not change with the sound.
    if (SoundEffects* real = Real()) real->SpeakerBeep(frequency, milliseconds);
    else Pause(milliseconds);
}

// ---- music -----------------------------------------------------------------------------------

DeferredMusicPlayer::~DeferredMusicPlayer() = default;

MusicPlayer* DeferredMusicPlayer::Real() {
    if (!tried_) {
        tried_ = true;
        real_ = loader_.MakeMusicPlayer();
        if (real_) {
            real_->Finished = [this] {
                if (Finished) Finished();
            };
            if (volume_) real_->SetVolume(*volume_);
        }
    }
    return real_.get();
}

void DeferredMusicPlayer::PlayMod(const std::string& fileName, bool loop, std::int32_t position) {
    if (MusicPlayer* real = Real()) real->PlayMod(ForPlugin(fileName), loop, position);
}

void DeferredMusicPlayer::PlayAnyFile(const std::string& filePath) {
    if (MusicPlayer* real = Real()) real->PlayAnyFile(ForPlugin(filePath));
}

void DeferredMusicPlayer::StopMod() {
    if (real_) real_->StopMod();
}

void DeferredMusicPlayer::SetCurrentPos(std::int32_t position) {
    if (real_) real_->SetCurrentPos(position);
}

void DeferredMusicPlayer::SetVolume(std::int32_t volume) {
    volume_ = volume;
    if (real_) real_->SetVolume(volume);
}

} // namespace tolva
