// The game needs a screen at least 600 pixels high. This program runs on an offscreen
// screen of 1280 x 599 (SmallScreen_test.screen.json, given by the test's environment).
#include "qtsupport/GameWindowKit.h"

#include <QGuiApplication>
#include <QScreen>
#include <gtest/gtest.h>

using namespace tolva;

TEST(SmallScreen, StartUpStopsBeforeLoadingAnythingOnAScreenBelow600Pixels) {
    ASSERT_EQ(QGuiApplication::primaryScreen()->geometry().height(), 599);
    tolva::testing::TestGame t;
    auto& [folder, loop, dialogs, app] = t;
    const std::string iniBefore = folder.Dir.Read("tolva2.ini");
    EXPECT_FALSE(app.Start(1));
    ASSERT_EQ(dialogs.ShownBoxes().size(), 1u);
    EXPECT_EQ(dialogs.ShownBoxes()[0].Text,
              "TOLVA II REQUIRES A SCREEN RESOLUTION OF 800*600 AND 16BIT COLORS MINIMUM !");
    EXPECT_EQ(dialogs.ShownBoxes()[0].Icon, MessageIcon::Stop);
    // Nothing was written.
    EXPECT_EQ(folder.Dir.EntryCount(), 2u);
    EXPECT_EQ(folder.Dir.Read("tolva2.ini"), iniBefore);
}
