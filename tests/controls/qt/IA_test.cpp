// The picture-strip control: the frames each tick paints on the virtual clock, Finish,
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

// The timing of passes, Play(0) and endless play is the strip playback's own test; here
// what each tick paints and what shows when Finish comes.
TEST(IA, EachTickPaintsTheNextFrameAndFinishComesWithThePictureOfItsEnd) {
    Strip s(25);
    s.Control.Play();
    s.Loop.Advance(60);   // red, green, then the blue frame with 5 of its 10 rows
    EXPECT_EQ(Name(ShownAt(s.Control, 10, 2)), "blue");
    EXPECT_EQ(Name(ShownAt(s.Control, 10, 17)), "black");

    // Play again shows the first frame at once, and the play it interrupts raises no
    // Finish; at the end of the pass the first frame is back before Finish comes.
    s.Control.Play(1);
    EXPECT_EQ(s.Shown(), "red");
    EXPECT_EQ(s.Frames(3), (Seen{"red", "green", "red"}));
    EXPECT_EQ(s.Finishes, (Seen{"120:red"}));
    EXPECT_FALSE(s.Control.IsPlaying());
    // StopPlay raises Finish while the last frame still shows, then shows the first.
    s.Control.Play();
    s.Loop.Advance(40);
    s.Control.StopPlay();
    EXPECT_EQ(s.Finishes, (Seen{"120:red", "160:green"}));
    EXPECT_EQ(s.Shown(), "red");
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

    // A strip one pixel wide has no room for a picture and its mask: it plays its pass,
    // and the container shows as before.
    holder.SetImage(tolva::testing::SolidImage(1, 64, 0xFFFF0000));
    mascot.SetPictureStrip(holder);
    mascot.CopyBg();
    mascot.SetTransparent(true);
    int finished = 0;
    QObject::connect(&mascot, &IA::Finish, [&finished] { ++finished; });
    mascot.Play(1);
    loop.Advance(1000);
    EXPECT_EQ(finished, 1);
    EXPECT_EQ(ShownAt(mascot, 5, 5), PictureContainer::At(65, 25));
}
