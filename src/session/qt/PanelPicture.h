#pragma once
// PanelPicture: the main window's picture, held without the part the board covers.
//
// The picture is as large as the window, and the board stands on 60 % of it. Only the
// strips around the board are read and kept, which spares start-up the converting and
// the memory of a megabyte nobody sees. A board smaller than that hole (a level set may
// bring smaller backgrounds) uncovers part of it: the first paint that asks for it reads
// the picture again, whole, and from then on it is kept whole.
#include <QImage>
#include <QRect>

#include <array>
#include <string>

class QColor;
class QPainter;
class QRegion;

namespace tolva {

class PanelPicture {
public:
    // Reads the picture from a stored path, all but what lies under `covered` (window
    // coordinates); false, with the picture unchanged, if the file is missing or can't
    // be read.
    bool Load(const std::string& storedPath, const QRect& covered);
    bool HoldsAll() const { return !cut_; }

    // Paints the picture's part in `region` at the window's origin; `missing` where there
    // is no picture to paint.
    void Paint(QPainter& painter, const QRegion& region, const QColor& missing);

private:
    struct Piece {
        QPoint at;
        QImage image;
    };

    std::string path_;
    bool cut_ = false;
    QRect covered_;
    std::array<Piece, 4> pieces_;
    QImage whole_;
};

} // namespace tolva
