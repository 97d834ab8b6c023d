// The board on screen: a whole 40 x 40 board painted through the real widget and brought
// to the screen, and a move that repaints only the cells it changed.
#include "board/BoardListener.h"
#include "board/TolvaBoard.h"
#include "board/qt/BoardWidget.h"
#include "testsupport/RecordingSoundEffects.h"
#include "testsupport/ScriptedDialogs.h"
#include "support/platform/SeededRandom.h"
#include "support/platform/qt/QtEventLoop.h"
#include "support/platform/qt/QtPictureHolder.h"
#include "board/qt/QtPictureStore.h"
#include "session/BoardFocus.h"
#include "session/GameBuilder.h"
#include "session/GameSession.h"
#include "session/HeadlessSessionView.h"

#include <QApplication>
#include <QEvent>
#include <QMouseEvent>
#include <QImage>
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <memory>

namespace {

using namespace tolva;

// Counts the events, so that a run can tell the board really played.
class CountingListener final : public BoardListener {
public:
    int Events = 0;
    void BricksRemoved(std::int16_t) override { ++Events; }
    void MouseMove(std::int16_t, std::int16_t) override { ++Events; }
    void GameOver() override { ++Events; }
    void NewScore(double) override { ++Events; }
    void NewSpell(std::int16_t) override { ++Events; }
    void NewLevel(std::int16_t) override { ++Events; }
    void SpellUsed(std::int16_t) override { ++Events; }
    void BonusScore(double, std::int16_t) override { ++Events; }
    void BonusTimes(std::int16_t) override { ++Events; }
    void CanDoNextMove() override { ++Events; }
    void ResourceLoaded(const std::string&) override { ++Events; }
    void SpellInUse(bool) override { ++Events; }
    void RemoveClick(std::int16_t) override { ++Events; }
    void SpellClick(std::int16_t, std::int16_t) override { ++Events; }
};

// Counts the paint events of a widget, so that a run shows the screen really was painted.
class PaintCounter final : public QObject {
public:
    int Paints = 0;
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) ++Paints;
        return QObject::eventFilter(watched, event);
    }
};

QImage Solid(int width, int height, QRgb colour) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(colour);
    return image;
}

// Gives the board plain pictures and a 40 x 40 level whose cell (x, y) is brick(x, y),
// starts it, and shows it on the widget.
template <typename Brick>
void StartOnScreen(TolvaBoard& board, LevelModule& game, BoardWidget& widget, PaintCounter& painted, Brick brick) {
    for (int i = 0; i < 10; ++i)
        dynamic_cast<QtPictureHolder&>(board.Gfx(i)).SetImage(Solid(25, 25, qRgb(20 * i, 255 - 20 * i, 90)));
    QtPictureHolder back("eBack");
    back.SetImage(Solid(500, 500, qRgb(10, 30, 60)));
    board.SetBackPicture(back);
    LevelRecord& level = game.Levels[0];
    level.LevelName = "BENCH";
    level.levelbricks = 40;
    for (int x = 0; x < 40; ++x)
        for (int y = 0; y < 40; ++y) level.BrickGrid(x, y) = static_cast<std::int16_t>(brick(x, y));
    std::int16_t first = 1;
    board.NewGame(first);
    widget.show();
    QApplication::processEvents();
    widget.installEventFilter(&painted);
}

// A 40 x 40 level of ten colours on the standard 500 x 500 background, on screen.
struct BoardOnScreen {
    QtEventLoop Loop;
    BoardWidget Widget;
    QtPictureStore Pictures{Loop, &Widget};
    RecordingSoundEffects Sound;
    ScriptedDialogs Dialog;
    SeededRandom Rng{7};
    GameSettings Settings;
    std::unique_ptr<LevelModule> Game = std::make_unique<LevelModule>();
    CountingListener Events;
    PaintCounter Painted;
    std::unique_ptr<TolvaBoard> Board;

    BoardOnScreen() {
        Board = std::make_unique<TolvaBoard>(*Game, Settings, BoardPlatform{Loop, Widget, Pictures, Sound, Dialog, Rng}, Events);
        Widget.AttachBoard(Board.get());
        StartOnScreen(*Board, *Game, Widget, Painted, [](int x, int y) { return (x * 7 + y * 3) % 10; });
    }
    ~BoardOnScreen() {
        Widget.AttachBoard(nullptr);
        Board.reset();
    }
};

void BM_FullRepaint40(benchmark::State& state) {
    BoardOnScreen screen;
    for (auto _ : state) {
        screen.Board->DrawBoard(-1, -1, false);
        screen.Widget.repaint();
    }
    state.counters["paints"] = benchmark::Counter(screen.Painted.Paints, benchmark::Counter::kAvgIterations);
    state.counters["events"] = screen.Events.Events;
}
BENCHMARK(BM_FullRepaint40)->Unit(benchmark::kMicrosecond);

// A move: a group of 40 cells goes and comes back, so every pass has 40 changed cells,
// and the screen gets only the rectangle around them, as in play.
void BM_MoveRepaint40(benchmark::State& state) {
    BoardOnScreen screen;
    bool holes = false;
    for (auto _ : state) {
        holes = !holes;
        for (int x = 10; x < 30; ++x)
            for (int y = 19; y < 21; ++y)
                screen.Board->Bricks(x, y) = holes ? CellEmpty : screen.Game->Levels[0].BrickGrid(x, y);
        screen.Board->DrawBoard(-1, -1, true);
        QApplication::processEvents();   // Qt paints just the area the move asked for
    }
    state.counters["paints"] = benchmark::Counter(screen.Painted.Paints, benchmark::Counter::kAvgIterations);
}
BENCHMARK(BM_MoveRepaint40)->Unit(benchmark::kMicrosecond);

// The session's other partners, which a pointer sweep never reaches.
class QuietServices final : public HiscoreService, public IdleAnimation {
public:
    void CheckIfHiScore(double, std::int16_t) override {}
    void PrintHiScore(std::int16_t, std::int32_t, std::int32_t) override {}
    std::int16_t CheckHiscorePlace(double) const override { return -1; }
    void RestartIdle() override {}
};

// A 40 x 40 board of four colours in random groups, played by a session, with the group
// under the pointer outlined on the real widget.
struct FocusOnScreen {
    QtEventLoop Loop;
    BoardWidget Widget;
    QtPictureStore Pictures{Loop, &Widget};
    RecordingSoundEffects Sound;
    ScriptedDialogs Dialog;
    SeededRandom Rng{7};
    GameSettings Settings;
    std::unique_ptr<LevelModule> Game = std::make_unique<LevelModule>();
    HeadlessSessionView View;
    QuietServices Services;
    StatLog Stats{"/dev/null"};
    WindowOpener Windows;
    PaintCounter Painted;
    GameBuilder Built{GameParts{*Game, Settings, {Loop, Widget, Pictures, Sound, Dialog, Rng}, View,
                                SessionServices{Services, Stats, Services, Windows}}};
    TolvaBoard& Board = Built.BuildBoard();
    BoardFocus* Focus = &Built.Focus();

    FocusOnScreen() {
        Widget.AttachBoard(&Board);
        Widget.AttachMarks(Focus);
        Focus->SetMarksView(&Widget);
        std::uint32_t seed = 12345;
        StartOnScreen(Board, *Game, Widget, Painted, [&seed](int, int) {
            seed = seed * 1103515245u + 12345u;
            return static_cast<int>((seed >> 16) % 4);
        });
    }
    ~FocusOnScreen() {
        Widget.AttachMarks(nullptr);
        Widget.AttachBoard(nullptr);
    }
};

// The pointer swept over every cell of a 40 x 40 board, row by row, with what each step
// shows brought to the screen: the cost of one step of the sweep, outline and repaint.
void BM_PointerSweep40(benchmark::State& state) {
    FocusOnScreen screen;
    screen.Settings.ShowGroup = state.range(0) != 0;
    const double cell = 500.0 / 40;
    std::int64_t moves = 0;
    std::int64_t outlined = 0;
    for (auto _ : state) {
        for (int y = 0; y < 40; ++y)
            for (int x = 0; x < 40; ++x) {
                const QPointF at((x + 0.5) * cell, (y + 0.5) * cell);
                QMouseEvent move(QEvent::MouseMove, at, screen.Widget.mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                                 Qt::NoModifier);
                QApplication::sendEvent(&screen.Widget, &move);
                QApplication::processEvents();
                outlined += screen.Focus->Marks().Group.empty() ? 0 : 1;
                ++moves;
            }
    }
    state.SetItemsProcessed(moves);
    state.counters["outlined%"] = 100.0 * static_cast<double>(outlined) / static_cast<double>(moves);
    state.counters["paints/move"] = static_cast<double>(screen.Painted.Paints) / static_cast<double>(moves);
}
BENCHMARK(BM_PointerSweep40)->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    if (std::getenv("QT_QPA_PLATFORM") == nullptr) setenv("QT_QPA_PLATFORM", "offscreen", 1);
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
