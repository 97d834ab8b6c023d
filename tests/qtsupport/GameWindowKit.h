#pragma once
// The whole game on a test's game folder, as the window tests drive it: the folder with the
// shipped default set, the game built by its composition root on the virtual clock with
// scripted dialogs, clicks on board cells, answers to a modal window once it shows, and
// the stored solutions of the default set.
#include "SolutionText.h"
#include "app/GameApp.h"
#include "board/TolvaBoard.h"
#include "board/qt/BoardWidget.h"
#include "session/qt/frmMain.h"
#include "support/TempFolder.h"
#include "support/ZenkorModule.h"
#include "support/platform/HeadlessEventLoop.h"
#include "testsupport/ScriptedDialogs.h"
#include "testsupport/SourceFiles.h"

#include <QApplication>
#include <QTest>
#include <QTimer>

#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

// The built-in pictures are compiled into the front-end library; Q_INIT_RESOURCE must
// stand outside any namespace.
inline void InitBuiltinPictures() { Q_INIT_RESOURCE(builtin); }

namespace tolva::testing {

// A game folder with the shipped default set (unless left out), the given tolva2.ini past
// the first start (whose credits would wait for a click), and no pictures: the window
// must start all the same, with its built-in pictures.
class GameFolder {
public:
    explicit GameFolder(const std::string& ini = "[main]\r\n", bool withDefaultSet = true) {
        InitBuiltinPictures();
        if (withDefaultSet) {
            std::filesystem::create_directories(Dir / "levels/default");
            Dir.Write("levels/default/levels.set", ReadSource("game/levels/default/levels.set"));
        }
        Dir.Write("tolva2.ini", ini + "notfirstuse=yes\r\n");
        SetAppPath(Dir.Path());
    }
    TempFolder Dir;
};

// The game built by its composition root on a game folder, with scripted dialogs and the
// virtual clock.
struct TestGame {
    explicit TestGame(const std::string& ini = "[main]\r\n", const char* commandLine = "")
        : Folder(ini), App(Loop, commandLine, &Dialogs) {}
    GameFolder Folder;
    HeadlessEventLoop Loop;
    ScriptedDialogs Dialogs;
    GameApp App;
};

// The middle of board cell (x, y) on the board's view.
inline QPoint CellPoint(GameApp& app, int x, int y) {
    const BoardWidget& view = app.Window().BoardView();
    const int side = app.Board().xBricks();
    return {static_cast<int>((x + 0.5) * view.width() / side), static_cast<int>((y + 0.5) * view.height() / side)};
}

// A click on board cell (x, y), where the window system puts it: on the board's view.
inline void ClickCell(GameApp& app, int x, int y, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseClick(&app.Window().BoardView(), button, {}, CellPoint(app, x, y));
}

// Hands the modal window to `answer` as soon as one waits (the caller then opens it).
inline void AnswerModalWhenShown(std::function<void(QWidget&)> answer) {
    QTimer::singleShot(0, [answer = std::move(answer)] {
        QWidget* modal = QApplication::activeModalWidget();
        if (modal == nullptr) AnswerModalWhenShown(answer);
        else answer(*modal);
    });
}

// The cells of the stored solution of default level `level`, in click order.
inline std::vector<std::pair<int, int>> StoredSolution(int level) {
    for (const auto& line : levelgen::ParseSolutions(ReadSource("tools/levelgen/default-solutions.txt"))) {
        if (line.level != level) continue;
        std::vector<std::pair<int, int>> cells;
        for (const auto& cell : line.clicks) cells.emplace_back(cell.x, cell.y);
        return cells;
    }
    return {};
}

} // namespace tolva::testing
