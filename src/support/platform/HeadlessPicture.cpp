#include "support/platform/HeadlessPicture.h"

#include "support/ZenkorModule.h"

#include <cmath>

namespace tolva {

bool HeadlessPicture::LoadFile(const std::string& storedPath) {
    if (!FileExists(storedPath)) return false;
    auto image = std::make_shared<BmpFile>();
    if (!image->Read(NativePath(storedPath))) return false;
    image_ = std::move(image);
    source_ = storedPath;
    return true;
}

void HeadlessPicture::Assign(const PictureHolder& other) {
    if (&other == this) return;
    // Holders of another store carry no pixels we could read; such a picture counts as
    // none rather than as a stale copy of the old one.
    if (const auto* same = dynamic_cast<const HeadlessPicture*>(&other)) {
        image_ = same->image_;
        source_ = same->source_;
    } else {
        Clear();
    }
}

void HeadlessPicture::Clear() {
    image_.reset();
    source_.clear();
}

std::int32_t HeadlessPicture::Point(double x, double y) const {
    if (!image_ || !std::isfinite(x) || !std::isfinite(y)) return -1;
    if (x < 0 || y < 0 || x >= image_->Width() || y >= image_->Height()) return -1;
    return image_->Pixel(static_cast<int>(x), static_cast<int>(y));
}

} // namespace tolva
