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

QCheckBox* NewCheck(QWidget* parent, const char* caption, const char* tip, int x, int y) {
    auto* check = new QCheckBox(QString::fromLatin1(caption), parent);
    check->setToolTip(QString::fromLatin1(tip));
    check->setGeometry(x, y, 176, 20);
    return check;
}

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
    return number >= 1 && number <= 9 ? checks_[number - 1] : nullptr;
}

// ---- building the window ------------------------------------------------------------------

void frmSettings::BuildDelayFrames() {
    auto* Frame1 = new QGroupBox("Delay", this);
    Frame1->setGeometry(24, 62, 200, 104);
    checks_[0] = NewCheck(Frame1, "Action delay", "", 12, 20);
    checks_[0]->setGeometry(12, 20, 130, 20);
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
    checks_[1] = NewCheck(Frame3, "Sound effects", "Enables the sound effects", 12, 20);
    checks_[2] = NewCheck(Frame3, "Music", "Enables the music", 12, 42);
    checks_[4] = NewCheck(Frame3, "Show bonus screen", "Shows the bonus counter between levels", 12, 64);
    checks_[6] = NewCheck(Frame3, "BackBuffer", "draw the bricks faster", 12, 86);
    checks_[7] = NewCheck(Frame3, "Play Animations", "Enables animations", 12, 108);
    BuildMusicFrame(Frame3);
}

void frmSettings::BuildMusicFrame(QGroupBox* Frame3) {
    auto* Frame5 = new QGroupBox(Frame3);
    Frame5->setGeometry(8, 140, 184, 92);
    checks_[8] = NewCheck(Frame5, "Use ext music-file:",
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
    checks_[3] = NewCheck(Frame4, "Log statistics", "", 12, 20);
    Label3_ = new QLabel("Allow TOLVA to supply the stat file when submitting the hiscores to the internet.", Frame4);
    Label3_->setWordWrap(true);
    Label3_->setGeometry(12, 42, 180, 42);
    checks_[5] = NewCheck(Frame4, "Yes", "", 12, 84);
}

// ---- load and unload -----------------------------------------------------------------------

void frmSettings::Form_Load() {
    background_.LoadFile(AppPath() + "data\\10.bmp");
    QtPictureHolder picture("Ebutton1");
    if (picture.LoadFile(AppPath() + "data\\18.bmp")) Ebutton1_->SetOutPicture(picture);
    if (picture.LoadFile(AppPath() + "data\\19.bmp")) Ebutton1_->SetOverPicture(picture);

    // The board's delays; a number beyond the slider's range is mended by the slider,
    // and its Scroll hands the mended value straight back.
    Scroller1_->SetValue(std::clamp<std::int32_t>(settings_.UpdateDelay, -32768, 32767));
    Timer1_->SetEnabled(true);
    Check(1)->setChecked(settings_.AniDraw);
    Scroller2_->SetValue(settings_.HuntDelay);
    Check(2)->setChecked(settings_.PlaySounds != 0);
    Check(3)->setChecked(settings_.PlayMusic != 0);
    Check(5)->setChecked(settings_.ShowBonusCounter != 0);
    Check(4)->setChecked(settings_.MakeStat);
    Check(6)->setChecked(settings_.SupplyStatFile);
    Check(7)->setChecked(settings_.DrawUsingBackBuffer);
    Check(8)->setChecked(settings_.PlayAnimations);
    Check(9)->setChecked(settings_.UseExternalMusicFile);
    connect(Check(1), &QCheckBox::toggled, this, [this] { Check1_Click(); });
    connect(Check(9), &QCheckBox::toggled, this, [this] { Check9_Click(); });
    AddFiles();
}

void frmSettings::Form_Unload() {
    Timer1_->SetEnabled(false);
    settings_.PlaySounds = Check(2)->isChecked() ? 1 : 0;
    settings_.PlayMusic = Check(3)->isChecked() ? 1 : 0;
    settings_.ShowBonusCounter = Check(5)->isChecked() ? 1 : 0;
    settings_.MakeStat = Check(4)->isChecked();
    settings_.SupplyStatFile = Check(6)->isChecked();
    settings_.DrawUsingBackBuffer = Check(7)->isChecked();
    settings_.PlayAnimations = Check(8)->isChecked();
    settings_.UseExternalMusicFile = Check(9)->isChecked();
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

void frmSettings::Check1_Click() {
    settings_.AniDraw = Check(1)->isChecked();
    ApplyToBoard();
}

void frmSettings::Scroller1_Scroll(int value) {
    Label1_->setText(QString("(%1) ms").arg(value));
    Timer1_->SetInterval(value);
    settings_.UpdateDelay = value;
    ApplyToBoard();
}

void frmSettings::Scroller2_Scroll(int value) {
    Label2_->setText(QString("(%1) ms").arg(value));
    settings_.HuntDelay = static_cast<std::int16_t>(value);
}

void frmSettings::Timer1_Timer() {
    const QColor face = QApplication::palette().color(QPalette::Button);
    if (!Check(1)->isChecked())
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

void frmSettings::Check9_Click() {
    settings_.UseExternalMusicFile = Check(9)->isChecked();
    ApplyToBoard();
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
