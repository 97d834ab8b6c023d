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
#include <QMouseEvent>
#include <QUrl>
#include <QWindow>

namespace tolva {
namespace {

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
        mnuLevList_[static_cast<std::size_t>(i)] = levList_->addAction("", this, [this, i] { mnuLevList_Click(i); });
        mnuLevList_[static_cast<std::size_t>(i)]->setVisible(false);
    }
    Later(cheatMenu_, "Play Sound...");
    mnuAutoplay_ = cheatMenu_->addAction("Autoplay (TESTMODE)", this, &frmMain::mnuAutoplay_Click);
    mnuAutoplay_->setCheckable(true);
    Later(cheatMenu_, "Give bonus");
    cheatMenu_->addSeparator();
    PCSPEAKERENABLED_ = cheatMenu_->addAction("PC-SPEAKER ENABLED ON EVENTS");
    PCSPEAKERENABLED_->setCheckable(true);
    PCSPEAKERENABLED_->setChecked(true);
    // The game ends autoplay by itself at a game over; the check mark follows.
    connect(cheatMenu_, &QMenu::aboutToShow, this, [this] { mnuAutoplay_->setChecked(session_->AutoplayChecked); });
    connect(PCSPEAKERENABLED_, &QAction::toggled, this, [this](bool on) { session_->SpeakerEnabled = on; });

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

void frmMain::mnuLevList_Click(int Index) {
    board_->JumpToLevel(static_cast<std::int16_t>(Index + 1));
    session_->GameRunning = true;
}

void frmMain::mnuAutoplay_Click() {
    if (!session_->GameRunning) {
        mnuAutoplay_->setChecked(session_->AutoplayChecked);
        return;
    }
    session_->AutoplayChecked = !session_->AutoplayChecked;
    mnuAutoplay_->setChecked(session_->AutoplayChecked);
    session_->AutoPlay();
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
