#pragma once
// A drawing surface without a screen that writes down every request in order: which
// picture went into which rectangle, which piece of a picture, which line. Tests read
// the record to see what a paint pass touched; the benchmarks paint against it.
#include "support/platform/BoardSurface.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tolva {

struct PaintRecord {
    enum class Kind { Picture, PicturePart, Line };
    Kind What = Kind::Picture;
    std::string Picture;       // the holder's name; empty for a line
    bool HadPicture = false;   // the holder held a picture at the time
    SurfaceRect Source;        // PicturePart only
    SurfaceRect Target;        // for a line: Left, Top = start, Width, Height = end - start
    std::int32_t Colour = 0;   // Line only
};

class RecordingSurface final : public BoardSurface {
public:
    RecordingSurface(double width = 500, double height = 500) : width_(width), height_(height) {}

    double ScaleWidth() const override { return width_; }
    double ScaleHeight() const override { return height_; }
    void Resize(double width, double height) override;

    void PaintPicture(const PictureHolder& picture, const SurfaceRect& target) override;
    void PaintPicturePart(const PictureHolder& picture, const SurfaceRect& source,
                          const SurfaceRect& target) override;
    void DrawLine(double x1, double y1, double x2, double y2, std::int32_t colour) override;
    void SetBackPicture(const PictureHolder& picture) override { backPicture_ = picture.Name(); }
    void SetMousePointer(const PictureHolder* icon, int hotX, int hotY) override;

    const std::vector<PaintRecord>& Records() const { return records_; }
    void ClearRecords() { records_.clear(); }
    int Resizes() const { return resizes_; }
    const std::string& BackPicture() const { return backPicture_; }
    // The name of the pointer picture, empty for the default pointer, and its hot spot.
    const std::string& Pointer() const { return pointer_; }
    int PointerHotX() const { return hotX_; }
    int PointerHotY() const { return hotY_; }

private:
    double width_;
    double height_;
    int resizes_ = 0;
    std::vector<PaintRecord> records_;
    std::string backPicture_;
    std::string pointer_;
    int hotX_ = 0;
    int hotY_ = 0;
};

} // namespace tolva
