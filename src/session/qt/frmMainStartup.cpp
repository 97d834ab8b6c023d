// Start-up and shutdown of the main window, in the game's order. A stop message ends the
// program at once and saves nothing; any other failure (a missing picture, a missing
// tolva2.ini) leaves its part out and the start-up goes on.
#include "session/qt/frmMain.h"

#include "board/TolvaBoard.h"
#include "controls/Ebutton.h"
#include "controls/IA.h"
#include "levels/LevelSetReader.h"
#include "session/GameSession.h"
#include "session/qt/Loading.h"
#include "settings/GameSettings.h"
#include "support/ZenkorModule.h"
#include "support/platform/SeededRandom.h"
#include "support/platform/SoundPlayer.h"
#include "support/platform/qt/QtDialogs.h"
#include "support/platform/qt/QtPictureHolder.h"

#include <QCloseEvent>
#include <QDateTime>
#include <QGuiApplication>
#include <QScreen>

namespace tolva {
namespace {

QString Native(const std::string& stored) { return QString::fromLocal8Bit(NativePath(stored).c_str()); }

} // namespace

void frmMain::StopMessage(const QString& text) {
    dialogs_->MessageBox(text.toStdString(), "TOLVA II", MessageIcon::Stop, MessageButtons::Ok);
}

bool frmMain::Form_Load() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (screen == nullptr || screen->geometry().height() < 600) {
        StopMessage("TOLVA II REQUIRES A SCREEN RESOLUTION OF 800*600 AND 16BIT COLORS MINIMUM !");
        return false;
    }
    session_->KeepScoreInCheat = commandLine_.contains("quietlanternshade");
    if (!FileExists(AppPath() + "levels\\default\\levels.set")) {
        StopMessage("ERROR! Unable to locate default levels.\nPlease re-install TOLVA II.");
        return false;
    }
    SetLabel(SessionLabel::LevelCode, "");
    session_->UpdateScore(0);
    session_->NoSpellBusy = true;
    ClearLevelMenu();
    SetMeHeight();
    LoadGfx();
    loading_->SetLabel("Settings...");
    game_.DefaultMusicFile = AppPath() + "data\\0.mod";
    if (!ReadSettings()) return false;
    if (commandLine_.contains("orangekettles")) session_->ChangeCheatMode();
    rng_->Seed(static_cast<std::uint64_t>(QDateTime::currentMSecsSinceEpoch()));

    LevelSetReader reader(game_, this);
    reader.LevelSetPath = levelSetPath_;
    corrupted_ = false;
    reader.InitLevels();
    if (corrupted_) return false;
    session_->IsDefaultSet = reader.IsDefault();
    session_->UpdateSpells();

    loading_.reset();
    return true;
}

bool frmMain::ReadSettings() {
    const GameSettings settings = GameSettings::Read(AppPath() + "tolva2.ini");
    settings.ApplyTo(game_);
    board_->SetUpdateDelay(settings.UpdateDelay);
    board_->SetHuntDelay(settings.HuntDelay);
    board_->AniDraw = settings.AniDraw;
    levelSetPath_ = settings.LevelSetPath;
    if (!FolderExists(AppPath() + levelSetPath_)) {
        levelSetPath_ = GameSettings::DefaultLevelSet;
        if (!FolderExists(AppPath() + levelSetPath_)) {
            StopMessage("Unable to load level-set. Tolva2.ini may be corrupted.\n"
                        "The line LEVELSET is pointing to a folder that don't exist.\n"
                        "Normaly Tolva 2 will just restore it's default level set path\n"
                        "but that folder also don't exist !");
            return false;
        }
        StopMessage("TOLVA2.INI ERROR! UNABLE TO LOAD SELECTED LEVEL-SET.\nLOADING DEFAULT...");
    }
    return true;
}

void frmMain::SetMeHeight() {
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        const QRect area = screen->availableGeometry();
        move(area.center() - QPoint(width() / 2, height() / 2));
    }
}

void frmMain::LoadButtonPictures(Ebutton& button, const char* out, const char* over, const char* label) {
    QtPictureHolder outPicture("OutPicture"), overPicture("OverPicture");
    if (outPicture.LoadFile(AppPath() + out)) button.SetOutPicture(outPicture);
    if (overPicture.LoadFile(AppPath() + over)) button.SetOverPicture(overPicture);
    loading_->SetLabel(label);
}

void frmMain::LoadGfx() {
    ShowLoading();
    loop_.DoEvents();
    board_->SetBackPicture(*eBack_);
    board_->LoadResources();
    QtPictureHolder main("data\\0.bmp");
    if (main.LoadFile(AppPath() + "data\\0.bmp")) background_ = QPixmap::fromImage(main.Image());
    loading_->SetLabel("Main background");
    loading_->SetLabel("Board background");
    LoadButtonPictures(*bGame_, "data\\3.bmp", "data\\4.bmp", "Button 1");
    LoadButtonPictures(*bOptions_, "data\\5.bmp", "data\\6.bmp", "Button 2");
    LoadButtonPictures(*bAbout_, "data\\7.bmp", "data\\8.bmp", "Button 3");
    Kedelig_->LoadPictureStrip(AppPath() + "data\\9.bmp");
    loading_->SetLabel("Maskot gfx");
    TestTubeAnimation_->LoadPictureStrip(AppPath() + "data\\17.bmp");
    loading_->SetLabel("Test Tube gfx");
    for (std::size_t i = 0; i < 6; ++i) {
        const std::string n = NumberText(static_cast<double>(i));
        QPixmap button(Native(AppPath() + "data\\ss" + n + ".bmp"));
        if (!button.isNull()) sp_[i]->setPixmap(button);
        QPixmap large(Native(AppPath() + "data\\s" + n + ".bmp"));
        if (!large.isNull()) sss_[i] = large;
        loading_->SetLabel(QString("Spell-button%1").arg(i));
    }
    update();
}

void frmMain::closeEvent(QCloseEvent* event) {
    if (session_->GameRunning) {
        const auto answer = dialogs_->MessageBox("Are you sure you want to quit current game ?", "Quit game?",
                                                 MessageIcon::Warning, MessageButtons::OkCancel);
        if (answer != MessageResult::Ok) {
            event->ignore();
            return;
        }
        CheckIfHiScore();
    }
    GameSettings settings;
    settings.TakeFrom(game_);
    settings.LevelSetPath = levelSetPath_;
    settings.UpdateDelay = board_->UpdateDelay();
    settings.AniDraw = board_->AniDraw;
    settings.Write(AppPath() + "tolva2.ini");
    if (game_.PlaySounds) sound_->PlayWave(AppPath() + "data\\4.wav", true);
    event->accept();
}

// ---- the level-set load's steps in the window ---------------------------------------------------

void frmMain::SetSpellName(int spellNo, const std::string& name) {
    if (spellNo >= 0 && spellNo < SpellCount) session_->SpellNames[static_cast<std::size_t>(spellNo)] = name;
}

void frmMain::ShowLoading() {
    if (!loading_) {
        const QPixmap picture(":/builtin/loading.bmp");
        const QString version = QString("v%1").arg(QCoreApplication::applicationVersion());
        loading_ = std::make_unique<Loading>(loop_, picture, version);
    }
    loading_->show();
}

void frmMain::SetLoadingLabel(const std::string& text) {
    if (loading_) loading_->SetLabel(QString::fromLatin1(text.c_str()));
}

void frmMain::SetSpellToolTip(int spellNo, const std::string& name) {
    if (spellNo >= 0 && spellNo < SpellCount) sp_[static_cast<std::size_t>(spellNo)]->setToolTip(QString::fromLatin1(name.c_str()));
}

void frmMain::LoadHiscores(std::int16_t) {}

void frmMain::ClearLevelMenu() {
    for (QAction* entry : mnuLevList_) {
        entry->setText("");
        entry->setVisible(false);
    }
}

void frmMain::SetLevelMenuEntry(int index, const std::string& caption) {
    if (index < 0 || index >= MaxLevels) return;
    QAction* entry = mnuLevList_[static_cast<std::size_t>(index)];
    entry->setText(QString::fromLatin1(caption.c_str()));
    entry->setVisible(true);
}

void frmMain::SetTitle(const std::string& title) { setWindowTitle(QString::fromLatin1(title.c_str())); }

void frmMain::DoEvents() { loop_.DoEvents(); }

void frmMain::DefaultSetCorrupted() {
    if (loading_) loading_->SetTopMost(false);
    StopMessage("ERROR! Default level corrupted, please re-install TOLVA II");
    corrupted_ = true;
}

void frmMain::LevelRoot(const std::string& path) { board_->LevelRoot(path); }

} // namespace tolva
