#include "controls/Ebutton.h"

#include "support/platform/qt/MouseCodes.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPointer>

namespace tolva {

Ebutton::Ebutton(EventLoop& loop, QWidget* parent)
    : QWidget(parent),
      loop_(loop),
      Out("Out", this),
      Over("Over", this),
      Blk("Blk", this),
      Dis("Dis", this),
      Timer1(loop.CreateTimer(false)) {
    backColor_ = palette().color(QPalette::Button);
    foreColor_ = palette().color(QPalette::ButtonText);
    // The first tick of the first blink comes at once; the tick sets BlinkDelay.
    Timer1->SetInterval(1);
    Timer1->OnTick = [this] { Timer1_Timer(); };
    setMouseTracking(true);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_OpaquePaintEvent);
    Dis.SetVisible(false);
    ResizeToPicture();
}

Ebutton::~Ebutton() {
    Timer1->SetEnabled(false);
    Timer1->OnTick = nullptr;
}

// ---- properties ------------------------------------------------------------------------

void Ebutton::SetEnabled(bool enabled) {
    enabled_ = enabled;
    setEnabled(enabled);
    if (!enabled) {
        Dis.SetVisible(true);
        UpdateText(DisabledTextColor());
    } else {
        Dis.SetVisible(false);
        UpdateText();
    }
}

void Ebutton::SetOutPicture(const PictureHolder& picture) {
    Out.Assign(picture);
    surfacePicture_ = Out.Image();
    ResizeToPicture();
}

void Ebutton::SetText(const QString& text) {
    text_ = text;
    ResizeToPicture();
}

// ---- operations --------------------------------------------------------------------------

void Ebutton::Blink() {
    if (enabled_) Timer1->SetEnabled(true);
}

void Ebutton::UpdateText(const QColor& xColor) {
    // Clears what was printed and prints the text once more, under the picture and
    // centred on the button, in the colour asked for or in ForeColor.
    const QFontMetricsF metrics(font());
    printed_ = true;
    printedColor_ = xColor.isValid() ? xColor : foreColor_;
    printedAt_ = QPointF(width() / 2.0 - metrics.horizontalAdvance(text_) / 2.0, Out.ScaleHeight() + 1);
    update();
}

void Ebutton::FakeMouseUp() { UserControl_MouseUp(1, 0, 0, 0); }

void Ebutton::ResizeToPicture() {
    const int width = static_cast<int>(Out.ScaleWidth());
    int height = static_cast<int>(Out.ScaleHeight());
    if (!text_.isEmpty()) height += 2 + QFontMetrics(font()).height();
    setFixedSize(width, height);
    UpdateText();
}

void Ebutton::ShowOnSurface(const QtPictureHolder& picture) {
    surfacePicture_ = picture.Image();
    update();
}

// ---- the mouse ---------------------------------------------------------------------------

void Ebutton::UserControl_MouseDown(std::int16_t Button, std::int16_t Shift, float X, float Y) {
    if (Out.HasPicture()) ShowOnSurface(Out);   // pressing ends the over look
    UpdateText();
    pressed_ = true;
    emit MouseDown(Button, Shift, X, Y);
}

void Ebutton::UserControl_MouseMove(std::int16_t /*Button*/, std::int16_t /*Shift*/, float X, float Y) {
    const bool inside = X >= 0 && X < width() && Y >= 0 && Y < height();
    if (inside) {
        if (!pressed_ && Over.HasPicture() && surfacePicture_.cacheKey() != Over.Image().cacheKey()) {
            ShowOnSurface(Over);
            emit StageChanged(true);
            UpdateText(textOverColor_);
        }
        holdsMouse_ = true;
        return;
    }
    pressed_ = false;
    ShowOnSurface(Out);
    holdsMouse_ = false;
    emit StageChanged(false);
    UpdateText();
}

void Ebutton::UserControl_MouseUp(std::int16_t Button, std::int16_t Shift, float X, float Y) {
    // A handler may close the window that holds the button, also during the wait.
    const QPointer<Ebutton> self(this);
    pressed_ = false;
    const bool blinks = blinkEnabled_ && Blk.HasPicture();
    if (blinks && (blinkType_ == 0 || blinkType_ == 2)) Timer1->SetEnabled(true);
    if (blinks && blinkType_ == 2) {
        loop_.WaitUntil([&self] { return !self || !self->Timer1->Enabled(); });
        if (!self) return;
    }
    emit MouseUp(Button, Shift, X, Y);
    if (!self) return;
    if (Out.HasPicture()) ShowOnSurface(Out);
    if (blinks && blinkType_ == 1) Timer1->SetEnabled(true);
    if (enabled_) UpdateText();
}

void Ebutton::Timer1_Timer() {
    Timer1->SetInterval(blinkDelay_);
    blinkOn_ = !blinkOn_;
    if (!blinkOn_) {
        Blk.SetVisible(false);
        return;
    }
    ++blinkCount_;
    if (blinkCount_ >= blinkTimes_ + 1) {
        Blk.SetVisible(false);
        Timer1->SetEnabled(false);
        blinkOn_ = false;
        blinkCount_ = 0;
        return;
    }
    Blk.SetVisible(true);
}

void Ebutton::mousePressEvent(QMouseEvent* event) {
    event->accept();
    holdsMouse_ = true;   // a pressed button gets every move until the release
    const QPointF at = event->position();
    UserControl_MouseDown(MouseButtonCode(event->button()), MouseShiftCode(event->modifiers()),
                          static_cast<float>(at.x()), static_cast<float>(at.y()));
}

void Ebutton::mouseMoveEvent(QMouseEvent* event) {
    event->accept();
    const QPointF at = event->position();
    const bool inside = rect().contains(at.toPoint());
    if (!inside && !holdsMouse_) return;   // not ours once the button has let go
    UserControl_MouseMove(MouseButtonCode(event->buttons()), MouseShiftCode(event->modifiers()),
                          static_cast<float>(at.x()), static_cast<float>(at.y()));
}

void Ebutton::mouseReleaseEvent(QMouseEvent* event) {
    event->accept();
    if (!holdsMouse_) return;   // the button let go of the mouse when it left
    const QPointF at = event->position();
    UserControl_MouseUp(MouseButtonCode(event->button()), MouseShiftCode(event->modifiers()),
                        static_cast<float>(at.x()), static_cast<float>(at.y()));
}

void Ebutton::leaveEvent(QEvent* event) {
    QWidget::leaveEvent(event);
    if (holdsMouse_) UserControl_MouseMove(0, 0, -1, -1);   // the move that leaves
}

void Ebutton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), backColor_);
    if (!surfacePicture_.isNull()) painter.drawImage(QPoint(0, 0), surfacePicture_);
    if (!printed_ || text_.isEmpty()) return;
    painter.setFont(font());
    painter.setPen(printedColor_);
    painter.drawText(printedAt_ + QPointF(0, QFontMetricsF(font()).ascent()), text_);
}

} // namespace tolva
