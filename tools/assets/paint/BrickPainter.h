#pragma once
// The brick pictures: ten colours in eleven materials, the classic one built into the
// program and one for each world of the level sets. Every material keeps the colour and
// the emblem of each index, so that a level in another graphics folder reads the same to
// the player; only the surface changes. Pictures are 25 x 25, the cell of a 20-brick
// board on the 500-pixel background; the game stretches them to other cell sizes.
#include <QImage>

class BrickPainter {
public:
    enum class Style { Classic, Crystal, Forest, Ocean, Ember, Meadow, Dunes, Marble, Clockwork, Neon, Cosmos };
    static constexpr int Size = 25;

    static QImage Paint(Style style, int index);

private:
    static void Classic(QImage& image, int index);
    static void Crystal(QImage& image, int index);
    static void Forest(QImage& image, int index);
    static void Ocean(QImage& image, int index);
    static void Ember(QImage& image, int index);
    // The six later worlds, in BrickWorlds.cpp.
    static void Meadow(QImage& image, int index);
    static void Dunes(QImage& image, int index);
    static void Marble(QImage& image, int index);
    static void Clockwork(QImage& image, int index);
    static void Neon(QImage& image, int index);
    static void Cosmos(QImage& image, int index);
    // Draws the emblem of `index` centred in the picture, in a colour that stands out
    // from `ground`, raised on dark grounds and engraved on light ones.
    static void DrawEmblem(QPainter& p, int index, const QColor& ground, double size,
                           const QPointF& centre);
};
