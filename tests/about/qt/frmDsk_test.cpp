// The falling desktop on the virtual clock: two seconds still, then the fall with its
// speed, the end below the screen, a click that ends it at once, and the picture it shows.
#include "qtsupport/WidgetTestKit.h"
#include "about/qt/frmDsk.h"
#include "support/platform/HeadlessEventLoop.h"

#include <QTest>
#include <gtest/gtest.h>

using namespace tolva;
using tolva::testing::Rgb;
using tolva::testing::ShownAt;

namespace {

constexpr QRgb DesktopColour = 0xFF3A6EA5;

QPixmap SolidPixmap(const QRect& area) {
    QPixmap picture(area.size());
    picture.fill(QColor(DesktopColour));
    return picture;
}

struct FallingDesktop {
    HeadlessEventLoop Loop;
    std::vector<QRect> Grabbed;
    int Finished = 0;
    bool ShownBehindWhileCovering = false;
    frmDsk Form;

    explicit FallingDesktop(const QRect& frame, bool screenGivesNothing = false)
        : Form(Loop, frame, nullptr, [this, screenGivesNothing](const QRect& area) {
              Grabbed.push_back(area);
              return screenGivesNothing ? QPixmap() : SolidPixmap(area);
          }) {
        QObject::connect(&Form, &frmDsk::Finished, [this] { ++Finished; });
        Form.Form_Load([this] { ShownBehindWhileCovering = Form.isVisible(); });
    }
    // Virtual milliseconds from the start of the fall until the window went.
    std::int64_t FallTime() {
        Loop.Advance(frmDsk::CoverMs);
        const std::int64_t start = Loop.NowMs();
        Loop.WaitUntil([this] { return Form.Gone(); });
        return Loop.NowMs() - start;
    }
};

} // namespace

TEST(frmDsk, CoversTheFrameWithWhatTheScreenShowedForTwoSecondsThenFalls) {
    FallingDesktop d(QRect(40, 30, 300, 200));
    EXPECT_EQ(d.Grabbed, (std::vector<QRect>{QRect(40, 30, 300, 200)}));
    EXPECT_TRUE(d.ShownBehindWhileCovering);
    EXPECT_EQ(d.Form.geometry(), QRect(40, 30, 300, 200));
    EXPECT_EQ(ShownAt(d.Form, 150, 100), Rgb(DesktopColour));

    d.Loop.Advance(frmDsk::CoverMs - 1);
    EXPECT_TRUE(d.Form.Covering());
    EXPECT_EQ(d.Form.pos(), QPoint(40, 30));
    d.Loop.Advance(1);
    EXPECT_FALSE(d.Form.Covering());
    EXPECT_TRUE(d.Form.Falling());

    // The fall speeds up by 0.2 a tick: still below 10 after 50 ticks, past it at the
    // 51st at about 10.2, and there it stays. The first tick moves nothing.
    d.Loop.Advance(frmDsk::FallTickMs);
    EXPECT_EQ(d.Form.pos(), QPoint(40, 30));
    d.Loop.Advance(10 * frmDsk::FallTickMs);
    const int early = d.Form.pos().y() - 30;
    EXPECT_GT(early, 0);
    d.Loop.Advance(29 * frmDsk::FallTickMs);
    const int before = d.Form.pos().y();
    d.Loop.Advance(10 * frmDsk::FallTickMs);
    EXPECT_GT(d.Form.pos().y() - before, 5 * early);   // ten late ticks fall much further
    EXPECT_LT(d.Form.FallSpeed(), 10.0f);
    d.Loop.Advance(frmDsk::FallTickMs);
    EXPECT_NEAR(d.Form.FallSpeed(), 10.2f, 0.01f);
    const float top = d.Form.FallSpeed();
    d.Loop.Advance(10 * frmDsk::FallTickMs);
    EXPECT_EQ(d.Form.FallSpeed(), top);
    EXPECT_EQ(d.Form.pos().x(), 40);

    // Once its top is past the screen's height it goes, by itself.
    d.Loop.WaitUntil([&] { return d.Form.Gone(); });
    EXPECT_GE(d.Form.pos().y(), d.Form.ScreenHeight());
    EXPECT_FALSE(d.Form.isVisible());
    EXPECT_EQ(d.Finished, 1);
    EXPECT_EQ(d.Loop.RunningTimers(), 0);
}

TEST(frmDsk, AClickInTheTwoSecondsUncoversTheGameAtOnce) {
    FallingDesktop d(QRect(0, 0, 200, 100));
    d.Loop.Advance(500);
    QTest::mouseClick(&d.Form, Qt::LeftButton, Qt::NoModifier, QPoint(20, 20));
    EXPECT_TRUE(d.Form.Gone());
    EXPECT_FALSE(d.Form.isVisible());
    EXPECT_EQ(d.Finished, 1);
    EXPECT_EQ(d.Loop.RunningTimers(), 0);
    d.Loop.Advance(5000);
    EXPECT_EQ(d.Form.pos(), QPoint(0, 0));
    EXPECT_EQ(d.Finished, 1);
}

TEST(frmDsk, WithNothingFromTheScreenTheEffectRunsWithABlackWindow) {
    FallingDesktop d(QRect(10, 10, 120, 80), true);
    EXPECT_TRUE(d.Form.Desktop().isNull());
    EXPECT_EQ(ShownAt(d.Form, 60, 40), 0u);
    const std::int64_t fallTime = d.FallTime();
    EXPECT_GT(fallTime, 0);
    EXPECT_EQ(d.Finished, 1);

    // A window near the bottom falls out of sight sooner.
    FallingDesktop low(QRect(10, d.Form.ScreenHeight() - 150, 120, 80), true);
    EXPECT_LT(low.FallTime(), fallTime);
}
