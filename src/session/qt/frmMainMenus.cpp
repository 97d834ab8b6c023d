// The pop-up menus of the main window, the buttons that open them, the mouse on the
// window and the small commands that live nowhere else.
#include "session/qt/frmMain.h"

#include "board/TolvaBoard.h"
#include "controls/Ebutton.h"
#include "controls/IA.h"
#include "session/GameSession.h"
#include "session/LevelCodes.h"
#include "support/ZenkorModule.h"
#include "support/platform/qt/QtDialogs.h"

#include <QClipboard>
#include <QCursor>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QUrl>
#include <QWindow>

namespace tolva {
namespace {

// The key codes the game's keys and key word are told in: the classic desktop codes,
// which are the capital letters' and digits' own codes, 112 up for F1 and up, and 16 to
// 18 for Shift, Ctrl and Alt. Keys without such a code give -1.
std::int16_t ClassicKeyCode(const QKeyEvent& event) {
    const int key = event.key();
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return static_cast<std::int16_t>(112 + (key - Qt::Key_F1));
    if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9) || key == Qt::Key_Space)
        return static_cast<std::int16_t>(key);
    switch (key) {
    case Qt::Key_Shift: return 16;
    case Qt::Key_Control: return 17;
    case Qt::Key_Alt: return 18;
    case Qt::Key_Return:
    case Qt::Key_Enter: return 13;
    case Qt::Key_Escape: return 27;
    case Qt::Key_Backspace: return 8;
    case Qt::Key_Tab: return 9;
    case Qt::Key_Left: return 37;
    case Qt::Key_Up: return 38;
    case Qt::Key_Right: return 39;
    case Qt::Key_Down: return 40;
    case Qt::Key_Delete: return 46;
    default: return -1;
    }
}

// Entries whose windows come with later parts of the game stand in their menus with
// their captions, greyed out.
QAction* Later(QMenu* menu, const QString& caption) {
    QAction* entry = menu->addAction(caption);
    entry->setEnabled(false);
    return entry;
}

} // namespace

void frmMain::MakeMenus() {
    gameMenu_ = new QMenu("Game", this);
    gameMenu_->addAction("New game", this, &frmMain::NewGameMnu_Click);
    gameMenu_->addSeparator();
    NewGameWithLevelCode_ = gameMenu_->addAction("Enter level-code...", this, &frmMain::NewGameWithLevelCode_Click);
    gameMenu_->addSeparator();
    QMenu* levelSets = gameMenu_->addMenu("Change level-set");
    levelSets->menuAction()->setEnabled(false);
    gameMenu_->addSeparator();
    mnuEndGame_ = gameMenu_->addAction("End game", this, &frmMain::mnuEndGame_Click);
    gameMenu_->addSeparator();
    gameMenu_->addAction("Help...", this, &frmMain::ShowHelp_Click);
    gameMenu_->addSeparator();
    gameMenu_->addAction("Exit", this, &frmMain::ExitNow);

    cheatMenu_ = new QMenu("CheatMenu", this);
    levList_ = cheatMenu_->addMenu("Jump to level");
    for (int i = 0; i < MaxLevels; ++i) {
        mnuLevList_[static_cast<std::size_t>(i)] =
            levList_->addAction("", this, [this, i] { session_->mnuLevList_Click(static_cast<std::int16_t>(i)); });
        mnuLevList_[static_cast<std::size_t>(i)]->setVisible(false);
    }
    cheatMenu_->addAction("Play Sound...", this, [this] { session_->mnuPlaySound_Click(); });
    mnuAutoplay_ = cheatMenu_->addAction("Autoplay (TESTMODE)", this, [this] { session_->mnuAutoplay_Click(); });
    mnuAutoplay_->setCheckable(true);
    cheatMenu_->addAction("Give bonus", this, [this] { session_->GiveBonus_Click(); });
    cheatMenu_->addSeparator();
    PCSPEAKERENABLED_ = cheatMenu_->addAction("PC-SPEAKER ENABLED ON EVENTS");
    PCSPEAKERENABLED_->setCheckable(true);
    PCSPEAKERENABLED_->setChecked(true);
    // The game ends autoplay by itself at a game over; the check mark follows.
    connect(cheatMenu_, &QMenu::aboutToShow, this, [this] { mnuAutoplay_->setChecked(session_->AutoplayChecked); });
    connect(PCSPEAKERENABLED_, &QAction::triggered, this,
            [this] { PCSPEAKERENABLED_->setChecked(session_->PCSPEAKERENABLED_Click()); });

    optionsMenu_ = new QMenu("mnuOptions", this);
    Later(optionsMenu_, "Settings...");
    optionsMenu_->addSeparator();
    Later(optionsMenu_, "Levels statistics...");
    optionsMenu_->addSeparator();
    QMenu* hiscore = optionsMenu_->addMenu("Hiscore");
    Later(hiscore, "Show Internet hiscores");
    hiscore->addSeparator();
    mnuSubmitInternetHiscore_ = Later(hiscore, "Submit to Internet Hiscores");
    hiscore->addSeparator();
    ExportHiscore_ = Later(hiscore, "Export hiscore file...");

    connect(bGame_, &Ebutton::MouseUp, this, [this](std::int16_t, std::int16_t, float, float) {
        Game_Click();
        gameMenu_->popup(QCursor::pos());
    });
    connect(bOptions_, &Ebutton::MouseUp, this, [this](std::int16_t button, std::int16_t, float, float) {
        QMenu* menu = button == 2 && game_.CheatMode ? cheatMenu_ : optionsMenu_;
        menu->popup(QCursor::pos());
    });
}

void frmMain::Game_Click() {
    mnuEndGame_->setEnabled(session_->GameRunning);
    NewGameWithLevelCode_->setEnabled(session_->IsDefaultSet);
}

void frmMain::NewGameMnu_Click() { session_->NewGame(1); }

void frmMain::NewGameWithLevelCode_Click() {
    std::string entry;
    for (;;) {
        entry = dialogs_->InputBox("LEVEL-CODE:", "ENTER LEVEL-CODE", entry);
        if (entry.empty()) return;
        const std::int16_t found = LevelCodes::Find(entry);
        if (found > 0) {
            session_->NewGame(found);
            return;
        }
        dialogs_->MessageBox("INVALID LEVEL-CODE!", "TOLVA II", MessageIcon::Stop, MessageButtons::Ok);
    }
}

void frmMain::lbLevelCode_Click() {
    if (!session_->IsDefaultSet) return;
    const auto answer = dialogs_->MessageBox("Copy level-code to clipboard ?", "TOLVA II", MessageIcon::Question,
                                             MessageButtons::OkCancel);
    if (answer != MessageResult::Ok) return;
    QClipboard* clipboard = QGuiApplication::clipboard();
    clipboard->clear();
    clipboard->setText(QString::fromLatin1(LevelCodes::ClipboardText(game_.CurLevelNo).c_str()));
}

void frmMain::mnuEndGame_Click() {
    if (session_->GameRunning) {
        const auto answer = dialogs_->MessageBox("Are you sure you want to end this game ?", "TOLVA II",
                                                 MessageIcon::Warning, MessageButtons::OkCancel);
        if (answer != MessageResult::Ok) return;
    }
    board_->SetGameOver();
}

void frmMain::ShowHelp_Click() {
    const std::string page = AppPath() + "help\\help.htm";
    if (!FileExists(page)) {
        dialogs_->MessageBox("HELP FILE WAS NOT FOUND!", "TOLVA II", MessageIcon::Stop, MessageButtons::Ok);
        return;
    }
    QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromLocal8Bit(NativePath(page).c_str())));
}

void frmMain::keyPressEvent(QKeyEvent* event) {
    const std::int16_t code = ClassicKeyCode(*event);
    if (code < 0) return;
    switch (session_->Form_KeyDown(code)) {
    case WindowCommand::Help: ShowHelp_Click(); break;
    case WindowCommand::NewGame: NewGameMnu_Click(); break;
    case WindowCommand::EndGame: mnuEndGame_Click(); break;
    // The settings and statistics windows come later; their menu entries are greyed out.
    case WindowCommand::Settings:
    case WindowCommand::Statistics:
    case WindowCommand::None: break;
    }
}

// ---- the mouse on the window -------------------------------------------------------------------

void frmMain::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        Game_Click();
        gameMenu_->popup(event->globalPosition().toPoint());
        return;
    }
    if (QWindow* window = windowHandle()) window->startSystemMove();
}

void frmMain::mouseDoubleClickEvent(QMouseEvent*) { board_->DrawBoard(-1, -1, true); }

bool frmMain::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress) {
        if (watched == hiScoreDisplay_ || watched == levName_ || watched == Kedelig_) {
            if (watched == Kedelig_) Kedelig_->Play(1);
            if (QWindow* window = windowHandle()) window->startSystemMove();
            return true;
        }
    }
    if (event->type() == QEvent::MouseButtonRelease) {
        for (std::size_t i = 0; i < sp_.size(); ++i) {
            if (watched == sp_[i]) {
                session_->sp_Click(static_cast<std::int16_t>(i));
                return true;
            }
        }
        if (watched == ActiveSpellPic_) {
            session_->ActiveSpell_Click();
            return true;
        }
        if (watched == lbLevelCode_) {
            lbLevelCode_Click();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace tolva
