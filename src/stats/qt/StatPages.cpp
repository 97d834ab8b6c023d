#include "stats/qt/StatPages.h"

#include <QPagedPaintDevice>

namespace tolva {

namespace {
constexpr double MillimetresPerInch = 25.4;
}

StatPages::StatPages(QPagedPaintDevice& device) : device_(device) {
    if (!painter_.begin(&device_)) return;
    const double unit = device_.logicalDpiX() / MillimetresPerInch;
    canvas_ = std::make_unique<StatCanvas>(painter_, unit, QSizeF(device_.width() / unit, device_.height() / unit));
}

StatPages::~StatPages() {
    if (painter_.isActive()) painter_.end();
}

void StatPages::NewPage() {
    if (!Active()) return;
    device_.newPage();
    canvas_->CurrentX = 0;
    canvas_->CurrentY = 0;
}

bool StatPages::EndDoc() {
    if (!Active()) return false;
    return painter_.end();
}

} // namespace tolva
