#pragma once
// A picture panel: a picture holder that stands at a place on its container and into
// which other pictures are painted at given places. The bonus screen is one (it stands on
// the board and covers it), and the three number lines on it are panels on the bonus
// screen, each showing a number as a row of digit pictures.
//
// The rules decide everything about a panel: where it stands, how wide it is, which
// picture is painted where in it. That is plain data, kept here, so that a board without
// a screen can count a bonus up and a test can read what each line shows. The panel's own
// picture, visibility and back colour are those of its holder, which the platform's store
// made (and which a Qt store shows on the board's widget). A front end that shows the
// painted pieces follows OnChanged, which is called after every change of bounds or
// pieces.
#include "support/platform/PictureHolder.h"
#include "support/platform/SurfaceRect.h"

#include <functional>
#include <memory>
#include <vector>

namespace tolva {

class PicturePanel {
public:
    // A picture painted into the panel with its top left corner at (Left, Top), at the
    // picture's own size, in the panel's units.
    struct Piece {
        const PictureHolder* Picture = nullptr;
        double Left = 0;
        double Top = 0;
    };

    explicit PicturePanel(std::unique_ptr<PictureHolder> holder);

    PictureHolder& Holder() { return *holder_; }
    const PictureHolder& Holder() const { return *holder_; }

    // Place and size on the container, in the container's units.
    void SetBounds(const SurfaceRect& bounds);
    const SurfaceRect& Bounds() const { return bounds_; }
    // The inner size, in the panel's own units: its bounds' size.
    double ScaleWidth() const { return bounds_.Width; }
    double ScaleHeight() const { return bounds_.Height; }

    bool Visible() const { return holder_->Visible(); }
    void SetVisible(bool visible) { holder_->SetVisible(visible); }

    // Drops everything painted into the panel: its back colour and picture show again.
    void Cls();
    void PaintPicture(const PictureHolder& picture, double left, double top);
    const std::vector<Piece>& Pieces() const { return pieces_; }

    std::function<void()> OnChanged;

private:
    void Changed();

    std::unique_ptr<PictureHolder> holder_;
    SurfaceRect bounds_;
    std::vector<Piece> pieces_;
};

} // namespace tolva
