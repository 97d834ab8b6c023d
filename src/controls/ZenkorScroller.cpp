#include "controls/ZenkorScroller.h"

#include "support/ErrorReport.h"
#include "support/ZenkorModule.h"
#include "support/platform/qt/MouseCodes.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QPainter>
#include <QResizeEvent>

#include <cmath>
#include <limits>

namespace tolva {

namespace {

// Sides beyond this are refused for the hidden picture: the raster engine's coordinates
// stop being exact there, and no text worth rolling needs more.
constexpr long long MaxPictureSide = 32767;

const char* const Label = "(User Control) slpTextScroll::";
const char* const Function = "Function ";
const char* const PropertyLet = "Property Let ";

QString Latin1(const std::string& text) { return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size())); }

// The piece of `s` of `length` characters from the 1-based position `start`; empty for
// no length, clipped at the end of the text.
std::string Mid(const std::string& s, long long start, long long length) {
    if (length <= 0 || start < 1 || start > static_cast<long long>(s.size())) return {};
    return s.substr(static_cast<std::size_t>(start - 1), static_cast<std::size_t>(length));
}

std::int16_t ClampToInt16(std::int32_t value) {
    if (value > std::numeric_limits<std::int16_t>::max()) return std::numeric_limits<std::int16_t>::max();
    if (value < std::numeric_limits<std::int16_t>::min()) return std::numeric_limits<std::int16_t>::min();
    return static_cast<std::int16_t>(value);
}

} // namespace

const char* const ZenkorScroller::DefaultText = "ZenkorScroller|by Tolva Games|2026";

ZenkorScroller::ZenkorScroller(EventLoop& loop, Dialogs& dialogs, QWidget* parent)
    : QFrame(parent), dialogs_(dialogs), Timer1(loop.CreateTimer(true)), Tmr(loop.CreateTimer(true)) {
    Timer1->OnTick = [this] { Timer1_Timer(); };
    Tmr->SetInterval(TmrInterval);
    Tmr->OnTick = [this] { Tmr_Timer(); };
    setFocusPolicy(Qt::ClickFocus);
    setMouseTracking(true);
    ZenkorScrollerProperties defaults;
    defaults.Text = DefaultText;
    ReadProperties(defaults);
}

ZenkorScroller::~ZenkorScroller() {
    Timer1->SetEnabled(false);
    Tmr->SetEnabled(false);
    Timer1->OnTick = nullptr;
    Tmr->OnTick = nullptr;
}

void ZenkorScroller::ReadProperties(const ZenkorScrollerProperties& properties) {
    props_ = properties;
    if (!props_.BackColor.isValid()) props_.BackColor = palette().color(QPalette::Window);
    QPalette colours = palette();
    colours.setColor(QPalette::Window, props_.BackColor);
    setPalette(colours);
    setEnabled(props_.Enabled);
    if (props_.UseFont) setFont(props_.Font);
    setAutoFillBackground(props_.BackStyle != 0);
    setFrameStyle(props_.BorderStyle == 0 ? QFrame::NoFrame : (QFrame::Box | QFrame::Plain));
    setLineWidth(1);
    SetTimer1Interval(props_.ScrollSpeed);
    NormalInterval = CurrentInterval = ClampToInt16(props_.ScrollSpeed);
    Picture1 = QImage();
    FitPicture1();
}

// ---- properties --------------------------------------------------------------------------

void ZenkorScroller::SetText(const std::string& text) {
    props_.Text = text;
    DrawText();
}

void ZenkorScroller::SetShadowSize(std::int16_t size) {
    props_.ShadowSize = size;
    DrawText();
}

void ZenkorScroller::SetShadowDirection(std::int32_t direction) {
    props_.ShadowDirection = direction;
    DrawText();
}

void ZenkorScroller::SetScrollDirection(std::int32_t direction) {
    props_.ScrollDirection = direction;
    DrawText();
}

void ZenkorScroller::SetScrollSpeed(std::int32_t ms) {
    props_.ScrollSpeed = ms;
    // A timer cannot step at no interval at all; the running interval is 16 bits.
    if (ms < 1)
        Fail(PropertyLet, "ScrollSpeed", 380, "Invalid property value");
    else
        Timer1->SetInterval(ms);
    if (ms != ClampToInt16(ms))
        Fail(PropertyLet, "ScrollSpeed", 6, "Overflow");
    else
        NormalInterval = static_cast<std::int16_t>(ms);
}

void ZenkorScroller::SetTextAlign(std::int32_t align) {
    props_.TextAlign = align;
    DrawText();
}

void ZenkorScroller::SetWordWrap(bool wrap) {
    props_.WordWrap = wrap;
    DrawText();
}

int ZenkorScroller::LineHeight() const { return QFontMetrics(font()).height(); }

int ZenkorScroller::TextWidth(const std::string& text) const {
    return QFontMetrics(font()).horizontalAdvance(Latin1(text));
}

// ---- operations --------------------------------------------------------------------------

bool ZenkorScroller::StartScroll() {
    DrawText();
    Timer1->SetEnabled(true);
    return false;
}

bool ZenkorScroller::StopScroll() {
    Timer1->SetEnabled(false);
    DrawText();
    RepeatsDone = 0;
    return false;
}

void ZenkorScroller::Pause() {
    PauseWanted = !PauseWanted;
    Tmr->SetEnabled(true);
    if (!PauseWanted) Timer1->SetEnabled(true);
}

void ZenkorScroller::Refresh() { update(); }

void ZenkorScroller::Ref() {
    Picture1.fill(props_.BackColor);
    update();
}

bool ZenkorScroller::LoadFromFile(const std::string& FileName) {
    if (!FileExists(FileName)) return false;
    std::string bytes;
    if (!ReadWholeFile(FileName, bytes)) {
        Fail(Function, "LoadFromFile", 75, "Path/File access error");
        return false;
    }
    std::string text;
    text.reserve(bytes.size());
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const char c = bytes[i];
        if (c == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n') ++i;
        text += (c == '\r' || c == '\n') ? '|' : c;
    }
    SetText(text);
    return true;
}

// ---- drawing the text ----------------------------------------------------------------------

bool ZenkorScroller::DrawText() {
    // No step may copy a half-drawn picture.
    const bool wasRunning = Timer1->Enabled();
    Timer1->SetEnabled(false);
    if (props_.Text.empty()) {
        Timer1->SetEnabled(wasRunning);
        return false;
    }
    LoadTextArray();
    SizePicText();
    penX_ = 0;
    penY_ = 0;
    for (const std::string& line : TextArray) PrintText(line);
    // The next pass starts just below, or just to the right of, the visible area.
    YPos = static_cast<float>(ScaleHeight());
    XPos = static_cast<float>(ScaleWidth());
    PlacePicText();
    Timer1->SetEnabled(wasRunning);
    return false;
}

void ZenkorScroller::LoadTextArray() {
    TextArray.assign(1, std::string());
    if (props_.Text.empty()) return;
    if (props_.ScrollDirection == 0 || props_.ScrollDirection == 1) {
        TextArray.clear();
        std::size_t from = 0;
        for (;;) {
            const std::size_t bar = props_.Text.find('|', from);
            TextArray.push_back(props_.Text.substr(from, bar == std::string::npos ? std::string::npos : bar - from));
            if (bar == std::string::npos) break;
            from = bar + 1;
        }
        if (props_.WordWrap) DoWordWrap();
    } else if (props_.ScrollDirection == 2) {
        std::string line;
        for (char c : props_.Text) line += (c == '|') ? std::string("    ") : std::string(1, c);
        TextArray[0] = line;
    }
}

// Breaks the lines too wide for the control. A line is broken at its last blank, which
// then heads the next piece, or, with no blank to break at, right before the character
// that made it too wide, so a word wider than the control is cut with no hyphen. The
// last blank seen is not forgotten from one long line to the next: a later line may be
// broken at a position taken from an earlier one, and pieces that would then run
// backwards count as empty.
void ZenkorScroller::DoWordWrap() {
    const long long W = ScaleWidth();
    const long long S = props_.ShadowSize;
    std::vector<std::string> wrapped;
    long long LastBlank = 0;
    for (const std::string& s : TextArray) {
        if (TextWidth(s) + 2 * S <= W) {
            wrapped.push_back(s);
            continue;
        }
        long long Start = 1;
        const long long length = static_cast<long long>(s.size());
        for (long long j = 1; j <= length; ++j) {
            if (TextWidth(Mid(s, Start, j - Start + 1)) + 2 * S > W) {
                if (LastBlank <= Start) {
                    wrapped.push_back(Mid(s, Start, j - Start));
                    Start = j;
                } else {
                    wrapped.push_back(Mid(s, Start, LastBlank - Start));
                    Start = LastBlank;
                }
            }
            if (s[static_cast<std::size_t>(j - 1)] == ' ') LastBlank = j;
        }
        const std::string rest = Mid(s, Start, length - Start + 1);
        if (!rest.empty()) wrapped.push_back(rest);
    }
    TextArray = std::move(wrapped);
}

// Clears the hidden picture and gives it the size of this text: upward, room for every
// line and a blank stretch longer than the visible area, and never narrower than before;
// to the left, one line high and longer than the line by the visible width.
void ZenkorScroller::SizePicText() {
    const long long H = LineHeight();
    const long long S = props_.ShadowSize;
    const long long n = static_cast<long long>(TextArray.size()) - 1;
    long long width = PicText.width();
    long long height = PicText.height();
    if (props_.ScrollDirection == 0 || props_.ScrollDirection == 1) {
        const long long wanted = (H + S) * n + ScaleHeight() + 20;
        if (wanted < 0)
            Fail(Function, "DrawText", 380, "Invalid property value");
        else
            height = wanted;
        for (const std::string& line : TextArray) width = std::max(width, TextWidth(line) + 2 * S + 20);
    } else if (props_.ScrollDirection == 2) {
        const long long wantedHeight = H + S + 1;
        const long long wantedWidth = TextWidth(TextArray[0]) + S + ScaleWidth() + 20;
        if (wantedHeight < 0)
            Fail(Function, "DrawText", 380, "Invalid property value");
        else
            height = wantedHeight;
        if (wantedWidth < 0)
            Fail(Function, "DrawText", 380, "Invalid property value");
        else
            width = wantedWidth;
    }
    RemakePicText(width, height);
}

bool ZenkorScroller::RemakePicText(long long width, long long height) {
    bool made = false;
    if (width > MaxPictureSide || height > MaxPictureSide) {
        Fail(Function, "DrawText", 480, "Can't create AutoRedraw image");
    } else if (width == 0 || height == 0) {
        PicText = QImage();
        made = true;
    } else {
        QImage picture(static_cast<int>(width), static_cast<int>(height), QImage::Format_RGB32);
        if (picture.isNull()) {
            Fail(Function, "DrawText", 480, "Can't create AutoRedraw image");
        } else {
            PicText = std::move(picture);
            made = true;
        }
    }
    // The old picture, where a new one could not be made, is at least cleared.
    if (!PicText.isNull()) PicText.fill(props_.BackColor);
    return made;
}

void ZenkorScroller::PlacePicText() {
    const int SW = ScaleWidth();
    const int SH = ScaleHeight();
    if (props_.ScrollDirection == 0 || props_.ScrollDirection == 1) {
        switch (props_.TextAlign) {
        case 0:
        case 3: picTextLeft_ = 1; break;
        case 1: picTextLeft_ = PicText.width() > SW ? 0 : SW / 2 - PicText.width() / 2; break;
        case 2: picTextLeft_ = SW - PicText.width(); break;
        default: break;
        }
    } else if (props_.ScrollDirection == 2) {
        picTextTop_ = PicText.height() > SH ? 0 : SH / 2 - PicText.height() / 2;
    }
}

// Prints one line at the pen of the hidden picture: the shadow copies first, each one
// pixel further in ShadowDirection, then the text. The pen ends one text height below
// the text, at the left.
void ZenkorScroller::PrintText(const std::string& Line) {
    const int S = props_.ShadowSize;
    const int width = TextWidth(Line);
    switch (props_.TextAlign) {
    case 0:
    case 3: penX_ = S + 1; break;
    case 1: penX_ = PicText.width() / 2 - width / 2 - S - 8; break;
    case 2: penX_ = PicText.width() - width - 2 * S; break;
    default: break;
    }
    const QString line = Latin1(Line);
    QPainter painter;
    if (!PicText.isNull()) {
        painter.begin(&PicText);
        painter.setFont(font());
        painter.setPen(props_.ShadowColor);
    }
    int x = penX_;
    int y = penY_;
    for (int i = 1; i <= S; ++i) {
        PrintAtPen(painter, line);
        switch (props_.ShadowDirection) {
        case 0:
        case 4: --x, --y; break;
        case 1: ++x, ++y; break;
        case 2: --x, ++y; break;
        case 3: ++x, --y; break;
        default: break;
        }
        penX_ = x;
        penY_ = y;
    }
    if (painter.isActive()) painter.setPen(props_.FontColor);
    PrintAtPen(painter, line);
}

void ZenkorScroller::PrintAtPen(QPainter& painter, const QString& line) {
    if (painter.isActive()) painter.drawText(QPoint(penX_, penY_ + painter.fontMetrics().ascent()), line);
    penX_ = 0;
    penY_ += LineHeight();
}

// ---- rolling ---------------------------------------------------------------------------

void ZenkorScroller::Timer1_Timer() {
    if (props_.ScrollDirection == 0 || props_.ScrollDirection == 1) {
        if (!Picture1.isNull() && !PicText.isNull()) {
            QPainter painter(&Picture1);
            painter.setCompositionMode(QPainter::CompositionMode_Source);
            painter.drawImage(QPoint(picTextLeft_, static_cast<int>(std::lrint(YPos))), PicText);
        }
        update(contentsRect());
        YPos -= 1;
        if (YPos < static_cast<float>(ScaleHeight() - PicText.height())) ScrollDone();
    } else if (props_.ScrollDirection == 2) {
        if (!Picture1.isNull() && !PicText.isNull()) {
            QPainter painter(&Picture1);
            painter.setCompositionMode(QPainter::CompositionMode_Source);
            painter.drawImage(QPoint(static_cast<int>(std::lrint(XPos)), picTextTop_), PicText);
        }
        update(contentsRect());
        XPos -= 1;
        if (XPos < static_cast<float>(ScaleWidth() - PicText.width())) ScrollDone();
    }
}

void ZenkorScroller::ScrollDone() {
    if (props_.ScrollRepeatCount > 0) {
        RepeatsDone += 1;
        if (RepeatsDone >= props_.ScrollRepeatCount) {
            Timer1->SetEnabled(false);
            RepeatsDone = 0;
        }
    }
    DrawText();
    emit ScrollFinished();
}

void ZenkorScroller::Tmr_Timer() {
    if (PauseWanted) {
        if (CurrentInterval < 60) {
            CurrentInterval = static_cast<std::int16_t>(CurrentInterval + 15);
        } else {
            Timer1->SetEnabled(false);
            Tmr->SetEnabled(false);
        }
    } else {
        CurrentInterval = NormalInterval;
        Tmr->SetEnabled(false);
    }
    SetTimer1Interval(CurrentInterval);
}

void ZenkorScroller::SetTimer1Interval(std::int32_t ms) {
    if (ms >= 1) Timer1->SetInterval(ms);
}

void ZenkorScroller::Fail(const char* kind, const char* routine, int number, const char* description) {
    ReportError(dialogs_, std::string(Label) + kind + routine, number, description);
}

// ---- the widget --------------------------------------------------------------------------

void ZenkorScroller::FitPicture1() {
    const QSize size = contentsRect().size().expandedTo(QSize(0, 0));
    if (Picture1.size() == size) return;
    QImage picture;
    if (!size.isEmpty()) {
        picture = QImage(size, QImage::Format_RGB32);
        picture.fill(props_.BackColor);
        if (!Picture1.isNull() && !picture.isNull()) {
            QPainter painter(&picture);
            painter.drawImage(QPoint(0, 0), Picture1);
        }
    }
    Picture1 = std::move(picture);
    update();
}

void ZenkorScroller::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (!Picture1.isNull()) painter.drawImage(PictureOrigin(), Picture1);
    drawFrame(&painter);
}

void ZenkorScroller::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    FitPicture1();
}

void ZenkorScroller::mousePressEvent(QMouseEvent* event) {
    const std::int16_t button = MouseButtonCode(event->button());
    const QPointF at = event->position() - PictureOrigin();
    if (button == 1) emit Click();
    emit MouseDown(button, MouseShiftCode(event->modifiers()), static_cast<float>(at.x()), static_cast<float>(at.y()));
    // Any other button runs the text fast, unless it is stopping or stopped.
    if (button != 1 && !PauseWanted) SetTimer1Interval(FastInterval);
}

void ZenkorScroller::mouseMoveEvent(QMouseEvent* event) {
    const QPointF at = event->position() - PictureOrigin();
    emit MouseMove(MouseButtonCode(event->buttons()), MouseShiftCode(event->modifiers()), static_cast<float>(at.x()),
                   static_cast<float>(at.y()));
}

void ZenkorScroller::mouseReleaseEvent(QMouseEvent* event) {
    const std::int16_t button = MouseButtonCode(event->button());
    const QPointF at = event->position() - PictureOrigin();
    emit MouseUp(button, MouseShiftCode(event->modifiers()), static_cast<float>(at.x()), static_cast<float>(at.y()));
    if (button == 2) SetTimer1Interval(NormalInterval);
}

// The second press of a double click is the double click alone: no Click, no MouseDown.
void ZenkorScroller::mouseDoubleClickEvent(QMouseEvent*) { emit DblClick(); }

// Key codes are Qt's, which are the plain character codes for letters, digits and blank.
void ZenkorScroller::keyPressEvent(QKeyEvent* event) {
    emit KeyDown(event->key(), MouseShiftCode(event->modifiers()));
    const QString typed = event->text();
    if (!typed.isEmpty() && typed.at(0).unicode() < 256) emit KeyPress(typed.at(0).unicode());
}

void ZenkorScroller::keyReleaseEvent(QKeyEvent* event) { emit KeyUp(event->key(), MouseShiftCode(event->modifiers())); }

} // namespace tolva
