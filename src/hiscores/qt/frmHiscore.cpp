#include "hiscores/qt/frmHiscore.h"

#include "support/ZenkorModule.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QWindow>

namespace tolva {

frmHiscore::frmHiscore(const QRect& board, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint), background_("frmHiscore") {
    setModal(true);
    setFixedSize(FormWidth, FormHeight);
    background_.LoadFile(AppPath() + "data\\2.bmp");

    Label1_ = new QLabel("ENTER YOUR INITIALS", this);
    Label1_->setGeometry(20, 12, 280, 26);
    Label1_->setAlignment(Qt::AlignCenter);
    QFont caption("DejaVu Sans");
    caption.setPixelSize(15);
    caption.setBold(true);
    Label1_->setFont(caption);
    Label1_->setStyleSheet("color: rgb(255, 214, 90); background: transparent;");

    Picture1_ = new QLabel(this);
    Picture1_->setGeometry(110, 58, 100, 60);
    Picture1_->setAlignment(Qt::AlignCenter);
    Picture1_->setTextFormat(Qt::PlainText);
    QFont initials("Liberation Mono");
    initials.setPixelSize(34);
    initials.setBold(true);
    Picture1_->setFont(initials);
    Picture1_->setStyleSheet("color: white; background: black;");
    // The labels pass the mouse on, so that a press anywhere drags the window.
    Label1_->setAttribute(Qt::WA_TransparentForMouseEvents);
    Picture1_->setAttribute(Qt::WA_TransparentForMouseEvents);

    if (!board.isNull())
        move(board.left() + board.width() / 2 - FormWidth / 2, board.top() + board.height() / 2 - FormHeight / 2);
    PrintDisp();
}

std::string frmHiscore::Ask(const QRect& board, QWidget* parent) {
    frmHiscore window(board, parent);
    window.exec();
    return window.EnteredInitials();
}

void frmHiscore::PrintDisp() { Picture1_->setText(QString::fromLatin1(entry_.Text())); }

void frmHiscore::keyPressEvent(QKeyEvent* event) {
    const QString text = event->text();
    if (text.size() != 1 || text[0].unicode() > 0xFF) return;
    const InitialsEntry::KeyResult result = entry_.Key(static_cast<unsigned char>(text[0].unicode()));
    if (result.Changed) PrintDisp();
    if (result.Done) accept();
}

void frmHiscore::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        if (QWindow* window = windowHandle()) window->startSystemMove();
    }
}

void frmHiscore::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    if (background_.HasPicture()) painter.drawImage(0, 0, background_.Image());
}

void frmHiscore::closeEvent(QCloseEvent* event) {
    // Only the keys end the entry; the window system's close is turned away.
    if (!entry_.Done()) event->ignore();
}

} // namespace tolva
