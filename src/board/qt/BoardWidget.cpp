#include "board/qt/BoardWidget.h"

#include "board/TolvaBoard.h"
#include "support/platform/qt/MouseCodes.h"
#include "support/platform/qt/PixelRect.h"
#include "support/platform/qt/QtPictureHolder.h"

#include <QCursor>
#include <QPaintEvent>
#include <QPainterPath>
#include <QPixmap>

#include <algorithm>
#include <bitset>

namespace tolva {

namespace {

// The board's pictures all come from the Qt store; a holder of another kind has no
// pixels to show and paints nothing.
const QtPictureHolder* Shown(const PictureHolder& picture) {
    const auto* holder = dynamic_cast<const QtPictureHolder*>(&picture);
    return holder != nullptr && holder->HasPicture() ? holder : nullptr;
}

// The size of the standard board background, until the board gives its own.
constexpr int StandardSide = 500;

} // namespace

BoardWidget::BoardWidget(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    resize(StandardSide, StandardSide);
}

BoardWidget::~BoardWidget() {
    if (painter_.isActive()) painter_.end();
}

// ---- the surface -------------------------------------------------------------------------

void BoardWidget::Resize(double width, double height) {
    resize(PixelRect({0, 0, width, height}).size());
}

void BoardWidget::PaintPicture(const PictureHolder& picture, const SurfaceRect& target) {
    const QtPictureHolder* holder = Shown(picture);
    const QRect cell = PixelRect(target);
    if (holder == nullptr || cell.isEmpty()) return;
    QPainter* painter = BufferPainter();
    if (painter == nullptr) return;
    painter->drawImage(cell.topLeft(), holder->Scaled(cell.size()));
    Changed(cell);
}

void BoardWidget::PaintPicturePart(const PictureHolder& picture, const SurfaceRect& source,
                                   const SurfaceRect& target) {
    const QtPictureHolder* holder = Shown(picture);
    const QRect from = PixelRect(source);
    const QRect to = PixelRect(target);
    if (holder == nullptr || to.isEmpty()) return;
    QPainter* painter = BufferPainter();
    if (painter == nullptr) return;
    const QImage& image = holder->Image();
    // Beyond the picture there is nothing to copy: that part of the cell goes black
    // rather than keep what was painted there before.
    if (!image.rect().contains(from)) painter->fillRect(to, Qt::black);
    if (from.size() == to.size())
        painter->drawImage(to.topLeft(), image, from);
    else
        painter->drawImage(QRectF(target.Left, target.Top, target.Width, target.Height), image,
                           QRectF(source.Left, source.Top, source.Width, source.Height));
    Changed(to);
}

void BoardWidget::DrawLine(double x1, double y1, double x2, double y2, std::int32_t colour) {
    QPainter* painter = BufferPainter();
    if (painter == nullptr) return;
    painter->setPen(QPen(QColor(QRgb(static_cast<std::uint32_t>(colour))), 0));
    painter->drawLine(QPointF(x1, y1), QPointF(x2, y2));
    const QRectF span = QRectF(QPointF(x1, y1), QPointF(x2, y2)).normalized();
    Changed(span.toAlignedRect().adjusted(-1, -1, 1, 1));
}

void BoardWidget::SetBackPicture(const PictureHolder& picture) {
    const QtPictureHolder* holder = Shown(picture);
    backPicture_ = holder != nullptr ? holder->Image() : QImage();
    ResetBuffer();
}

void BoardWidget::SetMousePointer(const PictureHolder* icon, int hotX, int hotY) {
    const QtPictureHolder* holder = icon != nullptr ? Shown(*icon) : nullptr;
    if (holder != nullptr)
        setCursor(QCursor(QPixmap::fromImage(holder->Image()), hotX, hotY));
    else
        unsetCursor();
}

const QImage& BoardWidget::BackBuffer() {
    EnsureBuffer();
    if (painter_.isActive()) painter_.end();
    return buffer_;
}

// ---- the buffer --------------------------------------------------------------------------

QPainter* BoardWidget::BufferPainter() {
    EnsureBuffer();
    if (buffer_.isNull()) return nullptr;
    if (!painter_.isActive()) painter_.begin(&buffer_);
    return &painter_;
}

void BoardWidget::EnsureBuffer() {
    if (buffer_.size() == size()) return;
    if (painter_.isActive()) painter_.end();
    if (size().isEmpty()) {
        buffer_ = QImage();
        return;
    }
    buffer_ = QImage(size(), QImage::Format_RGB32);
    // The back picture stands at the top left at its own size, as the surface's own
    // picture: it shows wherever no cell is painted, and black beyond it.
    const QRect back(QPoint(0, 0), backPicture_.size());
    if (!back.contains(buffer_.rect())) buffer_.fill(Qt::black);
    if (!backPicture_.isNull()) {
        QPainter painter(&buffer_);
        painter.drawImage(QPoint(0, 0), backPicture_);
    }
    boardMustPaint_ = true;
}

void BoardWidget::ResetBuffer() {
    // The buffer is made again, at the widget's size of that time, when it is next
    // drawn on or shown; a board that is set up before its window shows makes it once.
    if (painter_.isActive()) painter_.end();
    buffer_ = QImage();
    boardMustPaint_ = true;
    update();
}

void BoardWidget::Changed(const QRect& area) {
    if (inPaintEvent_) {
        paintedInEvent_ |= area;
        return;
    }
    // Asking Qt for an update costs more than copying a cell, so the areas are gathered
    // into one rectangle until the next paint event; a whole-board pass row by row asks
    // about twice per row instead of once per cell.
    if (toScreen_.contains(area)) return;
    toScreen_ |= area;
    update(toScreen_);
}

// ---- events ------------------------------------------------------------------------------

void BoardWidget::paintEvent(QPaintEvent* event) {
    toScreen_ = QRect();   // everything asked for so far is painted now
    EnsureBuffer();
    if (boardMustPaint_) {
        boardMustPaint_ = false;
        if (board_ != nullptr) {
            inPaintEvent_ = true;
            board_->UserControl_Paint();
            inPaintEvent_ = false;
        }
    }
    if (painter_.isActive()) painter_.end();
    QPainter screen(this);
    if (!buffer_.isNull()) screen.drawImage(event->rect(), buffer_, event->rect());
    // Whatever the board painted outside this event's area still has to reach the screen.
    if (!paintedInEvent_.isEmpty() && !event->region().contains(paintedInEvent_)) update(paintedInEvent_);
    paintedInEvent_ = QRect();
    if (!marks_.Group.empty() || marks_.Cursor) PaintMarks(screen);
    screen.end();
    // Whatever was painted may follow a change of the board: the marks are looked at anew.
    if (marksSource_ != nullptr) marksSource_->Refresh();
}

// ---- the marks of the player's focus -----------------------------------------------------------

void BoardWidget::ShowMarks(const BoardMarks& marks) {
    const QRegion before = MarksRegion(marks_);
    marks_ = marks;
    const QRegion now = before.united(MarksRegion(marks_));
    if (!now.isEmpty()) update(now);
}

QRectF BoardWidget::CellRect(int side, const BoardCell& cell) const {
    const double w = static_cast<double>(width()) / side;
    const double h = static_cast<double>(height()) / side;
    return {cell.X * w, cell.Y * h, w, h};
}

QRegion BoardWidget::MarksRegion(const BoardMarks& marks) const {
    QRegion region;
    if (marks.Side <= 0) return region;
    for (const BoardCell& cell : marks.Group) region += CellRect(marks.Side, cell).toAlignedRect();
    if (marks.Cursor) region += CellRect(marks.Side, *marks.Cursor).toAlignedRect();
    return region;
}

void BoardWidget::PaintMarks(QPainter& screen) const {
    if (marks_.Side <= 0) return;
    screen.setRenderHint(QPainter::Antialiasing, true);
    const double w = static_cast<double>(width()) / marks_.Side;
    const double h = static_cast<double>(height()) / marks_.Side;
    // The outline runs along every side of a group cell whose neighbour is not in the
    // group, a little inside the cell, so that it stays within the cells it marks: a dark
    // line under a gold one, readable on light bricks and dark alike.
    std::bitset<MaxBricks * MaxBricks> in;
    for (const BoardCell& c : marks_.Group) in.set(static_cast<std::size_t>(c.X * MaxBricks + c.Y));
    auto inGroup = [&](int x, int y) {
        return x >= 0 && y >= 0 && x < MaxBricks && y < MaxBricks && in.test(static_cast<std::size_t>(x * MaxBricks + y));
    };
    QPainterPath edges;
    const double inset = 2.5;
    for (const BoardCell& c : marks_.Group) {
        const double l = c.X * w + inset, t = c.Y * h + inset;
        const double r = (c.X + 1) * w - inset, b = (c.Y + 1) * h - inset;
        // Each side reaches to the cell's edge where the group goes on, so that the lines
        // of neighbouring cells meet.
        const double l0 = inGroup(c.X - 1, c.Y) ? c.X * w : l, r0 = inGroup(c.X + 1, c.Y) ? (c.X + 1) * w : r;
        const double t0 = inGroup(c.X, c.Y - 1) ? c.Y * h : t, b0 = inGroup(c.X, c.Y + 1) ? (c.Y + 1) * h : b;
        if (!inGroup(c.X, c.Y - 1)) { edges.moveTo(l0, t); edges.lineTo(r0, t); }
        if (!inGroup(c.X, c.Y + 1)) { edges.moveTo(l0, b); edges.lineTo(r0, b); }
        if (!inGroup(c.X - 1, c.Y)) { edges.moveTo(l, t0); edges.lineTo(l, b0); }
        if (!inGroup(c.X + 1, c.Y)) { edges.moveTo(r, t0); edges.lineTo(r, b0); }
    }
    if (!edges.isEmpty()) {
        screen.strokePath(edges, QPen(QColor(20, 12, 0, 200), 4.0, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        screen.strokePath(edges, QPen(QColor(255, 210, 80), 2.0, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    }
    if (marks_.Cursor) {
        // The cursor: white corner brackets on a dark rim, unlike the outline's gold line.
        const QRectF cell = CellRect(marks_.Side, *marks_.Cursor).adjusted(2, 2, -2, -2);
        const double arm = std::max(3.0, cell.width() / 3);
        QPainterPath corners;
        const QPointF tl = cell.topLeft(), tr = cell.topRight(), bl = cell.bottomLeft(), br = cell.bottomRight();
        corners.moveTo(tl + QPointF(0, arm)); corners.lineTo(tl); corners.lineTo(tl + QPointF(arm, 0));
        corners.moveTo(tr - QPointF(arm, 0)); corners.lineTo(tr); corners.lineTo(tr + QPointF(0, arm));
        corners.moveTo(br - QPointF(0, arm)); corners.lineTo(br); corners.lineTo(br - QPointF(arm, 0));
        corners.moveTo(bl + QPointF(arm, 0)); corners.lineTo(bl); corners.lineTo(bl - QPointF(0, arm));
        screen.strokePath(corners, QPen(QColor(0, 0, 0, 210), 4, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        screen.strokePath(corners, QPen(QColor(255, 255, 255), 2, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    }
}

void BoardWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    // The buffer follows the new size at its next use.
    if (buffer_.size() != size()) ResetBuffer();
    if (board_ == nullptr || inResize_) return;
    inResize_ = true;
    board_->UserControl_Resize();
    inResize_ = false;
}

void BoardWidget::mousePressEvent(QMouseEvent* event) { event->accept(); }

void BoardWidget::mouseMoveEvent(QMouseEvent* event) {
    event->accept();
    if (board_ == nullptr) return;
    const QPointF at = event->position();
    board_->UserControl_MouseMove(MouseButtonCode(event->buttons()), MouseShiftCode(event->modifiers()),
                                  static_cast<float>(at.x()), static_cast<float>(at.y()));
    if (marksSource_ != nullptr) marksSource_->PointerAtPixel(static_cast<float>(at.x()), static_cast<float>(at.y()));
}

void BoardWidget::leaveEvent(QEvent* event) {
    QWidget::leaveEvent(event);
    if (marksSource_ != nullptr) marksSource_->PointerLeft();
}

void BoardWidget::mouseReleaseEvent(QMouseEvent* event) {
    event->accept();
    const std::int16_t button = MouseButtonCode(event->button());
    if (board_ == nullptr || button == 0) return;
    const QPointF at = event->position();
    board_->UserControl_MouseUp(button, MouseShiftCode(event->modifiers()), static_cast<float>(at.x()),
                                static_cast<float>(at.y()));
}

} // namespace tolva
