#include "support/platform/qt/QtPictureView.h"

#include "support/platform/qt/QtPictureHolder.h"

#include <QPainter>

namespace tolva {

QtPictureView::QtPictureView(const QtPictureHolder& holder, QWidget* host) : QWidget(host), holder_(holder) {
    setObjectName(QString::fromStdString(holder.Name()));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_OpaquePaintEvent);
    hide();
}

void QtPictureView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), QColor(QRgb(static_cast<std::uint32_t>(holder_.BackColor()))));
    if (holder_.HasPicture()) painter.drawImage(QPoint(0, 0), holder_.Image());
}

} // namespace tolva
