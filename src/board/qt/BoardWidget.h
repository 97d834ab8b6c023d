#pragma once
// The board on screen: the widget that is a TolvaBoard's drawing surface.
//
// How painting works. The rules paint at any moment, not only inside a paint event: a
// move paints its changed cells from the middle of a click, a spell from the middle of a
// wait. So every request goes into a back buffer of the widget's size, and the widget
// asks Qt to update just the rectangle that changed; the paint event only copies the
// buffer to the screen. Pictures come pre-stretched to the cell size from their holders,
// so a cell is one plain copy.
//
// When the buffer's content is lost (the widget has a new size, or a new back picture)
// the buffer starts again from the back picture, and the next paint event asks the board
// to repaint through UserControl_Paint. That is the one way the board is asked to repaint
// by the platform, and the board obeys only while BoardReady holds. A resize from outside
// also runs the board's UserControl_Resize, so that a board that sizes itself to its
// background snaps back to it.
//
// The board is made with this widget as its surface, so it is attached afterwards. The
// mouse goes to it in surface units: releases to UserControl_MouseUp, every move (with a
// button down or not) to UserControl_MouseMove. Presses are the board's too, whatever the
// button: a right press on the board must never reach the window around it, which opens
// its Game menu on a right press of its own surface.
//
// Over the buffer, and never in it, the widget draws the marks of the player's focus (the
// outline of the group a click would take, the keyboard's cursor). They are drawn in the
// paint event only, so the board's own pictures are never touched by them, and a change
// of the marks asks for just the cells they cover. After every paint the source of the
// marks is asked to look at the board again, since a paint follows every change of it.
#include "board/BoardMarks.h"
#include "support/platform/BoardSurface.h"

#include <QImage>
#include <QPainter>
#include <QWidget>

namespace tolva {

class TolvaBoard;

class BoardWidget final : public QWidget, public BoardSurface, public BoardMarksView {
    Q_OBJECT
public:
    explicit BoardWidget(QWidget* parent = nullptr);
    ~BoardWidget() override;

    // The board that gets the mouse, Paint and Resize; nullptr for none.
    void AttachBoard(TolvaBoard* board) { board_ = board; }
    // Who is told of the pointer and asked for the marks; nullptr for none.
    void AttachMarks(BoardMarksSource* source) { marksSource_ = source; }
    void ShowMarks(const BoardMarks& marks) override;

    double ScaleWidth() const override { return width(); }
    double ScaleHeight() const override { return height(); }
    void Resize(double width, double height) override;
    void PaintPicture(const PictureHolder& picture, const SurfaceRect& target) override;
    void PaintPicturePart(const PictureHolder& picture, const SurfaceRect& source,
                          const SurfaceRect& target) override;
    void DrawLine(double x1, double y1, double x2, double y2, std::int32_t colour) override;
    void SetBackPicture(const PictureHolder& picture) override;
    void SetMousePointer(const PictureHolder* icon, int hotX, int hotY) override;

    // What the surface holds now, the picture the screen is brought up to.
    const QImage& BackBuffer();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    // The painter on the buffer, opened on first use after a paint event; nullptr for a
    // widget of no size.
    QPainter* BufferPainter();
    // Makes the buffer afresh at the widget's size if it has another one.
    void EnsureBuffer();
    // Starts the buffer again from the back picture; the board must repaint.
    void ResetBuffer();
    void Changed(const QRect& area);
    // The pixels of a cell as the board paints it, at the marks' side.
    QRectF CellRect(int side, const BoardCell& cell) const;
    // The cells the marks cover, to be brought up to date on screen.
    QRegion MarksRegion(const BoardMarks& marks) const;
    void PaintMarks(QPainter& screen) const;

    TolvaBoard* board_ = nullptr;
    BoardMarksSource* marksSource_ = nullptr;
    BoardMarks marks_;
    QImage buffer_;
    QPainter painter_;
    QImage backPicture_;
    bool boardMustPaint_ = true;
    bool inPaintEvent_ = false;
    bool inResize_ = false;
    QRect paintedInEvent_;
    QRect toScreen_;
};

} // namespace tolva
