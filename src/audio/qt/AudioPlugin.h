#pragma once
// The game's sound lives in a plug-in of its own (plugins/libtolva2_audio.so in the game
// folder),
// so that Qt Multimedia, the audio server's client and libopenmpt are loaded by the first
// sound or tune rather than at launch: the main window does not wait for them.
//
// These are the plug-in's two entry points; the objects they make are owned by the
// caller and must be destroyed before the application object.
#include "audio/MusicPlayer.h"
#include "support/platform/Dialogs.h"
#include "support/platform/SoundEffects.h"

extern "C" {
using TolvaMakeSoundEffects = tolva::SoundEffects* (*)(tolva::Dialogs* dialogs);
using TolvaMakeMusicPlayer = tolva::MusicPlayer* (*)();
}

#define TOLVA_AUDIO_PLUGIN_NAME "tolva2_audio"
#define TOLVA_MAKE_SOUND_EFFECTS "tolva_make_sound_effects"
#define TOLVA_MAKE_MUSIC_PLAYER "tolva_make_music_player"
