#pragma once
// A picture holder on Qt: the picture as a QImage, plus what painting a board needs fast.
//
// The board stretches the same few pictures into cells of one size, up to 1600 times a
// pass. Scaling each time would cost far more than the copy itself, so a holder keeps the
// stretched copies it was asked for (a cell of 12.5 pixels is 12 or 13 wide, so a few
// sizes per holder) and drops them when its picture changes.
//
// A holder made with a host widget can also be seen: while Visible, a child widget of the
// host (QtPictureView) shows the picture over its back colour, at the holder's bounds. The
// child is made only when the holder is first shown, so the many holders that only feed
// the board's painting never cost a widget. A holder with no host is a plain picture.
//
// Pictures are kept as 32-bit RGB, or premultiplied ARGB when the file carries an alpha
// channel, so that drawing them onto the board's buffer is a plain copy.
#include "support/platform/PictureHolder.h"
#include "support/platform/qt/QtPictureView.h"

#include <QImage>
#include <QPointer>
#include <QRect>
#include <QWidget>

#include <string>
#include <vector>

namespace tolva {

// A picture compiled into the program (":/builtin/..."): one ending in .rgb32 is shown
// from the program's own pages as it stands (RawPicture.h); any other is read by Qt's own
// reader for the format its name ends in, so that no image plug-in is loaded for it. A
// null image if it is not there.
QImage ReadBuiltinPicture(const QString& resourcePath);

// The given rectangles of the picture in a stored path, each clipped to the picture, one
// image each; an empty list if the file is missing or can't be read as a picture. A plain
// BMP is converted only where the rectangles lie.
std::vector<QImage> LoadPictureParts(const std::string& storedPath, const std::vector<QRect>& parts);

class QtPictureHolder final : public PictureHolder {
public:
    // Sides above this are refused on loading, as the headless reader refuses them.
    static constexpr int MaxSide = 16384;

    explicit QtPictureHolder(std::string name, QWidget* host = nullptr);
    ~QtPictureHolder() override;
    QtPictureHolder(const QtPictureHolder&) = delete;
    QtPictureHolder& operator=(const QtPictureHolder&) = delete;

    const std::string& Name() const override { return name_; }
    bool LoadFile(const std::string& storedPath) override;
    void Assign(const PictureHolder& other) override;
    void Clear() override;

    bool HasPicture() const override { return !image_.isNull(); }
    double ScaleWidth() const override { return image_.width(); }
    double ScaleHeight() const override { return image_.height(); }
    std::int32_t Point(double x, double y) const override;

    bool Visible() const override { return visible_; }
    void SetVisible(bool visible) override;
    std::int32_t BackColor() const override { return backColor_; }
    void SetBackColor(std::int32_t colour) override;

    // ---- the Qt side ------------------------------------------------------------------
    const QImage& Image() const { return image_; }
    // Takes a picture made in code (or by another part of the front end).
    void SetImage(const QImage& image);
    // The picture stretched to `size`; made on first use and kept until the picture
    // changes. A null image for a holder with no picture or an empty size. The reference
    // holds until the next call: paint with it at once.
    const QImage& Scaled(const QSize& size) const;

    // Where the view stands on the host. Until bounds are given, it stands at (0, 0) and
    // takes the size of the picture, as a picture box that sizes itself.
    void SetBounds(const QRect& bounds);
    QRect Bounds() const;
    QWidget* Host() const { return host_; }
    // The widget that shows the holder; nullptr until the holder is first shown.
    QtPictureView* View() const { return view_.data(); }

private:
    void PictureChanged();
    void PlaceView();

    std::string name_;
    QPointer<QWidget> host_;
    QImage image_;
    mutable std::vector<QImage> scaled_;
    QPointer<QtPictureView> view_;
    bool visible_ = false;
    std::int32_t backColor_ = 0;
    bool boundsGiven_ = false;
    QRect bounds_;
};

} // namespace tolva
