#pragma once
// ZenkorScroller: a text that rolls through a rectangle, line by line upwards or as one
// long line to the left, each line with a hard shadow. A vertical bar in Text starts a
// new line. The about window rolls its credits with it; the control knows nothing of
// the game.
//
// The trick. The whole text is drawn once, by DrawText, into a hidden picture (PicText).
// Each step of Timer1 is then a single copy of that picture into the visible one
// (Picture1), one pixel further on, with no text drawing and nothing cleared in between.
// The hidden picture is longer than the text by a blank stretch at least as long as the
// visible area, so its blank end wipes the last lines away as the pass ends. A pass
// upward of a text whose highest line index is n thus takes ScaleHeight + (H + S) * n +
// 21 steps, H the text height and S the ShadowSize. DrawText runs once per pass and at
// each change of a property that shapes the text.
//
// The shadow is a stack of ShadowSize copies in ShadowColor, each one pixel further in
// ShadowDirection, with the text in FontColor on top, ShadowSize pixels from where the
// shadow began. The lines follow each other at H - S with a shadow that climbs and at
// H + S with one that falls.
//
// Pause stops softly and starts at once: its 5 ms timer (Tmr) lengthens the step in
// 15 ms stages until it stands at 60 ms or more and then stops the text; the next Pause
// puts the running interval back at once. Holding the right button runs the text at a
// step every 5 ms.
//
// Both timers come from the EventLoop seam, so a test rolls a text on the virtual clock
// with exactly the steps it has on screen. A routine that fails (a picture that cannot
// be made, an interval that does not fit, a file that cannot be read) tells the player
// through the error reporter, with the routine's label "(User Control) slpTextScroll::"
// and its kind and name, and then goes on with what it can still do.
//
// Texts are bytes, shown as Latin-1.
#include "support/platform/Dialogs.h"
#include "support/platform/EventLoop.h"

#include <QColor>
#include <QFont>
#include <QFrame>
#include <QImage>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tolva {

// The values a window keeps for the control and hands back when it loads.
struct ZenkorScrollerProperties {
    QColor BackColor;   // invalid: the container's background colour
    bool Enabled = true;
    QFont Font;         // used only with UseFont; otherwise the container's font
    bool UseFont = false;
    std::int16_t BackStyle = 1;
    std::int16_t BorderStyle = 1;
    std::string Text;
    QColor FontColor = QColor(255, 0, 0);
    QColor ShadowColor = QColor(255, 255, 0);
    std::int16_t ShadowSize = 1;
    std::int32_t ShadowDirection = 4;
    std::int32_t ScrollDirection = 1;
    std::int32_t ScrollSpeed = 10;
    float ScrollRepeatCount = 0;
    std::int32_t TextAlign = 1;
    bool WordWrap = false;
};

class ZenkorScroller : public QFrame {
    Q_OBJECT
public:
    // The text of a new control: the maker's credit line in three parts.
    static const char* const DefaultText;
    // The step while the right button is held, and the pace of the slowing down.
    static constexpr std::int32_t FastInterval = 5;
    static constexpr std::int32_t TmrInterval = 5;

    ZenkorScroller(EventLoop& loop, Dialogs& dialogs, QWidget* parent = nullptr);
    ~ZenkorScroller() override;

    // Takes the values a window kept for it, as a control does when its window loads:
    // no drawing; Timer1, NormalInterval and CurrentInterval from ScrollSpeed.
    void ReadProperties(const ZenkorScrollerProperties& properties);

    // ---- properties -------------------------------------------------------------------
    // Each setter draws the text afresh with the new value; the others keep the values
    // ReadProperties took.
    const std::string& Text() const { return props_.Text; }
    void SetText(const std::string& text);
    void SetShadowSize(std::int16_t size);
    void SetShadowDirection(std::int32_t direction);
    void SetScrollDirection(std::int32_t direction);
    void SetScrollSpeed(std::int32_t ms);
    void SetScrollRepeatCount(float count) { props_.ScrollRepeatCount = count; }
    void SetTextAlign(std::int32_t align);
    void SetWordWrap(bool wrap);
    bool IsScrolling() const { return Timer1->Enabled(); }

    // ---- operations -------------------------------------------------------------------
    // Draws the text afresh and sets it rolling from the start. Both give false.
    bool StartScroll();
    bool StopScroll();
    // Asks the text to slow to a stop, or, when stopped or stopping, to go on at once.
    void Pause();
    // Repaints the control from the visible picture.
    void Refresh();
    // Clears the visible picture to the background colour.
    void Ref();
    // Reads the file's bytes as Text, each line end (CR LF, CR or LF) a vertical bar.
    // False, and nothing changed, if there is no such file; a file that is there but
    // cannot be read is reported and gives false too.
    bool LoadFromFile(const std::string& FileName);

    // ---- state, for the owner and tests -------------------------------------------------
    int ScaleWidth() const { return contentsRect().width(); }
    int ScaleHeight() const { return contentsRect().height(); }
    const QImage& HiddenPicture() const { return PicText; }
    QPoint HiddenPicturePlace() const { return QPoint(picTextLeft_, picTextTop_); }
    const QImage& VisiblePicture() const { return Picture1; }
    const std::vector<std::string>& Lines() const { return TextArray; }
    float ScrollY() const { return YPos; }
    float PassesDone() const { return RepeatsDone; }
    bool PauseIsWanted() const { return PauseWanted; }
    std::int32_t StepInterval() const { return Timer1->Interval(); }
    std::int16_t SlowingInterval() const { return CurrentInterval; }
    // Height of one printed line: the H of the sizes above.
    int LineHeight() const;

signals:
    // Button 1 left, 2 right, 4 middle; Shift 1 shift, 2 control, 4 alt; X, Y in pixels
    // of the visible area.
    void Click();
    void DblClick();
    void KeyDown(int KeyCode, std::int16_t Shift);
    void KeyPress(int KeyAscii);
    void KeyUp(int KeyCode, std::int16_t Shift);
    void MouseDown(std::int16_t Button, std::int16_t Shift, float X, float Y);
    void MouseMove(std::int16_t Button, std::int16_t Shift, float X, float Y);
    void MouseUp(std::int16_t Button, std::int16_t Shift, float X, float Y);
    // The end of a pass; raised from within the step that ended it.
    void ScrollFinished();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;

private:
    bool DrawText();
    void LoadTextArray();
    void DoWordWrap();
    void SizePicText();
    void PlacePicText();
    void PrintText(const std::string& Line);
    void PrintAtPen(QPainter& painter, const QString& line);
    void Timer1_Timer();
    void Tmr_Timer();
    void ScrollDone();
    // The picture PicText becomes, `width` x `height` in the background colour; false,
    // with the old one kept, if it cannot be made.
    bool RemakePicText(long long width, long long height);
    // Sets the step interval of a running or stopped Timer1; one below 1 ms is left out,
    // so that the timer keeps its pace.
    void SetTimer1Interval(std::int32_t ms);
    // Picture1 takes the control's inner size, keeping what it shows.
    void FitPicture1();
    void Fail(const char* kind, const char* routine, int number, const char* description);
    int TextWidth(const std::string& text) const;
    QPointF PictureOrigin() const { return contentsRect().topLeft(); }

    Dialogs& dialogs_;
    std::unique_ptr<Timer> Timer1;
    std::unique_ptr<Timer> Tmr;

    QImage Picture1;
    QImage PicText;
    int picTextLeft_ = 0;
    int picTextTop_ = 0;
    int penX_ = 0;   // CurrentX, CurrentY of PicText
    int penY_ = 0;

    // The values of the properties; the font is the widget's own (Font and UseFont are
    // only read once, by ReadProperties).
    ZenkorScrollerProperties props_;

    std::vector<std::string> TextArray;
    float YPos = 0;
    float XPos = 0;
    float RepeatsDone = 0;
    std::int16_t NormalInterval = 10;
    std::int16_t CurrentInterval = 10;
    bool PauseWanted = false;
};

} // namespace tolva
