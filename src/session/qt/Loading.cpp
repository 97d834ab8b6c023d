#include "session/qt/Loading.h"

#include "support/platform/EventLoop.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>

namespace tolva {
namespace {

QFont LabelFont() {
    QFont font("DejaVu Sans");
    font.setPixelSize(11);
    font.setBold(true);
    return font;
}

} // namespace

Loading::Loading(EventLoop& loop, const QPixmap& background, const QString& version)
    : QWidget(nullptr, Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::SplashScreen),
      loop_(loop), nextFrame_(loop.CreateTimer(false)), background_(background) {
    setFixedSize(WidthPx, HeightPx);
    setWindowTitle("TOLVA II");
    QPalette palette;
    palette.setColor(QPalette::WindowText, Qt::white);
    label1_ = new QLabel(version, this);
    label1_->setFont(LabelFont());
    label1_->setPalette(palette);
    label1_->adjustSize();
    label1_->move(354, 210);
    label2_ = new QLabel(this);
    label2_->setFont(LabelFont());
    label2_->setPalette(palette);
    label2_->move(0, 148);
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        const QRect area = screen->geometry();
        move(area.center() - QPoint(WidthPx / 2, HeightPx / 2));
    }
    nextFrame_->OnTick = [this] {
        nextFrame_->SetEnabled(false);
        ShowText(waiting_);
    };
}

Loading::~Loading() { nextFrame_->SetEnabled(false); }

void Loading::SetLabel(const QString& text) {
    const std::int64_t now = loop_.NowMs();
    if (!shownOnce_ || now - shownAtMs_ >= FrameMs) {
        nextFrame_->SetEnabled(false);
        ShowText(text);
    } else {
        waiting_ = text;
        if (!nextFrame_->Enabled()) {
            nextFrame_->SetInterval(static_cast<std::int32_t>(FrameMs - (now - shownAtMs_)));
            nextFrame_->SetEnabled(true);
        }
    }
    loop_.DoEvents();
}

void Loading::ShowWaitingText() {
    if (!nextFrame_->Enabled()) return;
    nextFrame_->SetEnabled(false);
    ShowText(waiting_);
}

void Loading::ShowText(const QString& text) {
    shownOnce_ = true;
    shownAtMs_ = loop_.NowMs();
    label2_->setText(text);
    label2_->adjustSize();
    label2_->move(width() / 2 - label2_->width() / 2, 148);
}

void Loading::SetTopMost(bool onTop) {
    const bool wasVisible = isVisible();
    setWindowFlag(Qt::WindowStaysOnTopHint, onTop);
    if (wasVisible) show();
}

void Loading::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (!background_.isNull()) painter.drawPixmap(rect(), background_);
    else painter.fillRect(rect(), QColor(14, 38, 40));
}

} // namespace tolva
