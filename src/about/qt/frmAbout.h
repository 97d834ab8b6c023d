#pragma once
// frmAbout: the game's credits on a rolling text, over a picture of its own. It opens
// from the about button and at the very first start of the game, centred over the board,
// with no border, no caption and no taskbar entry; exec() shows it modal.
//
// A left click on the rolling text brings it softly to a stop, the next sets it going
// again. The close button (Ebutton1) closes the window; the web address opens in the
// system's browser and leaves the window open. The browser is reached through a function
// the owner may replace, so that tests open nothing.
//
// Missing pictures leave the window without them, with no message.
#include "controls/Ebutton.h"
#include "controls/ZenkorScroller.h"
#include "support/platform/Dialogs.h"
#include "support/platform/EventLoop.h"
#include "support/platform/qt/QtPictureHolder.h"

#include <QDialog>
#include <QLabel>
#include <QRect>
#include <QUrl>

#include <functional>

namespace tolva {

class frmAbout : public QDialog {
    Q_OBJECT
public:
    using OpenUrlFunction = std::function<bool(const QUrl&)>;

    static constexpr int FormWidth = 450;
    static constexpr int FormHeight = 400;
    // The maker's web address, as Label1 shows it.
    static const char* const WebAddress;

    // `board` is the board's rectangle on the screen; the window stands centred over it.
    // Without `openUrl` the address opens with QDesktopServices.
    frmAbout(EventLoop& loop, Dialogs& dialogs, const QRect& board, QWidget* parent = nullptr,
             OpenUrlFunction openUrl = {});
    ~frmAbout() override;

    // ---- parts, for the owner and tests ----------------------------------------------
    ZenkorScroller& Scroller() { return ZenkorScroller1; }
    Ebutton& CloseButton() { return Ebutton1; }
    QLabel& AddressLabel() { return Label1; }
    bool HasBackground() const { return Picture.HasPicture(); }
    QUrl AddressUrl() const;

    void done(int result) override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Form_Load(const QRect& board);
    void SetUpScroller();
    void SetUpLabel();

    OpenUrlFunction openUrl_;
    QtPictureHolder Picture;
    ZenkorScroller ZenkorScroller1;
    Ebutton Ebutton1;
    QLabel Label1;
};

} // namespace tolva
