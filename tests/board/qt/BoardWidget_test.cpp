// The board on screen: a real TolvaBoard painting through its widget, its pictures and
// strips from the Qt store, its timers on the virtual clock.
#include "qtsupport/WidgetTestKit.h"
#include "board/BmpWriter.h"
#include "board/BoardFixture.h"
#include "board/qt/BoardWidget.h"
#include "support/TempFolder.h"
#include "board/qt/QtPictureStore.h"
#include "board/qt/QtPictureStrip.h"

#include <QTest>
#include <gtest/gtest.h>

#include <cmath>

using namespace tolva;
using tolva::testing::FillHolder;
using tolva::testing::ShownAt;
using Rows = std::vector<std::string>;

namespace {

std::uint32_t Brick(int i) { return static_cast<std::uint32_t>((20 + 20 * i) << 16); }
std::uint32_t Spell(int i) { return static_cast<std::uint32_t>((60 + 30 * i) << 8); }
// The background: every pixel tells its place.
std::uint32_t BackAt(int x, int y) { return static_cast<std::uint32_t>((x % 256) << 16 | (y % 256) << 8 | 200); }

struct ScreenBoard {
    HeadlessEventLoop Loop;
    BoardWidget Widget;
    QtPictureStore Pictures{Loop, &Widget};
    RecordingSoundEffects Sound;
    ScriptedDialogs Dialog;
    SeededRandom Rng{1};
    GameSettings Settings;
    std::unique_ptr<LevelModule> Game = std::make_unique<LevelModule>();
    tolva::testing::RecordingListener Events;
    std::unique_ptr<TolvaBoard> Board;

    explicit ScreenBoard(int side = 200) {
        Board = std::make_unique<TolvaBoard>(*Game, Settings, BoardPlatform{Loop, Widget, Pictures, Sound, Dialog, Rng}, Events);
        Widget.AttachBoard(Board.get());
        for (int i = 0; i < 10; ++i) FillHolder(dynamic_cast<QtPictureHolder&>(Board->Gfx(i)), 25, 25, 0xFF000000 | Brick(i));
        for (int i = 0; i < SpellCount; ++i) FillHolder(dynamic_cast<QtPictureHolder&>(Board->ss(i)), 25, 25, 0xFF000000 | Spell(i));
        SetBack(side);
    }
    ~ScreenBoard() {
        Widget.AttachBoard(nullptr);
        Board.reset();
    }
    void SetBack(int side) {
        QImage image(side, side, QImage::Format_RGB32);
        for (int y = 0; y < side; ++y)
            for (int x = 0; x < side; ++x) image.setPixel(x, y, 0xFF000000 | BackAt(x, y));
        QtPictureHolder back("eBack");
        back.SetImage(image);
        Board->SetBackPicture(back);
    }
    void Start(const Rows& rows) {
        tolva::testing::FillLevel(Game->Levels[0], "ONE", rows);
        std::int16_t level = 1;
        Board->NewGame(level);
        Events.Take();
    }
    std::uint32_t Buffer(int x, int y) { return Widget.BackBuffer().pixel(x, y) & 0xFFFFFFu; }
    std::uint32_t Cell(int x, int y) {   // the middle of a cell of the board in use
        const double w = Widget.ScaleWidth() / Board->xBricks();
        return Buffer(static_cast<int>((x + 0.5) * w), static_cast<int>((y + 0.5) * w));
    }
    bool Saw(const std::string& event) {
        const Rows events = Events.Take();
        return std::find(events.begin(), events.end(), event) != events.end();
    }
};

// Checked 2 and 3, a pair of 1 at the top left, a hole, a spell and a reserved cell.
const Rows TenByTen = {"1123232323", "3232323232", "2323232323", "3232323232", "2323.23232",
                       "323232a232", "2323232323", "32X2323232", "2323232323", "3232323232"};

} // namespace

TEST(BoardWidget, CellsFillTheSurfaceWithStretchedPicturesAndHolesShowTheBackground) {
    ScreenBoard s;
    s.Start(TenByTen);
    EXPECT_EQ(s.Widget.size(), QSize(200, 200));   // the size of the back picture
    EXPECT_EQ(s.Cell(0, 0), Brick(1));
    EXPECT_EQ(s.Cell(2, 0), Brick(2));
    EXPECT_EQ(s.Cell(6, 5), Spell(0));
    // A hole shows the background under it; the reserved cell paints nothing at all.
    EXPECT_EQ(s.Cell(4, 4), BackAt(90, 90));
    EXPECT_EQ(s.Buffer(81, 99), BackAt(81, 99));
    EXPECT_EQ(s.Cell(2, 7), BackAt(50, 150));
    EXPECT_EQ(ShownAt(s.Widget, 90, 90), BackAt(90, 90));   // the widget shows the buffer

    // 40 cells on 500 pixels: cells of 12.5 alternate 13 and 12 pixels and share their
    // edges, so every pixel shows its own cell's brick, with no gap and no overlap.
    ScreenBoard big(500);
    Rows rows(40, std::string(40, '0'));
    for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 40; ++x) rows[std::size_t(y)][std::size_t(x)] = char('0' + (x * 3 + y) % 10);
    big.Start(rows);
    const QImage& buffer = big.Widget.BackBuffer();
    const auto cellOf = [](int pixel) {
        int c = 0;
        while (std::lround((c + 1) * 12.5) <= pixel) ++c;
        return c;
    };
    int wrong = 0;
    for (int y = 0; y < 500; ++y)
        for (int x = 0; x < 500; ++x)
            wrong += (buffer.pixel(x, y) & 0xFFFFFFu) != Brick((cellOf(x) * 3 + cellOf(y)) % 10);
    EXPECT_EQ(wrong, 0);
}

TEST(BoardWidget, PaintAndResizeFollowTheBackPictureAndBoardReady) {
    ScreenBoard s;
    s.Widget.show();
    s.Start(TenByTen);
    QTest::mouseMove(&s.Widget, QPoint(30, 50));   // the pointer reaches the board by cell
    EXPECT_TRUE(s.Saw("MouseMove(1,2)"));
    // A new back picture: the board takes its size, the surface starts again from it,
    // and the platform's repaint paints the cells anew, now 30 pixels wide.
    s.SetBack(300);
    EXPECT_EQ(s.Widget.size(), QSize(300, 300));
    EXPECT_EQ(s.Buffer(15, 15), BackAt(15, 15));
    s.Widget.grab();
    EXPECT_EQ(s.Buffer(15, 15), Brick(1));
    EXPECT_EQ(s.Buffer(75, 15), Brick(2));
    // While the board is not ready the repaint is refused.
    s.Board->BoardReady = false;
    s.SetBack(250);
    s.Widget.grab();
    EXPECT_EQ(s.Buffer(12, 12), BackAt(12, 12));
    s.Board->BoardReady = true;

    // A board that sizes itself to its background cannot be sized from outside.
    s.Widget.resize(100, 100);
    EXPECT_EQ(s.Widget.size(), QSize(250, 250));
    s.Board->SetAutoSize(false);
    s.Widget.resize(100, 120);
    EXPECT_EQ(s.Widget.size(), QSize(100, 120));
    s.Widget.grab();
    EXPECT_EQ(s.Buffer(5, 6), Brick(1));   // cells of 10 x 12 fill the surface
    EXPECT_EQ(s.Buffer(5, 115), Brick(3));   // the bottom row too: cells take the height
    s.Board->SetAutoSize(true);
    EXPECT_EQ(s.Widget.size(), QSize(250, 250));
}

TEST(BoardWidget, StripsPlayOverTheBoardAndThePointerTakesItsPicture) {
    tolva::testing::TempFolder root;
    root.Write("9_H.bmp", tolva::testing::MakeBmp(32, 64, 24, [](int, int y) { return y < 32 ? 0xFF00FFu : 0x00FFFFu; }));
    ScreenBoard s;
    s.Widget.show();
    auto& hint = dynamic_cast<QtPictureStrip&>(s.Board->AniHint());
    ASSERT_NE(hint.Control(), nullptr);
    ASSERT_TRUE(hint.LoadStrip(root.Path() + "\\9_H.BMP"));
    // The hint plays its two frames over the first movable cell, then hides itself.
    s.Start(TenByTen);
    s.Board->ShowHint();
    EXPECT_EQ(hint.Control()->geometry(), QRect(0, 0, 20, 20));
    EXPECT_EQ(ShownAt(s.Widget, 10, 10), 0xFF00FFu);
    s.Loop.Advance(20);
    EXPECT_EQ(ShownAt(s.Widget, 10, 10), 0xFF00FFu);   // the first frame, twice
    s.Loop.Advance(20);
    EXPECT_FALSE(hint.Control()->isVisible());
    EXPECT_EQ(ShownAt(s.Widget, 10, 10), Brick(1));

    // The pointer: a picture with its hot spot, and the standard one for no picture.
    QtPictureHolder pipette("Pipette");
    FillHolder(pipette, 32, 32, qRgb(1, 2, 3));
    s.Widget.SetMousePointer(&pipette, 0, 15);
    EXPECT_EQ(s.Widget.cursor().shape(), Qt::BitmapCursor);
    EXPECT_EQ(s.Widget.cursor().hotSpot(), QPoint(0, 15));
    EXPECT_EQ(s.Widget.cursor().pixmap().size(), QSize(32, 32));
    QtPictureHolder empty("CrCursor");
    s.Widget.SetMousePointer(&empty, 3, 3);
    EXPECT_EQ(s.Widget.cursor().shape(), Qt::ArrowCursor);
}
