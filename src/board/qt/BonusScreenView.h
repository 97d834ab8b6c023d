#pragma once
// The bonus screen on the board widget. The board counts a level's bonus up on panels:
// the bonus background (BonusPic) with three number lines on it, each a row of digit
// pictures the board has placed. The background holder shows itself over the board;
// this view stands inside it and paints the three lines, following every change the
// board makes to them. It hides with the background, being its child.
#include <QWidget>

namespace tolva {

class PicturePanel;
class TolvaBoard;

class BonusScreenView final : public QWidget {
public:
    explicit BonusScreenView(TolvaBoard& board);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    // Places the background holder over the board and this view inside it.
    void Follow();
    void PaintLine(QPainter& painter, const PicturePanel& line);

    TolvaBoard& board_;
};

} // namespace tolva
