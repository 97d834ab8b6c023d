// The pop-up menus of the main window, the buttons that open them, the mouse on the
// window and the small commands that live nowhere else.
#include "session/qt/frmMain.h"

#include "board/TolvaBoard.h"
#include "board/qt/BoardWidget.h"
#include "controls/Ebutton.h"
#include "controls/IA.h"
#include "session/BoardFocus.h"
#include "session/GameSaver.h"
#include "session/UndoHistory.h"
#include "session/GameSession.h"

#include <QCursor>
#include <algorithm>
#include <QKeyEvent>
#include <QMouseEvent>
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

// Shows the key that does the same as an entry beside its caption. The key itself is
// heard by the window (Form_KeyDown), not by the menu: the shortcut answers only inside
// the open menu, so a key never acts twice.
void ShowKey(QAction* entry, const QKeySequence& key) {
    entry->setShortcut(key);
    entry->setShortcutContext(Qt::WidgetShortcut);
}

} // namespace

void frmMain::MakeMenus() {
    // The menus are windows of their own, owned by frmMain but not its children: a child
    // would be sized, every entry measured, whenever the window's own picture is drawn
    // (the mascot copies it at its first show), long before anyone opens a menu.
    gameMenu_ = OwnMenu("Game");
    ShowKey(gameMenu_->addAction("New game", this, [this] {
        if (routes_.Session) routes_.Session->NewGameMnu_Click();
    }), Qt::Key_F2);
    MakeMoveEntries();
    gameMenu_->addSeparator();
    NewGameWithLevelCode_ = gameMenu_->addAction("Enter level-code...", this, [this] {
        if (routes_.Session) routes_.Session->NewGameWithLevelCode_Click();
    });
    gameMenu_->addSeparator();
    levelSets_ = gameMenu_->addMenu("Change level-set");
    levelSets_->menuAction()->setVisible(false);   // shown once a set is listed
    gameMenu_->addSeparator();
    mnuEndGame_ = gameMenu_->addAction("End game", this, [this] {
        if (routes_.Session) routes_.Session->mnuEndGame_Click();
    });
    ShowKey(mnuEndGame_, Qt::Key_F12);
    mnuSaveAndQuit_ = gameMenu_->addAction("Save game and quit", this, [this] {
        if (routes_.SaveAndQuit) routes_.SaveAndQuit();
    });
    ShowKey(mnuSaveAndQuit_, QKeySequence(Qt::CTRL | Qt::Key_S));
    gameMenu_->addSeparator();
    ShowKey(WindowEntry(gameMenu_, "Help...", GameWindow::Help), Qt::Key_F1);
    gameMenu_->addSeparator();
    gameMenu_->addAction("Exit", this, &frmMain::ExitNow);

    cheatMenu_ = OwnMenu("CheatMenu");
    levList_ = cheatMenu_->addMenu("Jump to level");
    // The hundred entries are made when the list is first opened: until then only their
    // captions are kept, so start-up neither builds nor measures a list that is seen
    // only in cheat mode.
    connect(levList_, &QMenu::aboutToShow, this, &frmMain::FillLevelList);
    cheatMenu_->addAction("Play Sound...", this, [this] {
        if (routes_.Session) routes_.Session->mnuPlaySound_Click();
    });
    mnuAutoplay_ = cheatMenu_->addAction("Autoplay (TESTMODE)", this, [this] {
        if (routes_.Session) routes_.Session->mnuAutoplay_Click();
    });
    mnuAutoplay_->setCheckable(true);
    cheatMenu_->addAction("Give bonus", this, [this] {
        if (routes_.Session) routes_.Session->GiveBonus_Click();
    });
    cheatMenu_->addSeparator();
    PCSPEAKERENABLED_ = cheatMenu_->addAction("PC-SPEAKER ENABLED ON EVENTS");
    PCSPEAKERENABLED_->setCheckable(true);
    PCSPEAKERENABLED_->setChecked(true);
    // The game ends autoplay by itself at a game over; the check mark follows.
    connect(cheatMenu_, &QMenu::aboutToShow, this, [this] {
        if (routes_.Session) mnuAutoplay_->setChecked(routes_.Session->AutoplayChecked);
    });
    connect(PCSPEAKERENABLED_, &QAction::triggered, this, [this] {
        if (routes_.Session) PCSPEAKERENABLED_->setChecked(routes_.Session->PCSPEAKERENABLED_Click());
    });
    MakeOptionsMenu();

    connect(bGame_, &Ebutton::MouseUp, this, [this](std::int16_t, std::int16_t, float, float) {
        OpenGameMenu(QCursor::pos());
    });
    connect(bOptions_, &Ebutton::MouseUp, this, [this](std::int16_t button, std::int16_t, float, float) {
        const bool cheat = button == 2 && routes_.Session != nullptr && routes_.Session->CheatMode();
        (cheat ? cheatMenu_ : optionsMenu_)->popup(QCursor::pos());
    });
    connect(bAbout_, &Ebutton::MouseUp, this, [this](std::int16_t, std::int16_t, float, float) {
        if (routes_.Windows) routes_.Windows->Open(GameWindow::About);
    });
}

QMenu* frmMain::OwnMenu(const QString& title) {
    ownMenus_.push_back(std::make_unique<QMenu>(title));
    return ownMenus_.back().get();
}

void frmMain::FillLevelList() {
    for (int i = 0; i < MaxLevels; ++i) {
        const auto at = static_cast<std::size_t>(i);
        if (mnuLevList_[at] == nullptr) {
            mnuLevList_[at] = levList_->addAction(QString(), this, [this, i] {
                if (routes_.Session) routes_.Session->mnuLevList_Click(static_cast<std::int16_t>(i));
            });
        }
        ShowLevelEntry(i);
    }
}

void frmMain::ShowLevelEntry(int index) {
    const auto at = static_cast<std::size_t>(index);
    QAction* entry = mnuLevList_[at];
    if (entry == nullptr) return;
    const QString& caption = levelCaptions_[at];
    if (entry->text() != caption) entry->setText(caption);
    entry->setVisible(!caption.isEmpty());
}

void frmMain::MakeOptionsMenu() {
    optionsMenu_ = OwnMenu("mnuOptions");
    ShowKey(WindowEntry(optionsMenu_, "Settings...", GameWindow::Settings), Qt::Key_F4);
    mnuShowGroup_ = optionsMenu_->addAction("Show group under pointer", this, [this](bool checked) {
        if (routes_.Focus) routes_.Focus->SetShowGroup(checked);
    });
    mnuShowGroup_->setCheckable(true);
    mnuShowGroup_->setChecked(true);
    optionsMenu_->addSeparator();
    ShowKey(WindowEntry(optionsMenu_, "Levels statistics...", GameWindow::Statistics), Qt::Key_F5);
    optionsMenu_->addSeparator();
    QMenu* hiscore = optionsMenu_->addMenu("Hiscore");
    WindowEntry(hiscore, "Show Internet hiscores", GameWindow::ShowInternetHiscores);
    hiscore->addSeparator();
    mnuSubmitInternetHiscore_ = WindowEntry(hiscore, "Submit to Internet Hiscores", GameWindow::SubmitInternetHiscores);
    hiscore->addSeparator();
    ExportHiscore_ = WindowEntry(hiscore, "Export hiscore file...", GameWindow::ExportHiscore);
    // An entry answers once its window is registered; until then it stands greyed out.
    connect(optionsMenu_, &QMenu::aboutToShow, this, [this] {
        for (auto& [entry, window] : windowEntries_)
            if (entry != mnuSubmitInternetHiscore_ && entry != ExportHiscore_)
                entry->setEnabled(routes_.Windows != nullptr && routes_.Windows->Has(window));
        mnuShowGroup_->setEnabled(routes_.Focus != nullptr);
        if (routes_.Focus) mnuShowGroup_->setChecked(routes_.Focus->ShowGroup());
    });
}

QAction* frmMain::WindowEntry(QMenu* menu, const QString& caption, GameWindow window) {
    QAction* entry = menu->addAction(caption, this, [this, window] {
        if (routes_.Windows) routes_.Windows->Open(window);
    });
    windowEntries_.emplace_back(entry, window);
    return entry;
}

void frmMain::MakeMoveEntries() {
    // Shown only while a saved game waits; see Game_Click.
    mnuResume_ = gameMenu_->addAction("Resume saved game", this, [this] {
        if (routes_.Resume) routes_.Resume();
    });
    ShowKey(mnuResume_, Qt::Key_F3);
    mnuResume_->setVisible(false);
    gameMenu_->addSeparator();
    mnuUndo_ = gameMenu_->addAction("Undo", this, [this] {
        if (routes_.Undo) routes_.Undo->Undo();
    });
    mnuUndo_->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_Z), QKeySequence(Qt::Key_Backspace)});
    mnuUndo_->setShortcutContext(Qt::WidgetShortcut);
}

void frmMain::MoveKey(const QKeyEvent& event) {
    const bool ctrl = event.modifiers() & Qt::ControlModifier;
    if ((ctrl && event.key() == Qt::Key_Z) || (!ctrl && event.key() == Qt::Key_Backspace)) {
        if (routes_.Undo) routes_.Undo->Undo();
    } else if (ctrl && event.key() == Qt::Key_S) {
        if (routes_.SaveAndQuit && routes_.Saver && routes_.Saver->CanSave()) routes_.SaveAndQuit();
    } else if (event.key() == Qt::Key_F3) {
        if (routes_.Resume && routes_.Saver && routes_.Saver->HasSave()) routes_.Resume();
    }
}

void frmMain::Game_Click() {
    if (routes_.Session == nullptr) return;
    mnuUndo_->setEnabled(routes_.Undo != nullptr && routes_.Undo->CanUndo());
    mnuSaveAndQuit_->setEnabled(routes_.Saver != nullptr && routes_.Saver->CanSave());
    mnuResume_->setVisible(routes_.Saver != nullptr && routes_.Saver->HasSave());
    const GameMenuState state = routes_.Session->Game_Click();
    mnuEndGame_->setEnabled(state.EndGame);
    NewGameWithLevelCode_->setEnabled(state.LevelCode);
    // The two hiscore entries of the Options menu follow the set chosen as of the last
    // opening of this menu.
    const bool registered = routes_.Windows != nullptr;
    mnuSubmitInternetHiscore_->setEnabled(
        state.DefaultSetOnly && registered && routes_.Windows->Has(GameWindow::SubmitInternetHiscores));
    ExportHiscore_->setEnabled(state.DefaultSetOnly && registered && routes_.Windows->Has(GameWindow::ExportHiscore));
}

void frmMain::ShowLevelSets(const std::vector<LevelSetEntry>& entries) {
    // The entry being handled is still running its handler when the list is rebuilt:
    // the old entries leave the menu now and are deleted once control is back in the
    // event loop.
    for (QAction* old : levelSets_->actions()) {
        levelSets_->removeAction(old);
        old->deleteLater();
    }
    for (std::size_t i = 0; i < entries.size(); ++i) {
        QAction* entry = levelSets_->addAction(QString::fromLatin1(entries[i].Caption.c_str()), this, [this, i] {
            if (routes_.ChooseLevelSet) routes_.ChooseLevelSet(static_cast<int>(i));
        });
        entry->setCheckable(true);
        entry->setChecked(entries[i].Checked);
    }
    levelSets_->menuAction()->setVisible(!entries.empty());
}

void frmMain::OpenGameMenu(const QPoint& at) {
    Game_Click();
    gameMenu_->popup(at);
}

void frmMain::keyPressEvent(QKeyEvent* event) {
    // Every key reaches the game, also one that has no classic code: it breaks a key word
    // typed half-way.
    const std::int16_t code = ClassicKeyCode(*event);
    if (routes_.Session) routes_.Session->Form_KeyDown(code);
    // Then the keys of play from the keyboard: the arrows, Space, Return, Delete, 1 to 6,
    // and those of taking back, saving and resuming.
    if (routes_.Focus) routes_.Focus->KeyDown(code);
    MoveKey(*event);
}

// ---- the mouse on the window -------------------------------------------------------------------
// Only a press on the window's own surface lands here: the board, the spell buttons and
// the other controls take their presses themselves.

void frmMain::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        OpenGameMenu(event->globalPosition().toPoint());
        return;
    }
    if (QWindow* window = windowHandle()) window->startSystemMove();
}

void frmMain::mouseDoubleClickEvent(QMouseEvent*) {
    if (routes_.Board) routes_.Board->DrawBoard(-1, -1, true);
}

bool frmMain::eventFilter(QObject* watched, QEvent* event) {
    const bool press = event->type() == QEvent::MouseButtonPress;
    const bool release = event->type() == QEvent::MouseButtonRelease;
    if (press && (watched == hiScoreDisplay_ || watched == levName_)) {
        if (QWindow* window = windowHandle()) window->startSystemMove();
        return true;
    }
    if (watched == Kedelig_ && press) {
        // The mascot plays (its owner hears the press) and the window follows the mouse.
        if (QWindow* window = windowHandle()) window->startSystemMove();
        return false;
    }
    // The spell bar, the armed spell and the level code act on the release of any button,
    // and take the press too, so that it never reaches the window's surface.
    const bool spellButton = std::find(sp_.begin(), sp_.end(), watched) != sp_.end();
    if (!spellButton && watched != ActiveSpellPic_ && watched != lbLevelCode_) return QWidget::eventFilter(watched, event);
    if (press) return true;
    if (!release || routes_.Session == nullptr) return QWidget::eventFilter(watched, event);
    for (std::size_t i = 0; i < sp_.size(); ++i)
        if (watched == sp_[i]) routes_.Session->sp_Click(static_cast<std::int16_t>(i));
    if (watched == ActiveSpellPic_) routes_.Session->ActiveSpell_Click();
    if (watched == lbLevelCode_) routes_.Session->lbLevelCode_Click();
    return true;
}

} // namespace tolva
