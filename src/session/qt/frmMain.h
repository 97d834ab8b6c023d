#pragma once
// frmMain: the game's main window. A fixed 750 x 561 window with a title and no control
// box: the board on the left, the panel on the right (score, level, bonus, spells,
// hiscores, the three picture buttons) and a line of small labels at the bottom. Every
// command, Exit included, is in pop-up menus.
//
// The window is a thin layer: the game itself (score, stock, counters, level flow, the
// board's 14 events) lives in GameSession, which the window shows through SessionView.
// The window owns the platform objects of the running game (event loop, board widget,
// picture store, dialogs, random numbers) and the board.
//
// Its code is split by concern: frmMain.cpp (making the window and its controls, what
// the session shows), frmMainStartup.cpp (start-up and shutdown), frmMainMenus.cpp (the
// pop-up menus and the mouse on the window).
#include "board/LevelModule.h"
#include "levels/LevelSetHooks.h"
#include "session/SessionServices.h"
#include "session/SessionView.h"

#include <QLabel>
#include <QMenu>
#include <QPixmap>
#include <QWidget>

#include <array>
#include <memory>

namespace tolva {

class BoardWidget;
class Dialogs;
class Ebutton;
class GameSession;
class IA;
class Loading;
class QtDialogs;
class EventLoop;
class QtPictureHolder;
class QtPictureStore;
class QtPictureStrip;
class BonusScreenView;
class SeededRandom;
class SoundPlayer;
class TolvaBoard;

class frmMain final : public QWidget, public SessionView, public SessionServices, public LevelSetHooks {
    Q_OBJECT
public:
    // `commandLine` is the whole command line as one text: the start-up words are looked
    // for anywhere in it. `dialogs` answers the message and input boxes; by default they
    // are Qt's own, a test gives scripted ones.
    frmMain(LevelModule& game, EventLoop& loop, QString commandLine, Dialogs* dialogs = nullptr);
    ~frmMain() override;

    // The whole start-up, in the game's order. False when a stop message was shown and
    // the program must end without saving anything.
    bool Form_Load();

    GameSession& Session() { return *session_; }
    TolvaBoard& Board() { return *board_; }
    BoardWidget& BoardView() { return *boardWidget_; }
    QMenu& GameMenu() { return *gameMenu_; }
    QMenu& OptionsMenu() { return *optionsMenu_; }
    QMenu& CheatMenuHead() { return *cheatMenu_; }
    QString LevelSetPath() const;
    // Asks, saves and ends the program as the window's close would.
    void ExitNow() { close(); }

    // ---- SessionView ---------------------------------------------------------------------
    void SetLabel(SessionLabel label, const std::string& text) override;
    void ShowSpellPanel(const SpellPanel& panel) override;
    void ShowLoadingText(const std::string& text) override;
    void ShowStandardBackground() override;
    void ShowCheatMode(bool on) override;
    void ShowAutoplayChecked(bool checked) override;

    // ---- SessionServices --------------------------------------------------------------
    void CheckIfHiScore() override;
    void PrintHiScore(std::int16_t highlightPlace, std::int32_t highlightColor,
                      std::int32_t highlightTextColor) override;
    std::int16_t CheckHiscorePlace() override;
    void PlayKedelig() override;
    void SpeakerBeep(std::int32_t frequency, std::int32_t milliseconds) override;

    // ---- LevelSetHooks --------------------------------------------------------------------
    void SetSpellName(int spellNo, const std::string& name) override;
    void ShowLoading() override;
    void SetLoadingLabel(const std::string& text) override;
    void SetSpellToolTip(int spellNo, const std::string& name) override;
    void LoadHiscores(std::int16_t setKey) override;
    void ClearLevelMenu() override;
    void SetLevelMenuEntry(int index, const std::string& caption) override;
    void SetTitle(const std::string& title) override;
    void DoEvents() override;
    void DefaultSetCorrupted() override;
    void LevelRoot(const std::string& path) override;

    // ---- commands ---------------------------------------------------------------------------
    void NewGameMnu_Click();
    void NewGameWithLevelCode_Click();
    void mnuEndGame_Click();
    void ShowHelp_Click();
    void Game_Click();
    void lbLevelCode_Click();

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void MakeControls();
    void MakeMenus();
    void LoadGfx();
    bool ReadSettings();
    void SetMeHeight();
    void StopMessage(const QString& text);
    QLabel* MakeLabel(const QString& text, int pixelSize, const QColor& colour, bool bold = true);
    void PlaceSpellPanel();
    void LoadButtonPictures(Ebutton& button, const char* out, const char* over, const char* label);

    LevelModule& game_;
    EventLoop& loop_;
    QString commandLine_;

    std::unique_ptr<QtDialogs> qtDialogs_;
    Dialogs* dialogs_ = nullptr;
    std::unique_ptr<SoundPlayer> sound_;
    std::unique_ptr<SeededRandom> rng_;
    BoardWidget* boardWidget_ = nullptr;
    std::unique_ptr<QtPictureStore> pictures_;
    std::unique_ptr<GameSession> session_;
    std::unique_ptr<TolvaBoard> board_;
    std::unique_ptr<Loading> loading_;
    std::string levelSetPath_ = "levels\\default\\";
    bool corrupted_ = false;

    QPixmap background_;
    std::unique_ptr<QtPictureHolder> eBack_;
    std::unique_ptr<QtPictureStrip> testTube_;
    BonusScreenView* bonusScreen_ = nullptr;
    QLabel* levName_ = nullptr;
    QLabel* lCheat_ = nullptr;
    IA* Kedelig_ = nullptr;
    QWidget* picHiscore_ = nullptr;
    QLabel* lScore_ = nullptr;
    QLabel* lLevel_ = nullptr;
    QLabel* lBonus_ = nullptr;
    std::array<QLabel*, 6> sc_{};
    std::array<QLabel*, 6> sl_{};
    std::array<QLabel*, 6> sp_{};
    std::array<QPixmap, 6> sss_{};
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
    QPixmap spellCursor_;

    QMenu* gameMenu_ = nullptr;
    QMenu* optionsMenu_ = nullptr;
    QMenu* cheatMenu_ = nullptr;
    QMenu* levList_ = nullptr;
    std::array<QAction*, MaxLevels> mnuLevList_{};
    QAction* mnuEndGame_ = nullptr;
    QAction* NewGameWithLevelCode_ = nullptr;
    QAction* mnuSubmitInternetHiscore_ = nullptr;
    QAction* ExportHiscore_ = nullptr;
    QAction* mnuAutoplay_ = nullptr;
    QAction* PCSPEAKERENABLED_ = nullptr;
};

} // namespace tolva
