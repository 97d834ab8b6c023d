// The entry of initials: its keys, how it closes, where it stands and what it shows.
#include "hiscores/qt/frmHiscore.h"
#include "support/TempFolder.h"
#include "support/ZenkorModule.h"

#include <QApplication>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>
#include <sys/stat.h>

using tolva::frmHiscore;
using tolva::testing::TempFolder;

namespace {

// A key as the keyboard gives it: a key code and its text.
void Press(QWidget& window, const QString& text, int key = Qt::Key_unknown) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(&window, &press);
}

QString Shown(const frmHiscore& window) { return window.Picture1()->text(); }

// A game folder whose data\2.bmp is one colour.
struct GameFolder {
    TempFolder dir;
    GameFolder() {
        ::mkdir((dir / "data").c_str(), 0755);
        QImage picture(frmHiscore::FormWidth, frmHiscore::FormHeight, QImage::Format_RGB32);
        picture.fill(qRgb(40, 80, 160));
        EXPECT_TRUE(picture.save(QString::fromStdString(dir / "data/2.bmp"), "BMP"));
        tolva::SetAppPath(dir.Path());
    }
};

} // namespace

TEST(frmHiscore, TypesThreeCapitalsAndClosesAtTheThird) {
    GameFolder game;
    frmHiscore window(QRect(100, 50, 500, 500));
    window.show();
    EXPECT_LE((window.geometry().center() - QRect(100, 50, 500, 500).center()).manhattanLength(), 2);
    EXPECT_EQ(window.grab().toImage().pixel(5, 5) | 0xFF000000u, qRgb(40, 80, 160));

    QTest::keyClick(&window, Qt::Key_A);
    EXPECT_EQ(Shown(window), "A");
    Press(window, ",");
    Press(window, ".");
    Press(window, "", Qt::Key_Shift);
    Press(window, QString(QChar(0x20AC)));  // the euro sign is not in the code page
    EXPECT_EQ(Shown(window), "A");
    Press(window, QString(QChar(0xE9)));    // e acute comes out as a capital
    EXPECT_EQ(Shown(window), QString::fromLatin1("A\xC9"));
    Press(window, QString(QChar(0xDF)));    // sharp s has no capital in the code page
    EXPECT_EQ(window.EnteredInitials(), "A\xC9\xDF");
    EXPECT_FALSE(window.isVisible());
}

TEST(frmHiscore, ClosesOnlyByItsKeys) {
    GameFolder game;
    frmHiscore window{QRect()};
    window.show();
    QTest::keyClick(&window, Qt::Key_A);
    EXPECT_FALSE(window.close());  // the window system's close is turned away
    EXPECT_TRUE(window.isVisible());
    QTest::keyClicks(&window, "zqw");
    EXPECT_EQ(window.EnteredInitials(), "AZQ");  // a fourth never gets in
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(window.result(), QDialog::Accepted);
}

TEST(frmHiscore, EnterEscapeAndBackspace) {
    GameFolder game;
    {
        frmHiscore window{QRect()};
        window.show();
        QTest::keyClick(&window, Qt::Key_Return);
        EXPECT_EQ(window.EnteredInitials(), "   ");
        EXPECT_FALSE(window.isVisible());
    }
    {
        frmHiscore window{QRect()};
        window.show();
        QTest::keyClick(&window, Qt::Key_Backspace);  // nothing to take away
        QTest::keyClick(&window, Qt::Key_Q);
        QTest::keyClick(&window, Qt::Key_Backspace);
        EXPECT_EQ(Shown(window), "");
        EXPECT_TRUE(window.isVisible());
        QTest::keyClick(&window, Qt::Key_B);
        QTest::keyClick(&window, Qt::Key_Escape);
        EXPECT_EQ(window.EnteredInitials(), "B  ");
        EXPECT_FALSE(window.isVisible());
    }
}

TEST(frmHiscore, AskWaitsModallyForTheKeys) {
    GameFolder game;
    QTimer::singleShot(0, [] {
        QWidget* modal = QApplication::activeModalWidget();
        ASSERT_NE(modal, nullptr);
        QTest::keyClicks(modal, "x1");
        QTest::keyClick(modal, Qt::Key_Enter);
    });
    EXPECT_EQ(frmHiscore::Ask(QRect(0, 0, 400, 400), nullptr), "X1 ");
}

TEST(frmHiscore, AMissingBackgroundLeavesTheWindowWithoutIt) {
    TempFolder empty;
    tolva::SetAppPath(empty.Path());
    frmHiscore window{QRect()};
    window.show();
    EXPECT_EQ(window.grab().toImage().pixel(5, 5) | 0xFF000000u, qRgb(0, 0, 0));
    QTest::keyClicks(&window, "abc");
    EXPECT_EQ(window.EnteredInitials(), "ABC");
}
