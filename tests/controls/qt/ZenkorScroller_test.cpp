// The rolling text on the virtual clock: the hidden picture and its blank end, the length
// of a pass, repeats, the soft pause and the mouse, the shapes of the text (bars, the line
// to the left, word wrap, shadows, alignments), reading a file, and the errors it reports.
#include "controls/ZenkorScroller.h"
#include "support/platform/HeadlessEventLoop.h"
#include "support/TempFolder.h"
#include "support/ZenkorModule.h"
#include "testsupport/ScriptedDialogs.h"

#include <QTest>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <fstream>

using namespace tolva;

namespace {

constexpr QRgb Black = 0xFF000000, White = 0xFFFFFFFF, Yellow = 0xFFFFFF00;

QFont SharpFont() {
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(11);
    font.setStyleStrategy(QFont::NoAntialias);
    return font;
}

// White on black, no border, no shadow, a step every 10 ms, upward and centred.
ZenkorScrollerProperties Plain(const std::string& text) {
    ZenkorScrollerProperties p;
    p.BackColor = QColor(Black);
    p.Font = SharpFont();
    p.UseFont = true;
    p.BorderStyle = 0;
    p.Text = text;
    p.FontColor = QColor(White);
    p.ShadowColor = QColor(Yellow);
    p.ShadowSize = 0;
    p.ScrollSpeed = 10;
    return p;
}

// A control of 400 x 98 in a shown window, its passes written down with their time and
// the picture they left.
struct Roller {
    HeadlessEventLoop Loop;
    ScriptedDialogs Dialogs;
    QWidget Window;
    ZenkorScroller Control{Loop, Dialogs, &Window};
    std::vector<std::int64_t> FinishedAt;
    QImage ShownAtFinish;
    std::vector<std::string> Events;

    explicit Roller(const ZenkorScrollerProperties& p, int width = 400, int height = 98) {
        Window.resize(width + 20, height + 20);
        Control.ReadProperties(p);
        Control.setGeometry(0, 0, width, height);
        QObject::connect(&Control, &ZenkorScroller::ScrollFinished, [this] {
            FinishedAt.push_back(Loop.NowMs());
            ShownAtFinish = Control.VisiblePicture();
        });
        QObject::connect(&Control, &ZenkorScroller::Click, [this] { Events.push_back("click"); });
        QObject::connect(&Control, &ZenkorScroller::MouseDown, [this](std::int16_t b, std::int16_t, float, float) {
            Events.push_back("down " + std::to_string(b));
        });
        Window.show();
    }
    int H() const { return Control.LineHeight(); }
};

// Whether the last message box shown holds `text`.
bool LastBoxSays(const ScriptedDialogs& dialogs, const std::string& text) {
    return !dialogs.ShownBoxes().empty() && dialogs.ShownBoxes().back().Text.find(text) != std::string::npos;
}

bool AllOneColour(const QImage& image, QRect area, QRgb colour) {
    area = area.intersected(image.rect());
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            if (image.pixel(x, y) != colour) return false;
    return true;
}

// The smallest rectangle around the pixels of `colour`.
QRect BoxOf(const QImage& image, QRgb colour) {
    QRect box;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) == colour) box |= QRect(x, y, 1, 1);
    return box;
}

} // namespace

TEST(ZenkorScroller, HiddenPictureHoldsEveryLineAndABlankEndThatWipesThePassAway) {
    Roller r(Plain("TOLVA|II|credits"));
    r.Control.SetShadowSize(2);
    r.Control.SetShadowDirection(1);
    r.Control.StartScroll();
    const int H = r.H(), S = 2, n = 2;
    const QImage& hidden = r.Control.HiddenPicture();
    EXPECT_EQ(hidden.height(), (H + S) * n + r.Control.ScaleHeight() + 20);
    const int widest = QFontMetrics(SharpFont()).horizontalAdvance("credits");
    EXPECT_EQ(hidden.width(), widest + 2 * S + 20);
    // The text and its shadow are there; below the last line the picture is blank.
    EXPECT_TRUE(BoxOf(hidden, White).isValid());
    EXPECT_TRUE(BoxOf(hidden, Yellow).isValid());
    EXPECT_TRUE(AllOneColour(hidden, QRect(0, (H + S) * n + H + S, hidden.width(), hidden.height()), Black));
    EXPECT_FALSE(AllOneColour(hidden, QRect(0, (H + S) * n, hidden.width(), H + S), Black));

    // One pass: ScaleHeight + (H + S) * n + 21 steps of 10 ms, and it leaves the visible
    // area blank. The next pass starts again from the bottom.
    const int steps = r.Control.ScaleHeight() + (H + S) * n + 21;
    r.Loop.Advance(10 * 50);
    EXPECT_FALSE(AllOneColour(r.Control.VisiblePicture(), r.Control.VisiblePicture().rect(), Black));
    r.Loop.Advance(10 * (steps - 1 - 50));
    EXPECT_TRUE(r.FinishedAt.empty());
    r.Loop.Advance(10);
    ASSERT_EQ(r.FinishedAt, (std::vector<std::int64_t>{10 * steps}));
    EXPECT_TRUE(AllOneColour(r.ShownAtFinish, r.ShownAtFinish.rect(), Black));
    EXPECT_EQ(r.Control.ScrollY(), float(r.Control.ScaleHeight()));
    EXPECT_TRUE(r.Control.IsScrolling());   // for ever
    r.Loop.Advance(10 * steps);
    EXPECT_EQ(r.FinishedAt.size(), 2u);
    EXPECT_EQ(r.FinishedAt[1], 20 * steps);
    EXPECT_TRUE(r.Dialogs.ShownBoxes().empty());
}

TEST(ZenkorScroller, RepeatCountStopsAtTheStartOfTheNextPassAndStopScrollKeepsThePicture) {
    Roller r(Plain("one|two"));
    r.Control.SetScrollRepeatCount(2);
    r.Control.StartScroll();
    const int steps = r.Control.ScaleHeight() + r.H() + 21;
    r.Loop.Advance(10 * steps * 5);
    EXPECT_EQ(r.FinishedAt, (std::vector<std::int64_t>{10 * steps, 20 * steps}));
    EXPECT_FALSE(r.Control.IsScrolling());
    EXPECT_EQ(r.Control.PassesDone(), 0.0f);
    EXPECT_EQ(r.Control.ScrollY(), float(r.Control.ScaleHeight()));

    // StopScroll in the middle of a pass: the last step stays on screen.
    r.Control.SetScrollRepeatCount(0);
    r.Control.StartScroll();
    r.Loop.Advance(10 * 60);
    const QImage before = r.Control.VisiblePicture();
    EXPECT_FALSE(AllOneColour(before, before.rect(), Black));
    r.Control.StopScroll();
    r.Loop.Advance(1000);
    EXPECT_EQ(r.Control.VisiblePicture(), before);
    EXPECT_EQ(r.Control.ScrollY(), float(r.Control.ScaleHeight()));
    // Ref clears it.
    r.Control.Ref();
    EXPECT_TRUE(AllOneColour(r.Control.VisiblePicture(), before.rect(), Black));
}

TEST(ZenkorScroller, PauseSlowsToAStopInStepsOf15AndGoesOnAtFullSpeedAtOnce) {
    ZenkorScrollerProperties p = Plain("a|b|c");
    p.ScrollSpeed = 40;
    Roller r(p);
    r.Control.StartScroll();
    // The right button runs the text fast while it is held; the left raises Click first.
    QTest::mousePress(&r.Control, Qt::RightButton, Qt::NoModifier, QPoint(10, 10));
    EXPECT_EQ(r.Control.StepInterval(), ZenkorScroller::FastInterval);
    r.Loop.Advance(50);
    EXPECT_EQ(r.Control.ScrollY(), float(r.Control.ScaleHeight() - 10));
    QTest::mouseRelease(&r.Control, Qt::RightButton, Qt::NoModifier, QPoint(10, 10));
    QTest::mousePress(&r.Control, Qt::LeftButton, Qt::NoModifier, QPoint(12, 12));
    EXPECT_EQ(r.Control.StepInterval(), 40);
    EXPECT_EQ(r.Events, (std::vector<std::string>{"down 2", "click", "down 1"}));
    r.Loop.Advance(400);
    EXPECT_EQ(r.Control.ScrollY(), float(r.Control.ScaleHeight() - 20));
    r.Control.Pause();
    EXPECT_TRUE(r.Control.PauseIsWanted());
    r.Loop.Advance(5);
    EXPECT_EQ(r.Control.StepInterval(), 55);
    r.Loop.Advance(5);
    EXPECT_EQ(r.Control.StepInterval(), 70);
    EXPECT_TRUE(r.Control.IsScrolling());
    r.Loop.Advance(5);
    EXPECT_FALSE(r.Control.IsScrolling());
    EXPECT_EQ(r.Control.SlowingInterval(), 70);
    const float stoodAt = r.Control.ScrollY();
    // A right button during the pause speeds nothing up.
    QTest::mousePress(&r.Control, Qt::RightButton, Qt::NoModifier, QPoint(10, 10));
    EXPECT_EQ(r.Control.StepInterval(), 70);
    r.Loop.Advance(2000);
    EXPECT_EQ(r.Control.ScrollY(), stoodAt);
    EXPECT_EQ(r.Loop.RunningTimers(), 0);

    // Going on: at once, and after one slowing tick at the running interval.
    r.Control.Pause();
    EXPECT_TRUE(r.Control.IsScrolling());
    r.Loop.Advance(5);
    EXPECT_EQ(r.Control.StepInterval(), 40);
    r.Loop.Advance(400);
    EXPECT_EQ(r.Control.ScrollY(), stoodAt - 10);

    // Pause twice in quick succession: the second ends the slowing down.
    r.Control.Pause();
    r.Loop.Advance(5);
    r.Control.Pause();
    r.Loop.Advance(5);
    EXPECT_EQ(r.Control.StepInterval(), 40);
    EXPECT_EQ(r.Loop.RunningTimers(), 1);
    r.Loop.Advance(400);
    EXPECT_TRUE(r.Control.IsScrolling());
}

TEST(ZenkorScroller, BarsMakeLinesUpwardAndFourBlanksToTheLeft) {
    Roller r(Plain("A|B"));
    r.Control.StartScroll();
    const int twoLines = r.Control.HiddenPicture().height();
    r.Control.SetText("A|B|");
    EXPECT_EQ(r.Control.Lines(), (std::vector<std::string>{"A", "B", ""}));
    EXPECT_EQ(r.Control.HiddenPicture().height(), twoLines + r.H());

    // Left-aligned, so that the blank stretch behind the line is a whole control wide.
    r.Control.SetTextAlign(0);
    r.Control.SetScrollDirection(2);
    EXPECT_EQ(r.Control.Lines(), (std::vector<std::string>{"A    B    "}));
    const int lineWidth = QFontMetrics(SharpFont()).horizontalAdvance("A    B    ");
    const QImage& hidden = r.Control.HiddenPicture();
    EXPECT_EQ(hidden.height(), r.H() + 0 + 1);
    EXPECT_EQ(hidden.width(), lineWidth + 0 + r.Control.ScaleWidth() + 20);
    EXPECT_EQ(r.Control.HiddenPicturePlace().y(), r.Control.ScaleHeight() / 2 - hidden.height() / 2);
    // A pass to the left: from the right edge until the picture's right end, a blank
    // stretch as wide as the control, has come to the control's right edge.
    r.FinishedAt.clear();
    const std::int64_t start = r.Loop.NowMs();
    r.Loop.Advance(10 * (hidden.width() + 1));
    ASSERT_EQ(r.FinishedAt.size(), 1u);
    EXPECT_EQ(r.FinishedAt[0] - start, 10 * (hidden.width() + 1));
    EXPECT_TRUE(AllOneColour(r.ShownAtFinish, r.ShownAtFinish.rect(), Black));
    // A direction outside the table moves nothing.
    r.Control.SetScrollDirection(7);
    const QImage shown = r.Control.VisiblePicture();
    r.Loop.Advance(5000);
    EXPECT_EQ(r.Control.VisiblePicture(), shown);
}

TEST(ZenkorScroller, WordWrapBreaksAtBlanksKeepsThemAtTheHeadAndCutsLongWords) {
    ZenkorScrollerProperties p = Plain("");
    p.WordWrap = true;
    Roller r(p, 60, 98);
    const QFontMetrics metrics(SharpFont());
    const auto checkWrapped = [&](const std::string& line) {
        r.Control.SetText(line);
        std::string joined;
        for (const std::string& piece : r.Control.Lines()) {
            EXPECT_LE(metrics.horizontalAdvance(QString::fromLatin1(piece.c_str())), 60) << piece;
            joined += piece;
        }
        EXPECT_EQ(joined, line);   // nothing lost, nothing added: no hyphen
        EXPECT_GE(r.Control.Lines().size(), 2u);
    };
    checkWrapped("one two three four");
    EXPECT_EQ(r.Control.Lines()[1][0], ' ');   // broken at a blank: the blank heads the next line
    checkWrapped("WWWWWWWWWWWWWWWWWW");         // a word wider than the control is cut

    // The last blank is remembered from one long line to the next: the second line is
    // first broken at the first line's blank.
    r.Control.SetText("xx xxxxxxxxxxxxxxxxxxxxxx|yyyyyyyyyyyyyyyyyyyyyyyy");
    EXPECT_EQ(r.Control.Lines()[0], "xx");
    EXPECT_EQ(r.Control.Lines()[1][0], ' ');
    const auto& wrapped = r.Control.Lines();
    const auto firstY = std::find_if(wrapped.begin(), wrapped.end(), [](const std::string& s) { return !s.empty() && s[0] == 'y'; });
    ASSERT_NE(firstY, wrapped.end());
    EXPECT_EQ(*firstY, "yy");
    // ... and one that is broken at a blank further on than its own first overflow
    // keeps more than fits.
    r.Control.SetText("one two three four|WWWWWWWWWWWWWWWWWW");
    const auto& pieces = r.Control.Lines();
    const auto firstW = std::find_if(pieces.begin(), pieces.end(), [](const std::string& s) { return !s.empty() && s[0] == 'W'; });
    ASSERT_NE(firstW, pieces.end());
    EXPECT_GT(metrics.horizontalAdvance(QString::fromLatin1(firstW->c_str())), 60);
    // Without wrapping the lines stay whole.
    r.Control.SetWordWrap(false);
    EXPECT_EQ(r.Control.Lines().size(), 2u);
}

TEST(ZenkorScroller, ShadowsLieInTheirDirectionAndAlignmentPlacesTheText) {
    // Where the shadow stack sticks out of the text: the text lies S pixels on in the
    // direction, so the shadow shows on the other side.
    const struct { int direction, dx, dy; } cases[] = {{4, -1, -1}, {0, -1, -1}, {1, 1, 1}, {2, -1, 1}, {3, 1, -1}};
    for (const auto& c : cases) {
        ZenkorScrollerProperties p = Plain("HIH");
        p.ShadowSize = 3;
        p.ShadowDirection = c.direction;
        Roller r(p);
        r.Control.StartScroll();
        const QRect text = BoxOf(r.Control.HiddenPicture(), White);
        const QRect shadow = BoxOf(r.Control.HiddenPicture(), Yellow);
        ASSERT_TRUE(text.isValid() && shadow.isValid()) << c.direction;
        if (c.dx > 0) {
            EXPECT_EQ(shadow.left(), text.left() - 3) << c.direction;
        } else {
            EXPECT_EQ(shadow.right(), text.right() + 3) << c.direction;
        }
        if (c.dy > 0) {
            EXPECT_EQ(shadow.top(), text.top() - 3) << c.direction;
        } else {
            EXPECT_EQ(shadow.bottom(), text.bottom() + 3) << c.direction;
        }
    }
    // No shadow: one print in the font colour.
    Roller plain(Plain("HIH"));
    plain.Control.StartScroll();
    EXPECT_FALSE(BoxOf(plain.Control.HiddenPicture(), Yellow).isValid());

    // Alignment of the hidden picture in the control, and of the lines in it.
    Roller r(Plain("wide wide wide|i"));
    r.Control.SetTextAlign(0);
    EXPECT_EQ(r.Control.HiddenPicturePlace().x(), 1);
    EXPECT_LE(BoxOf(r.Control.HiddenPicture(), White).left(), 3);
    r.Control.SetTextAlign(2);
    EXPECT_EQ(r.Control.HiddenPicturePlace().x(), r.Control.ScaleWidth() - r.Control.HiddenPicture().width());
    const QImage secondLine = r.Control.HiddenPicture().copy(0, r.H(), r.Control.HiddenPicture().width(), r.H());
    EXPECT_GE(BoxOf(secondLine, White).right(), secondLine.width() - 4);
    r.Control.SetTextAlign(1);
    EXPECT_EQ(r.Control.HiddenPicturePlace().x(), r.Control.ScaleWidth() / 2 - r.Control.HiddenPicture().width() / 2);
    // Centred lines: the short one's middle lies near the long one's.
    const QImage& hidden = r.Control.HiddenPicture();
    const QRect wide = BoxOf(hidden.copy(0, 0, hidden.width(), r.H()), White);
    const QRect narrow = BoxOf(hidden.copy(0, r.H(), hidden.width(), r.H()), White);
    EXPECT_NEAR(wide.center().x(), narrow.center().x(), 3);
}

TEST(ZenkorScroller, LoadFromFileTurnsLineEndsIntoBarsAndKeepsTheTextWhenItCannotRead) {
    tolva::testing::TempFolder folder;
    const std::string path = folder.Path() + "/credits.txt";
    std::ofstream(path, std::ios::binary) << "one\r\ntwo\nthree\xE9\r\n";
    Roller r(Plain("before"));
    EXPECT_TRUE(r.Control.LoadFromFile(path));
    EXPECT_EQ(r.Control.Text(), "one|two|three\xE9|");
    EXPECT_EQ(r.Control.Lines().size(), 4u);

    EXPECT_FALSE(r.Control.LoadFromFile(folder.Path() + "/missing.txt"));
    EXPECT_EQ(r.Control.Text(), "one|two|three\xE9|");
    EXPECT_TRUE(r.Dialogs.ShownBoxes().empty());

    // A pipe is no file: missing as well, and never waited on.
    const std::string pipe = folder.Path() + "/pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_FALSE(r.Control.LoadFromFile(pipe));
    EXPECT_TRUE(r.Dialogs.ShownBoxes().empty());

    // There, but too large to read (sparse: it costs no disk): reported, and nothing
    // changes.
    const std::string huge = folder.Path() + "/huge.txt";
    folder.Write("huge.txt", "");
    ASSERT_EQ(::truncate(huge.c_str(), static_cast<off_t>(tolva::MaxOtherFileBytes) + 1), 0);
    EXPECT_FALSE(r.Control.LoadFromFile(huge));
    EXPECT_EQ(r.Control.Text(), "one|two|three\xE9|");
    ASSERT_EQ(r.Dialogs.ShownBoxes().size(), 1u);
    EXPECT_EQ(r.Dialogs.ShownBoxes()[0].Text.rfind(
                  "Error 75 in (User Control) slpTextScroll::Function LoadFromFile\r\n", 0), 0u);
    EXPECT_EQ(r.Dialogs.ShownBoxes()[0].Icon, MessageIcon::Stop);
}

TEST(ZenkorScroller, ValuesItCannotUseAreReportedWithTheRoutinesLabelAndTheRestGoesOn) {
    Roller r(Plain("a|b|c|d|e|f|g|h|i|j|k|l"));
    r.Control.StartScroll();
    const QImage before = r.Control.HiddenPicture();

    // A shadow that climbs faster than the lines: the picture would have no height.
    r.Control.SetShadowSize(-40);
    ASSERT_EQ(r.Dialogs.ShownBoxes().size(), 1u);
    EXPECT_EQ(r.Dialogs.ShownBoxes()[0].Text.rfind("Error 380 in (User Control) slpTextScroll::Function DrawText\r\n", 0),
              0u);
    EXPECT_EQ(r.Control.HiddenPicture().size(), before.size());
    EXPECT_TRUE(r.Control.IsScrolling());   // DrawText went on and switched the timer back

    // A text too long to hold in one picture.
    r.Control.SetShadowSize(0);
    std::string huge = "x";
    for (int i = 0; i < 4000; ++i) huge += "|x";
    r.Control.SetText(huge);
    ASSERT_EQ(r.Dialogs.ShownBoxes().size(), 2u);
    EXPECT_TRUE(LastBoxSays(r.Dialogs, "Error 480 in (User Control) slpTextScroll::Function DrawText"));
    r.Loop.Advance(1000);   // and it still rolls what it has

    // Intervals: none at all, and one beyond 16 bits.
    r.Control.SetText("a|b");
    r.Control.SetScrollSpeed(0);
    EXPECT_TRUE(LastBoxSays(r.Dialogs, "Error 380 in (User Control) slpTextScroll::Property Let ScrollSpeed"));
    EXPECT_EQ(r.Control.StepInterval(), 10);
    const std::size_t shown = r.Dialogs.ShownBoxes().size();
    r.Control.SetScrollSpeed(40000);
    ASSERT_EQ(r.Dialogs.ShownBoxes().size(), shown + 1);
    EXPECT_TRUE(LastBoxSays(r.Dialogs, "Error 6 in (User Control) slpTextScroll::Property Let ScrollSpeed"));
    EXPECT_EQ(r.Control.StepInterval(), 40000);
    r.Control.SetScrollSpeed(25);
    EXPECT_EQ(r.Dialogs.ShownBoxes().size(), shown + 1);
    EXPECT_EQ(r.Control.StepInterval(), 25);
}
