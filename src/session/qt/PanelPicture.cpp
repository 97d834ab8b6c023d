#include "session/qt/PanelPicture.h"

#include "support/platform/qt/QtPictureHolder.h"

#include <QPainter>
#include <QRegion>

#include <vector>

namespace tolva {
namespace {

// Further than any picture reaches: the parts are cut to the picture when read.
constexpr int Far = 1 << 16;

} // namespace

bool PanelPicture::Load(const std::string& storedPath, const QRect& covered) {
    if (covered.isEmpty()) {
        QtPictureHolder holder("panel");
        if (!holder.LoadFile(storedPath)) return false;
        path_ = storedPath;
        whole_ = holder.Image();
        pieces_ = {};
        cut_ = false;
        return true;
    }
    // Above and below the hole across the whole width, then left and right of it.
    const std::vector<QRect> parts = {
        QRect(QPoint(0, 0), QPoint(Far, covered.top() - 1)),
        QRect(QPoint(0, covered.bottom() + 1), QPoint(Far, Far)),
        QRect(QPoint(0, covered.top()), QPoint(covered.left() - 1, covered.bottom())),
        QRect(QPoint(covered.right() + 1, covered.top()), QPoint(Far, covered.bottom())),
    };
    std::vector<QImage> images = LoadPictureParts(storedPath, parts);
    if (images.size() != parts.size()) return false;
    path_ = storedPath;
    whole_ = QImage();
    for (std::size_t i = 0; i < parts.size(); ++i) pieces_[i] = {parts[i].topLeft(), std::move(images[i])};
    covered_ = covered;
    cut_ = true;
    return true;
}

void PanelPicture::Paint(QPainter& painter, const QRegion& region, const QColor& missing) {
    if (cut_ && region.intersects(covered_)) {
        // The board no longer covers the hole: the picture is needed whole. A file gone
        // since start-up leaves the hole in the colour of a missing picture.
        QtPictureHolder holder("panel");
        if (holder.LoadFile(path_)) {
            whole_ = holder.Image();
            pieces_ = {};
            cut_ = false;
        }
    }
    if (!cut_) {
        if (whole_.isNull())
            painter.fillRect(region.boundingRect(), missing);
        else
            painter.drawImage(0, 0, whole_);
        return;
    }
    if (region.intersects(covered_)) painter.fillRect(covered_, missing);
    for (const Piece& piece : pieces_)
        if (!piece.image.isNull()) painter.drawImage(piece.at, piece.image);
}

} // namespace tolva
