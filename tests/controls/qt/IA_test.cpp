// The picture-strip control: order and timing of its frames on the virtual clock, Finish,
// the partial last frame, and a transparent strip over its container.
#include "qtsupport/WidgetTestKit.h"
#include "controls/IA.h"
#include "support/platform/HeadlessEventLoop.h"

#include <QPainter>
#include <gtest/gtest.h>

using namespace tolva;
using tolva::testing::ShownAt;
using Seen = std::vector<std::string>;

namespace {

// A strip 10 wide of frames 10 high, red, green and blue; `height` 25 cuts blue in half.
QImage ThreeFrames(int height = 30) {
    QImage strip(10, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < 10; ++x) strip.setPixel(x, y, y < 10 ? 0xFFFF0000 : y < 20 ? 0xFF00FF00 : 0xFF0000FF);
    return strip;
}

std::string Name(std::uint32_t c) {
    return c == 0xFF0000 ? "red" : c == 0x00FF00 ? "green" : c == 0x0000FF ? "blue" : c == 0 ? "black" : "other";
}

// A 20 x 20 control ticking every 20 ms; each Finish written down as "time:colour shown".
struct Strip {
    HeadlessEventLoop Loop;
    IA Control;
    Seen Finishes;

    explicit Strip(int height = 30) : Control(Loop) {
        Control.setGeometry(0, 0, 20, 20);
        Control.SetInterval(20);
        Control.SetMoveHeight(10);
        QtPictureHolder picture("strip");
        picture.SetImage(ThreeFrames(height));
        Control.SetPictureStrip(picture);
        QObject::connect(&Control, &IA::Finish,
                         [this] { Finishes.push_back(std::to_string(Loop.NowMs()) + ":" + Shown()); });
        Control.show();
    }
    std::string Shown() { return Name(ShownAt(Control, 10, 5)); }
    Seen Frames(int ticks) {   // the frame shown after each of `ticks` intervals
        Seen seen;
        for (int i = 0; i < ticks; ++i) {
            Loop.Advance(20);
            seen.push_back(Shown());
        }
        return seen;
    }
};

} // namespace

TEST(IA, PlayShowsEachFrameAtTheIntervalAndFinishesOnTheFirst) {
    Strip s;
    s.Control.Play(1);
    EXPECT_EQ(s.Shown(), "red");
    // The first frame stays two intervals; the third tick paints blue, goes back to the
    // first frame and only then raises Finish.
    EXPECT_EQ(s.Frames(3), (Seen{"red", "green", "red"}));
    EXPECT_EQ(s.Finishes, (Seen{"60:red"}));
    EXPECT_FALSE(s.Control.IsPlaying());
    s.Control.Play(2);   // two passes: six ticks; none passes ends after one
    s.Loop.Advance(200);
    s.Control.Play(0);
    s.Loop.Advance(200);
    EXPECT_EQ(s.Finishes, (Seen{"60:red", "180:red", "320:red"}));

    // Endless play; Play again restarts from the first frame without a Finish for the
    // play it interrupts; StopPlay raises Finish while the last frame still shows.
    s.Finishes.clear();
    s.Control.Play();
    s.Loop.Advance(6000);
    s.Control.Play(5);
    EXPECT_EQ(s.Shown(), "red");
    EXPECT_EQ(s.Frames(2), (Seen{"red", "green"}));
    s.Control.StopPlay();
    EXPECT_EQ(s.Finishes, (Seen{"6500:green"}));
    EXPECT_EQ(s.Shown(), "red");
    s.Loop.Advance(200);
    EXPECT_EQ(s.Finishes.size(), 1u);
}

TEST(IA, PartialLastFrameKeepsItsScaleAndMoveHeightIsRaisedToOne) {
    Strip s(25);
    s.Control.Play();
    s.Loop.Advance(60);   // red, green, then the blue frame with 5 of its 10 rows
    EXPECT_EQ(Name(ShownAt(s.Control, 10, 2)), "blue");
    EXPECT_EQ(Name(ShownAt(s.Control, 10, 17)), "black");
    EXPECT_EQ(s.Frames(1), (Seen{"red"}));   // and the next tick starts over
    s.Control.SetMoveHeight(0);
    EXPECT_EQ(s.Control.MoveHeight(), 1);

    // Without a strip 0 stays, and every tick counts as a pass.
    HeadlessEventLoop loop;
    IA bare(loop);
    bare.SetMoveHeight(0);
    bare.Play(1);
    loop.Advance(40);
    EXPECT_FALSE(bare.IsPlaying());
    EXPECT_EQ(bare.MoveHeight(), 0);
}

namespace {

// A container that paints a picture of its own, whose colour tells the place.
class PictureContainer final : public QWidget {
public:
    PictureContainer() : picture_(100, 60, QImage::Format_RGB32) {
        for (int y = 0; y < 60; ++y)
            for (int x = 0; x < 100; ++x) picture_.setPixel(x, y, qRgb(2 * x, 4 * y, 77));
        resize(100, 60);
    }
    static std::uint32_t At(int x, int y) { return static_cast<std::uint32_t>(2 * x << 16 | 4 * y << 8 | 77); }
    void paintEvent(QPaintEvent*) override { QPainter(this).drawImage(0, 0, picture_); }

private:
    QImage picture_;
};

} // namespace

TEST(IA, TransparentFrameShowsTheContainerThroughItsMask) {
    HeadlessEventLoop loop;
    PictureContainer container;
    IA mascot(loop, &container);
    mascot.setGeometry(23, 3, 32, 32);
    mascot.SetMoveHeight(32);
    mascot.SetTransparent(true);
    // Left half: red in the left 16 columns, black beside. Right half, the mask: black
    // under the red, white where the container shows.
    QImage strip(64, 32, QImage::Format_RGB32);
    for (int y = 0; y < 32; ++y)
        for (int x = 0; x < 64; ++x) strip.setPixel(x, y, x < 16 ? 0xFFFF0000 : x < 48 ? 0xFF000000 : 0xFFFFFFFF);
    QtPictureHolder holder("9.bmp");
    holder.SetImage(strip);
    mascot.SetPictureStrip(holder);
    container.show();

    EXPECT_EQ(ShownAt(mascot, 5, 5), 0xFF0000u);
    EXPECT_EQ(ShownAt(mascot, 20, 10), PictureContainer::At(43, 13));
    mascot.move(60, 20);   // the next frame takes the background from its new place
    mascot.Play(1);
    loop.Advance(40);
    EXPECT_EQ(ShownAt(mascot, 31, 31), PictureContainer::At(91, 51));
    EXPECT_EQ(ShownAt(mascot, 5, 5), 0xFF0000u);

    // A still control shows its first frame again on a repaint only with AutoRefresh.
    mascot.SetTransparent(false);
    mascot.CopyBg();
    mascot.hide();
    mascot.show();
    EXPECT_EQ(ShownAt(mascot, 20, 5), 0x000000u);   // the whole first frame, opaque now
    mascot.SetAutoRefresh(false);
    mascot.CopyBg();
    mascot.hide();
    mascot.show();
    EXPECT_EQ(ShownAt(mascot, 20, 5), PictureContainer::At(80, 25));
}

TEST(IA, StripsOfAnySizeArePlayedOrLeftOutButNeverBreakTheControl) {
    // Strips one to three pixels wide or high, transparent or not, through a whole pass.
    // One too narrow for a picture and its mask shows the container as before; the game
    // goes on in every case.
    for (const bool transparent : {true, false})
        for (const auto& [w, h] : {std::pair{1, 1}, std::pair{1, 64}, std::pair{2, 1}, std::pair{3, 64}, std::pair{64, 1}}) {
            SCOPED_TRACE(std::to_string(w) + "x" + std::to_string(h) + (transparent ? " transparent" : ""));
            HeadlessEventLoop loop;
            PictureContainer container;
            IA mascot(loop, &container);
            mascot.setGeometry(23, 3, 32, 32);
            mascot.SetMoveHeight(32);
            mascot.SetTransparent(transparent);
            container.show();
            mascot.CopyBg();
            const std::uint32_t before = ShownAt(mascot, 5, 5);
            QImage strip(w, h, QImage::Format_RGB32);
            strip.fill(0xFFFF0000);
            QtPictureHolder holder("9.bmp");
            holder.SetImage(strip);
            mascot.SetPictureStrip(holder);
            int finished = 0;
            QObject::connect(&mascot, &IA::Finish, [&finished] { ++finished; });
            mascot.Play(1);
            loop.Advance(1000);
            EXPECT_EQ(finished, 1);
            EXPECT_FALSE(mascot.IsPlaying());
            if (transparent && w < 2) {
                EXPECT_EQ(ShownAt(mascot, 5, 5), before);
            }
            // A strip lower than a frame keeps the frame's scale: its one row is the top.
            if (!transparent) {
                EXPECT_EQ(ShownAt(mascot, 5, h >= 32 ? 5 : 0), 0xFF0000u);
            }
        }

    // An empty picture is no picture: nothing to play, nothing shown.
    HeadlessEventLoop loop;
    IA empty(loop);
    empty.setGeometry(0, 0, 8, 8);
    QtPictureHolder none("none");
    none.SetImage(QImage());
    empty.SetPictureStrip(none);
    EXPECT_FALSE(empty.PictureStrip().HasPicture());
    empty.Play(1);
    loop.Advance(200);
    empty.StopPlay();
    EXPECT_FALSE(empty.IsPlaying());
}
