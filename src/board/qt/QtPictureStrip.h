#pragma once
// A picture strip of the board on screen: an IA control on the board's widget, seen
// through the PictureStrip interface that the rules call.
//
// The control is a child of the board's widget, and the board owns this handle. Either
// may go first when the window closes: the handle deletes its control if it is still
// there, and a handle whose control went with the widget does nothing more.
#include "controls/IA.h"
#include "support/platform/PictureStrip.h"

#include <QPointer>

namespace tolva {

class QtPictureStrip final : public PictureStrip {
public:
    QtPictureStrip(std::string name, EventLoop& loop, QWidget* host);
    // A strip over an IA control that stands on a window already (the test tube's).
    QtPictureStrip(std::string name, IA* control);
    ~QtPictureStrip() override;
    QtPictureStrip(const QtPictureStrip&) = delete;
    QtPictureStrip& operator=(const QtPictureStrip&) = delete;

    const std::string& Name() const override { return name_; }
    bool LoadStrip(const std::string& storedPath) override;
    bool HasStrip() const override;

    void SetInterval(std::int16_t ms) override;
    std::int16_t Interval() const override;
    void SetMoveHeight(std::int16_t height) override;
    std::int16_t MoveHeight() const override;

    // Bounds in the host's pixels; the control stands at the nearest whole pixels.
    void SetBounds(const SurfaceRect& bounds) override;
    SurfaceRect Bounds() const override { return bounds_; }
    void SetVisible(bool visible) override;
    bool Visible() const override;

    void Play(std::int16_t times = -1) override;
    void StopPlay() override;
    bool IsPlaying() const override;

    // The control itself, for the front end; nullptr once its host has gone.
    IA* Control() const { return control_.data(); }

private:
    std::string name_;
    QPointer<IA> control_;
    SurfaceRect bounds_;
};

} // namespace tolva
