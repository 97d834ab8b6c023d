#pragma once
// The few things the game asks of the X server directly, where Qt's own way costs the
// start-up time that the player waits for. On any other window system Flush does nothing
// and ShowScreenCopyAsBackground answers false, and the caller keeps to Qt's way.
#include <QPixmap>
#include <QRect>

class QWidget;

namespace tolva::x11 {

// Sends the requests Qt has queued for the window system now, instead of at the event
// loop's next turn: a window just shown is mapped while the program goes on working.
void Flush();

// Has the X server make, ahead of time, the picture that a later screen copy of this
// size goes into. Fresh memory is slow to touch the first time, for the server too: made
// while the game still loads, on the server's own time, it is ready when the window
// waits for it. Nothing happens where ShowScreenCopyAsBackground would answer false.
void PrepareScreenCopy(const QSize& size);

// Gives `window` a copy of what the screen shows in `area` as its background, kept and
// drawn by the X server itself, without the pixels ever coming to this program; the
// window must paint nothing of its own over it. False where that cannot be done (not
// X11, no such window yet), and nothing changed.
bool ShowScreenCopyAsBackground(QWidget& window, const QRect& area);

} // namespace tolva::x11
