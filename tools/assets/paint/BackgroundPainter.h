#pragma once
// The 500 x 500 board backgrounds: the standard one the board shows between games, and
// one for each graphics folder of the default level set. Empty cells show the piece of
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

private:
    static void CellGrid(QImage& image, int alpha);
    static void Vignette(QImage& image, double strength);
};
