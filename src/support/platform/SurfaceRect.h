#pragma once
// A rectangle in the units of a drawing surface or of a picture.
namespace tolva {

struct SurfaceRect {
    double Left = 0;
    double Top = 0;
    double Width = 0;
    double Height = 0;
    bool operator==(const SurfaceRect&) const = default;
};

} // namespace tolva
