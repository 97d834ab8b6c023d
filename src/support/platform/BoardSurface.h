#pragma once
// The board's drawing area as the rules see it. The rules decide which cell is painted
// with which picture (DrawBoard); the surface only carries that out, in its own units,
// stretching a picture to the rectangle it is given. What becomes of a fraction of a
// unit is the surface's business.
//
// A Qt surface paints into a back buffer of the widget's size and asks for an update, so
// that the rules may paint at any moment, not only inside a paint event; pictures already
// scaled to the cell size can be kept per holder. The headless RecordingSurface writes
// down what was asked, so that tests can see which cells a pass touched.
#include "support/platform/PictureHolder.h"
#include "support/platform/SurfaceRect.h"

#include <cstdint>

namespace tolva {

class BoardSurface {
public:
    virtual ~BoardSurface() = default;

    // Size of the drawing area in its own units.
    virtual double ScaleWidth() const = 0;
    virtual double ScaleHeight() const = 0;
    // Gives the board a new outer size (the board follows its background picture).
    virtual void Resize(double width, double height) = 0;

    // Copies the whole picture, stretched, into `target`. A holder with no picture
    // paints nothing.
    virtual void PaintPicture(const PictureHolder& picture, const SurfaceRect& target) = 0;
    // Copies the rectangle `source` of the picture (in its pixels), stretched, into
    // `target`: the piece of the background that lies under a cell.
    virtual void PaintPicturePart(const PictureHolder& picture, const SurfaceRect& source,
                                  const SurfaceRect& target) = 0;
    // A line between two points, one unit wide, in a colour 0xRRGGBB.
    virtual void DrawLine(double x1, double y1, double x2, double y2, std::int32_t colour) = 0;

    // The surface's own picture: what shows where no cell has been painted.
    virtual void SetBackPicture(const PictureHolder& picture) = 0;

    // The mouse pointer over the board: a picture with its hot spot, or the default
    // pointer for nullptr.
    virtual void SetMousePointer(const PictureHolder* icon, int hotX, int hotY) = 0;
};

} // namespace tolva
