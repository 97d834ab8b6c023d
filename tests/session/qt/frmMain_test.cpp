// The main window as a player meets it: the start-up and its stop messages, and a game
// played with the mouse on the board until a level is cleared and until it ends. The
// window runs on the virtual clock, so the bonus count between levels takes no time.
#include "qtsupport/GameWindowKit.h"
#include "shared/LevelModule.h"
#include "board/BmpWriter.h"
#include "controls/Ebutton.h"
#include "controls/IA.h"
#include "controls/Scroller.h"
#include "hiscores/HiscoreKeeper.h"
#include "session/GameLevelSets.h"
#include "session/GameSession.h"
#include "settings/qt/frmSettings.h"

#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QPointer>
#include <gtest/gtest.h>

using namespace tolva;
using namespace tolva::testing;

namespace {

// The settings most of these games are played with: the board closes up at once, and no
// sound or animation plays.
const char* const StillAndSilent = "[main]\r\nanidraw=0\r\nplaysounds=0\r\nplayanimations=0\r\n";

// The Options button: the button right under the one that opens the Game menu.
Ebutton* OptionsButton(frmMain& window) {
    const auto buttons = window.findChildren<Ebutton*>(QString(), Qt::FindDirectChildrenOnly);
    Ebutton* game = nullptr;
    for (Ebutton* b : buttons) {
        emit b->MouseUp(1, 0, 0, 0);
        if (window.GameMenu().isVisible()) {
            window.GameMenu().close();
            game = b;
            break;
        }
    }
    Ebutton* below = nullptr;
    for (Ebutton* b : buttons)
        if (game != nullptr && b->x() == game->x() && b->y() > game->y() && (below == nullptr || b->y() < below->y()))
            below = b;
    return below;
}

// The entry of `menu` with `caption`, or null.
QAction* Entry(const QMenu& menu, const QString& caption) {
    for (QAction* entry : menu.actions())
        if (entry->text() == caption) return entry;
    return nullptr;
}

QString LabelText(frmMain& window, const QString& text) {
    for (QLabel* label : window.findChildren<QLabel*>())
        if (label->text().startsWith(text)) return label->text();
    return {};
}

// A menu as text: a caption a line with its check mark, "-" for a separator, a submenu's
// entries indented.
std::string MenuTree(const QMenu& menu, const std::string& indent = "") {
    std::string text;
    for (const QAction* entry : menu.actions()) {
        const std::string mark = !entry->isCheckable() ? "" : entry->isChecked() ? " [x]" : " [ ]";
        text += indent + (entry->isSeparator() ? "-" : entry->text().toStdString()) + mark + "\n";
        if (entry->menu() != nullptr) text += MenuTree(*entry->menu(), indent + "  ");
    }
    return text;
}

// Starts the window and a new game from the Game menu, as a player would: false if either
// does not come.
bool StartNewGame(GameApp& app) {
    if (!app.Start(1) || !QTest::qWaitForWindowExposed(&app.Window())) return false;
    app.Session().NewGameMnu_Click();
    return app.Session().GameRunning;
}

} // namespace

// A missing default set and a missing chosen set are rows of the damaged-folder matrix.
TEST(frmMain, AnEmptyLevelSetIsTheDefaultAndClosingWritesTheMendedSettings) {
    TestGame t("[main]\r\nlevelset=\r\nupdatedelay=1\r\n");
    auto& [folder, loop, dialogs, app] = t;
    EXPECT_TRUE(app.Start(1));
    EXPECT_TRUE(dialogs.ShownBoxes().empty());
    EXPECT_EQ(app.Board().UpdateDelay(), 2);
    app.Window().close();   // no game: no question, and the settings are written
    EXPECT_EQ(ReadIni(folder.Dir / "tolva2.ini", "main", "updatedelay"), "2");
    EXPECT_EQ(ReadIni(folder.Dir / "tolva2.ini", "main", "levelset"), "levels\\default\\");
}

TEST(frmMain, ThePicturesOnlyAGameShowsWaitForTheWindowOrTheirFirstShowing) {
    TestGame t("[main]\r\nplayanimations=0\r\n");
    auto& [folder, loop, dialogs, app] = t;
    std::filesystem::create_directories(folder.Dir / "data");
    folder.Dir.Write("data/0.bmp", tolva::testing::MakeBmp(750, 561, 24, [](int, int) { return 0x204060u; }));
    folder.Dir.Write("data/12.bmp", tolva::testing::MakeBmp(500, 500, 24, [](int, int) { return 0x102030u; }));
    folder.Dir.Write("data/13.bmp", tolva::testing::MakeBmp(50, 600, 24, [](int, int) { return 0xFF0000u; }));
    folder.Dir.Write("data/17.bmp", tolva::testing::MakeBmp(50, 600, 24, [](int, int) { return 0x00FF00u; }));
    ASSERT_TRUE(app.Start(1));
    EXPECT_TRUE(app.Window().isVisible());
    // The first screen is whole; what only a game shows is not yet read.
    EXPECT_EQ(app.Window().grab().toImage().pixel(2, 2), 0xFF204060u);
    EXPECT_FALSE(app.Window().TestTubeAnimation().PictureStrip().HasPicture());
    // The loop's first turn brings the test tube; the bonus screen and the explosion wait
    // until they are shown.
    loop.DoEvents();
    EXPECT_TRUE(app.Window().TestTubeAnimation().PictureStrip().HasPicture());
    EXPECT_FALSE(app.Board().BonusPic().Holder().HasPicture());
    EXPECT_FALSE(app.Board().Animation().HasStrip());
    app.Board().AnimationEffect(0, 0);
    EXPECT_TRUE(app.Board().Animation().HasStrip());
    EXPECT_FALSE(app.Board().BonusPic().Holder().HasPicture());
}

TEST(frmMain, AGamePlayedWithTheMouseClearsALevelAndEnds) {
    TestGame t(StillAndSilent);
    auto& [folder, loop, dialogs, app] = t;
    frmMain& window = app.Window();
    ASSERT_TRUE(StartNewGame(app));
    EXPECT_EQ(app.Board().CurLevel(), 1);
    const auto solution = StoredSolution(1);
    ASSERT_FALSE(solution.empty());
    for (const auto& [x, y] : solution) ClickCell(app, x, y);

    // The level is cleared by the player's own clicks, and level 2 has begun.
    EXPECT_EQ(app.Board().CurLevel(), 2);
    EXPECT_GT(app.Session().Score, 0);
    EXPECT_EQ(LabelText(window, "LEVEL-CODE:").size(), QString("LEVEL-CODE:").size() + 6);
    EXPECT_EQ(LabelText(window, "CLICKS:"), "CLICKS: 0");

    // The pointer line follows the mouse over the board.
    QTest::mouseMove(&window.BoardView(), QPoint(3, 3));
    EXPECT_EQ(LabelText(window, "X:").left(9), "X:0,Y:0  ");

    // At the end the score takes the first place of the table, whose initials are typed
    // into the entry window.
    dialogs.QueueMessageAnswer(MessageResult::Ok);
    dialogs.QueueMessageAnswer(MessageResult::Ok);
    AnswerModalWhenShown([](QWidget& entry) {
        QTest::keyClicks(&entry, "abc");
        QTest::keyClick(&entry, Qt::Key_Enter);
    });
    app.Session().mnuEndGame_Click();
    EXPECT_EQ(app.Hiscores().Table().Entries[0].Name, "ABC");
}

TEST(frmMain, QuittingARunningGameAsksAndCancelKeepsItAndTheFiles) {
    TestGame t("[main]\r\nanidraw=0\r\nplaysounds=0\r\n");
    auto& [folder, loop, dialogs, app] = t;
    frmMain& window = app.Window();
    ASSERT_TRUE(StartNewGame(app));
    const std::string before = folder.Dir.Read("tolva2.ini");
    dialogs.QueueMessageAnswer(MessageResult::Cancel);
    EXPECT_FALSE(window.close());
    EXPECT_EQ(dialogs.ShownBoxes().back().Title, "Quit game?");
    EXPECT_TRUE(app.Session().GameRunning);
    EXPECT_EQ(folder.Dir.Read("tolva2.ini"), before);
}

TEST(frmMain, ASpellIsArmedFromItsButtonAndFiredOnTheBoard) {
    TestGame t(StillAndSilent);
    auto& [folder, loop, dialogs, app] = t;
    frmMain& window = app.Window();
    ASSERT_TRUE(StartNewGame(app));
    app.Session().NewSpell(SpellGun);

    // The third spell button, the gun, in the panel.
    QWidget* gunButton = window.childAt(599 + 13, 168 + 13);
    ASSERT_NE(gunButton, nullptr);
    QTest::mouseClick(gunButton, Qt::LeftButton);
    EXPECT_EQ(app.Game().ActiveSpell, SpellGun);
    EXPECT_EQ(LabelText(window, "GUN"), "GUN");

    // A click on the board fires it.
    ClickCell(app, 0, app.Board().xBricks() - 1);
    EXPECT_EQ(app.Session().SpellStock[SpellGun], 0);
    EXPECT_EQ(LabelText(window, "GUN"), "");
}

TEST(frmMain, KeysStartAGameAndTheKeyWordTogglesCheatMode) {
    TestGame t("[main]\r\nanidraw=0\r\nplaysounds=0\r\n");
    auto& [folder, loop, dialogs, app] = t;
    frmMain& window = app.Window();
    ASSERT_TRUE(app.Start(1));
    QLabel* cheatLabel = nullptr;
    for (QLabel* label : window.findChildren<QLabel*>())
        if (label->text() == "CHEAT MODE ON") cheatLabel = label;
    ASSERT_NE(cheatLabel, nullptr);
    EXPECT_FALSE(cheatLabel->isVisibleTo(&window));

    QTest::keyClick(&window, Qt::Key_F2);
    EXPECT_TRUE(app.Session().GameRunning);

    // The window hands the keys on as capitals; the session's own test has the word's rules.
    QTest::keyClicks(&window, "ORANGEKETTLES");
    EXPECT_TRUE(app.Game().CheatMode);
    EXPECT_TRUE(cheatLabel->isVisibleTo(&window));

    // H shows a hint on the board while a game runs.
    QTest::keyClick(&window, Qt::Key_H);
    EXPECT_TRUE(app.Board().AniHint().Visible());

    QTest::keyClicks(&window, "orangekettles");
    EXPECT_FALSE(app.Game().CheatMode);
    EXPECT_FALSE(cheatLabel->isVisibleTo(&window));
}

TEST(frmMain, TheRightButtonOnTheBoardIsTheBoardsAndOnTheSurfaceOpensGame) {
    TestGame t(StillAndSilent);
    auto& [folder, loop, dialogs, app] = t;
    frmMain& window = app.Window();
    ASSERT_TRUE(StartNewGame(app));
    TolvaBoard& board = app.Board();
    const int bottom = board.xBricks() - 1;
    // The three menus and their entries in order. The jump list is made when it opens (see
    // below); the level sets are those found.
    EXPECT_EQ(MenuTree(window.GameMenu()), "New game\nResume saved game\n-\nUndo\n-\nEnter level-code...\n-\n"
                                           "Change level-set\n  Default [x]\n-\nEnd game\nSave game and quit\n-\n"
                                           "Help...\n-\nExit\n");
    EXPECT_EQ(MenuTree(window.OptionsMenu()), "Settings...\nShow group under pointer [x]\n-\nLevels statistics...\n-\n"
                                              "Hiscore\n  Show Internet hiscores\n  -\n  Submit to Internet Hiscores\n"
                                              "  -\n  Export hiscore file...\n");
    EXPECT_EQ(MenuTree(window.CheatMenuHead()), "Jump to level\nPlay Sound...\nAutoplay (TESTMODE) [ ]\nGive bonus\n-\n"
                                                "PC-SPEAKER ENABLED ON EVENTS [x]\n");

    // The right button on the board is the board's (in cheat mode it takes the brick away),
    // and opens no menu.
    app.Session().ChangeCheatMode();
    const CellGrid before = board.Bricks;
    ClickCell(app, 0, bottom, Qt::RightButton);
    EXPECT_FALSE(board.Bricks == before);
    EXPECT_FALSE(window.GameMenu().isVisible());

    // The window's own surface, right of the board: the Game menu.
    QTest::mouseClick(&window, Qt::RightButton, {}, QPoint(530, 300));
    EXPECT_TRUE(window.GameMenu().isVisible());
    window.GameMenu().close();

    // The Options button's right button opens the cheat menu in cheat mode only.
    Ebutton* options = OptionsButton(window);
    ASSERT_NE(options, nullptr);
    emit options->MouseUp(2, 0, 0, 0);
    EXPECT_TRUE(window.CheatMenuHead().isVisible());
    EXPECT_FALSE(window.OptionsMenu().isVisible());
    window.CheatMenuHead().close();
    emit options->MouseUp(1, 0, 0, 0);
    EXPECT_TRUE(window.OptionsMenu().isVisible());
    EXPECT_FALSE(window.CheatMenuHead().isVisible());
    window.OptionsMenu().close();
    app.Session().ChangeCheatMode();
    emit options->MouseUp(2, 0, 0, 0);
    EXPECT_TRUE(window.OptionsMenu().isVisible());
    EXPECT_FALSE(window.CheatMenuHead().isVisible());
    window.OptionsMenu().close();
}

TEST(frmMain, TheJumpListIsMadeWhenOpenedAndFollowsTheSet) {
    TestGame t("[main]\r\nanidraw=0\r\nplaysounds=0\r\n");
    auto& [folder, loop, dialogs, app] = t;
    frmMain& window = app.Window();
    ASSERT_TRUE(app.Start(1));
    // The menus are not the window's children, so that nothing measures them before
    // they open; the window still owns them.
    EXPECT_TRUE(window.findChildren<QMenu*>().isEmpty());
    QAction* jumpEntry = Entry(window.CheatMenuHead(), "Jump to level");
    ASSERT_TRUE(jumpEntry != nullptr && jumpEntry->menu() != nullptr);
    QMenu* jump = jumpEntry->menu();
    EXPECT_TRUE(jump->actions().isEmpty());

    emit jump->aboutToShow();
    const QList<QAction*> entries = jump->actions();
    ASSERT_EQ(entries.size(), MaxLevels);
    EXPECT_EQ(entries[0]->text(), "(1) - " + QString::fromStdString(app.Game().Levels[0].LevelName));
    EXPECT_TRUE(entries[99]->isVisible());

    // A caption set after the list was made reaches its entry at once; an empty one hides it.
    window.SetLevelMenuEntry(99, "");
    EXPECT_FALSE(entries[99]->isVisible());
    window.SetLevelMenuEntry(99, "(100) - Last");
    EXPECT_EQ(entries[99]->text(), "(100) - Last");
    EXPECT_TRUE(entries[99]->isVisible());
    emit jump->aboutToShow();
    EXPECT_EQ(jump->actions().size(), MaxLevels);

    entries[4]->trigger();
    EXPECT_TRUE(app.Session().GameRunning);
    EXPECT_EQ(app.Game().CurLevelNo, 5);
}

TEST(frmMain, ThePointerOutlinesItsGroupAndTheKeysPlayTheBoard) {
    TestGame t(StillAndSilent);
    auto& [folder, loop, dialogs, app] = t;
    frmMain& window = app.Window();
    ASSERT_TRUE(StartNewGame(app));
    BoardWidget& view = window.BoardView();
    const int side = app.Board().xBricks();
    // Only the cells of the group differ from the board's own picture: the outline lies
    // over them, and nothing else is touched. (1, 7) of level 1 is a group of six 1s.
    // The pointer moves as the window system moves it: a move event to the board.
    QMouseEvent move(QEvent::MouseMove, CellPoint(app, 1, 7), view.mapToGlobal(CellPoint(app, 1, 7)), Qt::NoButton,
                     Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&view, &move);
    EXPECT_EQ(LabelText(window, "6 BRICKS"), "6 BRICKS = 36");
    const QImage board = view.BackBuffer().copy();
    const QImage shown = view.grab().toImage().convertToFormat(board.format());
    ASSERT_EQ(shown.size(), board.size());
    int changedInGroup = 0;
    for (int y = 0; y < board.height(); ++y)
        for (int x = 0; x < board.width(); ++x) {
            if (shown.pixel(x, y) == board.pixel(x, y)) continue;
            const int cx = x * side / board.width(), cy = y * side / board.height();
            ASSERT_EQ(app.Board().Bricks(cx, cy), 1) << "a pixel changed outside the group at " << x << "," << y;
            ++changedInGroup;
        }
    EXPECT_GT(changedInGroup, 0);

    // Switched off from the Options menu, the board shows exactly its own picture again.
    QAction* showGroup = Entry(window.OptionsMenu(), "Show group under pointer");
    ASSERT_NE(showGroup, nullptr);
    EXPECT_TRUE(showGroup->isChecked());
    showGroup->trigger();
    EXPECT_FALSE(app.Settings().ShowGroup);
    EXPECT_EQ(view.grab().toImage().convertToFormat(board.format()), view.BackBuffer());
    showGroup->trigger();

    // The first arrow key puts the cursor where the pointer rests; Space clicks there.
    QTest::keyClick(&window, Qt::Key_Left);
    QTest::keyClick(&window, Qt::Key_Space);
    EXPECT_EQ(app.Session().Score, 36);
    QTest::keyClick(&window, Qt::Key_Down);
    QTest::keyClick(&window, Qt::Key_Return);
    EXPECT_GT(app.Session().Score, 36);

    // The menus show their keys beside captions that stay as they were.
    QAction* newGame = window.GameMenu().actions().front();
    EXPECT_EQ(newGame->text(), "New game");
    EXPECT_EQ(newGame->shortcut(), QKeySequence(Qt::Key_F2));
}

TEST(frmMain, CtrlZAndBackspaceTakeMovesBackAndTheGameMenuFollows) {
    TestGame t(StillAndSilent);
    auto& [folder, loop, dialogs, app] = t;
    frmMain& window = app.Window();
    ASSERT_TRUE(app.Start(1));
    EXPECT_TRUE(dialogs.ShownBoxes().empty());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    QAction* undo = Entry(window.GameMenu(), "Undo");
    QAction* resume = Entry(window.GameMenu(), "Resume saved game");
    QAction* endGame = Entry(window.GameMenu(), "End game");
    QAction* levelCode = Entry(window.GameMenu(), "Enter level-code...");
    for (QAction* entry : {undo, resume, endGame, levelCode}) ASSERT_NE(entry, nullptr);
    // Without a game there is nothing to end; a level code needs the default set only.
    window.Game_Click();
    EXPECT_FALSE(endGame->isEnabled());
    EXPECT_TRUE(levelCode->isEnabled());
    app.Session().NewGameMnu_Click();
    window.Game_Click();
    EXPECT_TRUE(endGame->isEnabled());
    EXPECT_FALSE(undo->isEnabled());
    EXPECT_FALSE(resume->isVisible());   // no saved game waits

    ClickCell(app, 1, 7);
    ClickCell(app, 3, 6);
    EXPECT_GT(app.Session().Score, 36);
    window.Game_Click();
    EXPECT_TRUE(undo->isEnabled());
    QTest::keyClick(&window, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(app.Session().Score, 36);
    QTest::keyClick(&window, Qt::Key_Backspace);
    EXPECT_EQ(app.Session().Score, 0);
    EXPECT_EQ(LabelText(window, "PRACTICE"), "PRACTICE");
    window.Game_Click();
    EXPECT_FALSE(undo->isEnabled());
    dialogs.QueueMessageAnswer(MessageResult::Ok);
    app.Session().mnuEndGame_Click();
    window.Game_Click();
    EXPECT_FALSE(endGame->isEnabled());
}

TEST(frmMain, TheLevelSetMenuIsSortedAndTellsTheSetInUseByItsOwnCheckMark) {
    TestGame t("[main]\r\nanidraw=0\r\nplaysounds=0\r\nlevelset=levels\\mini\\\r\n");
    auto& [folder, loop, dialogs, app] = t;
    // Two folders equal but for case, both the set in use; two more around them.
    const std::string miniatures = ReadSource("game/levels/miniatures/levels.set");
    for (const auto& [name, caption] : std::vector<std::pair<std::string, std::string>>{
             {"zeta", "Zeta"}, {"mini", "Small"}, {"Alpha", "Alpha"}, {"MINI", "Big"}}) {
        std::filesystem::create_directories(folder.Dir / ("levels/" + name));
        std::string text = miniatures;
        text.replace(text.find("levelset=Miniatures"), 19, "levelset=" + caption);
        folder.Dir.Write("levels/" + name + "/levels.set", text);
    }
    // A folder without a set is no entry.
    std::filesystem::create_directories(folder.Dir / "levels/beta");
    folder.Dir.Write("levels/beta/readme.txt", "no levels here");
    frmMain& window = app.Window();
    ASSERT_TRUE(app.Start(1));
    ASSERT_EQ(app.LevelSets().LevelSetPath, "levels\\mini\\");
    QStringList captions;
    for (QAction* entry : window.LevelSetMenu().actions()) captions << entry->text();
    EXPECT_EQ(captions, (QStringList{"Alpha", "Default", "Big", "Small", "Zeta"}));
    const QList<QAction*> entries = window.LevelSetMenu().actions();
    ASSERT_EQ(entries.size(), 5);
    EXPECT_TRUE(entries[2]->isChecked());
    EXPECT_TRUE(entries[3]->isChecked());

    // The set in use chosen again without a game is neither saved nor loaded again, and
    // a list read afresh keeps its check marks.
    app.LevelSets().RefreshLevelSets();
    EXPECT_FALSE(app.LevelSets().LevelList_Click(3));
    EXPECT_EQ(app.LevelSets().LevelSetPath, "levels\\mini\\");
    EXPECT_TRUE(window.LevelSetMenu().actions()[3]->isChecked());
    EXPECT_FALSE(window.LevelSetMenu().actions()[4]->isChecked());

    // Either twin is the set in use: no question, the game goes on.
    app.Session().NewGameMnu_Click();
    ASSERT_TRUE(app.Session().GameRunning);
    for (int twin : {2, 3}) {
        entries[twin]->trigger();
        EXPECT_TRUE(dialogs.ShownBoxes().empty()) << twin;
        EXPECT_TRUE(app.Session().GameRunning) << twin;
        EXPECT_EQ(app.LevelSets().LevelSetPath, "levels\\mini\\") << twin;
    }

    // Another set ends the game after asking; only the new set is checked then. The
    // entry chosen outlives its own handler: the old entries go once the loop runs.
    QPointer<QAction> chosen = entries[4];
    dialogs.QueueMessageAnswer(MessageResult::Ok);
    chosen->trigger();
    ASSERT_EQ(dialogs.ShownBoxes().size(), 1u);
    EXPECT_EQ(dialogs.ShownBoxes()[0].Text, "This will end your current game, sure to load new level-sets ?");
    EXPECT_FALSE(app.Session().GameRunning);
    EXPECT_EQ(app.LevelSets().LevelSetPath, "levels\\zeta\\");
    // The table of the set left behind was written to its own folder first.
    EXPECT_TRUE(std::filesystem::exists(folder.Dir / "levels/mini/hiscore.hi"));
    EXPECT_FALSE(chosen.isNull());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(chosen.isNull());
    const QList<QAction*> after = window.LevelSetMenu().actions();
    ASSERT_EQ(after.size(), 5);
    for (int i = 0; i < 5; ++i) EXPECT_EQ(after[i]->isChecked(), i == 4) << i;
}

TEST(frmMain, TheHuntDelayReachesTheBoardOnlyWhenTheSettingsClose) {
    TestGame t("[main]\r\nanidraw=0\r\nplaysounds=0\r\nplaymusic=0\r\nhuntdelay=0\r\nupdatedelay=200\r\n");
    auto& [folder, loop, dialogs, app] = t;
    ASSERT_TRUE(app.Start(1));
    ASSERT_EQ(app.Board().HuntDelay, 0);
    std::int32_t huntWhileOpen = -1;
    std::int32_t updateWhileOpen = -1;
    QTimer::singleShot(0, [&, &app = app] {
        auto* settings = qobject_cast<frmSettings*>(QApplication::activeModalWidget());
        ASSERT_NE(settings, nullptr);
        // The hunt delay first, then a control that acts at once.
        settings->Scroller2()->SetValue(40);
        settings->Scroller1()->SetValue(300);
        huntWhileOpen = app.Board().HuntDelay;
        updateWhileOpen = app.Board().UpdateDelay();
        settings->Ebutton1()->FakeMouseUp();
    });
    app.Windows().Open(GameWindow::Settings);
    EXPECT_EQ(updateWhileOpen, 300);
    EXPECT_EQ(huntWhileOpen, 0);
    EXPECT_EQ(app.Board().HuntDelay, 40);
}

TEST(frmMain, TheStartUpWordsAnywhereOnTheCommandLineTurnOnCheatModeAndKeepTheScore) {
    const struct { const char* commandLine; bool cheat, keepScore; } cases[] = {
        {"", false, false},
        {"-x orangekettles", true, false},
        {"quietlanternshade", false, true},
        {"aquietlanternshadeb orangekettles", true, true},
        {"ORANGEKETTLES", false, false},   // the words are matched as written
    };
    for (const auto& c : cases) {
        TestGame t("[main]\r\nplaysounds=0\r\n", c.commandLine);
        GameApp& app = t.App;
        ASSERT_TRUE(app.Start(1)) << c.commandLine;
        EXPECT_EQ(app.Game().CheatMode, c.cheat) << c.commandLine;
        EXPECT_EQ(app.Session().KeepScoreInCheat, c.keepScore) << c.commandLine;
    }
}
