// The settings window: what it shows on opening, what acts at once, what is written back
// at closing, the music list and its folder, the play button, and the window's own ways.
#include "qtsupport/WidgetTestKit.h"
#include "controls/Ebutton.h"
#include "controls/Scroller.h"
#include "settings/qt/frmSettings.h"
#include "support/ZenkorModule.h"
#include "support/platform/HeadlessEventLoop.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdio>
#include <string>
#include <vector>

using namespace tolva;
using tolva::testing::PictureFolder;
using tolva::testing::TempFolder;
using Calls = std::vector<std::string>;

namespace {

constexpr QRgb Background = 0xFF2850A0;

// A game folder with the window's background.
PictureFolder GameFolder() { return PictureFolder({{"data/10.bmp", frmSettings::FormWidth, frmSettings::FormHeight, Background}}); }

// A window over a board at (100, 50, 750, 561), its callbacks written down.
struct Window {
    HeadlessEventLoop Loop;
    GameSettings Settings;
    Calls Seen;
    std::unique_ptr<frmSettings> Form;

    explicit Window(const GameSettings& settings = GameSettings()) : Settings(settings) {
        frmSettings::Callbacks callbacks;
        callbacks.applyToBoard = [this] { Seen.push_back("apply"); };
        callbacks.startMusic = [this] { Seen.push_back("start"); };
        callbacks.stopMusicUnlessStopped = [this] { Seen.push_back("stop"); };
        Form = std::make_unique<frmSettings>(Settings, Loop, callbacks, QRect(100, 50, 750, 561));
        Form->show();
        Seen.clear();
    }
    void Close() { Form->Ebutton1()->FakeMouseUp(); }
};

void Mouse(QWidget* w, QEvent::Type type, QPoint at, QPoint global, Qt::MouseButtons held) {
    QMouseEvent event(type, at, global, type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, held, Qt::NoModifier);
    QApplication::sendEvent(w, &event);
}

QStringList Entries(const QComboBox& combo) {
    QStringList entries;
    for (int i = 0; i < combo.count(); ++i) entries << combo.itemText(i);
    return entries;
}

} // namespace

TEST(frmSettings, OpensCentredOnItsPicturesWithTheControlsOfTheSettings) {
    const PictureFolder game = GameFolder();
    GameSettings s;
    s.PlaySounds = 2;
    s.PlayMusic = 0;
    s.MakeStat = false;
    s.PlayAnimations = false;
    s.UseExternalMusicFile = true;
    s.UpdateDelay = 350;
    s.HuntDelay = 30;
    Window w(s);
    frmSettings& f = *w.Form;

    // Centred on the main window's rectangle.
    EXPECT_LE((f.geometry().center() - QRect(100, 50, 750, 561).center()).manhattanLength(), 2);
    EXPECT_EQ(f.grab().toImage().pixel(4, 4), Background);

    EXPECT_EQ(f.Scroller1()->Value(), 350);
    EXPECT_EQ(f.Label1()->text(), "(350) ms");
    EXPECT_EQ(f.Timer1().Interval(), 350);
    EXPECT_TRUE(f.Timer1().Enabled());
    EXPECT_EQ(f.Label2()->text(), "(30) ms");
    const bool expected[9] = {true, true, false, false, true, true, true, false, true};
    for (int i = 1; i <= 9; ++i) EXPECT_EQ(f.Check(i)->isChecked(), expected[i - 1]) << "Check" << i;

    // Opening it changes nothing by itself.
    EXPECT_EQ(w.Settings.PlaySounds, 2);
    EXPECT_EQ(w.Settings.UpdateDelay, 350);

    // A delay beyond the slider's range is mended by it, and the mended value is taken.
    GameSettings slow;
    slow.UpdateDelay = 70000;
    slow.HuntDelay = 500;
    Window w2(slow);
    EXPECT_EQ(w2.Settings.UpdateDelay, 1000);
    EXPECT_EQ(w2.Settings.HuntDelay, 100);

    // Without data\10.bmp the window has no picture, and still opens.
    const PictureFolder bare;
    Window w3;
    EXPECT_NE(w3.Form->grab().toImage().pixel(4, 4), Background);
}

TEST(frmSettings, TheActionDelayActsAtOnceAndPacesTheBlinkingSample) {
    const PictureFolder game = GameFolder();
    Window w;
    frmSettings& f = *w.Form;
    const QColor face = QApplication::palette().color(QPalette::Button);

    // Dragged to the near end, the slider reads 2: its lowest value by the mouse.
    QWidget* knob = f.Scroller1()->Knob();
    Mouse(knob, QEvent::MouseButtonPress, {5, 5}, knob->mapToGlobal(QPoint(5, 5)), Qt::LeftButton);
    Mouse(knob, QEvent::MouseMove, {-300, 5}, knob->mapToGlobal(QPoint(-300, 5)), Qt::LeftButton);
    Mouse(knob, QEvent::MouseButtonRelease, {-300, 5}, knob->mapToGlobal(QPoint(-300, 5)), Qt::NoButton);
    EXPECT_EQ(w.Settings.UpdateDelay, 2);
    EXPECT_EQ(f.Label1()->text(), "(2) ms");
    // The help page gives the range the slider really has.
    std::string help;
    ASSERT_TRUE(ReadWholeFile(std::string(TOLVA_SOURCE_DIR) + "/game/help/help.htm", help));
    EXPECT_NE(help.find("from " + std::to_string(w.Settings.UpdateDelay) + " to 1000 ms"), std::string::npos);

    // The sample blinks red at the pace of the delay while Check1 is on.
    f.Scroller1()->SetValue(100);
    EXPECT_EQ(w.Settings.UpdateDelay, 100);
    w.Seen.clear();
    w.Loop.Advance(100);
    EXPECT_EQ(f.SampleColor(), QColor(255, 0, 0));
    EXPECT_EQ(f.Picture1()->grab().toImage().pixel(3, 3) | 0xFF000000u, qRgb(255, 0, 0));
    w.Loop.Advance(99);
    EXPECT_EQ(f.SampleColor(), QColor(255, 0, 0));
    w.Loop.Advance(1);
    EXPECT_EQ(f.SampleColor(), face);
    // Check1 off: AniDraw at once, and the sample stays the button face.
    f.Check(1)->click();
    EXPECT_FALSE(w.Settings.AniDraw);
    EXPECT_EQ(w.Seen, Calls{"apply"});
    w.Loop.Advance(300);
    EXPECT_EQ(f.SampleColor(), face);

    // Closed, the sample no longer blinks. (The delays' way to the board, the action delay
    // at once and the hunt delay at closing, is the main window's test.)
    w.Close();
    EXPECT_FALSE(f.Timer1().Enabled());
}

TEST(frmSettings, EachCheckBoxStandsForItsOwnSettingByName) {
    const PictureFolder game = GameFolder();
    const std::pair<int, const char*> boxes[] = {{1, "anidraw"},  {2, "playsounds"},          {3, "playmusic"},
                                                 {4, "makestat"}, {5, "showbonuscounter"},    {6, "supplystatfile"},
                                                 {7, "drawusingbackbuffer"}, {8, "playanimations"},
                                                 {9, "UseExternalMusicFile"}};
    for (const auto& [number, key] : boxes) {
        Window w;
        ASSERT_EQ(w.Form->CheckOf(key), w.Form->Check(number)) << key;
        w.Form->CheckOf(key)->click();
        w.Close();
        // That setting turned over, and no other moved.
        const GameSettings before;
        for (const auto& [other, otherKey] : boxes)
            EXPECT_EQ(w.Settings.Number(otherKey) != before.Number(otherKey), otherKey == key) << key << " / " << otherKey;
        EXPECT_EQ(w.Settings.UpdateDelay, before.UpdateDelay) << key;
        EXPECT_EQ(w.Settings.HuntDelay, before.HuntDelay) << key;
    }
    // The group outline is switched from the Options menu only; the window keeps it as it is.
    GameSettings s;
    s.ShowGroup = false;
    Window w(s);
    EXPECT_EQ(w.Form->CheckOf("showgroup"), nullptr);
    w.Close();
    EXPECT_FALSE(w.Settings.ShowGroup);
}

TEST(frmSettings, ClosingWritesTheCheckBoxesBackAndStartsOrStopsTheMusic) {
    const PictureFolder game = GameFolder();
    GameSettings s;
    s.PlaySounds = 2;   // a number the file allows; the window writes 0 or 1
    Window w(s);
    frmSettings& f = *w.Form;
    f.Check(4)->click();   // makestat off
    f.Check(3)->click();   // music off
    f.Check(8)->click();
    f.Check(9)->click();   // at once
    EXPECT_TRUE(w.Settings.UseExternalMusicFile);
    EXPECT_TRUE(w.Settings.MakeStat);        // only at closing
    EXPECT_EQ(w.Settings.PlayMusic, 1);
    w.Seen.clear();
    w.Close();
    EXPECT_FALSE(f.isVisible());
    EXPECT_FALSE(w.Settings.MakeStat);
    EXPECT_EQ(w.Settings.PlayMusic, 0);
    EXPECT_EQ(w.Settings.PlaySounds, 1);
    EXPECT_FALSE(w.Settings.PlayAnimations);
    EXPECT_EQ(w.Seen, (Calls{"apply", "stop"}));   // music off: stopped, once

    // With the music on, closing starts it (from the beginning); Escape closes the same way.
    Window on;
    on.Seen.clear();
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(on.Form.get(), &escape);
    EXPECT_FALSE(on.Form->isVisible());
    EXPECT_EQ(on.Seen, (Calls{"apply", "start"}));
}

TEST(frmSettings, AddFilesListsTheMusicOfTheFolderSelectsTheChosenFileAndPlaysItWhileItIsThere) {
    const PictureFolder game = GameFolder();
    TempFolder music;
    for (const char* name : {"b.MOD", "a.xm", "Song.S3M", "clip.wav", "notes.txt", "c.it.bak"}) music.Write(name, "x");
    ::mkdir((music / "dir.mod").c_str(), 0755);
    TempFolder empty;
    empty.Write("readme.txt", "x");

    // No folder set: nothing is listed.
    Window none;
    EXPECT_EQ(none.Form->Combo1()->count(), 0);

    // ExtMusicFile matched without regard to case; the entry's own name is taken.
    GameSettings s;
    s.ExtMusicPath = music.Path() + "\\";
    s.ExtMusicFile = "B.mod";
    Window w(s);
    frmSettings& f = *w.Form;
    EXPECT_EQ(Entries(*f.Combo1()), (QStringList{"a.xm", "b.MOD", "clip.wav", "Song.S3M"}));
    EXPECT_EQ(f.Combo1()->currentIndex(), 1);
    EXPECT_EQ(w.Settings.ExtMusicFile, "b.MOD");

    // ExtMusicFile not among them: the first is selected and becomes the ExtMusicFile.
    w.Settings.ExtMusicFile = "gone.mod";
    w.Seen.clear();
    f.AddFiles();
    EXPECT_EQ(f.Combo1()->currentIndex(), 0);
    EXPECT_EQ(w.Settings.ExtMusicFile, "a.xm");
    EXPECT_EQ(w.Seen, Calls{"apply"});
    // Choosing an entry makes it the ExtMusicFile at once.
    f.Combo1()->setCurrentIndex(3);
    EXPECT_EQ(w.Settings.ExtMusicFile, "Song.S3M");

    // A folder with no music files leaves the list as it was.
    std::vector<std::string> titles;
    f.SetFolderPicker([&](const std::string& title, const std::string&) {
        titles.push_back(title);
        return empty.Path();
    });
    f.Command1()->click();
    EXPECT_EQ(titles, std::vector<std::string>{"Modfile-directory:"});
    EXPECT_EQ(w.Settings.ExtMusicPath, empty.Path() + "\\");
    EXPECT_EQ(Entries(*f.Combo1()).size(), 4);
    EXPECT_EQ(w.Settings.ExtMusicFile, "Song.S3M");

    // Back to the music folder; a folder chosen with its backslash keeps just the one.
    f.SetFolderPicker([&](const std::string&, const std::string&) { return music.Path() + "\\"; });
    f.Command1()->click();
    EXPECT_EQ(w.Settings.ExtMusicPath, music.Path() + "\\");
    EXPECT_EQ(f.Combo1()->currentIndex(), 3);
    // Nothing chosen: nothing changes.
    w.Seen.clear();
    f.SetFolderPicker([](const std::string&, const std::string&) { return std::string(); });
    f.Command1()->click();
    EXPECT_EQ(w.Settings.ExtMusicPath, music.Path() + "\\");
    EXPECT_TRUE(w.Seen.empty());

    // The play button restarts the music, only for a file that exists.
    w.Form->Command2()->click();
    EXPECT_EQ(w.Seen, (Calls{"stop", "start"}));
    w.Seen.clear();
    std::remove((music / "Song.S3M").c_str());
    w.Form->Command2()->click();
    EXPECT_TRUE(w.Seen.empty());
}

TEST(frmSettings, IsDraggedByItsSurface) {
    const PictureFolder game = GameFolder();
    Window w;
    frmSettings& f = *w.Form;
    const QPoint start = f.pos();
    Mouse(&f, QEvent::MouseButtonPress, {8, 8}, start + QPoint(8, 8), Qt::LeftButton);
    Mouse(&f, QEvent::MouseMove, {38, 28}, start + QPoint(38, 28), Qt::LeftButton);
    Mouse(&f, QEvent::MouseButtonRelease, {38, 28}, start + QPoint(38, 28), Qt::NoButton);
    EXPECT_EQ(f.pos(), start + QPoint(30, 20));
    Mouse(&f, QEvent::MouseMove, {60, 60}, start + QPoint(90, 80), Qt::NoButton);
    EXPECT_EQ(f.pos(), start + QPoint(30, 20));
}
