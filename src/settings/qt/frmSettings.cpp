#include "settings/qt/frmSettings.h"

#include "controls/Ebutton.h"
#include "controls/Scroller.h"
#include "support/ZenkorModule.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QGroupBox>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStyle>
#include <QWindow>

#include <algorithm>

namespace tolva {

namespace {

// The look of the controls on the window's dark teal field: gold frame captions, light
// texts, the dark field showing through, and check boxes as small gold-rimmed wells that
// fill with gold when checked.
const char* const StyleSheet =
    "QGroupBox { color: rgb(255, 214, 90); border: 1px solid rgb(150, 96, 22); margin-top: 7px; }"
    "QGroupBox::title { subcontrol-origin: margin; left: 8px; padding: 0 3px; }"
    "QCheckBox, QLabel { color: rgb(236, 244, 236); background: transparent; }"
    "QCheckBox::indicator { width: 9px; height: 9px; border: 1px solid rgb(242, 190, 72);"
    " background: rgb(6, 17, 20); }"
    "QCheckBox::indicator:checked { background: rgb(242, 190, 72); border-color: rgb(255, 238, 170); }";

const QColor SliderTrack(20, 55, 60);
const QColor SampleRed(255, 0, 0);

std::string FoldLower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; });
    return text;
}

std::string FileBytes(const QString& name) { return QFile::encodeName(name).toStdString(); }

// The music files of a folder (a stored path), in name order without regard to case.
QStringList ListMusicFiles(const std::string& folder) {
    const QDir dir(QFile::decodeName(QByteArray::fromStdString(NativePath(folder))));
    const QStringList patterns = QString::fromLatin1(frmSettings::MusicPatterns).split(';');
    return dir.entryList(patterns, QDir::Files, QDir::Name | QDir::IgnoreCase);
}

// The settings the two sliders stand for.
constexpr const char* DelayKey = "updatedelay";
constexpr const char* HuntKey = "huntdelay";
// The check box that makes the sample blink.
constexpr const char* AniDrawKey = "anidraw";

} // namespace

frmSettings::frmSettings(GameSettings& settings, EventLoop& loop, Callbacks callbacks, const QRect& board,
                         QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint),
      settings_(settings),
      loop_(loop),
      callbacks_(std::move(callbacks)),
      background_("frmSettings"),
      Timer1_(loop.CreateTimer(false)) {
    setModal(true);
    setFixedSize(FormWidth, FormHeight);
    setStyleSheet(QString::fromLatin1(StyleSheet));
    QFont font("DejaVu Sans");
    font.setPixelSize(11);
    setFont(font);
    folderPicker_ = [this](const std::string& title, const std::string& start) {
        const QString chosen = QFileDialog::getExistingDirectory(this, QString::fromLatin1(title),
                                                                 QFile::decodeName(QByteArray::fromStdString(start)));
        return chosen.isEmpty() ? std::string() : FileBytes(chosen);
    };
    sampleColor_ = QApplication::palette().color(QPalette::Button);
    Timer1_->OnTick = [this] { Timer1_Timer(); };

    BuildDelayFrames();
    BuildGameFrame();
    BuildStatFrame();
    Ebutton1_ = new Ebutton(loop_, this);
    Ebutton1_->move(191, 386);
    connect(Ebutton1_, &Ebutton::MouseUp, this, [this] { Ebutton1_MouseUp(); });

    if (!board.isNull())
        move(board.left() + board.width() / 2 - FormWidth / 2, board.top() + board.height() / 2 - FormHeight / 2);
    Form_Load();
}

frmSettings::~frmSettings() {
    Timer1_->SetEnabled(false);
    Timer1_->OnTick = nullptr;
}

void frmSettings::ShowModal(GameSettings& settings, EventLoop& loop, Callbacks callbacks, const QRect& board,
                            QWidget* parent) {
    frmSettings window(settings, loop, std::move(callbacks), board, parent);
    window.exec();
}

QCheckBox* frmSettings::Check(int number) const {
    const QString name = QString("Check%1").arg(number);
    for (const BoundCheck& check : checks_)
        if (check.box->objectName() == name) return check.box;
    return nullptr;
}

QCheckBox* frmSettings::CheckOf(std::string_view key) const {
    for (const BoundCheck& check : checks_)
        if (key == check.key) return check.box;
    return nullptr;
}

// A check box that stands for the setting `key`: a new setting with a check box is one
// more of these. The setting must be a number or a flag.
QCheckBox* frmSettings::AddCheck(QWidget* frame, int number, const char* key, bool atOnce, const char* caption,
                                 const char* tip, int x, int y) {
    auto* box = new QCheckBox(QString::fromLatin1(caption), frame);
    box->setObjectName(QString("Check%1").arg(number));
    box->setToolTip(QString::fromLatin1(tip));
    box->setGeometry(x, y, 176, 20);
    checks_.push_back({key, box, atOnce});
    return box;
}

// ---- building the window ------------------------------------------------------------------

void frmSettings::BuildDelayFrames() {
    auto* Frame1 = new QGroupBox("Delay", this);
    Frame1->setGeometry(24, 62, 200, 104);
    AddCheck(Frame1, 1, AniDrawKey, true, "Action delay", "", 12, 20)->setGeometry(12, 20, 130, 20);
    Picture1_ = new QWidget(Frame1);
    Picture1_->setObjectName("Picture1");
    Picture1_->setGeometry(156, 22, 28, 16);
    Picture1_->setAutoFillBackground(true);
    ShowSample(sampleColor_);
    Scroller1_ = new Scroller(loop_, Frame1);
    Scroller1_->setGeometry(12, 48, 176, 21);
    Scroller1_->SetBackColor(SliderTrack);
    Label1_ = new QLabel(Frame1);
    Label1_->setGeometry(12, 76, 176, 18);

    auto* Frame2 = new QGroupBox("Hunt Delay", this);
    Frame2->setGeometry(24, 172, 200, 80);
    Scroller2_ = new Scroller(loop_, Frame2);
    Scroller2_->setGeometry(12, 24, 176, 21);
    Scroller2_->SetBackColor(SliderTrack);
    Label2_ = new QLabel(Frame2);
    Label2_->setGeometry(12, 52, 176, 18);

    // The limits come before the values, and the labels follow every move.
    Scroller1_->SetMin(1);
    Scroller1_->SetMax(1000);
    Scroller2_->SetMin(0);
    Scroller2_->SetMax(100);
    connect(Scroller1_, &Scroller::Scroll, this, [this](int v) { Scroller1_Scroll(v); });
    connect(Scroller2_, &Scroller::Scroll, this, [this](int v) { Scroller2_Scroll(v); });
}

void frmSettings::BuildGameFrame() {
    auto* Frame3 = new QGroupBox("Game", this);
    Frame3->setGeometry(236, 62, 200, 242);
    AddCheck(Frame3, 2, "playsounds", false, "Sound effects", "Enables the sound effects", 12, 20);
    AddCheck(Frame3, 3, "playmusic", false, "Music", "Enables the music", 12, 42);
    AddCheck(Frame3, 5, "showbonuscounter", false, "Show bonus screen", "Shows the bonus counter between levels", 12,
             64);
    AddCheck(Frame3, 7, "drawusingbackbuffer", false, "BackBuffer", "draw the bricks faster", 12, 86);
    AddCheck(Frame3, 8, "playanimations", false, "Play Animations", "Enables animations", 12, 108);
    BuildMusicFrame(Frame3);
}

void frmSettings::BuildMusicFrame(QGroupBox* Frame3) {
    auto* Frame5 = new QGroupBox(Frame3);
    Frame5->setGeometry(8, 140, 184, 92);
    AddCheck(Frame5, 9, "UseExternalMusicFile", true, "Use ext music-file:",
             "Play any external file. These files are supported: mod,xm,it,s3m,669,wav,mp3", 8, 12);
    Combo1_ = new QComboBox(Frame5);
    Combo1_->setGeometry(8, 38, 168, 22);
    Command1_ = new QPushButton("...", Frame5);
    Command1_->setToolTip("Choose directory with files");
    Command1_->setGeometry(8, 64, 40, 22);
    Command2_ = new QPushButton(Frame5);
    Command2_->setIcon(style()->standardIcon(QStyle::SP_MediaPlay));
    Command2_->setGeometry(52, 64, 40, 22);
    connect(Combo1_, &QComboBox::currentIndexChanged, this, [this](int index) { Combo1_Click(index); });
    connect(Command1_, &QPushButton::clicked, this, [this] { Command1_Click(); });
    connect(Command2_, &QPushButton::clicked, this, [this] { Command2_Click(); });
}

void frmSettings::BuildStatFrame() {
    auto* Frame4 = new QGroupBox("Game Statistics", this);
    Frame4->setGeometry(24, 258, 200, 108);
    AddCheck(Frame4, 4, "makestat", false, "Log statistics", "", 12, 20);
    Label3_ = new QLabel("Allow TOLVA to supply the stat file when submitting the hiscores to the internet.", Frame4);
    Label3_->setWordWrap(true);
    Label3_->setGeometry(12, 42, 180, 42);
    AddCheck(Frame4, 6, "supplystatfile", false, "Yes", "", 12, 84);
}

// ---- load and unload -----------------------------------------------------------------------

void frmSettings::Form_Load() {
    background_.LoadFile(AppPath() + "data\\10.bmp");
    QtPictureHolder picture("Ebutton1");
    if (picture.LoadFile(AppPath() + "data\\18.bmp")) Ebutton1_->SetOutPicture(picture);
    if (picture.LoadFile(AppPath() + "data\\19.bmp")) Ebutton1_->SetOverPicture(picture);

    // The board's delays; a number beyond the slider's range is mended by the slider,
    // and its Scroll hands the mended value straight back.
    Scroller1_->SetValue(std::clamp<std::int32_t>(settings_.Number(DelayKey).value_or(0), -32768, 32767));
    Timer1_->SetEnabled(true);
    Scroller2_->SetValue(settings_.Number(HuntKey).value_or(0));
    // A number is checked when it is not 0, a flag when it is true.
    for (const BoundCheck& check : checks_) {
        check.box->setChecked(settings_.Number(check.key).value_or(0) != 0);
        if (check.atOnce)
            connect(check.box, &QCheckBox::toggled, this, [this, key = check.key] { Check_Click(key); });
    }
    AddFiles();
}

void frmSettings::Form_Unload() {
    Timer1_->SetEnabled(false);
    // Each goes back as 1 or 0; those that act at once hold that already.
    for (const BoundCheck& check : checks_) settings_.SetNumber(check.key, check.box->isChecked() ? 1 : 0);
    if (settings_.PlayMusic == 1) {
        if (callbacks_.startMusic) callbacks_.startMusic();
    } else if (callbacks_.stopMusicUnlessStopped) {
        callbacks_.stopMusicUnlessStopped();
    }
}

void frmSettings::done(int result) {
    if (!unloaded_) {
        unloaded_ = true;
        Form_Unload();
    }
    QDialog::done(result);
}

void frmSettings::reject() {
    // There is no Cancel: Escape and the window system's close do what the close button does.
    Ebutton1_MouseUp();
}

// ---- the controls --------------------------------------------------------------------------

void frmSettings::ApplyToBoard() {
    if (callbacks_.applyToBoard) callbacks_.applyToBoard();
}

void frmSettings::Check_Click(const char* key) {
    settings_.SetNumber(key, CheckOf(key)->isChecked() ? 1 : 0);
    ApplyToBoard();
}

void frmSettings::Scroller1_Scroll(int value) {
    Label1_->setText(QString("(%1) ms").arg(value));
    Timer1_->SetInterval(value);
    settings_.SetNumber(DelayKey, value);
    ApplyToBoard();
}

void frmSettings::Scroller2_Scroll(int value) {
    Label2_->setText(QString("(%1) ms").arg(value));
    settings_.SetNumber(HuntKey, value);
}

void frmSettings::Timer1_Timer() {
    const QColor face = QApplication::palette().color(QPalette::Button);
    if (!CheckOf(AniDrawKey)->isChecked())
        ShowSample(face);
    else
        ShowSample(sampleColor_ == SampleRed ? face : SampleRed);
}

void frmSettings::ShowSample(const QColor& colour) {
    sampleColor_ = colour;
    QPalette palette = Picture1_->palette();
    palette.setColor(QPalette::Window, colour);
    Picture1_->setPalette(palette);
}

void frmSettings::Combo1_Click(int index) {
    if (index < 0) return;
    settings_.ExtMusicFile = Combo1_->itemData(index).toByteArray().toStdString();
    ApplyToBoard();
}

void frmSettings::Command1_Click() {
    std::string folder = folderPicker_("Modfile-directory:", NativePath(settings_.ExtMusicPath));
    if (folder.empty()) return;
    if (folder.back() != '\\') folder += '\\';
    settings_.ExtMusicPath = folder;
    ApplyToBoard();
    AddFiles();
}

std::string frmSettings::ChosenFile() const {
    const int index = Combo1_->currentIndex();
    return index < 0 ? std::string() : Combo1_->itemData(index).toByteArray().toStdString();
}

void frmSettings::Command2_Click() {
    if (!FileExists(settings_.ExtMusicPath + ChosenFile())) return;
    if (callbacks_.stopMusicUnlessStopped) callbacks_.stopMusicUnlessStopped();
    if (callbacks_.startMusic) callbacks_.startMusic();
}

void frmSettings::Ebutton1_MouseUp() {
    // The hunt delay reaches the board only now.
    ApplyToBoard();
    accept();
}

void frmSettings::AddFiles() {
    if (settings_.ExtMusicPath.empty()) return;
    const QStringList files = ListMusicFiles(settings_.ExtMusicPath);
    if (files.isEmpty()) return;
    const std::string wanted = FoldLower(settings_.ExtMusicFile);
    int found = -1;
    {
        // Filling the list selects nothing; the selection below is the one that counts.
        const QSignalBlocker quiet(Combo1_);
        Combo1_->clear();
        for (const QString& name : files) {
            const std::string bytes = FileBytes(name);
            Combo1_->addItem(name, QByteArray::fromStdString(bytes));
            if (FoldLower(bytes) == wanted) found = Combo1_->count() - 1;
        }
        Combo1_->setCurrentIndex(-1);
    }
    Combo1_->setCurrentIndex(found >= 0 ? found : 0);
}

// ---- the window itself ---------------------------------------------------------------------

void frmSettings::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), SliderTrack);
    if (background_.HasPicture()) painter.drawImage(0, 0, background_.Image());
}

void frmSettings::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    // The window system moves the window if it can; otherwise the window follows the mouse.
    if (QWindow* window = windowHandle(); window && window->startSystemMove()) return;
    dragging_ = true;
    dragOffset_ = event->globalPosition().toPoint() - pos();
}

void frmSettings::mouseMoveEvent(QMouseEvent* event) {
    if (dragging_) move(event->globalPosition().toPoint() - dragOffset_);
}

void frmSettings::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) dragging_ = false;
}

} // namespace tolva
