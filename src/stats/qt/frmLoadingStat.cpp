#include "stats/qt/frmLoadingStat.h"

#include <QGuiApplication>
#include <QLabel>
#include <QScreen>

#include <algorithm>

namespace tolva {

namespace {
constexpr int LabelLeft = 6;
constexpr int LabelTop = 8;
constexpr int LabelHeight = 13;
} // namespace

frmLoadingStat::frmLoadingStat(QWidget* owner)
    : QWidget(owner, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint), owner_(owner) {
    setAttribute(Qt::WA_ShowWithoutActivating);
    QFont font("Liberation Sans");
    font.setPixelSize(11);
    setFont(font);
    Label1_ = new QLabel(QStringLiteral("Loading statistics for level:"), this);
    Label1_->move(LabelLeft, LabelTop);
    FitAndCentre();
}

void frmLoadingStat::SetCaption(const std::string& text) {
    Label1_->setText(QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size())));
    FitAndCentre();
    Label1_->repaint();
}

void frmLoadingStat::FitAndCentre() {
    const int labelWidth = std::max(Label1_->sizeHint().width(), FormWidth - 2 * LabelLeft);
    Label1_->resize(labelWidth, LabelHeight);
    const QSize size(std::max(FormWidth, labelWidth + 2 * LabelLeft), FormHeight);
    QRect around;
    if (owner_ != nullptr) around = owner_->frameGeometry();
    else if (const QScreen* screen = QGuiApplication::primaryScreen()) around = screen->availableGeometry();
    QRect frame(QPoint(0, 0), size);
    frame.moveCenter(around.center());
    setGeometry(frame);
    setFixedSize(size);
}

} // namespace tolva
