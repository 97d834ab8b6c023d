#include "support/platform/qt/QtPictureHolder.h"

#include "support/ZenkorModule.h"
#include "support/platform/qt/PlainBmp.h"
#include "support/platform/qt/QtPictureView.h"
#include "support/platform/qt/RawPicture.h"

#include <QFile>
#include <QFileInfo>
#include <QResource>
#include <QImageReader>

#include <cmath>
#include <unistd.h>

namespace tolva {

namespace {

// Stretched copies kept per holder; a board needs at most four cell sizes at once.
constexpr std::size_t ScaledKept = 4;

} // namespace

QtPictureHolder::QtPictureHolder(std::string name, QWidget* host) : name_(std::move(name)), host_(host) {}

QtPictureHolder::~QtPictureHolder() {
    // The view belongs to the host; a holder that goes takes its view along, and a host
    // that went first has already taken it.
    delete view_.data();
}

QImage ReadBuiltinPicture(const QString& resourcePath) {
    if (resourcePath.endsWith(QLatin1String(".rgb32"))) {
        const QResource resource(resourcePath);
        if (!resource.isValid() || resource.compressionAlgorithm() != QResource::NoCompression) return {};
        return RawPictureView(resource.data(), resource.size());
    }
    QImageReader reader(resourcePath, QFileInfo(resourcePath).suffix().toLatin1());
    reader.setAutoDetectImageFormat(false);
    return reader.read();
}

std::vector<QImage> LoadPictureParts(const std::string& storedPath, const std::vector<QRect>& parts) {
    FileRead opened = FileRead::Missing;
    const int fd = OpenFileWithin(storedPath, MaxPictureBytes, opened);
    if (fd < 0) return {};
    std::vector<QImage> images = ReadPlainBmpParts(fd, QtPictureHolder::MaxSide, parts);
    ::close(fd);
    if (!images.empty()) return images;
    // Any other kind of picture is read whole by Qt and cut.
    QtPictureHolder whole("parts");
    if (!whole.LoadFile(storedPath)) return {};
    const QRect all = whole.Image().rect();
    for (const QRect& part : parts) {
        const QRect area = part.intersected(all);
        images.push_back(area.isEmpty() ? QImage() : whole.Image().copy(area));   // copy() of no rectangle is all
    }
    return images;
}

bool QtPictureHolder::LoadFile(const std::string& storedPath) {
    // The file is opened the game's own way (a pipe is turned away, never waited on, and
    // a file over the bound is refused) and decoded as it is read: a picture's bytes
    // never sit in memory twice. The decoder reads no further than the picture's own
    // header says, and the header's size is checked first.
    FileRead opened = FileRead::Missing;
    const int fd = OpenFileWithin(storedPath, MaxPictureBytes, opened);
    if (fd < 0) return false;
    if (QImage plain = ReadPlainBmp(fd, MaxSide); !plain.isNull()) {
        ::close(fd);
        SetImage(plain);
        return true;
    }
    QFile file;
    if (!file.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(fd);
        return false;
    }
    QImageReader reader(&file);
    // Any other BMP is read by Qt. Naming the format spares
    // the reader a probe of every image plug-in installed, which would load each of them
    // at the first picture; anything else is still recognised from its content.
    if (file.peek(2) == "BM") {
        reader.setFormat("bmp");
        reader.setAutoDetectImageFormat(false);
    } else {
        reader.setDecideFormatFromContent(true);
    }
    const QSize size = reader.size();
    if (size.isValid() && (size.width() > MaxSide || size.height() > MaxSide)) return false;
    QImage image;
    if (!reader.read(&image) || image.isNull()) return false;
    SetImage(image);
    return true;
}

void QtPictureHolder::Assign(const PictureHolder& other) {
    if (&other == this) return;
    // A holder of another kind carries no pixels we could show; it counts as no picture
    // rather than leaving a stale one behind.
    if (const auto* same = dynamic_cast<const QtPictureHolder*>(&other))
        SetImage(same->image_);
    else
        Clear();
}

void QtPictureHolder::Clear() {
    image_ = QImage();
    PictureChanged();
}

void QtPictureHolder::SetImage(const QImage& image) {
    if (image.isNull()) {
        Clear();
        return;
    }
    const QImage::Format wanted = image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32;
    image_ = image.format() == wanted ? image : image.convertToFormat(wanted);
    PictureChanged();
}

std::int32_t QtPictureHolder::Point(double x, double y) const {
    if (image_.isNull() || !std::isfinite(x) || !std::isfinite(y)) return -1;
    if (x < 0 || y < 0 || x >= image_.width() || y >= image_.height()) return -1;
    return static_cast<std::int32_t>(image_.pixel(static_cast<int>(x), static_cast<int>(y)) & 0xFFFFFF);
}

const QImage& QtPictureHolder::Scaled(const QSize& size) const {
    static const QImage none;
    if (image_.isNull() || size.isEmpty()) return none;
    if (size == image_.size()) return image_;
    for (const QImage& kept : scaled_)
        if (kept.size() == size) return kept;
    if (scaled_.size() >= ScaledKept) scaled_.erase(scaled_.begin());
    scaled_.push_back(image_.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    return scaled_.back();
}

void QtPictureHolder::SetVisible(bool visible) {
    visible_ = visible;
    if (visible && !view_ && host_) {
        view_ = new QtPictureView(*this, host_);
        PlaceView();
    }
    if (!view_) return;
    view_->setVisible(visible);
    if (visible) view_->raise();
}

void QtPictureHolder::SetBackColor(std::int32_t colour) {
    backColor_ = colour;
    if (view_) view_->update();
}

void QtPictureHolder::SetBounds(const QRect& bounds) {
    boundsGiven_ = true;
    bounds_ = bounds;
    PlaceView();
}

QRect QtPictureHolder::Bounds() const {
    return boundsGiven_ ? bounds_ : QRect(QPoint(0, 0), image_.size());
}

void QtPictureHolder::PictureChanged() {
    scaled_.clear();
    PlaceView();
}

void QtPictureHolder::PlaceView() {
    if (!view_) return;
    view_->setGeometry(Bounds());
    view_->update();
}

} // namespace tolva
