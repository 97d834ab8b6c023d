#include "testsupport/RecordingSurface.h"

namespace tolva {

void RecordingSurface::Resize(double width, double height) {
    width_ = width;
    height_ = height;
    ++resizes_;
}

void RecordingSurface::PaintPicture(const PictureHolder& picture, const SurfaceRect& target) {
    PaintRecord r;
    r.What = PaintRecord::Kind::Picture;
    r.Picture = picture.Name();
    r.HadPicture = picture.HasPicture();
    r.Target = target;
    records_.push_back(std::move(r));
}

void RecordingSurface::PaintPicturePart(const PictureHolder& picture, const SurfaceRect& source,
                                        const SurfaceRect& target) {
    PaintRecord r;
    r.What = PaintRecord::Kind::PicturePart;
    r.Picture = picture.Name();
    r.HadPicture = picture.HasPicture();
    r.Source = source;
    r.Target = target;
    records_.push_back(std::move(r));
}

void RecordingSurface::DrawLine(double x1, double y1, double x2, double y2, std::int32_t colour) {
    PaintRecord r;
    r.What = PaintRecord::Kind::Line;
    r.Target = {x1, y1, x2 - x1, y2 - y1};
    r.Colour = colour;
    records_.push_back(std::move(r));
}

void RecordingSurface::SetMousePointer(const PictureHolder* icon, int hotX, int hotY) {
    pointer_ = icon != nullptr ? icon->Name() : std::string();
    hotX_ = icon != nullptr ? hotX : 0;
    hotY_ = icon != nullptr ? hotY : 0;
}

} // namespace tolva
