// The about window: the form of the credits, the window's layout and place, the rolling
// credits and what its mouse does, and the window without its pictures.
#include "WidgetTestKit.h"
#include "about/Credits.h"
#include "about/qt/frmAbout.h"
#include "support/TempFolder.h"
#include "support/Version.h"
#include "support/ZenkorModule.h"
#include "support/platform/HeadlessEventLoop.h"
#include "testsupport/ScriptedDialogs.h"

#include <QTest>
#include <gtest/gtest.h>

using namespace tolva;
using tolva::testing::Rgb;
using tolva::testing::ShownAt;
using tolva::testing::SolidImage;

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
struct GameFolder {
    tolva::testing::TempFolder Folder;
    GameFolder() {
        std::filesystem::create_directory(Folder / "data");
        SolidImage(450, 400, BackgroundColour).save(QString::fromStdString(Folder / "data/1.bmp"), "BMP");
        SolidImage(78, 21, OutColour).save(QString::fromStdString(Folder / "data/18.bmp"), "BMP");
        SolidImage(78, 21, OverColour).save(QString::fromStdString(Folder / "data/19.bmp"), "BMP");
        SetAppPath(Folder.Path());
    }
};

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

TEST(frmAbout, CreditsHaveTheirFormFromNameAndVersionToTheEnd) {
    const std::vector<std::string> lines = SplitAtBars(CreditsText(1, 2, 3));
    ASSERT_GT(lines.size(), 10u);
    EXPECT_EQ(lines[0], "TOLVA II");
    EXPECT_EQ(lines[1], "v1.2.3");
    EXPECT_EQ(lines[2], "");
    EXPECT_EQ(lines[3], "2000");
    EXPECT_EQ(lines[4], "Tolva Games");
    EXPECT_EQ(lines.back(), " E N D");
    EXPECT_EQ(SplitAtBars(CreditsText())[1], "v" + std::to_string(VersionMajor) + "." + std::to_string(VersionMinor) +
                                                 "." + std::to_string(VersionRevision));

    // The role groups in their order, each heading followed by names between hyphens,
    // with empty lines between the lines of a group.
    const std::vector<std::string> roles = {"...CODING", "...GRAPHICS", "...TESTERS", "...LEVEL EDITORS",
                                            "...LEVEL TESTERS", "...SPECIAL THANKS"};
    std::size_t at = 5;
    for (const std::string& role : roles) {
        const auto found = std::find(lines.begin() + static_cast<std::ptrdiff_t>(at), lines.end(), role);
        ASSERT_NE(found, lines.end()) << role;
        at = static_cast<std::size_t>(found - lines.begin());
        EXPECT_EQ(lines[at - 1], "") << role;
        EXPECT_EQ(lines[at + 1], "") << role;
        const std::string& name = lines[at + 2];
        ASSERT_GT(name.size(), 4u) << role;
        EXPECT_EQ(name.substr(0, 2), "- ") << role;
        EXPECT_EQ(name.substr(name.size() - 2), " -") << role;
    }
    // The closing part invites mail to addresses of our own.
    bool mail = false;
    for (std::size_t i = at; i < lines.size(); ++i) {
        if (lines[i].find('@') != std::string::npos) {
            mail = true;
            EXPECT_EQ(lines[i].substr(lines[i].size() - 12), "@example.org") << lines[i];
        }
    }
    EXPECT_TRUE(mail);
    for (const std::string& line : lines) EXPECT_EQ(line.find('|'), std::string::npos);
}

TEST(frmAbout, StandsCentredOverTheBoardWithItsPartsInPlaceAndRollsTheCredits) {
    GameFolder game;
    AboutWindow a(QRect(101, 50, 501, 500));
    frmAbout& form = a.Form;
    EXPECT_TRUE(form.windowFlags() & Qt::FramelessWindowHint);
    EXPECT_EQ(form.windowFlags() & Qt::WindowType_Mask, Qt::Tool);
    EXPECT_LE((form.geometry().center() - QRect(101, 50, 501, 500).center()).manhattanLength(), 2);

    EXPECT_TRUE(form.HasBackground());
    EXPECT_EQ(form.AddressLabel().cursor().shape(), Qt::PointingHandCursor);

    form.show();
    EXPECT_EQ(ShownAt(form, 5, 5), Rgb(BackgroundColour));
    EXPECT_EQ(ShownAt(form, 200, 370), Rgb(OutColour));

    // The credits roll up a pixel every 40 ms.
    ZenkorScroller& s = form.Scroller();
    EXPECT_EQ(s.Text(), CreditsText());
    EXPECT_TRUE(s.IsScrolling());
    const float start = s.ScrollY();
    a.Loop.Advance(400);
    EXPECT_EQ(s.ScrollY(), start - 10);
    EXPECT_TRUE(a.Dialogs.ShownBoxes().empty());
}

TEST(frmAbout, LeftClickPausesTheCreditsTheAddressOpensAndTheButtonCloses) {
    GameFolder game;
    AboutWindow a(QRect(0, 0, 450, 400));
    a.Form.show();
    ZenkorScroller& s = a.Form.Scroller();

    QTest::mouseClick(&s, Qt::LeftButton, Qt::NoModifier, QPoint(50, 50));
    EXPECT_TRUE(s.PauseIsWanted());
    a.Loop.Advance(100);
    EXPECT_FALSE(s.IsScrolling());
    QTest::mouseClick(&s, Qt::RightButton, Qt::NoModifier, QPoint(50, 50));
    EXPECT_TRUE(s.PauseIsWanted());   // only the left button pauses
    QTest::mouseClick(&s, Qt::LeftButton, Qt::NoModifier, QPoint(50, 50));
    EXPECT_FALSE(s.PauseIsWanted());
    EXPECT_TRUE(s.IsScrolling());

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
    tolva::testing::TempFolder empty;
    SetAppPath(empty.Path());
    AboutWindow a(QRect(0, 0, 450, 400));
    EXPECT_FALSE(a.Form.HasBackground());
    EXPECT_FALSE(a.Form.CloseButton().OutPicture().HasPicture());
    EXPECT_TRUE(a.Form.Scroller().IsScrolling());
    a.Form.show();
    a.Loop.Advance(200);
    EXPECT_TRUE(a.Dialogs.ShownBoxes().empty());
}
