#include "session/qt/frmMain.h"

#include "board/qt/BoardWidget.h"
#include "controls/Ebutton.h"
#include "controls/IA.h"
#include "session/qt/Loading.h"
#include "support/ZenkorModule.h"
#include "support/platform/EventLoop.h"
#include "support/platform/qt/QtPictureHolder.h"

#include <QClipboard>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>

namespace tolva {
namespace {

// The window's fonts. The game was laid out in Verdana; DejaVu Sans has its shapes and
// nearly its widths. Sizes are the layout's points at 96 pixels to the inch.
QFont PanelFont(int pixelSize, bool bold) {
    QFont font("DejaVu Sans");
    font.setPixelSize(pixelSize);
    font.setBold(bold);
    return font;
}

constexpr int Pt14 = 19;   // 14.25 points
constexpr int Pt9 = 13;    // 9.75 points
constexpr int Pt8 = 11;    // 8.25 points

const QColor Yellow(255, 255, 0);
const QColor Green(0, 192, 0);
const QColor Red(255, 0, 0);

// Left edges of the six spell buttons.
constexpr std::array<int, 6> SpellLeft = {543, 571, 599, 644, 672, 700};

QString FromBytes(const std::string& text) { return QString::fromLatin1(text.data(), static_cast<int>(text.size())); }

void CentreIn(QLabel* label, const QWidget* box, bool vertically) {
    label->adjustSize();
    const int left = box->width() / 2 - label->width() / 2;
    const int top = vertically ? box->height() / 2 - label->height() / 2 : label->y();
    label->move(left, top);
}

} // namespace

frmMain::frmMain(EventLoop& loop)
    : QWidget(nullptr, Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint), loop_(loop) {
    setFixedSize(750, 561);
    setFocusPolicy(Qt::StrongFocus);   // the game's keys and the key word are typed on the window
    boardWidget_ = new BoardWidget(this);
    boardWidget_->move(20, 41);
    MakeControls();
    MakeMenus();
}

frmMain::~frmMain() = default;

QLabel* frmMain::MakeLabel(const QString& text, int pixelSize, const QColor& colour, bool bold) {
    auto* label = new QLabel(text, this);
    label->setFont(PanelFont(pixelSize, bold));
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, colour);
    label->setPalette(palette);
    label->adjustSize();
    return label;
}

void frmMain::MakeControls() {
    levName_ = MakeLabel("", Pt14, Yellow);
    levName_->move(207, -2);
    levName_->installEventFilter(this);
    lCheat_ = MakeLabel("CHEAT MODE ON", Pt8, Yellow);
    lCheat_->setGeometry(410, 23, 104, 13);
    lCheat_->hide();
    lPractice_ = MakeLabel("PRACTICE", Pt8, Yellow);
    lPractice_->setGeometry(410, 23, 104, 13);
    lPractice_->hide();
    // The idle mascot: 25 ms a frame, frames 32 high, laid over the window's picture.
    Kedelig_ = new IA(loop_, this);
    Kedelig_->setGeometry(23, 3, 32, 32);
    Kedelig_->SetInterval(25);
    Kedelig_->SetMoveHeight(32);
    Kedelig_->SetTransparent(true);
    Kedelig_->installEventFilter(this);

    picHiscore_ = new QWidget(this);
    picHiscore_->setGeometry(543, 55, 184, 27);
    picHiscore_->setAutoFillBackground(true);
    picHiscore_->setPalette(QPalette(Qt::black));
    lScore_ = new QLabel("000.000.000", picHiscore_);
    lScore_->setFont(PanelFont(Pt9, true));
    QPalette green = lScore_->palette();
    green.setColor(QPalette::WindowText, Green);
    lScore_->setPalette(green);
    lScore_->move(0, 5);
    CentreIn(lScore_, picHiscore_, false);
    lLevel_ = MakeLabel("", Pt14, Green);
    lLevel_->move(584, 104);
    lBonus_ = MakeLabel("", Pt14, Red);
    lBonus_->move(677, 104);

    MakeSpellBar();

    hiScoreDisplay_ = new QLabel(this);
    hiScoreDisplay_->setGeometry(543, 297, 184, 122);
    hiScoreDisplay_->setAutoFillBackground(true);
    QPalette table(Qt::black);
    table.setColor(QPalette::WindowText, Qt::white);
    hiScoreDisplay_->setPalette(table);
    QFont mono("Liberation Mono");
    mono.setPixelSize(Pt8);
    hiScoreDisplay_->setFont(mono);
    hiScoreDisplay_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    hiScoreDisplay_->installEventFilter(this);

    bGame_ = new Ebutton(loop_, this);
    bGame_->setGeometry(541, 431, 190, 31);
    bOptions_ = new Ebutton(loop_, this);
    bOptions_->setGeometry(541, 472, 190, 31);
    bAbout_ = new Ebutton(loop_, this);
    bAbout_->setGeometry(541, 512, 190, 31);

    Label1_ = MakeLabel("X:0,Y:0  TYPE:-1", Pt8, Qt::white);
    Label1_->setGeometry(21, 543, 102, 13);
    lbClicks_ = MakeLabel("CLICKS: 0", Pt8, Qt::white);
    lbClicks_->setGeometry(140, 543, 61, 13);
    lbLevelCode_ = MakeLabel("", Pt8, Qt::white);
    lbLevelCode_->setGeometry(267, 543, 82, 13);
    lbLevelCode_->installEventFilter(this);
    // The labels at the bottom are a little wider than the layout's, so that the longest
    // texts are not cut with a font a shade wider than the original.
    Label1_->resize(118, 13);
    lbClicks_->resize(120, 13);
    lbLevelCode_->resize(160, 13);
    // The group under the pointer and its points, at the right end of the line, under
    // the board's right edge; it lets clicks through to the level code beneath it.
    lGroup_ = MakeLabel("", Pt8, QColor(242, 190, 72));
    lGroup_->setGeometry(372, 543, 149, 13);
    lGroup_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    lGroup_->setAttribute(Qt::WA_TransparentForMouseEvents);
}

void frmMain::MakeSpellBar() {
    for (std::size_t i = 0; i < 6; ++i) {
        sc_[i] = new QLabel(this);
        sc_[i]->setGeometry(SpellLeft[i], 149, 27, 18);
        sc_[i]->setAutoFillBackground(true);
        sc_[i]->setPalette(QPalette(Qt::black));
        sl_[i] = new QLabel("0", sc_[i]);
        sl_[i]->setFont(PanelFont(Pt8, true));
        QPalette yellow = sl_[i]->palette();
        yellow.setColor(QPalette::WindowText, Yellow);
        sl_[i]->setPalette(yellow);
        CentreIn(sl_[i], sc_[i], true);
        sp_[i] = new QLabel(this);
        sp_[i]->setGeometry(SpellLeft[i], 168, 27, 27);
        sp_[i]->setCursor(Qt::PointingHandCursor);
        sp_[i]->installEventFilter(this);
    }
    lSpPic_ = new QWidget(this);
    lSpPic_->setGeometry(543, 197, 184, 16);
    lSpPic_->setAutoFillBackground(true);
    lSpPic_->setPalette(QPalette(QColor(34, 116, 113)));
    lSpell_ = new QLabel(lSpPic_);
    lSpell_->setFont(PanelFont(Pt9, true));
    QPalette cyan = lSpell_->palette();
    cyan.setColor(QPalette::WindowText, QColor(24, 223, 222));
    lSpell_->setPalette(cyan);
    ActiveSpellPic_ = new QLabel(this);
    ActiveSpellPic_->setGeometry(610, 214, 50, 50);
    ActiveSpellPic_->setToolTip("NO SPELL SELECTED");
    ActiveSpellPic_->installEventFilter(this);
    // The test tube's strip plays over the armed spell's picture between its two clicks.
    TestTubeAnimation_ = new IA(loop_, this);
    TestTubeAnimation_->setObjectName("TestTubeAnimation");
    TestTubeAnimation_->setGeometry(610, 214, 50, 50);
    TestTubeAnimation_->SetInterval(60);
    TestTubeAnimation_->SetMoveHeight(50);
    TestTubeAnimation_->hide();
}

void frmMain::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    panel_.Paint(painter, event->region(), QColor(14, 38, 40));
}

// ---- what the session shows ---------------------------------------------------------------

void frmMain::SetLabel(SessionLabel label, const std::string& bytes) {
    const QString text = FromBytes(bytes);
    switch (label) {
    case SessionLabel::Score:
        lScore_->setText(text);
        CentreIn(lScore_, picHiscore_, false);
        break;
    case SessionLabel::Level: lLevel_->setText(text); lLevel_->adjustSize(); break;
    case SessionLabel::Bonus: lBonus_->setText(text); lBonus_->adjustSize(); break;
    case SessionLabel::LevelName: levName_->setText(text); levName_->adjustSize(); break;
    case SessionLabel::LevelCode: lbLevelCode_->setText(text); break;
    case SessionLabel::Clicks: lbClicks_->setText(text); break;
    case SessionLabel::Pointer: Label1_->setText(text); break;
    case SessionLabel::Group: lGroup_->setText(text); break;
    }
}

void frmMain::ShowSpellPanel(const SpellPanel& panel) {
    for (std::size_t i = 0; i < 6; ++i) {
        sl_[i]->setText(FromBytes(panel.Counts[i]));
        CentreIn(sl_[i], sc_[i], true);
        sc_[i]->setPalette(QPalette(static_cast<int>(i) == panel.Active ? QColor(255, 0, 0) : QColor(Qt::black)));
    }
    if (panel.Active < 0) {
        unsetCursor();
        ActiveSpellPic_->clear();
        ActiveSpellPic_->setToolTip("NO SPELL SELECTED");
        lSpell_->clear();
        return;
    }
    LoadGamePictures();
    setCursor(QCursor(spellCursor_, 1, 1));
    ActiveSpellPic_->setPixmap(sss_[static_cast<std::size_t>(panel.Active)]);
    ActiveSpellPic_->setToolTip(FromBytes(panel.ActiveName));
    lSpell_->setText(FromBytes(panel.ActiveName));
    CentreIn(lSpell_, lSpPic_, true);
}

void frmMain::ShowLoading() {
    if (!loading_) {
        const QPixmap picture = QPixmap::fromImage(ReadBuiltinPicture(":/builtin/loading.rgb32"));
        const QString version = QString("v%1").arg(QCoreApplication::applicationVersion());
        loading_ = std::make_unique<Loading>(loop_, picture, version);
    }
    loading_->show();
}

void frmMain::ShowLoadingText(const std::string& text) {
    if (loading_) loading_->SetLabel(FromBytes(text));
}

void frmMain::SetLoadingTopMost(bool onTop) {
    if (loading_) loading_->SetTopMost(onTop);
}

void frmMain::CloseLoading() { loading_.reset(); }

void frmMain::SettleLoading() {
    if (loading_) loading_->ShowWaitingText();
}

void frmMain::SetTitle(const std::string& title) { setWindowTitle(FromBytes(title)); }

void frmMain::SetLevelMenuEntry(int index, const std::string& caption) {
    if (index < 0 || index >= MaxLevels) return;
    levelCaptions_[static_cast<std::size_t>(index)] = FromBytes(caption);
    ShowLevelEntry(index);
}

void frmMain::SetSpellToolTip(int spellNo, const std::string& name) {
    if (spellNo >= 0 && spellNo < SpellCount) sp_[static_cast<std::size_t>(spellNo)]->setToolTip(FromBytes(name));
}

void frmMain::CopyToClipboard(const std::string& text) {
    QClipboard* clipboard = QGuiApplication::clipboard();
    clipboard->clear();
    clipboard->setText(FromBytes(text));
}

void frmMain::ShowStandardBackground() {
    if (StandardBackground) StandardBackground();
}

// "PRACTICE" stands where "CHEAT MODE ON" does, and gives way to it.
void frmMain::ShowCheatMode(bool on) {
    lCheat_->setVisible(on);
    lPractice_->setVisible(practiceShown_ && !on);
}

void frmMain::ShowPractice(bool on) {
    practiceShown_ = on;
    lPractice_->setVisible(on && lCheat_->isHidden());
}

void frmMain::ShowAutoplayChecked(bool checked) { mnuAutoplay_->setChecked(checked); }

// ---- the window's own pictures ----------------------------------------------------------------

void frmMain::SetMeHeight() {
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        const QRect area = screen->availableGeometry();
        move(area.center() - QPoint(width() / 2, height() / 2));
    }
}

void frmMain::LoadButtonPictures(Ebutton& button, const char* out, const char* over, const char* label) {
    QtPictureHolder outPicture("OutPicture"), overPicture("OverPicture");
    if (outPicture.LoadFile(AppPath() + out)) button.SetOutPicture(outPicture);
    if (overPicture.LoadFile(AppPath() + over)) button.SetOverPicture(overPicture);
    ShowLoadingText(label);
}

void frmMain::LoadGfx() {
    panel_.Load(AppPath() + "data\\0.bmp", boardWidget_->geometry());
    ShowLoadingText("Main background");
    ShowLoadingText("Board background");
    LoadButtonPictures(*bGame_, "data\\3.bmp", "data\\4.bmp", "Button 1");
    LoadButtonPictures(*bOptions_, "data\\5.bmp", "data\\6.bmp", "Button 2");
    LoadButtonPictures(*bAbout_, "data\\7.bmp", "data\\8.bmp", "Button 3");
    Kedelig_->LoadPictureStrip(AppPath() + "data\\9.bmp");
    ShowLoadingText("Maskot gfx");
    for (std::size_t i = 0; i < 6; ++i) {
        const std::string n = NumberText(static_cast<double>(i));
        QtPictureHolder button("sp");
        if (button.LoadFile(AppPath() + "data\\ss" + n + ".bmp")) sp_[i]->setPixmap(QPixmap::fromImage(button.Image()));
        ShowLoadingText("Spell-button" + n);
    }
    update();
}

void frmMain::LoadGamePictures() {
    if (gamePicturesLoaded_) return;
    gamePicturesLoaded_ = true;
    TestTubeAnimation_->LoadPictureStrip(AppPath() + "data\\17.bmp");
    spellCursor_ = QPixmap::fromImage(ReadBuiltinPicture(":/builtin/pointers/spell.png"));
    for (std::size_t i = 0; i < 6; ++i) {
        QtPictureHolder large("sss");
        if (large.LoadFile(AppPath() + "data\\s" + NumberText(static_cast<double>(i)) + ".bmp"))
            sss_[i] = QPixmap::fromImage(large.Image());
    }
}

void frmMain::closeEvent(QCloseEvent* event) {
    if (routes_.Close && !routes_.Close()) {
        event->ignore();
        return;
    }
    event->accept();
}

} // namespace tolva
