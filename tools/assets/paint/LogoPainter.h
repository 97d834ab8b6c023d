#pragma once
// The game's name as a logo: "TOLVA" in gold with a dark rim, and "II" on a teal gem.
// The same drawing heads the board's resting picture, the Loading and the about window.
#include <QPainter>
#include <QPoint>

class LogoPainter {
public:
    // Paints the logo with its visual centre at `centre`; `height` is the cap height of
    // the word in pixels. Returns the width the logo took.
    static int Paint(QPainter& p, const QPointF& centre, int height);
};
