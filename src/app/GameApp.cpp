#include "app/GameApp.h"

#include "audio/HeadlessSoundEffects.h"
#include "audio/IdleAnimation.h"
#include "hiscores/HiscoreService.h"
#include "board/TolvaBoard.h"
#include "board/qt/BoardWidget.h"
#include "board/qt/BonusScreenView.h"
#include "board/qt/BuiltinBoardPictures.h"
#include "board/qt/QtPictureStore.h"
#include "board/qt/QtPictureStrip.h"
#include "controls/IA.h"
#include "session/GameLevelSets.h"
#include "session/GameSession.h"
#include "session/qt/frmMain.h"
#include "support/ZenkorModule.h"
#include "support/platform/SeededRandom.h"
#include "support/platform/qt/QtDialogs.h"
#include "support/platform/qt/QtPictureHolder.h"

#include <QGuiApplication>
#include <QScreen>

namespace tolva {
namespace {

// UNFINISHED: the hiscore table and the idle mascot are being built in their own rooms
// (hiscores/, audio/); until they are wired here the game keeps no table and no mascot.
class NoHiscoreTableYet final : public HiscoreService {
public:
    void CheckIfHiScore(double, std::int16_t) override {}
    void PrintHiScore(std::int16_t, std::int32_t, std::int32_t) override {}
    std::int16_t CheckHiscorePlace(double) const override { return -1; }
};

class NoMascotYet final : public IdleAnimation {
public:
    void RestartIdle() override {}
};

} // namespace

void GameApp::MakeServices() {
    hiscores_ = std::make_unique<NoHiscoreTableYet>();
    idle_ = std::make_unique<NoMascotYet>();
}

GameApp::GameApp(EventLoop& loop, std::string commandLine, Dialogs* dialogs)
    : loop_(loop), commandLine_(std::move(commandLine)), game_(std::make_unique<LevelModule>()),
      stats_(AppPath() + "stat.ini") {
    window_ = std::make_unique<frmMain>(loop_);
    if (dialogs == nullptr) {
        qtDialogs_ = std::make_unique<QtDialogs>(window_.get());
        dialogs = qtDialogs_.get();
    }
    dialogs_ = dialogs;
    pictures_ = std::make_unique<QtPictureStore>(loop_, &window_->BoardView());
    rng_ = std::make_unique<SeededRandom>(1);
    sound_ = std::make_unique<HeadlessSoundEffects>(loop_);
    testTube_ = std::make_unique<QtPictureStrip>("TestTubeAnimation", &window_->TestTubeAnimation());
    eBack_ = MakeStandardBackground();
    MakeServices();

    const BoardPlatform platform{loop_, window_->BoardView(), *pictures_, *sound_, *dialogs_, *rng_};
    session_ = std::make_unique<GameSession>(*game_, settings_, platform, *window_,
                                             SessionServices{*hiscores_, stats_, *idle_, windows_});
    board_ = std::make_unique<TolvaBoard>(*game_, settings_, platform, *session_);
    session_->AttachBoard(*board_);
    window_->BoardView().AttachBoard(board_.get());
    GiveBuiltinPictures(*board_);
    board_->SetTestTubeAnimation(testTube_.get());
    new BonusScreenView(*board_);   // lives on the board's widget
    levelSets_ = std::make_unique<GameLevelSets>(*game_, *session_, *board_, *window_, *dialogs_, loop_);

    window_->StandardBackground = [this] { board_->SetBackPicture(*eBack_); };
    window_->Attach({session_.get(), board_.get(), &windows_, [this] { return startup_->Form_Unload(); }});
    startup_ = std::make_unique<GameStartup>(StartupParts{*game_, settings_, *session_, *board_, *levelSets_,
                                                          *window_, *dialogs_, *rng_, *sound_, *this,
                                                          nullptr, nullptr, nullptr});
}

GameApp::~GameApp() {
    // The board's strips and holders live on the board's widget, and the board holds the
    // test tube's strip: the board goes before the window and the strip.
    window_->Attach({});
    window_->BoardView().AttachBoard(nullptr);
    board_.reset();
    session_.reset();
    testTube_.reset();
}

bool GameApp::Start(std::uint64_t seed) { return startup_->Form_Load(commandLine_, seed); }

// ---- the start-up's steps on screen ---------------------------------------------------------

int GameApp::ScreenHeight() const {
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen != nullptr ? screen->geometry().height() : 0;
}

void GameApp::LoadGfx() {
    window_->SetMeHeight();
    window_->ShowLoading();
    loop_.DoEvents();
    board_->SetBackPicture(*eBack_);
    board_->LoadResources();
    window_->LoadGfx();
}

void GameApp::ShowAboutFirstTime() { windows_.Open(GameWindow::About); }

void GameApp::ShowMainWindow() {
    window_->CloseLoading();
    window_->show();
}

} // namespace tolva
