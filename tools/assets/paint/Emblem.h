#pragma once
// The small sign that each brick colour carries, so that colours that look alike to a
// colour-blind player still differ by shape: 0 circle, 1 diamond, 2 triangle, 3 star,
// 4 heart, 5 square, 6 plus, 7 crescent, 8 saltire, 9 lightning. The shapes are kept
// bold and far apart in outline so that they read at eleven pixels and survive scaling.
#include <QPainterPath>
#include <QPointF>

class Emblem {
public:
    // The emblem of brick colour `index`, centred on `centre`, fitting a square of `size`.
    static QPainterPath Path(int index, const QPointF& centre, double size);
};
