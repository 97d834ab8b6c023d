#pragma once
// The 500 x 500 board backgrounds: the standard one the board shows between games, and
// one for each world of the level sets. Empty cells show the piece of
// background under them, so every background keeps its middle calm and dark enough for
// the bricks to stand out, with a faint cell grid that shows where the holes are.
#include <QImage>

class BackgroundPainter {
public:
    static constexpr int Size = 500;

    static QImage Standard();
    static QImage Crystal();
    static QImage Forest();
    static QImage Ocean();
    static QImage Ember();
    // The six later worlds, in BackgroundWorlds.cpp.
    static QImage Meadow();
    static QImage Dunes();
    static QImage Marble();
    static QImage Clockwork();
    static QImage Neon();
    static QImage Cosmos();

private:
    static void CellGrid(QImage& image, int alpha);
    static void Vignette(QImage& image, double strength);
};
