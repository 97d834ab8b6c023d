// The picture button: its looks and events under the mouse, the blink types on the
// virtual clock, the disabled state and its size.
#include "qtsupport/WidgetTestKit.h"
#include "controls/Ebutton.h"
#include "support/platform/HeadlessEventLoop.h"

#include <QFontMetrics>
#include <QTest>
#include <gtest/gtest.h>

using namespace tolva;
using tolva::testing::FillHolder;
using tolva::testing::ShownAt;
using Seen = std::vector<std::string>;

namespace {

// The colours of the Out, Over, Blk and Dis pictures.
constexpr std::uint32_t OutColour = 0xC80000, OverColour = 0x00C800, BlinkColour = 0x0000C8, DisColour = 0x3C3C3C;

// A button of 40 x 20 at (10, 10) in a shown window, its events written down; MouseUp
// with the virtual time.
struct Button {
    HeadlessEventLoop Loop;
    QWidget Window;
    Ebutton Control{Loop, &Window};
    Seen Events;
    bool BlinkingAtMouseUp = false;

    Button() {
        Window.resize(200, 100);
        Control.move(10, 10);
        QtPictureHolder p("picture");
        FillHolder(p, 40, 20, 0xFF000000 | OutColour), Control.SetOutPicture(p);
        FillHolder(p, 40, 20, 0xFF000000 | OverColour), Control.SetOverPicture(p);
        FillHolder(p, 40, 20, 0xFF000000 | BlinkColour), Control.SetBlinkPicture(p);
        FillHolder(p, 40, 20, 0xFF000000 | DisColour), Control.SetDisabledPicture(p);
        QObject::connect(&Control, &Ebutton::StageChanged, [this](bool over) { Events.push_back(over ? "over" : "left"); });
        QObject::connect(&Control, &Ebutton::MouseDown,
                         [this](std::int16_t b, std::int16_t, float, float) { Events.push_back("down " + std::to_string(b)); });
        QObject::connect(&Control, &Ebutton::MouseUp, [this](std::int16_t b, std::int16_t s, float x, float y) {
            Events.push_back("up " + std::to_string(b) + "," + std::to_string(s) + " at " + std::to_string(int(x)) + "," +
                             std::to_string(int(y)) + " t=" + std::to_string(Loop.NowMs()));
            BlinkingAtMouseUp = Control.Blinking();
        });
        Window.show();
    }
    std::uint32_t Shown() { return ShownAt(Control, 20, 10); }
    void MoveTo(int x, int y) { QTest::mouseMove(&Window, QPoint(x, y)); }
};

} // namespace

TEST(Ebutton, OverPressReleaseAndLeavingShowTheirPicturesAndRaiseTheirEvents) {
    {
        Button b;
        EXPECT_EQ(b.Shown(), OutColour);
        b.MoveTo(20, 15);
        b.MoveTo(25, 16);   // over already: one StageChanged only
        EXPECT_EQ(b.Shown(), OverColour);
        EXPECT_EQ(b.Control.PrintedColor(), Ebutton::DefaultTextOverColor());
        QTest::mousePress(&b.Control, Qt::LeftButton, Qt::NoModifier, QPoint(15, 6));
        EXPECT_TRUE(b.Control.Pressed());
        EXPECT_EQ(b.Shown(), OutColour);   // pressing ends the over look
        QTest::mouseRelease(&b.Control, Qt::LeftButton, Qt::ShiftModifier, QPoint(15, 6));
        EXPECT_FALSE(b.Control.Pressed());
        EXPECT_EQ(b.Shown(), OutColour);   // and so does the release, until the next move
        b.MoveTo(26, 16);
        EXPECT_EQ(b.Shown(), OverColour);
        // A press dragged off the button ends there, without MouseUp.
        QTest::mousePress(&b.Control, Qt::LeftButton, Qt::NoModifier, QPoint(10, 5));
        QTest::mouseMove(&b.Control, QPoint(100, 50));
        EXPECT_FALSE(b.Control.Pressed());
        EXPECT_EQ(b.Shown(), OutColour);
        EXPECT_EQ(b.Control.PrintedColor(), b.Control.ForeColor());
        b.MoveTo(160, 80);   // the button has let go of the mouse: nothing more
        QTest::mouseRelease(&b.Control, Qt::LeftButton, Qt::NoModifier, QPoint(100, 50));
        EXPECT_EQ(b.Events, (Seen{"over", "down 1", "up 1,1 at 15,6 t=0", "over", "down 1", "left"}));
    }
    // No Over picture: no over look and no StageChanged(true). The right button is 2.
    Button plain;
    QtPictureHolder none("none");
    plain.Control.SetOverPicture(none);
    plain.MoveTo(20, 15);
    EXPECT_EQ(plain.Shown(), OutColour);
    QTest::mouseClick(&plain.Control, Qt::RightButton, Qt::NoModifier, QPoint(10, 5));
    plain.MoveTo(21, 15);
    plain.MoveTo(150, 80);
    EXPECT_EQ(plain.Events, (Seen{"down 2", "up 2,0 at 10,5 t=0", "left"}));
}

TEST(Ebutton, BlinkTypesOnTheVirtualClock) {
    // Type 0: MouseUp with the blink begun. Three flashes in seven ticks, the first after
    // 1 ms, the others BlinkDelay (50) apart; the seventh only ends the blink.
    Button b;
    b.Control.SetBlinkEnabled(true);
    b.Control.FakeMouseUp();
    EXPECT_TRUE(b.BlinkingAtMouseUp);
    Seen looks;
    for (int tick = 1; tick <= 7; ++tick) {
        b.Loop.Advance(tick == 1 ? 1 : 50);
        looks.push_back(b.Shown() == BlinkColour ? "blink" : "out");
    }
    EXPECT_EQ(looks, (Seen{"blink", "out", "blink", "out", "blink", "out", "out"}));
    EXPECT_FALSE(b.Control.Blinking());
    EXPECT_EQ(b.Control.BlinkCount(), 0);

    // Type 1: the blink after MouseUp. Type 2: MouseUp after the blink; a later blink
    // starts BlinkDelay after the release, so it takes seven ticks of 50 ms.
    b.Control.SetBlinkType(1);
    b.Control.FakeMouseUp();
    EXPECT_FALSE(b.BlinkingAtMouseUp);
    EXPECT_TRUE(b.Control.Blinking());
    b.Loop.Advance(350);
    b.Control.SetBlinkType(2);
    b.Control.FakeMouseUp();
    EXPECT_EQ(b.Events.back(), "up 1,0 at 0,0 t=" + std::to_string(301 + 350 + 350));
    EXPECT_FALSE(b.BlinkingAtMouseUp);

    // BlinkTimes 0: the first tick ends the blink before Blk ever shows.
    b.Control.SetBlinkType(0);
    b.Control.SetBlinkTimes(0);
    b.Control.FakeMouseUp();
    b.Loop.Advance(50);
    EXPECT_FALSE(b.Control.Blinking());
    EXPECT_EQ(b.Shown(), OutColour);
    // Blink() blinks by itself, but not on a disabled button.
    b.Control.SetEnabled(false);
    b.Control.Blink();
    EXPECT_FALSE(b.Control.Blinking());
    b.Control.SetEnabled(true);
    b.Control.Blink();
    EXPECT_TRUE(b.Control.Blinking());

    // No blink picture: no blink, and type 2 does not wait.
    Button bare;
    QtPictureHolder none("none");
    bare.Control.SetBlinkPicture(none);
    bare.Control.SetBlinkEnabled(true);
    bare.Control.SetBlinkType(2);
    bare.Control.FakeMouseUp();
    EXPECT_EQ(bare.Events, (Seen{"up 1,0 at 0,0 t=0"}));
    EXPECT_FALSE(bare.Control.Blinking());
}

TEST(Ebutton, DisabledLookAndTheSizeOfPictureAndText) {
    Button b;
    b.Control.SetEnabled(false);
    EXPECT_EQ(b.Shown(), DisColour);
    EXPECT_EQ(b.Control.PrintedColor(), Ebutton::DisabledTextColor());
    QTest::mouseClick(&b.Control, Qt::LeftButton, Qt::NoModifier, QPoint(10, 5));
    EXPECT_TRUE(b.Events.empty());
    // FakeMouseUp still raises MouseUp, and Dis and the grey text stay.
    b.Control.FakeMouseUp();
    EXPECT_EQ(b.Events.size(), 1u);
    EXPECT_EQ(b.Shown(), DisColour);
    EXPECT_EQ(b.Control.PrintedColor(), Ebutton::DisabledTextColor());
    b.Control.SetEnabled(true);
    EXPECT_EQ(b.Shown(), OutColour);
    EXPECT_EQ(b.Control.PrintedColor(), b.Control.ForeColor());

    // The button takes the width of Out and the height of Out, plus 2 and the text's
    // height when it has a text; it cannot be sized from outside.
    EXPECT_EQ(b.Control.size(), QSize(40, 20));
    b.Control.SetText("OPTIONS");
    const QSize withText(40, 20 + 2 + QFontMetrics(b.Control.Font()).height());
    EXPECT_EQ(b.Control.size(), withText);
    b.Control.resize(300, 300);
    EXPECT_EQ(b.Control.size(), withText);
    b.Control.SetText("");
    EXPECT_EQ(b.Control.size(), QSize(40, 20));
    QtPictureHolder wide("wide");
    FillHolder(wide, 90, 31, 0xFF000000 | OutColour);
    b.Control.SetOutPicture(wide);
    EXPECT_EQ(b.Control.size(), QSize(90, 31));
}
