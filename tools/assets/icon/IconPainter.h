#pragma once
// The game's icon for the desktop's menus: a slab of the board in its deep teal with a
// gold rim, holding a few bricks in the game's own colours and emblems, one gap where a
// group was just cleared. The drawing is a list of filled shapes on a 256-unit square, so
// that the pictures at each pixel size and the scalable SVG come from the same geometry.
#include <QColor>
#include <QImage>
#include <QPainterPath>
#include <QString>
#include <vector>

class IconPainter {
public:
    struct Shape {
        QPainterPath path;
        QColor fill;
    };

    // The shapes, back to front. Below 48 pixels the emblems are left out: they would
    // only blur the bricks.
    static std::vector<Shape> Scene(bool withEmblems);
    // The icon at `size` x `size` pixels, with a transparent surround.
    static QImage Paint(int size);
    // The scalable icon as an SVG document.
    static QString Svg();
};
