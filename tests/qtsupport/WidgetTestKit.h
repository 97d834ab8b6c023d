#pragma once
// Small helpers of the widget tests: pictures made in code, a game folder holding a
// window's pictures, and the colour a widget shows at a point, read from the widget as it
// paints itself (children included).
#include "support/TempFolder.h"
#include "support/ZenkorModule.h"
#include "support/platform/qt/QtPictureHolder.h"

#include <QImage>
#include <QWidget>

#include <cstdint>
#include <filesystem>
#include <initializer_list>
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

// A game folder (the application's folder while it lives) whose data folder holds the
// given pictures, each of one colour: {"data/2.bmp", 320, 200, colour}.
struct PictureFolder {
    struct Picture {
        const char* name;
        int width, height;
        QRgb colour;
    };
    explicit PictureFolder(std::initializer_list<Picture> pictures = {}) {
        std::filesystem::create_directory(Dir / "data");
        for (const Picture& p : pictures) SolidImage(p.width, p.height, p.colour).save(QString::fromStdString(Dir / p.name), "BMP");
        SetAppPath(Dir.Path());
    }
    TempFolder Dir;
};

// 0xRRGGBB shown by `widget` at (x, y).
inline std::uint32_t ShownAt(QWidget& widget, int x, int y) {
    return widget.grab().toImage().pixel(x, y) & 0xFFFFFFu;
}

inline std::uint32_t Rgb(QRgb colour) { return colour & 0xFFFFFFu; }

} // namespace tolva::testing
