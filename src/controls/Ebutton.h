#pragma once
// Ebutton: the game's picture button. It has no frame and no face of its own: its surface
// shows the Out picture (mouse away, or pressing) or the Over picture (mouse over), with
// the Dis picture laid over it while disabled and the Blk picture while a blink flashes.
// It can print a line of text under the picture, and sizes itself to its Out picture and
// that text; it cannot be sized from outside.
//
// The mouse. The button reacts on release (MouseUp). Once the mouse has come over it, the
// button holds the mouse, so that the move that leaves it is its own: leaving clears
// Pressed, shows Out, raises StageChanged(false) and lets go. A press that is dragged off
// the button therefore ends with no MouseUp at all. Qt already hands a pressed widget
// every move; for the leaving without a button down the button takes Qt's leave event as
// that last move. Holding the mouse is kept as a flag rather than a global mouse grab.
//
// The blink. With BlinkEnabled and a Blk picture, a release starts Timer1: its first tick
// comes after 1 ms, the others after BlinkDelay; every second tick shows Blk, and the
// tick after the BlinkTimes-th flash ends the blink, so three flashes take seven ticks.
// BlinkType says when MouseUp comes: 0 at once with the blink already started, 1 at once
// and the blink after it, 2 after the blink, the button waiting for it while pending
// events run. Timer1 comes from the EventLoop seam, so tests blink on the virtual clock.
#include "support/platform/EventLoop.h"
#include "support/platform/qt/QtPictureHolder.h"

#include <QColor>
#include <QImage>
#include <QString>
#include <QWidget>

#include <cstdint>
#include <memory>

namespace tolva {

class Ebutton : public QWidget {
    Q_OBJECT
public:
    static constexpr std::int16_t DefaultBlinkDelay = 50;
    static constexpr std::int16_t DefaultBlinkTimes = 3;
    // Text in TextOverColor while the mouse is over; grey text while disabled.
    static QColor DefaultTextOverColor() { return QColor(255, 255, 0); }
    static QColor DisabledTextColor() { return QColor(128, 128, 128); }

    explicit Ebutton(EventLoop& loop, QWidget* parent = nullptr);
    ~Ebutton() override;

    // ---- properties -------------------------------------------------------------------
    // The button answers the mouse. Named apart from QWidget's own enabled state, which
    // it drives.
    void SetEnabled(bool enabled);
    void SetBlinkTimes(std::int16_t times) { blinkTimes_ = times; }
    void SetBlinkEnabled(bool enabled) { blinkEnabled_ = enabled; }
    void SetBlinkType(std::int32_t type) { blinkType_ = type; }

    const QtPictureHolder& OutPicture() const { return Out; }
    void SetOutPicture(const PictureHolder& picture);
    void SetOverPicture(const PictureHolder& picture) { Over.Assign(picture); }
    void SetBlinkPicture(const PictureHolder& picture) { Blk.Assign(picture); }
    void SetDisabledPicture(const PictureHolder& picture) { Dis.Assign(picture); }

    void SetText(const QString& text);
    QFont Font() const { return font(); }
    QColor ForeColor() const { return foreColor_; }

    // ---- operations -------------------------------------------------------------------
    // Starts a blink, if the button is enabled.
    void Blink();
    // Prints Text under the picture in xColor; an invalid colour means ForeColor.
    void UpdateText(const QColor& xColor = QColor());
    // A release of the left button on the button, as if by the mouse.
    void FakeMouseUp();

    // ---- state, for the owner and tests -------------------------------------------------
    bool Pressed() const { return pressed_; }
    std::int16_t BlinkCount() const { return blinkCount_; }
    bool Blinking() const { return Timer1->Enabled(); }
    // The colour of the text printed under the picture (an empty colour when nothing is
    // printed).
    QColor PrintedColor() const { return printed_ ? printedColor_ : QColor(); }

signals:
    // true: the mouse has come over the button; false: it has left.
    void StageChanged(bool Stage);
    // Button 1 left, 2 right, 4 middle; Shift 1 shift, 2 control, 4 alt; X, Y in pixels.
    void MouseUp(std::int16_t Button, std::int16_t Shift, float X, float Y);
    void MouseDown(std::int16_t Button, std::int16_t Shift, float X, float Y);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    void UserControl_MouseDown(std::int16_t Button, std::int16_t Shift, float X, float Y);
    void UserControl_MouseMove(std::int16_t Button, std::int16_t Shift, float X, float Y);
    void UserControl_MouseUp(std::int16_t Button, std::int16_t Shift, float X, float Y);
    void Timer1_Timer();
    void ResizeToPicture();
    void ShowOnSurface(const QtPictureHolder& picture);

    EventLoop& loop_;
    QtPictureHolder Out;
    QtPictureHolder Over;
    QtPictureHolder Blk;
    QtPictureHolder Dis;
    std::unique_ptr<Timer> Timer1;

    bool enabled_ = true;
    std::int16_t blinkDelay_ = DefaultBlinkDelay;
    std::int16_t blinkTimes_ = DefaultBlinkTimes;
    bool blinkEnabled_ = false;
    std::int32_t blinkType_ = 0;
    QString text_;
    QColor backColor_;
    QColor foreColor_;
    QColor textOverColor_ = DefaultTextOverColor();

    bool pressed_ = false;
    std::int16_t blinkCount_ = 0;
    bool blinkOn_ = false;
    bool holdsMouse_ = false;

    QImage surfacePicture_;
    bool printed_ = false;
    QColor printedColor_;
    QPointF printedAt_;
};

} // namespace tolva
