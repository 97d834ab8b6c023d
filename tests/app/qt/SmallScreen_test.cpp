// The game needs a screen at least 600 pixels high. This program runs on an offscreen
// screen of 1280 x 599 (SmallScreen_test.screen.json, given by the test's environment).
#include "shared/LevelModule.h"
#include "app/GameApp.h"
#include "support/TempFolder.h"
#include "support/ZenkorModule.h"
#include "support/platform/HeadlessEventLoop.h"
#include "testsupport/ScriptedDialogs.h"

#include <QGuiApplication>
#include <QScreen>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

static void InitBuiltinPictures() { Q_INIT_RESOURCE(builtin); }

using namespace tolva;

TEST(SmallScreen, StartUpStopsBeforeLoadingAnythingOnAScreenBelow600Pixels) {
    InitBuiltinPictures();
    ASSERT_EQ(QGuiApplication::primaryScreen()->geometry().height(), 599);
    tolva::testing::TempFolder dir;
    std::filesystem::create_directories(dir / "levels/default");
    dir.Write("levels/default/levels.set", "");
    SetAppPath(dir.Path());

    HeadlessEventLoop loop;
    ScriptedDialogs dialogs;
    GameApp app(loop, "", &dialogs);
    EXPECT_FALSE(app.Start(1));
    ASSERT_EQ(dialogs.ShownBoxes().size(), 1u);
    EXPECT_EQ(dialogs.ShownBoxes()[0].Text,
              "TOLVA II REQUIRES A SCREEN RESOLUTION OF 800*600 AND 16BIT COLORS MINIMUM !");
    EXPECT_EQ(dialogs.ShownBoxes()[0].Icon, MessageIcon::Stop);
    // Nothing was written.
    EXPECT_EQ(dir.EntryCount(), 1u);
}
