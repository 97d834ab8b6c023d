// The audio plug-in's entry points: the real players, made inside the plug-in so that
// nothing of the audio stack is linked to the game itself.
#include "audio/qt/AudioPlugin.h"
#include "audio/qt/QtSoundEffects.h"
#include "audio/qt/ZenkorPlayer.h"

extern "C" {

__attribute__((visibility("default"))) tolva::SoundEffects* tolva_make_sound_effects(tolva::Dialogs* dialogs) {
    return new tolva::QtSoundEffects(*dialogs);
}

__attribute__((visibility("default"))) tolva::MusicPlayer* tolva_make_music_player() {
    return new tolva::ZenkorPlayer();
}

} // extern "C"
