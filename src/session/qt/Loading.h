#pragma once
// The Loading window: a small borderless picture, centred on the screen, that tells
// what the game is loading while the main window is not yet shown. It stays on top of
// other windows; a stop message during the load takes that away for its own time.
#include <QLabel>
#include <QPixmap>
#include <QWidget>

#include <cstdint>
#include <memory>

namespace tolva {

class EventLoop;
class Timer;

class Loading final : public QWidget {
public:
    static constexpr int WidthPx = 401;
    static constexpr int HeightPx = 231;

    // The shortest time between two progress texts on screen: one frame of a 60 Hz
    // display.
    static constexpr std::int64_t FrameMs = 16;

    Loading(EventLoop& loop, const QPixmap& background, const QString& version);
    ~Loading() override;

    // Shows the progress text centred in the window and lets pending events run, so
    // that it shows at once. The loads report far more texts than a screen can show
    // (a hundred levels in a few milliseconds), and each repaint would cost more than
    // the load it reports: a text that comes within a frame of the one before waits
    // for the rest of that frame, and is replaced if another comes meanwhile. So every
    // text the player could have read still shows, and the last one always does.
    void SetLabel(const QString& text);
    // Puts a text that still waits on screen at once: the window is about to be copied
    // or to go.
    void ShowWaitingText();
    // The text on screen now.
    QString LabelText() const { return label2_->text(); }

    void SetTopMost(bool onTop);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void ShowText(const QString& text);

    EventLoop& loop_;
    std::unique_ptr<Timer> nextFrame_;
    QString waiting_;
    std::int64_t shownAtMs_ = 0;
    bool shownOnce_ = false;
    QPixmap background_;
    QLabel* label1_;
    QLabel* label2_;
};

} // namespace tolva
