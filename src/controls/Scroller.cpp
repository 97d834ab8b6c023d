#include "controls/Scroller.h"

#include "support/platform/qt/MouseCodes.h"

#include <QAction>
#include <QCursor>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>

namespace tolva {

namespace {

// The colours of the built-in knobs: the dark teal of the game's panels around a gold
// body, its edges lit from the top left.
const QColor KnobGround(20, 55, 60);
const QColor KnobRim(6, 17, 20);
const QColor KnobGold(242, 190, 72);
const QColor KnobLight(255, 238, 170);
const QColor KnobDark(150, 96, 22);

} // namespace

QImage Scroller::DefKnob(int index) {
    const bool vertical = index == 1;
    const int w = vertical ? 21 : 11;
    const int h = vertical ? 11 : 21;
    QImage image(w, h, QImage::Format_RGB32);
    image.fill(KnobGround);
    QPainter p(&image);
    // A dark rim with its corner pixels left out, so that the knob looks rounded.
    p.setPen(KnobRim);
    p.drawLine(1, 0, w - 2, 0);
    p.drawLine(1, h - 1, w - 2, h - 1);
    p.drawLine(0, 1, 0, h - 2);
    p.drawLine(w - 1, 1, w - 1, h - 2);
    p.fillRect(1, 1, w - 2, h - 2, KnobGold);
    p.setPen(KnobLight);
    p.drawLine(1, 1, w - 2, 1);
    p.drawLine(1, 1, 1, h - 2);
    p.setPen(KnobDark);
    p.drawLine(1, h - 2, w - 2, h - 2);
    p.drawLine(w - 2, 2, w - 2, h - 2);
    // A grip groove across the direction of travel: dark, with a lit edge beside it.
    if (vertical) {
        p.setPen(KnobDark);
        p.drawLine(4, h / 2 - 1, w - 5, h / 2 - 1);
        p.setPen(KnobLight);
        p.drawLine(4, h / 2, w - 5, h / 2);
    } else {
        p.setPen(KnobDark);
        p.drawLine(w / 2 - 1, 4, w / 2 - 1, h - 5);
        p.setPen(KnobLight);
        p.drawLine(w / 2, 4, w / 2, h - 5);
    }
    return image;
}

Scroller::Scroller(EventLoop& loop, QWidget* parent) : QWidget(parent), loop_(loop) {
    backColor_ = palette().color(QPalette::Button);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);

    Picture1 = new QWidget(this);
    Picture1->setObjectName("Picture1");
    Picture1->setAttribute(Qt::WA_OpaquePaintEvent);
    Picture1->installEventFilter(this);
    Picture1->move(0, 0);

    file_ = new QMenu("File", this);
    file_->setObjectName("file");
    settomin = file_->addAction("Set to 0%");
    settomin->setObjectName("settomin");
    settomid = file_->addAction("Set to 50%");
    settomid->setObjectName("settomid");
    settomax = file_->addAction("Set to 100%");
    settomax->setObjectName("settomax");
    connect(settomin, &QAction::triggered, this, [this] { value_.SetToMin(); });
    connect(settomid, &QAction::triggered, this, [this] { value_.SetToMid(); });
    connect(settomax, &QAction::triggered, this, [this] { value_.SetToMax(); });
    menuRunner_ = [](QMenu& menu, const QPoint& at) { menu.exec(at); };

    value_.OnScroll = [this](std::int16_t v) { emit Scroll(v); };
    value_.OnAfterScroll = [this](std::int16_t v) { emit AfterScroll(v); };
    value_.OnKnobMoved = [this] { PlaceKnobWidget(); };
    ChooseKnob();
    resize(100, knob_.height());
    UserControl_Resize();
}

Scroller::~Scroller() {
    value_.OnScroll = nullptr;
    value_.OnAfterScroll = nullptr;
    value_.OnKnobMoved = nullptr;
}

// ---- properties ------------------------------------------------------------------------

void Scroller::SetBackColor(const QColor& colour) {
    backColor_ = colour;
    UpdateScroller();
}

void Scroller::SetDirection(std::int32_t direction) {
    direction_ = direction;
    // The control turns: its length becomes its thickness, and the knob of the new
    // direction comes in only after the resize, as it always has.
    ResizeTo(direction_ == 1 ? QSize(width(), width()) : QSize(height(), height()));
    ChooseKnob();
    UpdateScroller();
}

void Scroller::SetScrollKnobPicture(const QImage& picture) {
    Picture2 = picture;
    ChooseKnob();
    UpdateScroller();
}

void Scroller::SetCenterLine(bool on) {
    centerLine_ = on;
    UpdateScroller();
}

void Scroller::SetMin(std::int32_t newMin) {
    SyncLengths();
    value_.SetMin(newMin);
}

void Scroller::SetMax(std::int32_t newMax) {
    SyncLengths();
    value_.SetMax(newMax);
}

void Scroller::SetValue(std::int32_t newValue) {
    SyncLengths();
    value_.SetValue(newValue);
}

// ---- operations --------------------------------------------------------------------------

void Scroller::UpdateScroller() {
    // The track (back colour, picture, centre line) is painted whole in paintEvent; here
    // it is asked for again, and the knob is centred across it.
    SyncLengths();
    PlaceKnobWidget();
    update();
}

void Scroller::setValue() {
    SyncLengths();
    value_.setValue();
}

void Scroller::ShowSetMenu() {
    // The entries' actions set the value while the menu runs.
    menuRunner_(*file_, QCursor::pos());
}

void Scroller::SetMenuCaption(const QString& a, const QString& b, const QString& c) {
    settomin->setText(a);
    settomid->setText(b);
    settomax->setText(c);
}

void Scroller::UserControl_Resize() {
    if (resizing_) return;   // the thickness set below comes back here; once is enough
    resizing_ = true;
    ResizeTo(direction_ == 1 ? QSize(knob_.width(), height()) : QSize(width(), knob_.height()));
    resizing_ = false;
    UpdateScroller();
    setValue();
}

void Scroller::ResizeTo(const QSize& size) {
    if (size == this->size()) return;
    resize(size);
    // A hidden widget hears of its new size only when it is shown; act on it now.
    if (!isVisible()) UserControl_Resize();
}

void Scroller::ChooseKnob() {
    knob_ = Picture2.isNull() ? DefKnob(direction_ == 1 ? 1 : 0) : Picture2;
    Picture1->resize(knob_.size());
    Picture1->update();
}

void Scroller::SyncLengths() {
    if (direction_ == 1)
        value_.SetLengths(height(), knob_.height());
    else
        value_.SetLengths(width(), knob_.width());
}

void Scroller::PlaceKnobWidget() {
    const int along = qRound(value_.KnobPos());
    if (direction_ == 1)
        Picture1->move((width() - knob_.width()) / 2, along);
    else
        Picture1->move(along, (height() - knob_.height()) / 2);
}

// ---- the mouse and the keys ---------------------------------------------------------------

void Scroller::Knob_MouseDown(std::int16_t Button, std::int16_t Shift, QPointF at) {
    const QPointer<Scroller> self(this);
    SyncLengths();
    if (Button == 1) value_.KnobPress(Along(at));
    if (Button == 2 && !RightPress(Button, Shift, at)) return;
    if (self) emit MouseDown(Button, Shift, static_cast<float>(at.x()), static_cast<float>(at.y()));
}

void Scroller::Knob_MouseMove(QPointF at) {
    SyncLengths();
    value_.KnobMove(Along(at));
}

void Scroller::Knob_MouseUp(std::int16_t Button, std::int16_t Shift, QPointF at) {
    value_.KnobRelease();
    emit MouseUp(Button, Shift, static_cast<float>(at.x()), static_cast<float>(at.y()));
}

void Scroller::Track_MouseDown(std::int16_t Button, std::int16_t Shift, QPointF at) {
    const QPointer<Scroller> self(this);
    SyncLengths();
    if (Button == 1) {
        value_.TrackPress(Along(at));
        if (!self) return;
        // The press becomes the knob's, at its own (0, 0), and the knob keeps the mouse.
        knobHasMouse_ = true;
        Knob_MouseDown(1, 0, QPointF(0, 0));
        if (!self) return;
    }
    if (Button == 2 && !RightPress(Button, Shift, at)) return;
    if (self) emit MouseDown(Button, Shift, static_cast<float>(at.x()), static_cast<float>(at.y()));
}

void Scroller::Track_MouseUp() { value_.TrackRelease(); }

bool Scroller::RightPress(std::int16_t Button, std::int16_t Shift, QPointF at) {
    if (!menuEnabled_) return true;
    const QPointer<Scroller> self(this);
    ShowSetMenu();
    if (!self) return false;
    SyncLengths();
    value_.ValueStep(true);
    if (!self) return false;
    emit AfterScroll(value_.Value());
    if (!self) return false;
    loop_.DoEvents();
    if (!self) return false;
    emit MouseUp(Button, Shift, static_cast<float>(at.x()), static_cast<float>(at.y()));
    if (!self) return false;
    loop_.DoEvents();
    return !self.isNull();
}

bool Scroller::eventFilter(QObject* watched, QEvent* event) {
    if (watched != Picture1) return QWidget::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::Paint: {
        QPainter painter(Picture1);
        painter.drawImage(0, 0, knob_);
        return true;
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: {
        auto* mouse = static_cast<QMouseEvent*>(event);
        Knob_MouseDown(MouseButtonCode(mouse->button()), MouseShiftCode(mouse->modifiers()), mouse->position());
        return true;
    }
    case QEvent::MouseMove:
        Knob_MouseMove(static_cast<QMouseEvent*>(event)->position());
        return true;
    case QEvent::MouseButtonRelease: {
        auto* mouse = static_cast<QMouseEvent*>(event);
        Knob_MouseUp(MouseButtonCode(mouse->button()), MouseShiftCode(mouse->modifiers()), mouse->position());
        return true;
    }
    default:
        return QWidget::eventFilter(watched, event);
    }
}

void Scroller::mousePressEvent(QMouseEvent* event) {
    event->accept();
    const std::int16_t button = MouseButtonCode(event->button());
    const std::int16_t shift = MouseShiftCode(event->modifiers());
    if (knobHasMouse_)
        Knob_MouseDown(button, shift, event->position() - Picture1->pos());
    else
        Track_MouseDown(button, shift, event->position());
}

void Scroller::mouseDoubleClickEvent(QMouseEvent* event) { mousePressEvent(event); }

void Scroller::mouseMoveEvent(QMouseEvent* event) {
    event->accept();
    if (knobHasMouse_) Knob_MouseMove(event->position() - Picture1->pos());
}

void Scroller::mouseReleaseEvent(QMouseEvent* event) {
    event->accept();
    if (!knobHasMouse_) {
        Track_MouseUp();
        return;
    }
    knobHasMouse_ = false;
    Knob_MouseUp(MouseButtonCode(event->button()), MouseShiftCode(event->modifiers()),
                 event->position() - Picture1->pos());
}

void Scroller::keyPressEvent(QKeyEvent* event) {
    const bool keypad = event->modifiers() & Qt::KeypadModifier;
    if (keypad && (event->key() == Qt::Key_Plus || event->key() == Qt::Key_Minus)) {
        SyncLengths();
        value_.StepKey(event->key() == Qt::Key_Plus);
        event->accept();
        return;
    }
    QWidget::keyPressEvent(event);
}

void Scroller::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    UserControl_Resize();
}

void Scroller::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), backColor_);
    if (!centerLine_) return;
    painter.setPen(DefaultCenterLineColor());
    if (direction_ == 1)
        painter.drawLine(width() / 2, 0, width() / 2, height());
    else
        painter.drawLine(0, height() / 2, width(), height() / 2);
}

} // namespace tolva
