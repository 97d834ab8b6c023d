#pragma once
// Scroller: the game's own slider. A knob picture (Picture1) slides along a track, across
// the control horizontally or down it vertically, and stands for a whole number between
// Min and Max. The arithmetic lives in ScrollerValue; this class is its pixels and mouse.
//
// The mouse. A left press on the knob starts a drag that lasts until its release. A left
// press on the track makes the knob's middle jump to the click and then turns the press
// into a knob press at (0, 0), so that the same stroke goes on dragging the knob and its
// release is the knob's: TrackPressed therefore stays set until a release lands on the
// track itself (a right click, say). Qt already hands every move and the release to the
// widget that took the press; the track passes them on to the knob's logic, in the knob's
// own coordinates, while the knob holds the mouse.
//
// The right button opens the set menu (0%, 50%, 100%). Whatever the menu did, the value
// is then read back from the knob, AfterScroll comes twice, and MouseUp follows with
// pending events let run around it. The plus and minus keys of the number block move the
// knob by half its length and one pixel.
//
// The built-in knobs DefKnob(0) (11 x 21, for a horizontal slider) and DefKnob(1)
// (21 x 11, vertical) are painted in code: bevelled gold, lit from the top left, on the
// dark teal of the game's panels.
#include "controls/ScrollerValue.h"
#include "support/platform/EventLoop.h"

#include <QColor>
#include <QImage>
#include <QString>
#include <QWidget>

#include <cstdint>
#include <functional>

class QAction;
class QMenu;

namespace tolva {

class Scroller : public QWidget {
    Q_OBJECT
public:
    // The built-in knob of a horizontal (0) or a vertical (1) slider.
    static QImage DefKnob(int index);
    static QColor DefaultCenterLineColor() { return QColor(128, 128, 128); }

    explicit Scroller(EventLoop& loop, QWidget* parent = nullptr);
    ~Scroller() override;

    // ---- properties -------------------------------------------------------------------
    void SetBackColor(const QColor& colour);
    // 0 horizontal, 1 vertical.
    void SetDirection(std::int32_t direction);
    // A custom knob; a null image means the built-in knob of the direction.
    void SetScrollKnobPicture(const QImage& picture);
    void SetCenterLine(bool on);
    void SetMenuEnabled(bool on) { menuEnabled_ = on; }
    void SetMin(std::int32_t newMin);
    void SetMax(std::int32_t newMax);
    std::int16_t Value() const { return value_.Value(); }
    void SetValue(std::int32_t newValue);

    // ---- operations -------------------------------------------------------------------
    // Redraws the track and centres the knob across it.
    void UpdateScroller();
    // Puts the knob where Value says and raises Scroll.
    void setValue();
    // Opens the set menu under the mouse and carries out the entry chosen.
    void ShowSetMenu();
    void SetMenuCaption(const QString& a, const QString& b, const QString& c);

    // How the popup menu is run: it shows the menu at the given place until it closes, an
    // entry chosen triggering its action. By default QMenu::exec; a test answers the menu
    // through this.
    using MenuRunner = std::function<void(QMenu&, const QPoint&)>;
    void SetMenuRunner(MenuRunner runner) { menuRunner_ = std::move(runner); }

    // ---- state, for the owner and tests -------------------------------------------------
    bool KnobDragging() const { return value_.KnobDragging(); }
    bool TrackPressed() const { return value_.TrackPressed(); }
    // The knob's position along the track (r is the free length).
    double KnobPos() const { return value_.KnobPos(); }
    double FreeLength() const { return value_.FreeLength(); }
    QWidget* Knob() const { return Picture1; }
    QMenu* Menu() const { return file_; }

signals:
    void Scroll(int Value);
    void AfterScroll(int Value);
    // Button 1 left, 2 right, 4 middle; Shift 1 shift, 2 control, 4 alt; X, Y in the
    // units of the knob or of the track, whichever took the mouse.
    void MouseDown(std::int16_t Button, std::int16_t Shift, float X, float Y);
    void MouseUp(std::int16_t Button, std::int16_t Shift, float X, float Y);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    // The events of the knob and of the track, in the slider's own terms.
    void Knob_MouseDown(std::int16_t Button, std::int16_t Shift, QPointF at);
    void Knob_MouseMove(QPointF at);
    void Knob_MouseUp(std::int16_t Button, std::int16_t Shift, QPointF at);
    void Track_MouseDown(std::int16_t Button, std::int16_t Shift, QPointF at);
    void Track_MouseUp();
    // The right button on knob or track. Gives false if the slider is gone afterwards.
    bool RightPress(std::int16_t Button, std::int16_t Shift, QPointF at);

    void UserControl_Resize();
    void ResizeTo(const QSize& size);
    void ChooseKnob();
    void SyncLengths();
    void PlaceKnobWidget();
    double Along(QPointF at) const { return direction_ == 1 ? at.y() : at.x(); }

    EventLoop& loop_;
    ScrollerValue value_;
    QWidget* Picture1 = nullptr;
    QImage Picture2;                // the custom knob, if any
    QImage knob_;                   // the knob shown: Picture2 or a DefKnob
    QMenu* file_ = nullptr;
    QAction* settomin = nullptr;
    QAction* settomid = nullptr;
    QAction* settomax = nullptr;
    MenuRunner menuRunner_;

    QColor backColor_;
    std::int32_t direction_ = 0;
    bool centerLine_ = true;
    bool menuEnabled_ = true;
    // The knob holds the mouse: a track press became a knob drag, so the track's moves
    // and its release are the knob's.
    bool knobHasMouse_ = false;
    bool resizing_ = false;
};

} // namespace tolva
