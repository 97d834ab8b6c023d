#include "board/qt/QtPictureStrip.h"

#include "controls/IA.h"
#include "support/platform/qt/PixelRect.h"

namespace tolva {

QtPictureStrip::QtPictureStrip(std::string name, EventLoop& loop, QWidget* host)
    : name_(std::move(name)), control_(new IA(loop, host)) {
    control_->setObjectName(QString::fromStdString(name_));
    control_->hide();
    QObject::connect(control_.data(), &IA::Finish, control_.data(), [this] {
        if (OnFinish) OnFinish();
    });
}

QtPictureStrip::QtPictureStrip(std::string name, IA* control) : name_(std::move(name)), control_(control) {
    QObject::connect(control_.data(), &IA::Finish, control_.data(), [this] {
        if (OnFinish) OnFinish();
    });
}

QtPictureStrip::~QtPictureStrip() { delete control_.data(); }

bool QtPictureStrip::LoadStrip(const std::string& storedPath) {
    return control_ && control_->LoadPictureStrip(storedPath);
}

bool QtPictureStrip::HasStrip() const { return control_ && control_->PictureStrip().HasPicture(); }

void QtPictureStrip::SetInterval(std::int16_t ms) {
    if (control_) control_->SetInterval(ms);
}

std::int16_t QtPictureStrip::Interval() const { return control_ ? control_->Interval() : 0; }

void QtPictureStrip::SetMoveHeight(std::int16_t height) {
    if (control_) control_->SetMoveHeight(height);
}

std::int16_t QtPictureStrip::MoveHeight() const { return control_ ? control_->MoveHeight() : 0; }

void QtPictureStrip::SetBounds(const SurfaceRect& bounds) {
    bounds_ = bounds;
    if (!control_) return;
    // Rounded as the board rounds its cells, so a strip over a cell covers that cell.
    control_->setGeometry(PixelRect(bounds));
}

void QtPictureStrip::SetVisible(bool visible) {
    if (!control_) return;
    control_->setVisible(visible);
    if (visible) control_->raise();
}

bool QtPictureStrip::Visible() const { return control_ && !control_->isHidden(); }

void QtPictureStrip::Play(std::int16_t times) {
    if (control_) control_->Play(times);
}

void QtPictureStrip::StopPlay() {
    if (control_) control_->StopPlay();
}

bool QtPictureStrip::IsPlaying() const { return control_ && control_->IsPlaying(); }

} // namespace tolva
