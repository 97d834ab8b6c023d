#include "session/GameStartup.h"

#include "board/TolvaBoard.h"
#include "session/GameLevelSets.h"
#include "session/GameSession.h"
#include "session/SessionView.h"
#include "settings/GameSettings.h"
#include "shared/GameText.h"
#include "support/StartupTrace.h"
#include "support/ZenkorModule.h"
#include "support/platform/Dialogs.h"
#include "support/platform/Random.h"
#include "support/platform/SoundEffects.h"

namespace tolva {
namespace {

constexpr int LowestScreen = 600;

} // namespace

std::string GameStartup::IniFile() { return AppPath() + "tolva2.ini"; }

void GameStartup::StopMessage(const std::string& text) {
    p_.Dialog.MessageBox(text, std::string(GameTitle), MessageIcon::Stop, MessageButtons::Ok);
}

bool GameStartup::Form_Load(const std::string& commandLine, std::uint64_t seed) {
    if (p_.Host.ScreenHeight() < LowestScreen) {
        StopMessage("TOLVA II REQUIRES A SCREEN RESOLUTION OF 800*600 AND 16BIT COLORS MINIMUM !");
        return false;
    }
    p_.Session.KeepScoreInCheat = commandLine.find(KeepScoreWord) != std::string::npos;
    if (!FileExists(AppPath() + "levels\\default\\levels.set")) {
        StopMessage("ERROR! Unable to locate default levels.\nPlease re-install TOLVA II.");
        return false;
    }
    p_.View.SetLabel(SessionLabel::LevelCode, "");
    p_.Session.UpdateScore(0);
    p_.Game.NoSpellBusy = true;
    for (int i = 0; i < MaxLevels; ++i) p_.View.SetLevelMenuEntry(i, "");
    p_.Host.LoadGfx();
    StartupTrace::Mark("the main window's pictures");
    p_.View.ShowLoadingText("Settings...");

    p_.Settings = GameSettings::Read(IniFile());
    p_.Board.ApplySettings(p_.Settings);
    if (!ChooseLevelSet()) return false;
    if (commandLine.find(CheatKeyWord) != std::string::npos) p_.Session.ChangeCheatMode();
    p_.LevelSets.RefreshLevelSets();
    StartupTrace::Mark("settings and the level-set menu");
    p_.Rng.Seed(seed);
    if (!p_.LevelSets.InitLevels()) return false;
    StartupTrace::Mark("level set and hiscore table");
    p_.Session.UpdateSpells();
    if (p_.Settings.PlayMusic == 1 && p_.StartMusic) p_.StartMusic();
    if (GameSettings::IsFirstUse(IniFile())) {
        p_.Host.ShowAboutFirstTime();
        GameSettings::MarkFirstUseDone(IniFile());
    }
    p_.Host.ShowMainWindow();
    return true;
}

bool GameStartup::ChooseLevelSet() {
    // A set that has gone falls back on the default one, with a message; with no default
    // set either there is nothing to play.
    p_.LevelSets.LevelSetPath = p_.Settings.LevelSetPath;
    if (FolderExists(AppPath() + p_.LevelSets.LevelSetPath)) return true;
    p_.LevelSets.LevelSetPath = GameSettings::DefaultLevelSet;
    p_.Settings.LevelSetPath = GameSettings::DefaultLevelSet;
    if (!FolderExists(AppPath() + p_.LevelSets.LevelSetPath)) {
        StopMessage("Unable to load level-set. Tolva2.ini may be corrupted.\n"
                    "The line LEVELSET is pointing to a folder that don't exist.\n"
                    "Normaly Tolva 2 will just restore it's default level set path\n"
                    "but that folder also don't exist !");
        return false;
    }
    StopMessage("TOLVA2.INI ERROR! UNABLE TO LOAD SELECTED LEVEL-SET.\nLOADING DEFAULT...");
    return true;
}

bool GameStartup::Form_Unload() {
    if (p_.Session.GameRunning) {
        const auto answer = p_.Dialog.MessageBox("Are you sure you want to quit current game ?", "Quit game?",
                                                 MessageIcon::Warning, MessageButtons::OkCancel);
        if (answer != MessageResult::Ok) return false;
        p_.Session.OfferScoreToTable();
    }
    if (p_.SaveHiscores) p_.SaveHiscores();
    p_.Settings.LevelSetPath = p_.LevelSets.LevelSetPath;
    p_.Board.TakeSettings(p_.Settings);
    p_.Settings.Write(IniFile());
    if (p_.StopMusic) p_.StopMusic();
    if (p_.Settings.PlaySounds) p_.Sound.PlayWave(AppPath() + "data\\4.wav", true);
    return true;
}

} // namespace tolva
