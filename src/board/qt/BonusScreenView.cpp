#include "board/qt/BonusScreenView.h"

#include "board/TolvaBoard.h"
#include "support/platform/qt/QtPictureHolder.h"
#include "support/platform/qt/QtPictureView.h"

#include <QPainter>

namespace tolva {
namespace {

QRect ToRect(const SurfaceRect& r) {
    return QRect(qRound(r.Left), qRound(r.Top), qRound(r.Width), qRound(r.Height));
}

QColor FromRgb(std::int32_t rgb) { return QColor((rgb >> 16) & 0xFF, (rgb >> 8) & 0xFF, rgb & 0xFF); }

} // namespace

BonusScreenView::BonusScreenView(TolvaBoard& board) : board_(board) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    for (PicturePanel* panel : {&board_.BonusPic(), &board_.LevBonus(), &board_.picTimes(), &board_.picBonus()})
        panel->OnChanged = [this] { Follow(); };
    hide();
}

void BonusScreenView::Follow() {
    auto& background = static_cast<QtPictureHolder&>(board_.BonusPic().Holder());
    const QRect area = ToRect(board_.BonusPic().Bounds());
    if (area.isValid()) background.SetBounds(area);
    // The holder makes its view when it is first shown; from then on this view lives in it.
    if (QWidget* host = background.View(); host != nullptr && parentWidget() != host) {
        setParent(host);
        show();
    }
    if (parentWidget() != nullptr) {
        setGeometry(0, 0, parentWidget()->width(), parentWidget()->height());
        raise();
    }
    update();
}

void BonusScreenView::PaintLine(QPainter& painter, const PicturePanel& line) {
    const QRect box = ToRect(line.Bounds());
    if (box.isEmpty()) return;
    painter.fillRect(box, FromRgb(line.Holder().BackColor()));
    for (const PicturePanel::Piece& piece : line.Pieces()) {
        const auto* picture = dynamic_cast<const QtPictureHolder*>(piece.Picture);
        if (picture == nullptr || !picture->HasPicture()) continue;
        painter.drawImage(QPointF(box.left() + piece.Left, box.top() + piece.Top), picture->Image());
    }
}

void BonusScreenView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setClipRect(rect());
    PaintLine(painter, board_.LevBonus());
    PaintLine(painter, board_.picTimes());
    PaintLine(painter, board_.picBonus());
}

} // namespace tolva
