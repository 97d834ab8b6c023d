#include "controls/IA.h"

#include <QMouseEvent>
#include <QResizeEvent>
#include <QPainter>

#include <algorithm>

namespace tolva {

IA::IA(EventLoop& loop, QWidget* parent) : QWidget(parent), PictureS("PictureS"), playback_(loop) {
    playback_.HasPicture = [this] { return PictureS.HasPicture(); };
    playback_.StripHeight = [this] { return PictureS.ScaleHeight(); };
    playback_.PaintFrame = [this](int top) { PaintFrame(top); };
    playback_.Finish = [this] { emit Finish(); };
    setAttribute(Qt::WA_OpaquePaintEvent);
}

IA::~IA() = default;

// ---- properties ------------------------------------------------------------------------

void IA::SetPictureStrip(const PictureHolder& picture) {
    PictureS.Assign(picture);
    UpdatePicture();
}

bool IA::LoadPictureStrip(const std::string& storedPath) {
    if (!PictureS.LoadFile(storedPath)) return false;
    UpdatePicture();
    return true;
}

std::int16_t IA::Interval() const { return playback_.Interval(); }

void IA::SetInterval(std::int16_t ms) { playback_.SetInterval(ms); }

void IA::SetMoveHeight(std::int16_t height) {
    playback_.SetMoveHeight(height);
    UpdatePicture();   // what a resize of the control does
}

void IA::SetAutoRefresh(bool autoRefresh) {
    autoRefresh_ = autoRefresh;
    UpdatePicture();
}

void IA::SetTransparent(bool transparent) {
    transparent_ = transparent;
    UpdatePicture();
}

// ---- playing -----------------------------------------------------------------------------

void IA::Play(std::int16_t Times) { playback_.Play(Times); }

void IA::StopPlay() { playback_.StopPlay(); }

void IA::UpdatePicture() { playback_.UpdatePicture(); }

// ---- painting ----------------------------------------------------------------------------

bool IA::EnsureSurface() {
    if (size().isEmpty()) {
        surface_ = QImage();
        return false;
    }
    if (surface_.size() != size()) {
        surface_ = QImage(size(), QImage::Format_RGB32);
        surface_.fill(palette().color(backgroundRole()));
    }
    return true;
}

QImage IA::StripPart(int left, int top, int width, int height) const {
    // copy() gives 0 where the rectangle leaves the strip, black once converted:
    // the last frame of a strip that is no multiple of MoveHeight keeps the frame's scale.
    return PictureS.Image().copy(left, top, width, height).convertToFormat(QImage::Format_RGB32);
}

void IA::PaintFrame(int top) {
    if (!PictureS.HasPicture() || !EnsureSurface()) return;
    const int stripWidth = PictureS.Image().width();
    const int height = std::max<int>(playback_.MoveHeight(), 1);
    if (!transparent_) {
        const QImage frame = StripPart(0, top, stripWidth, height);
        QPainter painter(&surface_);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(surface_.rect(), frame);
    } else {
        // A strip too narrow to hold a picture and its mask side by side has no frame to
        // show: the control stays without a picture.
        const int half = stripWidth / 2;
        if (half < 1) return;
        CopyBg();
        // Raster operations by hand: the stretch is nearest-pixel, so the mask stays
        // pure black and white and the two halves line up pixel for pixel.
        const QImage mask = StripPart(half, top, half, height).scaled(surface_.size(), Qt::IgnoreAspectRatio,
                                                                      Qt::FastTransformation);
        const QImage picture = StripPart(0, top, half, height).scaled(surface_.size(), Qt::IgnoreAspectRatio,
                                                                      Qt::FastTransformation);
        for (int y = 0; y < surface_.height(); ++y) {
            auto* out = reinterpret_cast<QRgb*>(surface_.scanLine(y));
            const auto* m = reinterpret_cast<const QRgb*>(mask.constScanLine(y));
            const auto* p = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
            for (int x = 0; x < surface_.width(); ++x) out[x] = ((out[x] & m[x]) | p[x]) | 0xFF000000u;
        }
    }
    update();
}

void IA::CopyBg() {
    QWidget* container = parentWidget();
    if (container == nullptr || !EnsureSurface()) return;
    // What the container paints itself (its background and its own picture), without its
    // children: the control itself must not show up under itself.
    QImage under(surface_.size(), QImage::Format_RGB32);
    under.fill(container->palette().color(container->backgroundRole()));
    {
        QPainter painter(&under);
        container->render(&painter, QPoint(0, 0), QRegion(geometry()), QWidget::DrawWindowBackground);
    }
    surface_ = std::move(under);
    update();
}

void IA::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    if (surface_.size() == size())
        painter.drawImage(QPoint(0, 0), surface_);
    else
        painter.fillRect(rect(), palette().color(backgroundRole()));
}

void IA::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    // Qt repeats the resize event of a widget that has never been shown each time it is
    // rendered; only a new size is a resize of the control.
    if (event->size() == resizedTo_) return;
    resizedTo_ = event->size();
    EnsureSurface();
    UpdatePicture();
}

void IA::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (!IsPlaying() && autoRefresh_) UpdatePicture();
}

void IA::mousePressEvent(QMouseEvent* event) {
    event->accept();
    emit MouseDown();
}

void IA::mouseReleaseEvent(QMouseEvent* event) {
    event->accept();
    emit MouseUp();
}

} // namespace tolva
