#include "about/qt/frmDsk.h"

#include "support/platform/qt/X11Display.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>

#include <cmath>

namespace tolva {

frmDsk::frmDsk(EventLoop& loop, const QRect& mainFrame, QWidget* parent, GrabFunction grab)
    : QWidget(parent, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      loop_(loop),
      frame_(mainFrame),
      grab_(grab ? std::move(grab) : GrabFunction(&frmDsk::GrabScreen)),
      grabGiven_(static_cast<bool>(grab)),
      Timer1(loop.CreateTimer(false)),
      visTimer(loop.CreateTimer(true)) {
    Timer1->SetInterval(CoverMs);
    Timer1->OnTick = [this] { Timer1_Timer(); };
    visTimer->SetInterval(FallTickMs);
    visTimer->OnTick = [this] { visTimer_Timer(); };
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_ShowWithoutActivating);
}

frmDsk::~frmDsk() {
    Timer1->SetEnabled(false);
    visTimer->SetEnabled(false);
    Timer1->OnTick = nullptr;
    visTimer->OnTick = nullptr;
}

QPixmap frmDsk::GrabScreen(const QRect& area) {
    QScreen* screen = QGuiApplication::screenAt(area.center());
    if (screen == nullptr) screen = QGuiApplication::primaryScreen();
    if (screen == nullptr) return {};
    const QRect onScreen = area.translated(-screen->geometry().topLeft());
    return screen->grabWindow(0, onScreen.x(), onScreen.y(), onScreen.width(), onScreen.height());
}

void frmDsk::Form_Load(const std::function<void()>& showBehind) {
    setGeometry(frame_);
    top_ = static_cast<float>(frame_.y());
    loop_.DoEvents();
    // On X11 the server makes the copy and draws it itself as the window's background:
    // no picture of the screen has to come to the game and go back again, which would
    // hold up the main window by tens of milliseconds. Elsewhere (or when a test gives
    // its own screen) the copy is grabbed and painted.
    if (!grabGiven_) {
        setAttribute(Qt::WA_PaintOnScreen);
        serverCopy_ = x11::ShowScreenCopyAsBackground(*this, frame_);
        if (!serverCopy_) setAttribute(Qt::WA_PaintOnScreen, false);
    }
    if (!serverCopy_) desktop_ = grab_(frame_);
    loop_.DoEvents();
    show();
    if (showBehind) showBehind();
    // The copy stays on top of the main window that was just shown.
    raise();
    Timer1->SetEnabled(true);
}

int frmDsk::ScreenHeight() const {
    const QScreen* shown = screen();
    if (shown == nullptr) shown = QGuiApplication::primaryScreen();
    if (shown == nullptr) return 0;
    return shown->geometry().y() + shown->geometry().height();
}

void frmDsk::Timer1_Timer() {
    Timer1->SetEnabled(false);
    visTimer->SetEnabled(true);
}

void frmDsk::visTimer_Timer() {
    if (top_ < static_cast<float>(ScreenHeight())) {
        top_ += fallSpeed_;
        move(x(), static_cast<int>(std::lrint(top_)));
    } else {
        visTimer->SetEnabled(false);
        Unload();
    }
    if (fallSpeed_ < FallSpeedLimit) fallSpeed_ += FallStep;
}

void frmDsk::Unload() { close(); }

QPaintEngine* frmDsk::paintEngine() const {
    // The server paints the copy; Qt keeps no picture of this window and paints nothing.
    return serverCopy_ ? nullptr : QWidget::paintEngine();
}

void frmDsk::paintEvent(QPaintEvent*) {
    if (serverCopy_) return;
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    if (!desktop_.isNull()) painter.drawPixmap(rect(), desktop_);
}

void frmDsk::mousePressEvent(QMouseEvent*) { Unload(); }

void frmDsk::closeEvent(QCloseEvent* event) {
    Timer1->SetEnabled(false);
    visTimer->SetEnabled(false);
    QWidget::closeEvent(event);
    if (!gone_) {
        gone_ = true;
        emit Finished();
    }
}

} // namespace tolva
