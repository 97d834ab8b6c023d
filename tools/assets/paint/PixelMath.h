#pragma once
// Two small pieces of pixel arithmetic that the texture painters share: a colour from
// channel values that may run outside 0..255, and the ridge that turns smooth noise into
// the sharp lines of veins, cracks, frost and caustics.
#include <QColor>

#include <algorithm>
#include <cmath>

namespace PixelMath {

// Each channel rounded to the nearest whole value and held within 0..255.
inline QRgb Rgb(double r, double g, double b)
{
    auto c = [](double v) { return std::clamp(static_cast<int>(std::lround(v)), 0, 255); };
    return qRgb(c(r), c(g), c(b));
}

// 1 where the noise n (0..1) crosses its middle, falling to 0 at both ends.
inline double Ridge(double n)
{
    return 1.0 - std::abs(n * 2 - 1);
}

} // namespace PixelMath
