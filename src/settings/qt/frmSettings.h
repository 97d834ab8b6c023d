#pragma once
// frmSettings: the settings window. Borderless, on its own background picture, centred
// over the board and dragged by any free part of its surface; shown modally. It has no
// Cancel: what it changes stays changed.
//
// It edits one GameSettings object. Some changes must be felt while the window is still
// open (the action delay and its blinking sample, the external music file and folder),
// so those are written to the settings at once and reported through applyToBoard, which
// the owner uses to hand the settings to the board, all but the hunt delay: that one
// reaches the board only when the window has closed, and the owner hands it on then. The other check boxes are written back when
// the window closes, the numeric ones as 0 or 1, and the music is then started (music on)
// or stopped unless it is stopped already.
//
// The window knows nothing of the session: it gets the settings, the event loop for its
// blink timer and the close button, three callbacks and the board's rectangle.
//
// The music list: every file of the folder ExtMusicPath whose name matches one of the
// music patterns, without regard to case, in name order. File names are kept as the bytes
// the file system gives, so that a name outside ASCII still opens; the list shows them
// decoded.
#include "settings/GameSettings.h"
#include "support/platform/EventLoop.h"
#include "support/platform/qt/QtPictureHolder.h"

#include <QColor>
#include <QDialog>
#include <QPoint>
#include <QRect>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QPushButton;

namespace tolva {

class Ebutton;
class Scroller;

class frmSettings final : public QDialog {
    Q_OBJECT
public:
    static constexpr int FormWidth = 460;
    static constexpr int FormHeight = 420;
    static constexpr const char* MusicPatterns = "*.mod;*.s3m;*.669;*.xm;*.it;*.wav;*.mp3";

    struct Callbacks {
        // Hands the settings that act at once to the board.
        std::function<void()> applyToBoard;
        std::function<void()> startMusic;
        std::function<void()> stopMusicUnlessStopped;
    };
    // Asks the player for a folder; gives it as the file system's bytes, or an empty
    // text when nothing was chosen. `start` is the folder to begin in (a native path).
    using FolderPicker = std::function<std::string(const std::string& title, const std::string& start)>;

    // Loads the window's pictures from the game folder, fills the controls from
    // `settings` and centres the window over `board` (screen coordinates; a null
    // rectangle leaves it where the system puts it).
    frmSettings(GameSettings& settings, EventLoop& loop, Callbacks callbacks, const QRect& board,
                QWidget* parent = nullptr);
    ~frmSettings() override;

    // Shows the window modally until it closes.
    static void ShowModal(GameSettings& settings, EventLoop& loop, Callbacks callbacks, const QRect& board,
                          QWidget* parent);

    // Fills Combo1 with the music files of ExtMusicPath and selects ExtMusicFile's entry.
    void AddFiles();
    void SetFolderPicker(FolderPicker picker) { folderPicker_ = std::move(picker); }

    // ---- the controls, for tests ------------------------------------------------------
    // Check1 to Check9 by their number (there is none 10 or above).
    QCheckBox* Check(int number) const;
    // The check box of a setting, by the name of its key; null for a setting without one.
    QCheckBox* CheckOf(std::string_view key) const;
    tolva::Scroller* Scroller1() const { return Scroller1_; }
    tolva::Scroller* Scroller2() const { return Scroller2_; }
    QLabel* Label1() const { return Label1_; }
    QLabel* Label2() const { return Label2_; }
    QComboBox* Combo1() const { return Combo1_; }
    QPushButton* Command1() const { return Command1_; }
    QPushButton* Command2() const { return Command2_; }
    tolva::Ebutton* Ebutton1() const { return Ebutton1_; }
    QWidget* Picture1() const { return Picture1_; }
    QColor SampleColor() const { return sampleColor_; }
    const Timer& Timer1() const { return *Timer1_; }

public slots:
    void done(int result) override;
    void reject() override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void BuildDelayFrames();
    void BuildGameFrame();
    void BuildMusicFrame(QGroupBox* Frame3);
    void BuildStatFrame();
    void Form_Load();
    void Form_Unload();

    QCheckBox* AddCheck(QWidget* frame, int number, const char* key, bool atOnce, const char* caption,
                        const char* tip, int x, int y);
    void Check_Click(const char* key);
    void Scroller1_Scroll(int value);
    void Scroller2_Scroll(int value);
    void Timer1_Timer();
    void Combo1_Click(int index);
    void Command1_Click();
    void Command2_Click();
    void Ebutton1_MouseUp();

    void ApplyToBoard();
    void ShowSample(const QColor& colour);
    std::string ChosenFile() const;

    GameSettings& settings_;
    EventLoop& loop_;
    Callbacks callbacks_;
    FolderPicker folderPicker_;
    QtPictureHolder background_;
    std::unique_ptr<Timer> Timer1_;

    // Each check box with the key of the setting it stands for. One that acts at once
    // writes its setting and hands it to the board on every click; all are written back
    // when the window closes.
    struct BoundCheck {
        const char* key;
        QCheckBox* box;
        bool atOnce;
    };
    std::vector<BoundCheck> checks_;
    tolva::Scroller* Scroller1_ = nullptr;
    tolva::Scroller* Scroller2_ = nullptr;
    QLabel* Label1_ = nullptr;
    QLabel* Label2_ = nullptr;
    QLabel* Label3_ = nullptr;
    QWidget* Picture1_ = nullptr;
    QComboBox* Combo1_ = nullptr;
    QPushButton* Command1_ = nullptr;
    QPushButton* Command2_ = nullptr;
    tolva::Ebutton* Ebutton1_ = nullptr;

    QColor sampleColor_;
    bool unloaded_ = false;
    bool dragging_ = false;
    QPoint dragOffset_;
};

} // namespace tolva
