// The Qt side of the platform seam: picture holders that load or keep their picture,
// stretch it once per size and show on a host; strips as IA controls; the dialogs.
#include "qtsupport/WidgetTestKit.h"
#include "board/BmpWriter.h"
#include "support/TempFolder.h"
#include "support/platform/HeadlessEventLoop.h"
#include "support/platform/HeadlessPicture.h"
#include "support/platform/qt/QtDialogs.h"
#include "board/qt/QtPictureStore.h"
#include "board/qt/QtPictureStrip.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QPushButton>
#include <QTimer>
#include <gtest/gtest.h>

using namespace tolva;
using tolva::testing::ShownAt;

TEST(QtPictureHolder, LoadsOrKeepsItsPictureStretchesOncePerSizeAndShowsOnItsHost) {
    tolva::testing::TempFolder folder;
    folder.Write("a.bmp", tolva::testing::MakeBmp(8, 6, 24, [](int x, int) { return x < 4 ? 0x336699u : 0xFFEE00u; }));
    folder.Write("bad.bmp", "BM this is no picture at all");
    folder.Write("huge.bmp", tolva::testing::SolidBmp(QtPictureHolder::MaxSide + 1, 1));
    QWidget host;
    host.resize(100, 100);
    host.show();
    auto holder = std::make_unique<QtPictureHolder>("BonusPic", &host);
    ASSERT_TRUE(holder->LoadFile(folder.Path() + "\\A.BMP"));   // stored form, another case
    EXPECT_EQ(holder->ScaleWidth(), 8);
    EXPECT_EQ(holder->Point(0, 5), 0x336699);
    EXPECT_EQ(holder->Point(7.9, 0), 0xFFEE00);
    EXPECT_EQ(holder->Point(8, 0), -1);
    for (const char* name : {"bad.bmp", "missing.bmp", "huge.bmp"}) {   // each leaves it as it was
        EXPECT_FALSE(holder->LoadFile(folder.Path() + "\\" + name)) << name;
        EXPECT_EQ(holder->Point(0, 0), 0x336699) << name;
    }

    // A stretched copy is made once per size, and made afresh for a new picture.
    const QImage& twice = holder->Scaled(QSize(16, 12));
    EXPECT_EQ(twice.pixel(15, 11) & 0xFFFFFFu, 0xFFEE00u);
    EXPECT_EQ(holder->Scaled(QSize(16, 12)).cacheKey(), twice.cacheKey());
    holder->SetImage(tolva::testing::SolidImage(30, 20, qRgb(0, 0, 250)));
    EXPECT_EQ(holder->Scaled(QSize(16, 12)).pixel(1, 1) & 0xFFFFFFu, 0x0000FAu);

    // Shown, it stands on its host at its picture's size, or at the bounds it is given
    // with its back colour around the picture.
    EXPECT_EQ(holder->View(), nullptr);
    holder->SetVisible(true);
    ASSERT_NE(holder->View(), nullptr);
    EXPECT_EQ(holder->View()->geometry(), QRect(0, 0, 30, 20));
    holder->SetBackColor(0x112233);
    holder->SetBounds(QRect(10, 10, 50, 40));
    EXPECT_EQ(ShownAt(host, 15, 15), 0x0000FAu);
    EXPECT_EQ(ShownAt(host, 55, 45), 0x112233u);

    // Assign shares a picture of this kind; one of another kind leaves no picture.
    QtPictureHolder copy("TmpBack");
    copy.Assign(*holder);
    EXPECT_EQ(copy.Image().cacheKey(), holder->Image().cacheKey());
    copy.Assign(HeadlessPicture("other"));
    EXPECT_FALSE(copy.HasPicture());
    holder.reset();   // a holder that goes takes its view along
    EXPECT_TRUE(host.findChildren<QtPictureView*>().isEmpty());
}

TEST(QtPictureStore, StripsAreIAControlsOnTheHostAndEitherMayGoFirst) {
    HeadlessEventLoop loop;
    auto host = std::make_unique<QWidget>();
    QtPictureStore store(loop, host.get());
    auto strip = store.CreateStrip("Animation");
    IA* control = dynamic_cast<QtPictureStrip&>(*strip).Control();
    ASSERT_NE(control, nullptr);
    EXPECT_EQ(control->parentWidget(), host.get());
    strip->SetBounds({12.5, 12.5, 12.5, 12.5});   // whole pixels, as the board's cells
    EXPECT_EQ(control->geometry(), QRect(13, 13, 12, 12));
    // A strip's Finish reaching the board is the board widget's hint test.

    auto second = store.CreateStrip("BOM");
    strip.reset();
    EXPECT_EQ(host->findChildren<IA*>().size(), 1);
    host.reset();
    second->Play(1);
    EXPECT_FALSE(second->IsPlaying());
}

namespace {

// Answers the next modal box from inside its own event loop, after writing down its
// icon, text and whether it has a Cancel button.
void Answer(QString& seen, std::function<void(QDialog&)> act) {
    QTimer::singleShot(0, [&seen, act] {
        QWidget* modal = QApplication::activeModalWidget();
        ASSERT_NE(modal, nullptr);
        if (auto* box = qobject_cast<QMessageBox*>(modal))
            seen = QString::number(box->icon()) + (box->button(QMessageBox::Cancel) ? " cancel " : " ok ") + box->text();
        act(*qobject_cast<QDialog*>(modal));
    });
}

} // namespace

TEST(QtDialogs, BoxesShowTheAskedIconAndGiveTheAnswer) {
    QtDialogs dialogs;
    QString seen;
    Answer(seen, [](QDialog& d) { static_cast<QMessageBox&>(d).button(QMessageBox::Cancel)->click(); });
    EXPECT_EQ(dialogs.MessageBox("End ?", "TOLVA II", MessageIcon::Warning, MessageButtons::OkCancel),
              MessageResult::Cancel);
    EXPECT_EQ(seen, QString::number(QMessageBox::Warning) + " cancel End ?");
    Answer(seen, [](QDialog& d) { static_cast<QMessageBox&>(d).button(QMessageBox::Ok)->click(); });
    EXPECT_EQ(dialogs.MessageBox("?", "", MessageIcon::Question, MessageButtons::OkCancel), MessageResult::Ok);
    // OK alone answers OK however the box is closed; 8-bit text shows as Latin-1.
    Answer(seen, [](QDialog& d) { d.reject(); });
    EXPECT_EQ(dialogs.MessageBox("NOT FOUND \xC5", "", MessageIcon::Stop, MessageButtons::Ok), MessageResult::Ok);
    EXPECT_EQ(seen, QString::number(QMessageBox::Critical) + QString::fromUtf8(" ok NOT FOUND \xC3\x85"));
    EXPECT_EQ(QtDialogs::QtIcon(MessageIcon::Exclamation), QMessageBox::Warning);
    EXPECT_EQ(QtDialogs::QtIcon(MessageIcon::Information), QMessageBox::Information);

    Answer(seen, [](QDialog& d) {
        static_cast<QInputDialog&>(d).setTextValue(QString::fromUtf8("J\xC3\x96K"));
        d.accept();
    });
    EXPECT_EQ(dialogs.InputBox("Enter level-code", "", "ABC"), "J\xD6K");
    Answer(seen, [](QDialog& d) { d.reject(); });
    EXPECT_EQ(dialogs.InputBox("Enter level-code", "", "ABC"), "");
}

TEST(QtDialogs, TheSaveFileBoxStartsWhereAskedAndGivesTheChosenFile) {
    EXPECT_EQ(QtDialogs::NameFilters("Pictures|*.bmp;*.gif|All|*.*"),
              (QStringList{"Pictures (*.bmp *.gif)", "All (*.*)"}));

    tolva::testing::TempFolder dir;
    QtDialogs dialogs;
    const SaveFileRequest request{"Export hiscore-file", "Tolva hiscore-file|*.hi", dir.Path(), true};
    QString seen;
    Answer(seen, [&](QDialog& d) {
        auto& box = static_cast<QFileDialog&>(d);
        EXPECT_EQ(box.windowTitle(), "Export hiscore-file");
        EXPECT_EQ(box.acceptMode(), QFileDialog::AcceptSave);
        EXPECT_EQ(box.directory().absolutePath(), QString::fromStdString(dir.Path()));
        EXPECT_EQ(box.nameFilters(), QStringList{"Tolva hiscore-file (*.hi)"});
        EXPECT_FALSE(box.testOption(QFileDialog::DontConfirmOverwrite));
        box.selectFile(QString::fromStdString(dir / "mine.hi"));
        d.accept();   // QFileDialog::accept, through the public QDialog one
    });
    EXPECT_EQ(dialogs.SaveFileBox(request), dir / "mine.hi");

    Answer(seen, [](QDialog& d) { d.reject(); });
    EXPECT_EQ(dialogs.SaveFileBox(request), "");
}
