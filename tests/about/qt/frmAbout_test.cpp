// The about window: the credits and their form, the window's layout and place, the rolling
// credits and what its mouse does, and the window without its pictures.
#include "qtsupport/WidgetTestKit.h"
#include "about/Credits.h"
#include "about/qt/frmAbout.h"
#include "support/Version.h"
#include "support/ZenkorModule.h"
#include "support/platform/HeadlessEventLoop.h"
#include "testsupport/ScriptedDialogs.h"

#include <QTest>
#include <gtest/gtest.h>

using namespace tolva;
using tolva::testing::PictureFolder;
using tolva::testing::Rgb;
using tolva::testing::ShownAt;

namespace {

std::vector<std::string> SplitAtBars(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t from = 0;
    for (;;) {
        const std::size_t bar = text.find('|', from);
        lines.push_back(text.substr(from, bar == std::string::npos ? std::string::npos : bar - from));
        if (bar == std::string::npos) return lines;
        from = bar + 1;
    }
}

constexpr QRgb BackgroundColour = 0xFF204060, OutColour = 0xFFC80000, OverColour = 0xFF00C800;

// A game folder with the window's three pictures.
PictureFolder GameFolder() {
    return PictureFolder({{"data/1.bmp", 450, 400, BackgroundColour}, {"data/18.bmp", 78, 21, OutColour}, {"data/19.bmp", 78, 21, OverColour}});
}

struct AboutWindow {
    HeadlessEventLoop Loop;
    ScriptedDialogs Dialogs;
    std::vector<QUrl> Opened;
    frmAbout Form;

    explicit AboutWindow(const QRect& board)
        : Form(Loop, Dialogs, board, nullptr, [this](const QUrl& url) {
              Opened.push_back(url);
              return true;
          }) {}
};

} // namespace

TEST(frmAbout, StandsOverTheBoardRollsTheCreditsPausesOpensTheAddressAndCloses) {
    const PictureFolder game = GameFolder();
    AboutWindow a(QRect(101, 50, 501, 500));
    frmAbout& form = a.Form;
    EXPECT_LE((form.geometry().center() - QRect(101, 50, 501, 500).center()).manhattanLength(), 2);
    form.show();
    EXPECT_EQ(ShownAt(form, 5, 5), Rgb(BackgroundColour));
    EXPECT_EQ(ShownAt(form, 200, 370), Rgb(OutColour));

    // The credits: from the name and this version to the end, any mail address one of our
    // own. They roll up a pixel every 40 ms.
    ZenkorScroller& s = form.Scroller();
    EXPECT_EQ(s.Text(), CreditsText(VersionMajor, VersionMinor, VersionRevision));
    const std::vector<std::string> lines = SplitAtBars(CreditsText(1, 2, 3));
    ASSERT_GT(lines.size(), 10u);
    EXPECT_EQ(lines[0] + lines[1] + lines.back(), "TOLVA IIv1.2.3 E N D");
    for (const std::string& line : lines)
        if (line.find('@') != std::string::npos) {
            EXPECT_EQ(line.substr(line.size() - 12), "@example.org") << line;
        }
    EXPECT_TRUE(s.IsScrolling());
    const float start = s.ScrollY();
    a.Loop.Advance(400);
    EXPECT_EQ(s.ScrollY(), start - 10);
    EXPECT_TRUE(a.Dialogs.ShownBoxes().empty());

    // The window hands the left button to the credits' pause (whose slowing down is the
    // scroller's own test); the right button does not pause.
    QTest::mouseClick(&s, Qt::LeftButton, Qt::NoModifier, QPoint(50, 50));
    QTest::mouseClick(&s, Qt::RightButton, Qt::NoModifier, QPoint(50, 50));
    EXPECT_TRUE(s.PauseIsWanted());
    QTest::mouseClick(&s, Qt::LeftButton, Qt::NoModifier, QPoint(50, 50));
    EXPECT_FALSE(s.PauseIsWanted());

    QTest::mouseClick(&a.Form.AddressLabel(), Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    ASSERT_EQ(a.Opened.size(), 1u);
    EXPECT_EQ(a.Opened[0].host(), "www.example.org");
    EXPECT_TRUE(a.Form.isVisible());

    a.Form.CloseButton().FakeMouseUp();
    EXPECT_FALSE(a.Form.isVisible());
    EXPECT_EQ(a.Form.result(), QDialog::Accepted);
    EXPECT_FALSE(s.IsScrolling());
    a.Loop.Advance(10);   // the pause's last slowing tick
    EXPECT_FALSE(s.IsScrolling());
    EXPECT_EQ(a.Loop.RunningTimers(), 0);
}

TEST(frmAbout, OpensWithoutItsPicturesWhenTheyAreMissing) {
    const PictureFolder empty;
    AboutWindow a(QRect(0, 0, 450, 400));
    EXPECT_FALSE(a.Form.HasBackground());
    EXPECT_FALSE(a.Form.CloseButton().OutPicture().HasPicture());
    EXPECT_TRUE(a.Form.Scroller().IsScrolling());
    a.Form.show();
    a.Loop.Advance(200);
    EXPECT_TRUE(a.Dialogs.ShownBoxes().empty());
}
