#include "stats/qt/frmStatistics.h"

#include "shared/GameText.h"
#include "stats/qt/StatPrintout.h"
#include "stats/qt/frmLoadingStat.h"
#include "support/ZenkorModule.h"
#include "support/platform/Dialogs.h"
#include "support/platform/EventLoop.h"

#include <QCloseEvent>
#include <QFrame>
#include <QGuiApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>

#include <algorithm>
#include <array>
#include <cstdio>

namespace tolva {
namespace {

// The window was laid out in twips, 15 to the pixel.
constexpr int Px(int twips) { return (twips + 7) / 15; }

struct HeaderLabel {
    const char* text;
    int left;    // twips, inside the header strip
    int width;
};

constexpr std::array<HeaderLabel, 17> HeaderLabels = {{
    {"LEVEL", 45, 495},  {"CLL", 810, 285},  {"CLH", 1365, 315}, {"S0L", 1980, 285}, {"S0H", 2391, 315},
    {"S1L", 2832, 285},  {"S1H", 3243, 315}, {"S2L", 3684, 285}, {"S2H", 4095, 315}, {"S3L", 4536, 285},
    {"S3H", 4947, 315},  {"S4L", 5388, 285}, {"S4H", 5799, 315}, {"S5L", 6240, 285}, {"S5H", 6660, 315},
    {"Game Over", 7260, 810}, {"Played", 8280, 480},
}};

constexpr int LabelTop = 30;
constexpr int LabelHeight = 195;
constexpr int BorderWidth = 2;   // the sunken border of the two picture boxes

QFrame* PictureBox(QWidget* parent, int left, int top, int width, int height) {
    auto* box = new QFrame(parent);
    box->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    box->setLineWidth(BorderWidth);
    box->setGeometry(Px(left), Px(top), Px(width), Px(height));
    return box;
}

std::string GameTitleText() { return std::string(GameTitle); }

} // namespace

frmStatistics::frmStatistics(std::string statPath, Dialogs& dialogs, EventLoop& events, QWidget* mainWindow)
    : QWidget(mainWindow, Qt::Window | Qt::MSWindowsFixedSizeDialogHint),
      statPath_(std::move(statPath)), dialogs_(dialogs), events_(events) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Statistics"));
    if (mainWindow != nullptr) setWindowIcon(mainWindow->windowIcon());
    setFont(StatListFont());
    setFixedSize(FormWidth, FormHeight);
    BuildHeader();
    BuildList();
    BuildButtons();
    CentreOnScreen();
}

void frmStatistics::BuildHeader() {
    Picture1_ = PictureBox(this, 75, 120, 9075, 315);
    for (const auto& header : HeaderLabels) {
        auto* label = new QLabel(QString::fromLatin1(header.text), Picture1_);
        // A label never cuts its own text where this system's font runs a little wider.
        const int width = std::max(Px(header.width), label->sizeHint().width());
        label->setGeometry(BorderWidth + Px(header.left), BorderWidth + Px(LabelTop), width, Px(LabelHeight));
    }
}

void frmStatistics::BuildList() {
    Picture2_ = PictureBox(this, 75, 450, 9090, 5475);
    listClip_ = new QWidget(Picture2_);
    listClip_->setGeometry(Picture2_->contentsRect());
    DS_ = new QLabel(listClip_);
    DS_->setGeometry(0, 0, Px(9030), Px(5085));
    DS_->setAutoFillBackground(true);
    QPalette black = DS_->palette();
    black.setColor(QPalette::Window, Qt::black);
    DS_->setPalette(black);
    DS_->setAlignment(Qt::AlignLeft | Qt::AlignTop);

    Scroller_ = new QScrollBar(Qt::Vertical, this);
    Scroller_->setGeometry(Px(9165), Px(435), Px(270), Px(5490));
    // Tracking gives a change at every position of a drag, not only at its end.
    Scroller_->setTracking(true);
    connect(Scroller_, &QScrollBar::valueChanged, this, [this](int value) { DS_->move(0, -value); });
}

void frmStatistics::BuildButtons() {
    struct Button {
        QPushButton** member;
        const char* text;
        int left;
    };
    const std::array<Button, 4> buttons = {{
        {&Command4_, "Refresh", 1395},
        {&Command3_, "Print", 3105},
        {&Command2_, "Clear all statistics", 4815},
        {&Command1_, "Close", 6540},
    }};
    for (const auto& b : buttons) {
        *b.member = new QPushButton(QString::fromLatin1(b.text), this);
        (*b.member)->setGeometry(Px(b.left), Px(6255), Px(1560), Px(375));
    }
    connect(Command4_, &QPushButton::clicked, this, [this] { Load(); });
    connect(Command3_, &QPushButton::clicked, this, [this] { Print(); });
    connect(Command2_, &QPushButton::clicked, this, [this] { ClearAll(); });
    connect(Command1_, &QPushButton::clicked, this, [this] { close(); });
}

void frmStatistics::CentreOnScreen() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (screen == nullptr) return;
    QRect frame(QPoint(0, 0), size());
    frame.moveCenter(screen->availableGeometry().center());
    move(frame.topLeft());
}

void frmStatistics::Load() {
    if (loading_) return;
    loading_ = true;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    const int h = QFontMetrics(StatListFont()).height();
    Scroller_->setSingleStep(h);
    Scroller_->setPageStep(10 * h);
    {
        frmLoadingStat progress(this);
        progress.show();
        table_.Clear();
        table_.OpenStatFile(statPath_, [&](int level) {
            progress.SetCaption("Loading statistics for level:" + std::to_string(level));
            events_.DoEvents();
        });
        progress.SetCaption("Making list...");
        PrintStat();
    }
    QGuiApplication::restoreOverrideCursor();
    loading_ = false;
}

void frmStatistics::PrintStat() {
    list_ = PaintStatList(table_);
    DS_->setPixmap(QPixmap::fromImage(list_.Surface));
    DS_->resize(list_.Surface.size());
    Scroller_->setMaximum(std::max(0, list_.Surface.height() - listClip_->height()));
    Scroller_->setValue(0);
    DS_->move(0, 0);
}

void frmStatistics::Print() {
    if (loading_) return;
    const auto answer = dialogs_.MessageBox("Send statistics to printer ?", GameTitleText(), MessageIcon::Question,
                                            MessageButtons::OkCancel);
    if (answer != MessageResult::Ok) return;
    PrintStatToPrinter(table_);
    dialogs_.MessageBox("Send to printer!", GameTitleText(), MessageIcon::Information, MessageButtons::Ok);
}

void frmStatistics::ClearAll() {
    if (loading_) return;
    const auto answer =
        dialogs_.MessageBox("Are you sure ?", "Clear all statistics?", MessageIcon::Exclamation, MessageButtons::OkCancel);
    if (answer != MessageResult::Ok) return;
    if (FileExists(statPath_)) std::remove(WritablePath(statPath_).c_str());
    close();
}

void frmStatistics::closeEvent(QCloseEvent* event) {
    if (loading_) {
        event->ignore();
        return;
    }
    QWidget::closeEvent(event);
}

void frmStatistics::mouseReleaseEvent(QMouseEvent* event) {
    // Only a click on the window itself, not on the list or a control, draws again.
    if (event->button() == Qt::LeftButton && childAt(event->position().toPoint()) == nullptr) PrintStat();
    QWidget::mouseReleaseEvent(event);
}

} // namespace tolva
