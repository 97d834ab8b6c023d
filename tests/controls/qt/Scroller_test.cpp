// The slider: its value arithmetic without pixels, then the control under the mouse and
// the keys. Mouse events go straight to the widget that holds the mouse, as Qt's grab of
// a pressed widget would send them.
#include "qtsupport/WidgetTestKit.h"
#include "controls/Scroller.h"
#include "controls/ScrollerValue.h"
#include "support/platform/HeadlessEventLoop.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

using namespace tolva;
using tolva::testing::ShownAt;
using Seen = std::vector<std::string>;

namespace {

// A value model of 0..100 on a track of 211 with a knob of 11: r = 200.
struct Model {
    ScrollerValue V;
    Seen Events;
    Model(int min = 0, int max = 100) {
        V.SetLengths(211, 11);
        V.SetMax(max);
        V.SetMin(min);
        V.OnScroll = [this](std::int16_t v) { Events.push_back("scroll " + std::to_string(v)); };
        V.OnAfterScroll = [this](std::int16_t v) { Events.push_back("after " + std::to_string(v)); };
    }
    // Drags the knob from where it stands to p and lets go.
    void DragTo(double p) {
        V.KnobPress(0);
        V.KnobMove(p - V.KnobPos());
        V.KnobRelease();
    }
};

void Send(QWidget* target, QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::MouseButtons held,
          Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QMouseEvent event(type, at, target->mapToGlobal(at), button, held, modifiers);
    QApplication::sendEvent(target, &event);
}
void Press(QWidget* w, QPointF at, Qt::MouseButton b = Qt::LeftButton, Qt::KeyboardModifiers m = Qt::NoModifier) {
    Send(w, QEvent::MouseButtonPress, at, b, b, m);
}
void Move(QWidget* w, QPointF at, Qt::MouseButton held = Qt::LeftButton) {
    Send(w, QEvent::MouseMove, at, Qt::NoButton, held);
}
void Release(QWidget* w, QPointF at, Qt::MouseButton b = Qt::LeftButton) { Send(w, QEvent::MouseButtonRelease, at, b, Qt::NoButton); }
void Key(QWidget* w, int key, Qt::KeyboardModifiers m) {
    QKeyEvent event(QEvent::KeyPress, key, m);
    QApplication::sendEvent(w, &event);
}

// A horizontal slider 211 wide (r = 200 with the built-in knob) of 0..100 in a shown
// window, its events written down.
struct Slider {
    HeadlessEventLoop Loop;
    QWidget Window;
    Scroller Control{Loop, &Window};
    Seen Events;
    // The entry the set menu answers with; empty: the menu is closed without a choice.
    QString MenuChoice;

    Slider() {
        Window.resize(300, 100);
        Control.setGeometry(10, 10, 211, 40);
        Control.SetMax(100);
        QObject::connect(&Control, &Scroller::Scroll, [this](int v) { Events.push_back("scroll " + std::to_string(v)); });
        QObject::connect(&Control, &Scroller::AfterScroll, [this](int v) { Events.push_back("after " + std::to_string(v)); });
        QObject::connect(&Control, &Scroller::MouseDown, [this](std::int16_t b, std::int16_t s, float x, float y) {
            Events.push_back("down " + Args(b, s, x, y));
        });
        QObject::connect(&Control, &Scroller::MouseUp, [this](std::int16_t b, std::int16_t s, float x, float y) {
            Events.push_back("up " + Args(b, s, x, y));
        });
        Control.SetMenuRunner([this](QMenu& menu, const QPoint&) {
            if (MenuChoice.isEmpty()) return;
            menu.findChild<QAction*>(MenuChoice)->trigger();
        });
        Window.show();
        Events.clear();
    }
    static std::string Args(int b, int s, float x, float y) {
        return std::to_string(b) + "," + std::to_string(s) + "," + std::to_string(int(x)) + "," + std::to_string(int(y));
    }
    QWidget* Knob() { return Control.Knob(); }
};

} // namespace

TEST(ScrollerValue, ReadsTheKnobWithTiesToEvenAndTheMinPlusMinQuirk) {
    Model m;
    m.DragTo(101);   // 101 * 100 / 200 = 50.5
    EXPECT_EQ(m.V.Value(), 50);
    m.DragTo(103);   // 51.5
    EXPECT_EQ(m.V.Value(), 52);
    m.DragTo(200);
    EXPECT_EQ(m.V.Value(), 100);

    // The settings window's delay slider: at the near end the value is Min + Min.
    Model delay(1, 1000);
    delay.DragTo(0);
    EXPECT_EQ(delay.V.Value(), 2);
    delay.DragTo(200);
    EXPECT_EQ(delay.V.Value(), 1000);
    // A Min so high that Min + Min would not fit 16 bits is mended to Max, not wrapped.
    Model high(20000, 32766);
    high.DragTo(0);
    EXPECT_EQ(high.V.Value(), 32766);
}

TEST(ScrollerValue, MendsMinMaxAndValueAndPlacesTheKnobFromOutside) {
    Model m;
    m.V.SetMax(40000);
    EXPECT_EQ(m.V.Max(), 32766);
    m.V.SetMax(-3);   // below Min + 1
    EXPECT_EQ(m.V.Max(), 1);
    m.V.SetMax(100);
    m.V.SetMin(-5);
    EXPECT_EQ(m.V.Min(), 0);
    m.V.SetMin(500);   // above Max - 1
    EXPECT_EQ(m.V.Min(), 99);
    EXPECT_EQ(m.V.Value(), 99);   // lifted to the new Min
    m.V.SetMin(0);

    m.Events.clear();
    m.V.SetValue(25);
    EXPECT_DOUBLE_EQ(m.V.KnobPos(), 50);
    m.V.SetValue(1000);
    EXPECT_EQ(m.V.Value(), 100);
    EXPECT_DOUBLE_EQ(m.V.KnobPos(), 200);
    EXPECT_EQ(m.Events, (Seen{"scroll 25", "scroll 100"}));
    // Lowering Max lowers the value with it and moves the knob there.
    m.V.SetMax(50);
    EXPECT_EQ(m.V.Value(), 50);
    EXPECT_DOUBLE_EQ(m.V.KnobPos(), 200);
    m.V.SetMax(100);
    // Max moved up does not move the knob; the next setValue does.
    EXPECT_DOUBLE_EQ(m.V.KnobPos(), 200);
    m.V.setValue();
    EXPECT_DOUBLE_EQ(m.V.KnobPos(), 100);

    // While the knob is dragged, a value from outside changes the value, not the knob.
    m.V.KnobPress(0);
    m.V.SetValue(10);
    EXPECT_EQ(m.V.Value(), 10);
    EXPECT_DOUBLE_EQ(m.V.KnobPos(), 100);
    m.V.KnobRelease();

    // The middle of the menu rounds ties to even.
    Model odd(0, 5);
    odd.V.SetToMid();
    EXPECT_EQ(odd.V.Value(), 2);
    Model seven(0, 7);
    seven.V.SetToMid();
    EXPECT_EQ(seven.V.Value(), 4);

    // A track no longer than the knob has no travel: no division by 0.
    ScrollerValue narrow;
    narrow.SetLengths(8, 11);
    narrow.SetMax(10);
    narrow.SetValue(7);
    EXPECT_EQ(narrow.KnobPos(), 0);
    narrow.StepKey(true);
    EXPECT_EQ(narrow.KnobPos(), 0);
    EXPECT_EQ(narrow.Value(), 0);
}

TEST(ScrollerValue, TrackPressAndKeysCentreTheKnobWithinTheEnds) {
    Model m;
    m.V.TrackPress(3);   // the knob's middle cannot reach the click: it stops at the end
    EXPECT_DOUBLE_EQ(m.V.KnobPos(), 0);
    m.V.TrackPress(208);
    EXPECT_DOUBLE_EQ(m.V.KnobPos(), 200);
    m.V.TrackRelease();
    EXPECT_FALSE(m.V.TrackPressed());

    // Plus: a track press one unit past the far edge, so half a knob and one further.
    m.V.SetValue(50);
    m.Events.clear();
    m.V.StepKey(true);
    EXPECT_DOUBLE_EQ(m.V.KnobPos(), 106);   // put back by the value: 53 * 2
    EXPECT_EQ(m.V.Value(), 53);   // 53.25
    // No flag is set, so both assignments move the knob again and raise Scroll.
    EXPECT_EQ(m.Events, (Seen{"scroll 53", "scroll 53", "scroll 53"}));
    m.V.StepKey(false);
    m.V.StepKey(false);
    EXPECT_EQ(m.V.Value(), 47);
    m.V.SetValue(1);
    m.V.StepKey(false);
    EXPECT_DOUBLE_EQ(m.V.KnobPos(), 0);
}

TEST(Scroller, BuiltInKnobsAndSizeToKnob) {
    // The built-in knob is lit from the top left.
    const QImage knob = Scroller::DefKnob(0);
    const QColor lit(knob.pixel(1, 1)), shade(knob.pixel(9, 19)), body(knob.pixel(3, 8));
    EXPECT_GT(lit.lightness(), body.lightness());
    EXPECT_LT(shade.lightness(), body.lightness());
    Slider s;
    EXPECT_EQ(s.Control.height(), 21);   // a horizontal slider takes the knob's height
    EXPECT_EQ(s.Knob()->size(), QSize(11, 21));
    EXPECT_DOUBLE_EQ(s.Control.FreeLength(), 200);
    // The track: back colour, and a centre line that can be switched off.
    s.Control.SetBackColor(QColor(0, 0, 90));
    EXPECT_EQ(ShownAt(s.Control, 100, 3), 0x00005Au);
    EXPECT_NE(ShownAt(s.Control, 100, 10), 0x00005Au);
    s.Control.SetCenterLine(false);
    EXPECT_EQ(ShownAt(s.Control, 100, 10), 0x00005Au);

    // Turned vertical and given a length, it takes the vertical knob's width.
    s.Control.SetDirection(1);
    s.Control.resize(40, 161);
    EXPECT_EQ(s.Control.size(), QSize(21, 161));
    EXPECT_EQ(s.Knob()->size(), QSize(21, 11));
    EXPECT_DOUBLE_EQ(s.Control.FreeLength(), 150);
    s.Control.SetValue(50);
    EXPECT_EQ(s.Knob()->pos(), QPoint(0, 75));

    // A custom knob replaces the built-in one until it is taken away again.
    s.Control.SetScrollKnobPicture(tolva::testing::SolidImage(21, 31, 0xFF102030));
    EXPECT_EQ(s.Knob()->size(), QSize(21, 31));
    s.Control.SetScrollKnobPicture(QImage());
    EXPECT_EQ(s.Knob()->size(), QSize(21, 11));
}

TEST(Scroller, TrackPressJumpsTheKnobAndTurnsIntoADragThatKeepsTrackPressed) {
    Slider s;
    Press(&s.Control, {60.5, 7}, Qt::LeftButton, Qt::ShiftModifier);
    EXPECT_DOUBLE_EQ(s.Control.KnobPos(), 55);
    EXPECT_TRUE(s.Control.TrackPressed());
    EXPECT_TRUE(s.Control.KnobDragging());
    // MouseDown twice: the knob's press at 0, 0 first, then the track's own.
    EXPECT_EQ(s.Events, (Seen{"scroll 28", "down 1,0,0,0", "down 1,1,60,7"}));
    // The stroke drags the knob: its left edge goes where the mouse is, it stops at either
    // end, and each move raises Scroll, also where the knob stays.
    s.Events.clear();
    Move(&s.Control, {400, 7});
    EXPECT_DOUBLE_EQ(s.Control.KnobPos(), 200);
    EXPECT_EQ(s.Knob()->x(), 200);
    Move(&s.Control, {300, 7});
    Move(&s.Control, {-400, 7});
    EXPECT_DOUBLE_EQ(s.Control.KnobPos(), 0);
    Move(&s.Control, {120, 7});
    EXPECT_DOUBLE_EQ(s.Control.KnobPos(), 120);
    Release(&s.Control, {120, 7});
    EXPECT_EQ(s.Events, (Seen{"scroll 100", "scroll 100", "scroll 0", "scroll 60", "up 1,0,0,7"}));
    EXPECT_FALSE(s.Control.KnobDragging());
    EXPECT_TRUE(s.Control.TrackPressed());   // the release was the knob's

    // Until a release lands on the track, a value from outside does not move the knob.
    s.Control.SetValue(10);
    EXPECT_EQ(s.Control.Value(), 10);
    EXPECT_DOUBLE_EQ(s.Control.KnobPos(), 120);
    // A right click ends on the track and clears the flag.
    Press(&s.Control, {30, 7}, Qt::RightButton);
    Release(&s.Control, {30, 7}, Qt::RightButton);
    EXPECT_FALSE(s.Control.TrackPressed());
    s.Control.SetValue(10);
    EXPECT_DOUBLE_EQ(s.Control.KnobPos(), 20);
    Move(s.Knob(), {50, 7}, Qt::NoButton);   // a move after the release drags nothing
    EXPECT_DOUBLE_EQ(s.Control.KnobPos(), 20);
}

TEST(Scroller, RightClickRunsTheMenuThenAfterScrollTwiceAndLetsEventsRun) {
    Slider s;
    EXPECT_EQ(s.Control.Menu()->title(), "File");
    s.Control.SetMenuCaption("Low", "Middle", "High");
    EXPECT_EQ(s.Control.Menu()->findChild<QAction*>("settomid")->text(), "Middle");
    // Something posted during AfterScroll is delivered before MouseUp.
    QObject::connect(&s.Control, &Scroller::AfterScroll, [&s] { s.Loop.Post([&s] { s.Events.push_back("posted"); }); });

    s.MenuChoice = "settomid";
    Press(s.Knob(), {3, 4}, Qt::RightButton);
    EXPECT_EQ(s.Control.Value(), 50);
    EXPECT_EQ(s.Events, (Seen{"scroll 50", "scroll 50", "scroll 50", "after 50", "after 50", "posted", "posted",
                              "up 2,0,3,4", "down 2,0,3,4"}));
    Release(s.Knob(), {3, 4}, Qt::RightButton);   // the knob's own release: MouseUp again
    EXPECT_EQ(s.Events.back(), "up 2,0,3,4");

    // With Min above 0 the menu's 0% reads back as Min + Min, as the mouse does.
    s.Control.SetMin(1);
    s.Control.SetMax(1000);
    s.MenuChoice = "settomin";
    Press(&s.Control, {150, 5}, Qt::RightButton);
    Release(&s.Control, {150, 5}, Qt::RightButton);
    EXPECT_EQ(s.Control.Value(), 2);
    s.MenuChoice = "settomax";
    Press(&s.Control, {150, 5}, Qt::RightButton);
    EXPECT_EQ(s.Control.Value(), 1000);
    Release(&s.Control, {150, 5}, Qt::RightButton);

    // A menu closed without a choice still reads the value back and raises AfterScroll.
    s.MenuChoice.clear();
    s.Events.clear();
    Press(&s.Control, {150, 5}, Qt::RightButton);
    EXPECT_EQ(std::count(s.Events.begin(), s.Events.end(), "after 1000"), 2);

    // With the menu switched off a right press only raises MouseDown.
    s.Control.SetMenuEnabled(false);
    s.Events.clear();
    s.MenuChoice = "settomin";
    Press(&s.Control, {150, 5}, Qt::RightButton);
    EXPECT_EQ(s.Events, (Seen{"down 2,0,150,5"}));
    EXPECT_EQ(s.Control.Value(), 1000);
}

TEST(Scroller, KeypadPlusAndMinusStepTheKnobOtherKeysDoNothing) {
    Slider s;
    s.Control.SetValue(50);
    s.Events.clear();
    Key(&s.Control, Qt::Key_Plus, Qt::KeypadModifier);
    EXPECT_EQ(s.Control.Value(), 53);
    Key(&s.Control, Qt::Key_Minus, Qt::KeypadModifier);
    EXPECT_EQ(s.Control.Value(), 50);
    // No flag, no capture, no MouseDown.
    for (const std::string& event : s.Events) EXPECT_EQ(event.rfind("scroll", 0), 0u) << event;
    EXPECT_FALSE(s.Control.TrackPressed());
    Key(&s.Control, Qt::Key_Plus, Qt::NoModifier);   // the plus of the main keys
    Key(&s.Control, Qt::Key_Right, Qt::KeypadModifier);
    EXPECT_EQ(s.Control.Value(), 50);
}
