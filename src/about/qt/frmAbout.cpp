#include "about/qt/frmAbout.h"

#include "about/Credits.h"
#include "support/ZenkorModule.h"

#include <QDesktopServices>
#include <QMouseEvent>
#include <QPainter>

namespace tolva {

const char* const frmAbout::WebAddress = "www.example.org";

namespace {

// The window's layout, in pixels.
const QRect ScrollerBounds(25, 230, 400, 98);
const QPoint ButtonPlace(186, 360);
const QRect LabelBounds(310, 373, 121, 13);

// The small sans-serif face of the window's texts.
QFont SmallFont(bool bold) {
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(11);
    font.setBold(bold);
    return font;
}

} // namespace

frmAbout::frmAbout(EventLoop& loop, Dialogs& dialogs, const QRect& board, QWidget* parent, OpenUrlFunction openUrl)
    : QDialog(parent, Qt::Tool | Qt::FramelessWindowHint),
      openUrl_(std::move(openUrl)),
      Picture("Picture", nullptr),
      ZenkorScroller1(loop, dialogs, this),
      Ebutton1(loop, this),
      Label1(this) {
    if (!openUrl_) openUrl_ = [](const QUrl& url) { return QDesktopServices::openUrl(url); };
    setFixedSize(FormWidth, FormHeight);
    SetUpScroller();
    SetUpLabel();
    Ebutton1.move(ButtonPlace);
    connect(&Ebutton1, &Ebutton::MouseUp, this, [this](std::int16_t, std::int16_t, float, float) { accept(); });
    connect(&ZenkorScroller1, &ZenkorScroller::MouseDown, this, [this](std::int16_t button, std::int16_t, float, float) {
        if (button == 1) ZenkorScroller1.Pause();
    });
    Form_Load(board);
}

frmAbout::~frmAbout() = default;

void frmAbout::SetUpScroller() {
    ZenkorScrollerProperties values;
    values.BackColor = QColor(0, 0, 0);
    values.Enabled = true;
    values.Font = SmallFont(false);
    values.UseFont = true;
    values.BackStyle = 0;
    values.BorderStyle = 0;
    values.FontColor = QColor(255, 255, 255);
    values.ShadowColor = QColor(255, 255, 0);
    values.ShadowSize = 0;
    values.ShadowDirection = 4;
    values.ScrollDirection = 1;
    values.ScrollSpeed = 40;
    values.ScrollRepeatCount = 0;
    values.TextAlign = 1;
    values.WordWrap = false;
    ZenkorScroller1.ReadProperties(values);
    ZenkorScroller1.setGeometry(ScrollerBounds);
}

void frmAbout::SetUpLabel() {
    Label1.setText(QString::fromLatin1(WebAddress));
    Label1.setFont(SmallFont(true));
    QPalette colours = Label1.palette();
    colours.setColor(QPalette::WindowText, QColor(0, 0, 255));
    Label1.setPalette(colours);
    Label1.setCursor(Qt::PointingHandCursor);
    Label1.setGeometry(LabelBounds);
    Label1.installEventFilter(this);
}

void frmAbout::Form_Load(const QRect& board) {
    Picture.LoadFile(AppPath() + "data\\1.bmp");
    QtPictureHolder out("Out");
    out.LoadFile(AppPath() + "data\\18.bmp");
    Ebutton1.SetOutPicture(out);
    QtPictureHolder over("Over");
    over.LoadFile(AppPath() + "data\\19.bmp");
    Ebutton1.SetOverPicture(over);

    // Centred over the board; halves as the layout units had them, rounded once.
    move(CLng(board.x() + board.width() / 2.0 - FormWidth / 2.0),
         CLng(board.y() + board.height() / 2.0 - FormHeight / 2.0));

    ZenkorScroller1.SetText(CreditsText());
    ZenkorScroller1.StartScroll();
}

QUrl frmAbout::AddressUrl() const { return QUrl::fromUserInput(QString::fromLatin1(WebAddress)); }

void frmAbout::done(int result) {
    // The credits stop with the window, so a window kept for later costs no ticks.
    ZenkorScroller1.StopScroll();
    QDialog::done(result);
}

void frmAbout::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (Picture.HasPicture())
        painter.drawImage(QPoint(0, 0), Picture.Image());
    else
        painter.fillRect(rect(), palette().color(QPalette::Window));
}

// A click on the address: the press and its release both on the label.
bool frmAbout::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &Label1 && event->type() == QEvent::MouseButtonRelease) {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() == Qt::LeftButton && Label1.rect().contains(mouse->position().toPoint())) {
            openUrl_(AddressUrl());
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace tolva
