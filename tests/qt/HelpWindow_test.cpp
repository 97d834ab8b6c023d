// The help window: the committed help page as the window shows it (its pictures, its
// links, its 8-bit text), one window at a time, and the message when the game folder has
// no page.
#include "session/qt/HelpWindow.h"
#include "support/TempFolder.h"
#include "support/ZenkorModule.h"
#include "testsupport/ScriptedDialogs.h"

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QPixmap>
#include <QPointer>
#include <QSet>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>
#include <QTextFragment>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

using tolva::HelpWindow;
using tolva::MessageButtons;
using tolva::MessageIcon;
using tolva::ScriptedDialogs;
using tolva::ShowHelp;
using tolva::testing::TempFolder;

namespace fs = std::filesystem;

namespace {

const std::string GameDir = TOLVA_GAME_DIR;

std::string CommittedPage() {
    std::string bytes;
    EXPECT_TRUE(tolva::ReadWholeFile(std::string(TOLVA_SOURCE_DIR) + "/game/help/help.htm", bytes));
    return bytes;
}

// A game folder with the committed help page and, where the build has made them, the
// game's pictures (linked from the build's game folder).
struct HelpFolder {
    TempFolder dir;
    bool hasPictures = false;

    explicit HelpFolder(const std::string& pageFolder = "help", const std::string& pageName = "help.htm") {
        fs::create_directories(dir / pageFolder);
        dir.Write(pageFolder + "/" + pageName, CommittedPage());
        for (const char* name : {"data", "levels"}) {
            if (fs::is_directory(GameDir + "/" + name)) fs::create_directory_symlink(GameDir + "/" + name, dir / name);
        }
        hasPictures = fs::exists(GameDir + "/data/s0.bmp") && fs::exists(GameDir + "/levels/default/crystal/0.bmp");
        tolva::SetAppPath(dir.Path());
    }
};

// The help windows that are open now.
int OpenHelpWindows() {
    int count = 0;
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (dynamic_cast<HelpWindow*>(widget) != nullptr && widget->isVisible()) ++count;
    return count;
}

void DeleteClosedWindows() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

struct PageParts {
    QStringList images;       // picture names, as the page writes them
    QSet<QString> anchors;    // named places
    QStringList innerLinks;   // links to places in the page, without the "#"
};

PageParts ReadParts(const QTextDocument& document) {
    PageParts parts;
    for (QTextBlock block = document.begin(); block != document.end(); block = block.next()) {
        // A named place in front of a heading is kept with the heading's block.
        for (const QString& name : block.charFormat().anchorNames()) parts.anchors.insert(name);
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextCharFormat format = it.fragment().charFormat();
            if (format.isImageFormat()) parts.images << format.toImageFormat().name();
            for (const QString& name : format.anchorNames()) parts.anchors.insert(name);
            const QString href = format.anchorHref();
            if (href.startsWith('#')) parts.innerLinks << href.mid(1);
        }
    }
    return parts;
}

// The picture the document gets for `name`, whatever form the browser hands it in.
QImage ResourceImage(QTextDocument& document, const QString& name) {
    const QVariant resource = document.resource(QTextDocument::ImageResource, QUrl(name));
    if (resource.userType() == QMetaType::QImage) return resource.value<QImage>();
    if (resource.userType() == QMetaType::QPixmap) return resource.value<QPixmap>().toImage();
    if (resource.userType() == QMetaType::QByteArray) return QImage::fromData(resource.toByteArray());
    return {};
}

void SaveScreenshot(QWidget& window, const QString& name) {
    const QString path = QDir::tempPath() + "/tolva2-help-" + name + ".png";
    EXPECT_TRUE(window.grab().save(path)) << path.toStdString();
}

} // namespace

TEST(HelpWindow, ShowsTheHelpPageWithItsPicturesAndLinks) {
    HelpFolder folder;
    ScriptedDialogs dialogs;
    QWidget owner;
    QPixmap iconPicture(32, 32);
    iconPicture.fill(Qt::darkCyan);
    owner.setWindowIcon(QIcon(iconPicture));

    HelpWindow* window = ShowHelp(&owner, dialogs);
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(dialogs.ShownBoxes().empty());
    EXPECT_EQ(window->windowTitle(), "TOLVA II - Help");
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(window->isWindow());
    EXPECT_FALSE(window->isModal());
    EXPECT_EQ(window->size(), QSize(HelpWindow::WidthPx, HelpWindow::HeightPx));
    EXPECT_EQ(window->windowIcon().cacheKey(), owner.windowIcon().cacheKey());

    QTextDocument& document = *window->Browser()->document();
    EXPECT_EQ(document.metaInformation(QTextDocument::DocumentTitle), "TOLVA II - Help");
    const QString text = document.toPlainText();
    for (const char* spell : {"BOUNCING SAW", "RAINBOW", "GUN", "TEST TUBE", "BOMB", "UMBRELLA"})
        EXPECT_TRUE(text.contains(spell)) << spell;
    for (const char* topic : {"CLL", "CLH", "LEVEL-CODE", "Change level-set", "ENTER YOUR INITIALS", "Action delay"})
        EXPECT_TRUE(text.contains(topic)) << topic;
    // The page is Latin-1 and says so: its multiplication sign arrives as one character.
    EXPECT_TRUE(text.contains(QChar(0xD7)));
    EXPECT_FALSE(text.contains(QChar(QChar::ReplacementCharacter)));

    const PageParts parts = ReadParts(document);
    EXPECT_GE(parts.innerLinks.size(), 13);
    for (const QString& link : parts.innerLinks) EXPECT_TRUE(parts.anchors.contains(link)) << link.toStdString();
    for (int spell = 0; spell < 6; ++spell) {
        EXPECT_TRUE(parts.images.contains(QString("../data/s%1.bmp").arg(spell))) << spell;
        EXPECT_TRUE(parts.images.contains(QString("../data/ss%1.bmp").arg(spell))) << spell;
    }
    if (folder.hasPictures) {
        for (const QString& name : parts.images)
            EXPECT_FALSE(ResourceImage(document, name).isNull()) << name.toStdString();
        EXPECT_EQ(ResourceImage(document, "../data/s3.bmp").size(), QSize(50, 50));
    } else {
        ADD_FAILURE() << "the build's game folder has no pictures at " << GameDir;
    }

    SaveScreenshot(*window, "top");
    window->Browser()->scrollToAnchor("spells");
    SaveScreenshot(*window, "spells");
    window->Browser()->scrollToAnchor("statistics");
    SaveScreenshot(*window, "statistics");
    window->close();
}

TEST(HelpWindow, OneWindowAtATime) {
    HelpFolder folder;
    ScriptedDialogs dialogs;
    QPointer<HelpWindow> first;
    {
        QWidget owner;
        first = ShowHelp(&owner, dialogs);
        ASSERT_FALSE(first.isNull());
        // A second call brings the same window to the front.
        EXPECT_EQ(ShowHelp(&owner, dialogs), first.data());
        EXPECT_EQ(OpenHelpWindows(), 1);

        // Closing it unloads it; the next call opens a fresh one.
        first->close();
        DeleteClosedWindows();
        EXPECT_TRUE(first.isNull());
        EXPECT_EQ(OpenHelpWindows(), 0);
        first = ShowHelp(&owner, dialogs);
        ASSERT_FALSE(first.isNull());
        EXPECT_TRUE(first->isVisible());

        // A window closed but not yet deleted is not handed out again.
        first->close();
        HelpWindow* next = ShowHelp(&owner, dialogs);
        EXPECT_NE(next, first.data());
        EXPECT_TRUE(next->isVisible());
        DeleteClosedWindows();
        EXPECT_EQ(OpenHelpWindows(), 1);
    }
    // The window goes with the main window that owns it.
    EXPECT_EQ(OpenHelpWindows(), 0);
    EXPECT_TRUE(dialogs.ShownBoxes().empty());
}

TEST(HelpWindow, FindsThePageOnlyWhereTheGameFolderHasIt) {
    QWidget owner;
    {
        TempFolder empty;
        tolva::SetAppPath(empty.Path());
        ScriptedDialogs dialogs;
        EXPECT_EQ(ShowHelp(&owner, dialogs), nullptr);
        ASSERT_EQ(dialogs.ShownBoxes().size(), 1u);
        EXPECT_EQ(dialogs.ShownBoxes()[0].Text, "HELP FILE WAS NOT FOUND!");
        EXPECT_EQ(dialogs.ShownBoxes()[0].Icon, MessageIcon::Stop);
        EXPECT_EQ(dialogs.ShownBoxes()[0].Buttons, MessageButtons::Ok);
        EXPECT_EQ(OpenHelpWindows(), 0);

        // A folder where the page should be is no page.
        fs::create_directories(empty / "help/help.htm");
        EXPECT_EQ(ShowHelp(&owner, dialogs), nullptr);
        EXPECT_EQ(dialogs.ShownBoxes().size(), 2u);
    }
    {
        // Names written in another case, as an installation from a case-blind system has them.
        HelpFolder folder("HELP", "Help.HTM");
        ScriptedDialogs dialogs;
        HelpWindow* window = ShowHelp(&owner, dialogs);
        ASSERT_NE(window, nullptr);
        EXPECT_TRUE(dialogs.ShownBoxes().empty());
        EXPECT_TRUE(window->Browser()->toPlainText().contains("UMBRELLA"));
        window->close();
        DeleteClosedWindows();
    }
    {
        // A damaged page still opens, with whatever it holds.
        TempFolder damaged;
        fs::create_directories(damaged / "help");
        using namespace std::string_literals;
        damaged.Write("help/help.htm", "<html><body><h1>TOLVA\0\xff\xfe<table><tr><td><img src=\""s);
        tolva::SetAppPath(damaged.Path());
        ScriptedDialogs dialogs;
        HelpWindow* window = ShowHelp(&owner, dialogs);
        ASSERT_NE(window, nullptr);
        EXPECT_TRUE(dialogs.ShownBoxes().empty());
        EXPECT_TRUE(window->Browser()->toPlainText().contains("TOLVA"));
        window->close();
        DeleteClosedWindows();
    }
}
