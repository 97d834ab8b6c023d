#include "app/GameApp.h"

#include "app/HiscoreWiring.h"
#include "audio/IdleMascot.h"
#include "audio/qt/DeferredAudio.h"
#include "hiscores/HiscoreKeeper.h"
#include "hiscores/qt/HiscoreDisplay.h"
#include "hiscores/qt/HiscoreWebWindows.h"
#include "board/TolvaBoard.h"
#include "board/qt/BoardWidget.h"
#include "board/qt/BonusScreenView.h"
#include "board/qt/BuiltinBoardPictures.h"
#include "board/qt/QtPictureStore.h"
#include "board/qt/QtPictureStrip.h"
#include "controls/IA.h"
#include "session/GameLevelSets.h"
#include "session/BoardFocus.h"
#include "session/GameBuilder.h"
#include "session/GameSaver.h"
#include "session/GameSession.h"
#include "audio/Music.h"
#include "audio/MusicPlayer.h"
#include "session/qt/HelpWindow.h"
#include "settings/qt/frmSettings.h"
#include "stats/qt/OpenStatistics.h"
#include "stats/qt/frmStatistics.h"
#include "about/qt/frmAbout.h"
#include "about/qt/frmDsk.h"
#include "session/qt/MenuLook.h"
#include "session/qt/frmMain.h"
#include "support/StartupMemory.h"
#include "support/StartupTrace.h"
#include "support/GameFolders.h"
#include "support/ZenkorModule.h"
#include "support/platform/SeededRandom.h"
#include "support/platform/qt/QtDialogs.h"
#include "support/platform/qt/QtPictureHolder.h"
#include "support/platform/qt/X11Display.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFile>
#include <QFileInfo>
#include <QWindow>
#include <QGuiApplication>
#include <QPointer>
#include <QScreen>


namespace tolva {
namespace {

// Where the game's plug-ins (the audio stack, the browser) are looked for: the game's
// plug-in folder (plugins/ beside a portable program), then, portable only, the build's
// game folder, for the tests that run from elsewhere.
QStringList PluginFolders() {
    const QString own = QFile::decodeName(PluginFolder().c_str());
    if (AppPathIsLayered()) return {own};
    return {own, QStringLiteral(TOLVA_BUILD_GAME_DIR "/plugins")};
}

// The heap the first screen takes after the game's objects are built: the pictures and
// their copies on the screen, the level table and the set read into it, the hiscore table.
constexpr std::size_t StartupHeapBytes = std::size_t{2304} << 10;

} // namespace

void GameApp::MakeServices() {
    // The hiscore table draws on the panel's table picture and asks for initials over the
    // board.
    hiscoreView_ = std::make_unique<HiscoreDisplay>(&window_->HiScoreDisplay(), [this] { return BoardOnScreen(); });
    hiscores_ = std::make_unique<HiscoreKeeper>(loop_, *hiscoreView_);
    // The mascot in the panel's corner plays when the player idles, and at a press on it.
    kedelig_ = std::make_unique<QtPictureStrip>("Kedelig", &window_->Kedelig());
    auto mascot = std::make_unique<IdleMascot>(*kedelig_, *sound_, loop_, *rng_, settings_,
                                               [this] { return game_->NoSpellBusy; });
    QObject::connect(&window_->Kedelig(), &IA::MouseDown, &window_->Kedelig(),
                     [idle = mascot.get()] { idle->Kedelig_MouseDown(); });
    idle_ = std::move(mascot);

    // The windows that keys and menus open, one line each.
    windows_.Register(GameWindow::Help, [this] { ShowHelp(window_.get(), *dialogs_); });
    windows_.Register(GameWindow::Settings, [this] {
        frmSettings::ShowModal(settings_, loop_,
                               {[this] { Board().ApplyActionSettings(settings_); }, [this] { StartMusic(); },
                                [this] { StopMusicUnlessStopped(); }},
                               BoardOnScreen(), window_.get());
        // The hunt delay reaches the board only now that the window has closed.
        Board().SetHuntDelay(settings_.HuntDelay);
    });
    windows_.Register(GameWindow::Statistics, [this] {
        OpenStatistics(statistics_, {AppPath() + "stat.ini", Session().IsDefaultSet, *dialogs_, loop_, window_.get()});
    });
    windows_.Register(GameWindow::About, [this] {
        frmAbout about(loop_, *dialogs_, BoardOnScreen(), window_.get());
        about.exec();
    });
    QString browser;
    for (const QString& folder : PluginFolders())
        if (browser.isEmpty() && QFileInfo::exists(folder + "/libtolva2_webbrowser.so"))
            browser = folder + "/libtolva2_webbrowser.so";
    RegisterHiscoreWebWindows(windows_, {hiscores_->Table(), settings_, *dialogs_, window_.get(),
                                         [this] { return Session().IsDefaultSet; },
                                         [this] { return Session().GameRunning; }, browser});
}

QRect GameApp::BoardOnScreen() const {
    const QWidget& board = window_->BoardView();
    return QRect(board.mapToGlobal(QPoint(0, 0)), board.size());
}

void GameApp::StartMusic() {
    if (music_) tolva::StartMusic(settings_, *music_, AppPath() + "data\\0.mod");
    StartupTrace::Mark("music started");
}

void GameApp::StopMusicUnlessStopped() {
    if (music_ && music_->State() != MusicPlayer::StateStopped) music_->StopMod();
}

GameApp::GameApp(EventLoop& loop, std::string commandLine, Dialogs* dialogs)
    : loop_(loop), commandLine_(std::move(commandLine)), game_(std::make_unique<LevelModule>()),
      stats_(AppPath() + "stat.ini") {
    ApplyMenuLook();
    window_ = std::make_unique<frmMain>(loop_);
    if (dialogs == nullptr) {
        qtDialogs_ = std::make_unique<QtDialogs>(window_.get());
        dialogs = qtDialogs_.get();
    }
    dialogs_ = dialogs;
    pictures_ = std::make_unique<QtPictureStore>(loop_, &window_->BoardView());
    rng_ = std::make_unique<SeededRandom>(1);
    // The audio plug-in and the sound device wait for the first sound or tune.
    audio_ = std::make_unique<AudioPluginLoader>(PluginFolders());
    sound_ = std::make_unique<DeferredSoundEffects>(*audio_, *dialogs_);
    music_ = std::make_unique<DeferredMusicPlayer>(*audio_);
    testTube_ = std::make_unique<QtPictureStrip>("TestTubeAnimation", &window_->TestTubeAnimation());
    eBack_ = MakeStandardBackground();
    MakeServices();

    built_ = std::make_unique<GameBuilder>(
        GameParts{*game_, settings_, {loop_, window_->BoardView(), *pictures_, *sound_, *dialogs_, *rng_}, *window_,
                  SessionServices{*hiscores_, stats_, *idle_, windows_}});
    TolvaBoard& board = built_->BuildBoard();
    window_->BoardView().AttachBoard(&board);
    GiveBuiltinPictures(board);
    board.SetTestTubeAnimation(testTube_.get());
    new BonusScreenView(board);   // lives on the board's widget
    levelSets_ = std::make_unique<GameLevelSets>(*game_, Session(), board, *window_, *dialogs_, loop_);
    ConnectHiscoreTable(*levelSets_, *hiscores_, *window_, *dialogs_);

    built_->Focus().SetMarksView(&window_->BoardView());
    window_->BoardView().AttachMarks(&built_->Focus());
    saver_ = std::make_unique<GameSaver>(*game_, Session(), board, *levelSets_, *dialogs_);

    window_->StandardBackground = [this] { Board().SetBackPicture(*eBack_); };
    window_->Attach({&Session(), &board, &windows_, [this] { return startup_->Form_Unload(); },
                     [this](int index) { ChooseLevelSet(index); }, &built_->Focus(), &built_->Undo(), saver_.get(),
                     [this] { SaveAndQuit(); }, [this] { ResumeSavedGame(); }});
    startup_ = std::make_unique<GameStartup>(StartupParts{*game_, settings_, Session(), board, *levelSets_,
                                                          *window_, *dialogs_, *rng_, *sound_, *this,
                                                          [this] { musicPending_ = true; },
                                                          [this] { if (music_) music_->StopMod(); },
                                                          [this] { levelSets_->HiscoreSaver(); }});
}

GameApp::~GameApp() {
    // The board's strips and holders live on the board's widget, and the board holds the
    // test tube's strip: the board goes before the window and the strip.
    window_->Attach({});
    window_->BoardView().AttachBoard(nullptr);
    window_->BoardView().AttachMarks(nullptr);
    saver_.reset();
    built_.reset();
    idle_.reset();
    kedelig_.reset();
    testTube_.reset();
}

bool GameApp::Start(std::uint64_t seed) {
    StartupTrace::Mark("game objects built");
    return startup_->Form_Load(commandLine_, seed);
}

void GameApp::ChooseLevelSet(int index) {
    levelSets_->LevelList_Click(index);
    // A default set that fails its integrity test ends the program, as at start-up.
    if (levelSets_->LastLoad().Integrity == LevelSetIntegrity::Failed) QCoreApplication::exit(1);
}

void GameApp::SaveAndQuit() {
    if (!saver_->Save()) return;
    Session().LeaveWithoutOffering();
    window_->ExitNow();
}

void GameApp::ResumeSavedGame() {
    saver_->Resume();
    if (levelSets_->LastLoad().Integrity == LevelSetIntegrity::Failed) QCoreApplication::exit(1);
}

// ---- the start-up's steps on screen ---------------------------------------------------------

int GameApp::ScreenHeight() const {
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen != nullptr ? screen->geometry().height() : 0;
}

void GameApp::LoadGfx() {
    // What the first screen needs from here on, the pictures and the level set, in
    // pages made ready in one go.
    PrepareStartupHeap(StartupHeapBytes);
    window_->SetMeHeight();
    window_->ShowLoading();
    loop_.DoEvents();
    StartupTrace::Mark("loading window shown");
    // The false desktop's picture, made by the X server while the game loads.
    x11::PrepareScreenCopy(window_->frameGeometry().size());
    Board().SetBackPicture(*eBack_);
    window_->LoadGfx();
}

void GameApp::LoadUnseenPictures() {
    // What only a game shows: the spell pictures and the test tube. They are loaded on the
    // event loop right after the window is up: the first thing the loop does then, before
    // any key or click can reach the game, and the false desktop still covers the window.
    // The bonus screen and the effect strips wait for their first showing: most first
    // levels never show them, and a game need not hold their pictures until then.
    Board().LoadResources(/*whenFirstNeeded=*/true);
    window_->LoadGamePictures();
    EndStartupMemory();
    StartupTrace::Mark("the pictures a game shows");
}

void GameApp::ShowAboutFirstTime() {
    // The credits of the first start are the first window the player sees: the tune
    // plays along with them.
    StartPendingMusicSoon();
    windows_.Open(GameWindow::About);
}

void GameApp::StartPendingMusicSoon() {
    if (!musicPending_) return;
    musicPending_ = false;
    loop_.Post([self = QPointer<GameApp>(this)] {
        if (self) self->StartMusic();
    });
}

bool GameApp::eventFilter(QObject* watched, QEvent* event) {
    // Loading the audio stack, opening the sound device and rendering the module take
    // longer than showing the window, and would hold it back: the tune starts once the
    // main window has painted itself for the first time.
    // A paint can come before the window system has shown the window (the first one is
    // drawn ahead); only a paint of an exposed window counts.
    const QWindow* shown = window_->windowHandle();
    if (watched == window_.get() && event->type() == QEvent::Paint && shown != nullptr && shown->isExposed()) {
        window_->removeEventFilter(this);
        StartupTrace::Mark("main window painted");
        StartPendingMusicSoon();
    }
    return false;
}

void GameApp::ShowMainWindow() {
    // The false desktop covers the window's place, the game comes up under it, and two
    // seconds later it falls away.
    window_->SettleLoading();
    auto* desktop = new frmDsk(loop_, window_->frameGeometry());
    QObject::connect(desktop, &frmDsk::Finished, desktop, &QObject::deleteLater);
    desktop->Form_Load([this] {
        window_->CloseLoading();
        window_->installEventFilter(this);
        window_->show();
        // The window is mapped now, not after the loop's next turn and the loads on it.
        x11::Flush();
        StartupTrace::Mark("main window shown");
        loop_.Post([self = QPointer<GameApp>(this)] {
            if (self) self->LoadUnseenPictures();
        });
    });
}

} // namespace tolva
