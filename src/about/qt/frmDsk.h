#pragma once
// frmDsk: the last step of the start. The main window does not simply appear: for two
// seconds a copy of what the desktop showed where the main window now stands covers it,
// then the copy falls off the bottom of the screen, faster and faster, and the main
// window comes into view from the top. A click on the copy takes it away at once.
//
// The copy is a borderless topmost window with no taskbar entry. It is not modal: the
// game behind it is live, and the uncovered parts of the main window take clicks. The
// fall is one move of the window per 15 ms tick and no drawing: FallSpeed, a float from
// 0, grows by 0.2 pixels a tick while below 10, so it passes 10 at the 51st tick, at
// about 10.2, and stays there. The window goes once its top is below the screen's height,
// so a main window near the bottom is gone sooner.
//
// On X11 the server copies the screen into the window's background and draws it; on
// other window systems the copy is grabbed and painted. Where the window system gives a
// program no picture of the screen (Wayland, offscreen), the effect runs with an empty,
// black window. Both timers come from the EventLoop seam, so tests fall on the virtual
// clock.
#include "support/platform/EventLoop.h"

#include <QPixmap>
#include <QRect>
#include <QWidget>

#include <functional>
#include <memory>

namespace tolva {

class frmDsk : public QWidget {
    Q_OBJECT
public:
    // What the screen shows in a rectangle of screen coordinates; a null picture if
    // nothing can be had.
    using GrabFunction = std::function<QPixmap(const QRect&)>;

    static constexpr std::int32_t CoverMs = 2000;
    static constexpr std::int32_t FallTickMs = 15;
    static constexpr float FallStep = 0.2f;
    static constexpr float FallSpeedLimit = 10.0f;

    // `mainFrame` is the main window's frame on the screen. Without `grab` the screen is
    // asked through QScreen::grabWindow.
    frmDsk(EventLoop& loop, const QRect& mainFrame, QWidget* parent = nullptr, GrabFunction grab = {});
    ~frmDsk() override;

    // Takes the frame's place on top of everything, copies what the screen shows there,
    // shows the copy, lets `showBehind` uncover the game under it (unload the Loading
    // window, show the main window) and waits two seconds before the fall.
    void Form_Load(const std::function<void()>& showBehind = {});

    // ---- state, for the owner and tests ------------------------------------------------
    float FallSpeed() const { return fallSpeed_; }
    bool Covering() const { return Timer1->Enabled(); }
    bool Falling() const { return visTimer->Enabled(); }
    bool Gone() const { return gone_; }
    const QPixmap& Desktop() const { return desktop_; }
    // The screen's lower edge; the window goes once its top is past it.
    int ScreenHeight() const;

    static QPixmap GrabScreen(const QRect& area);

signals:
    // The window has gone, by its fall or by a click.
    void Finished();

protected:
    QPaintEngine* paintEngine() const override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void Timer1_Timer();
    void visTimer_Timer();
    void Unload();

    EventLoop& loop_;
    QRect frame_;
    GrabFunction grab_;
    bool grabGiven_ = false;
    bool serverCopy_ = false;   // the X server holds and draws the copy
    std::unique_ptr<Timer> Timer1;
    std::unique_ptr<Timer> visTimer;
    QPixmap desktop_;
    float fallSpeed_ = 0.0f;
    float top_ = 0.0f;
    bool gone_ = false;
};

} // namespace tolva
