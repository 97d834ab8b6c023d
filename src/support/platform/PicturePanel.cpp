#include "support/platform/PicturePanel.h"

namespace tolva {

PicturePanel::PicturePanel(std::unique_ptr<PictureHolder> holder) : holder_(std::move(holder)) {}

void PicturePanel::SetBounds(const SurfaceRect& bounds) {
    bounds_ = bounds;
    Changed();
}

void PicturePanel::Cls() {
    pieces_.clear();
    Changed();
}

void PicturePanel::PaintPicture(const PictureHolder& picture, double left, double top) {
    pieces_.push_back({&picture, left, top});
    Changed();
}

void PicturePanel::Changed() {
    if (OnChanged) OnChanged();
}

} // namespace tolva
