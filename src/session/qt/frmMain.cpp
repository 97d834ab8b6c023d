#include "session/qt/frmMain.h"

#include "board/TolvaBoard.h"
#include "board/qt/BoardWidget.h"
#include "board/qt/BonusScreenView.h"
#include "controls/Ebutton.h"
#include "controls/IA.h"
#include "session/GameSession.h"
#include "session/qt/Loading.h"
#include "session/qt/SilentSoundPlayer.h"
#include "support/ZenkorModule.h"
#include "support/platform/SeededRandom.h"
#include "support/platform/EventLoop.h"
#include "support/platform/qt/QtDialogs.h"
#include "support/platform/qt/QtPictureHolder.h"
#include "support/platform/qt/QtPictureStore.h"
#include "support/platform/qt/QtPictureStrip.h"

#include <QPainter>

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

frmMain::frmMain(LevelModule& game, EventLoop& loop, QString commandLine, Dialogs* dialogs)
    : QWidget(nullptr, Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
      game_(game), loop_(loop), commandLine_(std::move(commandLine)) {
    setFixedSize(750, 561);
    setFocusPolicy(Qt::StrongFocus);   // the game's keys and the key word are typed on the window
    if (dialogs == nullptr) {
        qtDialogs_ = std::make_unique<QtDialogs>(this);
        dialogs = qtDialogs_.get();
    }
    dialogs_ = dialogs;
    sound_ = std::make_unique<SilentSoundPlayer>();
    rng_ = std::make_unique<SeededRandom>(1);

    boardWidget_ = new BoardWidget(this);
    boardWidget_->move(20, 41);
    pictures_ = std::make_unique<QtPictureStore>(loop_, boardWidget_);
    const BoardPlatform platform{loop_, *boardWidget_, *pictures_, *sound_, *dialogs_, *rng_};
    session_ = std::make_unique<GameSession>(game_, platform, *this, *this);
    board_ = std::make_unique<TolvaBoard>(game_, platform, *session_);
    session_->AttachBoard(*board_);
    boardWidget_->AttachBoard(board_.get());

    // The pictures built into the game: the ten bricks stand in the board itself, the
    // standard background and the pointers in the window.
    for (int i = 0; i < 10; ++i) {
        auto& brick = static_cast<QtPictureHolder&>(board_->Gfx(i));
        brick.SetImage(QImage(QString(":/builtin/bricks/%1.bmp").arg(i)));
    }
    eBack_ = std::make_unique<QtPictureHolder>("eBack");
    eBack_->SetImage(QImage(":/builtin/eBack.bmp"));
    static_cast<QtPictureHolder&>(board_->Pipette()).SetImage(QImage(":/builtin/pointers/pipette.png"));
    spellCursor_ = QPixmap(":/builtin/pointers/spell.png");

    MakeControls();
    MakeMenus();
    board_->SetTestTubeAnimation(testTube_.get());
    bonusScreen_ = new BonusScreenView(*board_);
}

frmMain::~frmMain() {
    // The board's strips and holders live on the board widget, and the board holds the
    // test tube strip: the board goes first.
    delete bonusScreen_;
    board_.reset();
    session_.reset();
    testTube_.reset();
}

QString frmMain::LevelSetPath() const { return FromBytes(levelSetPath_); }

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
    Kedelig_ = new IA(loop_, this);
    Kedelig_->setGeometry(23, 3, 32, 32);
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
    testTube_ = std::make_unique<QtPictureStrip>("TestTubeAnimation", loop_, this);
    TestTubeAnimation_ = testTube_->Control();
    TestTubeAnimation_->setGeometry(610, 214, 50, 50);
    TestTubeAnimation_->SetMoveHeight(50);
    TestTubeAnimation_->hide();

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
}

void frmMain::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (!background_.isNull()) painter.drawPixmap(0, 0, background_);
    else painter.fillRect(rect(), QColor(14, 38, 40));
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
    setCursor(QCursor(spellCursor_, 1, 1));
    ActiveSpellPic_->setPixmap(sss_[static_cast<std::size_t>(panel.Active)]);
    ActiveSpellPic_->setToolTip(FromBytes(panel.ActiveName));
    lSpell_->setText(FromBytes(panel.ActiveName));
    CentreIn(lSpell_, lSpPic_, true);
}

void frmMain::ShowLoadingText(const std::string& text) {
    if (loading_) loading_->SetLabel(FromBytes(text));
}

void frmMain::ShowStandardBackground() { board_->SetBackPicture(*eBack_); }

void frmMain::ShowCheatMode(bool on) { lCheat_->setVisible(on); }

void frmMain::ShowAutoplayChecked(bool checked) { mnuAutoplay_->setChecked(checked); }

// ---- services that later parts of the game fill in ------------------------------------------
// The hiscore table, the mascot and the PC speaker come with their own subsystems; until
// then a game runs without them.

void frmMain::CheckIfHiScore() {}
void frmMain::PrintHiScore(std::int16_t, std::int32_t, std::int32_t) {}
std::int16_t frmMain::CheckHiscorePlace() { return -1; }
void frmMain::PlayKedelig() {}
void frmMain::SpeakerBeep(std::int32_t, std::int32_t) {}

} // namespace tolva
