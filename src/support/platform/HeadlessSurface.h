#pragma once
// The board's drawing area in a game without a screen (tolva2-cli): it has a size, in
// surface units, and follows the board's background like the widget does; there is
// nothing to paint on, so the paint requests end here.
#include "support/platform/BoardSurface.h"

namespace tolva {

class HeadlessSurface final : public BoardSurface {
public:
    HeadlessSurface(double width = 500, double height = 500) : width_(width), height_(height) {}

    double ScaleWidth() const override { return width_; }
    double ScaleHeight() const override { return height_; }
    void Resize(double width, double height) override {
        width_ = width;
        height_ = height;
    }
    void PaintPicture(const PictureHolder&, const SurfaceRect&) override {}
    void PaintPicturePart(const PictureHolder&, const SurfaceRect&, const SurfaceRect&) override {}
    void DrawLine(double, double, double, double, std::int32_t) override {}
    void SetBackPicture(const PictureHolder&) override {}
    void SetMousePointer(const PictureHolder*, int, int) override {}

private:
    double width_;
    double height_;
};

} // namespace tolva
