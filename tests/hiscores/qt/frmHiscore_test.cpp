// The entry of initials: its keys, how it closes, where it stands and what it shows. The
// modal Ask, answered with typed keys, is driven by the main window's game test.
#include "qtsupport/WidgetTestKit.h"
#include "hiscores/qt/frmHiscore.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QTest>
#include <gtest/gtest.h>

#include <vector>

using tolva::frmHiscore;
using tolva::testing::PictureFolder;

namespace {

constexpr QRgb Background = 0xFF2850A0;

// A key as the keyboard gives it: a key code and its text.
void Press(QWidget& window, const QString& text, int key = Qt::Key_unknown) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(&window, &press);
}

QString Shown(const frmHiscore& window) { return window.Picture1()->text(); }

} // namespace

TEST(frmHiscore, TypesThreeCapitalsAndClosesAtTheThird) {
    PictureFolder game({{"data/2.bmp", frmHiscore::FormWidth, frmHiscore::FormHeight, Background}});
    frmHiscore window(QRect(100, 50, 500, 500));
    window.show();
    EXPECT_LE((window.geometry().center() - QRect(100, 50, 500, 500).center()).manhattanLength(), 2);
    EXPECT_EQ(window.grab().toImage().pixel(5, 5), Background);

    QTest::keyClick(&window, Qt::Key_A);
    EXPECT_EQ(Shown(window), "A");
    EXPECT_FALSE(window.close());   // the window system's close is turned away
    Press(window, ",");
    Press(window, ".");
    Press(window, "", Qt::Key_Shift);
    Press(window, QString(QChar(0x20AC)));  // the euro sign is not in the code page
    EXPECT_EQ(Shown(window), "A");
    Press(window, QString(QChar(0xE9)));    // e acute comes out as a capital
    EXPECT_EQ(Shown(window), QString::fromLatin1("A\xC9"));
    Press(window, QString(QChar(0xDF)));    // sharp s has no capital in the code page
    Press(window, "z");                     // a fourth never gets in
    EXPECT_EQ(window.EnteredInitials(), "A\xC9\xDF");
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(window.result(), QDialog::Accepted);
}

TEST(frmHiscore, EnterEscapeAndBackspaceAndNoBackground) {
    PictureFolder bare;   // no data\2.bmp: the window is black, and takes keys all the same
    const struct { const char* name; std::vector<int> keys; const char* initials; } cases[] = {
        {"enter at once", {Qt::Key_Return}, "   "},
        {"backspace", {Qt::Key_Backspace, Qt::Key_Q, Qt::Key_Backspace, Qt::Key_B, Qt::Key_Escape}, "B  "},
    };
    for (const auto& c : cases) {
        frmHiscore window{QRect()};
        window.show();
        EXPECT_EQ(window.grab().toImage().pixel(5, 5), qRgb(0, 0, 0)) << c.name;
        for (std::size_t i = 0; i + 1 < c.keys.size(); ++i) QTest::keyClick(&window, Qt::Key(c.keys[i]));
        EXPECT_TRUE(window.isVisible()) << c.name;
        QTest::keyClick(&window, Qt::Key(c.keys.back()));
        EXPECT_EQ(window.EnteredInitials(), c.initials) << c.name;
        EXPECT_FALSE(window.isVisible()) << c.name;
    }
}
