#pragma once
// Small helpers of the widget tests: pictures made in code, and the colour a widget
// shows at a point, read from the widget as it paints itself (children included).
#include "support/platform/qt/QtPictureHolder.h"

#include <QImage>
#include <QWidget>

#include <cstdint>
#include <string>

namespace tolva::testing {

inline QImage SolidImage(int width, int height, QRgb colour) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(colour);
    return image;
}

// A holder with a plain picture of one colour.
inline void FillHolder(QtPictureHolder& holder, int width, int height, QRgb colour) {
    holder.SetImage(SolidImage(width, height, colour));
}

// 0xRRGGBB shown by `widget` at (x, y).
inline std::uint32_t ShownAt(QWidget& widget, int x, int y) {
    return widget.grab().toImage().pixel(x, y) & 0xFFFFFFu;
}

inline std::uint32_t Rgb(QRgb colour) { return colour & 0xFFFFFFu; }

} // namespace tolva::testing
