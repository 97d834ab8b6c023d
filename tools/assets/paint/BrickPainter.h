#pragma once
// The brick pictures: ten colours in five materials. Every material keeps the colour and
// the emblem of each index, so that a level in another graphics folder reads the same to
// the player; only the surface changes. Pictures are 25 x 25, the cell of a 20-brick
// board on the 500-pixel background; the game stretches them to other cell sizes.
#include <QImage>

class BrickPainter {
public:
    enum class Style { Classic, Crystal, Forest, Ocean, Ember };
    static constexpr int Size = 25;

    static QImage Paint(Style style, int index);

private:
    static void Classic(QImage& image, int index);
    static void Crystal(QImage& image, int index);
    static void Forest(QImage& image, int index);
    static void Ocean(QImage& image, int index);
    static void Ember(QImage& image, int index);
    // Draws the emblem of `index` centred in the picture, in a colour that stands out
    // from `ground`, raised on dark grounds and engraved on light ones.
    static void DrawEmblem(QPainter& p, int index, const QColor& ground, double size,
                           const QPointF& centre);
};
