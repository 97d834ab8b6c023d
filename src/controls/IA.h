#pragma once
// IA: the control that plays the game's short animations (the explosion, the bomb, the
// saw, the hint, the test tube, the idle mascot).
//
// An animation is one picture, the strip, with its frames one below the other, each
// MoveHeight rows high. The control shows one frame at a time stretched over its whole
// surface; when and which frame is StripPlayback's (support/platform), the same logic the
// headless strips of tests and tolva2-cli play by, so both keep the same frames at the
// same ticks.
//
// A transparent strip has two halves side by side: the picture on the left, black where
// nothing shows, and on the right the mask, white where the container shows through and
// black where the picture covers it. A frame is then laid over the container's own
// picture: the container's picture under the control, AND the mask, OR the picture. The
// container's picture is what the container paints itself, without its children.
//
// The control paints into a buffer of its own size; its paint event only copies the
// buffer to the screen. Its timer comes from the EventLoop seam, so a test runs an
// animation on the virtual clock with exactly the ticks it has on screen.
#include "support/platform/EventLoop.h"
#include "support/platform/StripPlayback.h"
#include "support/platform/qt/QtPictureHolder.h"

#include <QImage>
#include <QWidget>

#include <cstdint>
#include <memory>

namespace tolva {

class IA : public QWidget {
    Q_OBJECT
public:
    static constexpr std::int16_t DefaultInterval = 40;
    static constexpr std::int16_t DefaultMoveHeight = 20;

    explicit IA(EventLoop& loop, QWidget* parent = nullptr);
    ~IA() override;

    // ---- properties -------------------------------------------------------------------
    // The strip. Setting it shows its first frame.
    const QtPictureHolder& PictureStrip() const { return PictureS; }
    void SetPictureStrip(const PictureHolder& picture);
    // Loads the strip from a stored path; false, with the strip unchanged, if the file is
    // missing or unreadable.
    bool LoadPictureStrip(const std::string& storedPath);
    // Milliseconds between frames.
    std::int16_t Interval() const;
    void SetInterval(std::int16_t ms);
    // Height of one frame in the strip's pixels; raised to 1 when a frame is shown.
    std::int16_t MoveHeight() const { return playback_.MoveHeight(); }
    void SetMoveHeight(std::int16_t height);
    // While still, a repaint of the control shows the first frame again.
    void SetAutoRefresh(bool autoRefresh);
    // Frames are laid over the container's picture through the strip's mask.
    void SetTransparent(bool transparent);

    // ---- operations -------------------------------------------------------------------
    void Play(std::int16_t Times = -1);
    void StopPlay();
    bool IsPlaying() const { return playback_.IsPlaying(); }
    // Shows the first frame; with no strip, nothing.
    void UpdatePicture();
    // Paints the container's picture under the control onto the whole surface.
    void CopyBg();

    // ---- state, for the owner and tests -------------------------------------------------
    std::int16_t StripPos() const { return playback_.StripPos(); }
    std::int16_t PassesDone() const { return playback_.PassesDone(); }
    std::int16_t PassesWanted() const { return playback_.PassesWanted(); }

signals:
    // The asked passes have been played, or StopPlay.
    void Finish();
    void MouseDown();
    void MouseUp();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void PaintFrame(int top);
    // The surface at the control's size, made afresh (black) when the size changed.
    bool EnsureSurface();
    // The rectangle of the strip at (left, top), black where it lies beyond the strip.
    QImage StripPart(int left, int top, int width, int height) const;

    QtPictureHolder PictureS;
    StripPlayback playback_;
    bool autoRefresh_ = true;
    bool transparent_ = false;
    QImage surface_;
    QSize resizedTo_;
};

} // namespace tolva
