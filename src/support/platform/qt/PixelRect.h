#pragma once
// A rectangle of surface units (fractional pixels) as whole pixels. Each edge is rounded
// by itself, so that neighbouring cells of 12.5 pixels share their edges, alternate
// between 12 and 13 pixels, and leave neither gaps nor overlaps.
#include "support/platform/SurfaceRect.h"

#include <QRect>

#include <algorithm>
#include <cmath>

namespace tolva {

inline QRect PixelRect(const SurfaceRect& r) {
    const auto edge = [](double v) {
        if (!std::isfinite(v)) return 0;
        return static_cast<int>(std::lround(std::clamp(v, -1e6, 1e6)));
    };
    const int left = edge(r.Left);
    const int top = edge(r.Top);
    const int right = edge(r.Left + r.Width);
    const int bottom = edge(r.Top + r.Height);
    return {left, top, std::max(0, right - left), std::max(0, bottom - top)};
}

} // namespace tolva
