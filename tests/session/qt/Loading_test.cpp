// The Loading window's progress texts on the virtual clock: a text shows at once unless
// the one before is younger than a frame; then it waits for the rest of that frame, is
// replaced by any text that comes meanwhile, and the last one always ends on screen.
#include "session/qt/Loading.h"
#include "support/platform/HeadlessEventLoop.h"

#include <QPixmap>
#include <gtest/gtest.h>

using namespace tolva;

TEST(Loading, TextsFasterThanAFrameShowTheNewestOnceTheFrameIsOver) {
    HeadlessEventLoop loop;
    Loading window(loop, QPixmap(), "v1.0.0");

    window.SetLabel("Settings...");
    EXPECT_EQ(window.LabelText(), "Settings...");

    // A hundred level texts within the same millisecond: none can be seen before the
    // next frame, so the screen keeps the first until then.
    for (int i = 1; i <= 100; ++i) window.SetLabel(QString("Level_%1").arg(i));
    EXPECT_EQ(window.LabelText(), "Settings...");

    loop.Advance(Loading::FrameMs - 1);
    EXPECT_EQ(window.LabelText(), "Settings...");
    loop.Advance(1);
    EXPECT_EQ(window.LabelText(), "Level_100");

    // A frame later a text shows straight away, and is placed in the middle.
    loop.Advance(Loading::FrameMs);
    window.SetLabel("Main background");
    EXPECT_EQ(window.LabelText(), "Main background");
    const QWidget* label = window.findChildren<QLabel*>().back();
    EXPECT_NEAR(label->x() + label->width() / 2, Loading::WidthPx / 2, 1);

    // A text that waits is shown at the end of the frame of the one before it, not a
    // whole frame after itself.
    loop.Advance(10);
    window.SetLabel("Spell-button0");
    loop.Advance(Loading::FrameMs - 10);
    EXPECT_EQ(window.LabelText(), "Spell-button0");

    // A waiting text can be put on screen at once, before the window is copied or goes.
    loop.Advance(1);
    window.SetLabel("Level_100");
    EXPECT_EQ(window.LabelText(), "Spell-button0");
    window.ShowWaitingText();
    EXPECT_EQ(window.LabelText(), "Level_100");
    loop.Advance(Loading::FrameMs);
    EXPECT_EQ(window.LabelText(), "Level_100");

    // The window may go while a text waits.
    window.SetLabel("Spell-button1");
}
