#pragma once
// frmMain: the game's main window, as a view. A fixed 750 x 561 window with a title and no
// control box: the board on the left, the panel on the right (score, level, bonus, spells,
// hiscores, the three picture buttons) and a line of small labels at the bottom. Every
// command, Exit included, is in pop-up menus.
//
// The window only shows and routes: what the game shows arrives through SessionView; its
// own mouse and keys, its buttons and its menu entries go to the game session, to the
// windows the composition root registered (WindowOpener), or to the root's close. It makes
// no board, no session and no service: the composition root (app/GameApp) builds them and
// attaches them here. The board's widget, the mascot's and the test tube's strips and the
// hiscore table's surface are widgets of this window that the root hands to their owners.
//
// Its code is split by concern: frmMain.cpp (the controls and what the session shows),
// frmMainMenus.cpp (the pop-up menus, the keys and the mouse on the window).
#include "session/SessionView.h"
#include "session/qt/PanelPicture.h"
#include "shared/LevelModule.h"
#include "support/WindowOpener.h"

#include <QLabel>
#include <QMenu>
#include <QPixmap>
#include <QWidget>

#include <array>
#include <functional>
#include <memory>
#include <vector>

namespace tolva {

class BoardFocus;
class GameSaver;
class UndoHistory;
class BoardWidget;
class Ebutton;
class EventLoop;
class GameSession;
class IA;
class Loading;
class TolvaBoard;

class frmMain final : public QWidget, public SessionView {
    Q_OBJECT
public:
    explicit frmMain(EventLoop& loop);
    ~frmMain() override;

    // What the window routes to; until attached its menus and keys do nothing.
    struct Routes {
        GameSession* Session = nullptr;
        TolvaBoard* Board = nullptr;
        const WindowOpener* Windows = nullptr;
        // The window's close: the game's shutdown; false keeps the window open.
        std::function<bool()> Close;
        // An entry of "Change level-set" was chosen.
        std::function<void(int)> ChooseLevelSet;
        // The keys of play from the keyboard, and the group outline's switch.
        BoardFocus* Focus = nullptr;
        // "Undo", "Save game and quit" and "Resume saved game".
        UndoHistory* Undo = nullptr;
        GameSaver* Saver = nullptr;
        std::function<void()> SaveAndQuit;
        std::function<void()> Resume;
    };
    void Attach(const Routes& routes) { routes_ = routes; }

    // ---- the widgets the composition root hands to their owners ---------------------------
    BoardWidget& BoardView() { return *boardWidget_; }
    IA& TestTubeAnimation() { return *TestTubeAnimation_; }
    IA& Kedelig() { return *Kedelig_; }
    QLabel& HiScoreDisplay() { return *hiScoreDisplay_; }
    QMenu& GameMenu() { return *gameMenu_; }
    QMenu& OptionsMenu() { return *optionsMenu_; }
    QMenu& CheatMenuHead() { return *cheatMenu_; }
    QMenu& LevelSetMenu() { return *levelSets_; }

    // The pictures of the first screen (background, buttons, mascot, spell buttons), each
    // load followed by its progress text on the Loading window.
    void LoadGfx();
    // The pictures only a game shows (the test tube's strip, the large spell pictures,
    // the pointer of an armed spell), once: the game loads them after the window is up,
    // and a spell in use makes sure.
    void LoadGamePictures();
    // Centres the window on the screen.
    void SetMeHeight();
    // Asks, saves and ends the program as the window's close would.
    void ExitNow() { close(); }

    // ---- SessionView ---------------------------------------------------------------------
    void SetLabel(SessionLabel label, const std::string& text) override;
    void ShowSpellPanel(const SpellPanel& panel) override;
    void ShowLoading() override;
    void ShowLoadingText(const std::string& text) override;
    void SetLoadingTopMost(bool onTop) override;
    void CloseLoading() override;
    // The Loading window's last progress text on screen now, before the false desktop
    // copies the screen with it.
    void SettleLoading();
    void SetTitle(const std::string& title) override;
    void SetLevelMenuEntry(int index, const std::string& caption) override;
    void SetSpellToolTip(int spellNo, const std::string& name) override;
    void ShowLevelSets(const std::vector<LevelSetEntry>& entries) override;
    void CopyToClipboard(const std::string& text) override;
    void ShowStandardBackground() override;
    void ShowCheatMode(bool on) override;
    void ShowAutoplayChecked(bool checked) override;
    void ShowPractice(bool on) override;

    // The standard background the board shows between games; the root gives it.
    std::function<void()> StandardBackground;
    // The Game menu is about to open: its entries follow the game's state.
    void Game_Click();

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void MakeControls();
    void MakeSpellBar();
    void MakeMenus();
    void MakeOptionsMenu();
    QMenu* OwnMenu(const QString& title);
    void FillLevelList();
    void ShowLevelEntry(int index);
    QAction* WindowEntry(QMenu* menu, const QString& caption, GameWindow window);
    QLabel* MakeLabel(const QString& text, int pixelSize, const QColor& colour, bool bold = true);
    void LoadButtonPictures(Ebutton& button, const char* out, const char* over, const char* label);
    void OpenGameMenu(const QPoint& at);
    void MakeMoveEntries();
    // The keys of the entries beyond the game's own keys: undo, save, resume.
    void MoveKey(const QKeyEvent& event);

    EventLoop& loop_;
    Routes routes_;
    std::unique_ptr<Loading> loading_;

    PanelPicture panel_;
    BoardWidget* boardWidget_ = nullptr;
    QLabel* levName_ = nullptr;
    QLabel* lCheat_ = nullptr;
    QLabel* lPractice_ = nullptr;
    bool practiceShown_ = false;
    IA* Kedelig_ = nullptr;
    QWidget* picHiscore_ = nullptr;
    QLabel* lScore_ = nullptr;
    QLabel* lLevel_ = nullptr;
    QLabel* lBonus_ = nullptr;
    std::array<QLabel*, 6> sc_{};
    std::array<QLabel*, 6> sl_{};
    std::array<QLabel*, 6> sp_{};
    std::array<QPixmap, 6> sss_{};
    bool gamePicturesLoaded_ = false;
    QWidget* lSpPic_ = nullptr;
    QLabel* lSpell_ = nullptr;
    QLabel* ActiveSpellPic_ = nullptr;
    IA* TestTubeAnimation_ = nullptr;
    QLabel* hiScoreDisplay_ = nullptr;
    Ebutton* bGame_ = nullptr;
    Ebutton* bOptions_ = nullptr;
    Ebutton* bAbout_ = nullptr;
    QLabel* Label1_ = nullptr;
    QLabel* lbClicks_ = nullptr;
    QLabel* lbLevelCode_ = nullptr;
    QLabel* lGroup_ = nullptr;
    QPixmap spellCursor_;

    std::vector<std::unique_ptr<QMenu>> ownMenus_;   // the top menus; see MakeMenus
    QMenu* gameMenu_ = nullptr;
    QMenu* optionsMenu_ = nullptr;
    QMenu* cheatMenu_ = nullptr;
    QMenu* levList_ = nullptr;
    QMenu* levelSets_ = nullptr;
    std::array<QAction*, MaxLevels> mnuLevList_{};   // made when the list is first opened
    std::array<QString, MaxLevels> levelCaptions_{};
    QAction* mnuEndGame_ = nullptr;
    QAction* NewGameWithLevelCode_ = nullptr;
    QAction* mnuSubmitInternetHiscore_ = nullptr;
    QAction* ExportHiscore_ = nullptr;
    QAction* mnuAutoplay_ = nullptr;
    QAction* PCSPEAKERENABLED_ = nullptr;
    QAction* mnuShowGroup_ = nullptr;
    QAction* mnuUndo_ = nullptr;
    QAction* mnuSaveAndQuit_ = nullptr;
    QAction* mnuResume_ = nullptr;
    std::vector<std::pair<QAction*, GameWindow>> windowEntries_;
};

} // namespace tolva
