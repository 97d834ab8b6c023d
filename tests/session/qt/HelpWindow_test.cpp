// The help window: the committed help page as the window shows it (its pictures, its
// links, its 8-bit text), one window at a time, and the message when the game folder has
// no page.
#include "session/qt/HelpPageGuard.h"
#include "session/qt/HelpWindow.h"
#include "support/TempFolder.h"
#include "support/ZenkorModule.h"
#include "testsupport/ScriptedDialogs.h"
#include "qtsupport/HangBound.h"
#include "qtsupport/WidgetTestKit.h"

#include <QApplication>
#include <QElapsedTimer>
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
#include <fstream>
#include <string>

#include <sys/stat.h>
#include <unistd.h>

using tolva::HelpPageGuard;
using tolva::HelpWindow;
using tolva::MessageButtons;
using tolva::MessageIcon;
using tolva::ScriptedDialogs;
using tolva::ShowHelp;
using tolva::testing::BoundInTime;
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
// game's pictures (copied from the build's game folder: the help reads nothing that
// lies outside the game folder, and a link would lead there).
struct HelpFolder {
    TempFolder dir;
    bool hasPictures = false;

    explicit HelpFolder(const std::string& pageFolder = "help", const std::string& pageName = "help.htm") {
        fs::create_directories(dir / pageFolder);
        dir.Write(pageFolder + "/" + pageName, CommittedPage());
        for (const char* name : {"data", "levels/default/crystal"}) {
            if (!fs::is_directory(GameDir + "/" + name)) continue;
            fs::create_directories(dir / name);
            fs::copy(GameDir + "/" + name, dir / name, fs::copy_options::recursive);
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

} // namespace

TEST(HelpWindow, ShowsTheHelpPageWithItsPicturesAndLinksInOneWindowAtATime) {
    HelpFolder folder;
    ScriptedDialogs dialogs;
    QPointer<HelpWindow> window;
    {
        QWidget owner;
        QPixmap iconPicture(32, 32);
        iconPicture.fill(Qt::darkCyan);
        owner.setWindowIcon(QIcon(iconPicture));

        window = ShowHelp(&owner, dialogs);
        ASSERT_FALSE(window.isNull());
        EXPECT_TRUE(window->isVisible());
        EXPECT_FALSE(window->isModal());
        EXPECT_EQ(window->windowIcon().cacheKey(), owner.windowIcon().cacheKey());
        // A second call brings the same window to the front.
        EXPECT_EQ(ShowHelp(&owner, dialogs), window.data());
        EXPECT_EQ(OpenHelpWindows(), 1);

        QTextDocument& document = *window->Browser()->document();
        const QString text = document.toPlainText();
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

        // A window closed but not yet deleted is not handed out again; once deleted it is gone.
        window->close();
        HelpWindow* next = ShowHelp(&owner, dialogs);
        EXPECT_NE(next, window.data());
        EXPECT_TRUE(next->isVisible());
        DeleteClosedWindows();
        EXPECT_TRUE(window.isNull());
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

namespace {

std::string Repeat(const std::string& part, int times) { return QByteArray::fromStdString(part).repeated(times).toStdString(); }

std::string NestedTables(int depth) {
    return "<html><body>" + Repeat("<table><tr><td>", depth) + "deep" + Repeat("</td></tr></table>", depth);
}

long ResidentKb() {
    std::ifstream status("/proc/self/status");
    std::string key;
    long value = 0;
    while (status >> key) {
        if (key == "VmRSS:" && status >> value) return value;
    }
    return 0;
}

// F1 on a game folder whose help page is `page`: what came of it, and how long it took
// until the game answered again.
struct HelpAsked {
    HelpWindow* window = nullptr;
    std::vector<ScriptedDialogs::Shown> boxes;
    qint64 ms = 0;
};

HelpAsked AskForHelp(QWidget& owner) {
    ScriptedDialogs dialogs;
    QElapsedTimer clock;
    clock.start();
    HelpAsked asked;
    asked.window = ShowHelp(&owner, dialogs);
    // The window paints and lays out what it shows before the game gets its turn again.
    if (asked.window != nullptr) asked.window->grab();
    QCoreApplication::processEvents();
    asked.ms = clock.elapsed();
    asked.boxes = dialogs.ShownBoxes();
    return asked;
}

} // namespace

TEST(HelpWindow, ADamagedPageIsToldAsMissingAtOnce) {
    using namespace std::string_literals;
    const std::string word(HelpPageGuard::MaxWordLength + 1, 'w');
    const std::string weightyChain = Repeat("<table><tr><td>", HelpPageGuard::MaxTableNesting) + "x" +
                                     Repeat("</td></tr></table>", HelpPageGuard::MaxTableNesting);
    const std::vector<std::pair<std::string, std::string>> pages = {
        {"tables nested 5,000 deep", NestedTables(5000)},
        {"tables nested one past the bound", NestedTables(HelpPageGuard::MaxTableNesting + 1)},
        {"100,000 nested blocks", "<html><body>" + Repeat("<div>", 100000) + "x"},
        {"one 5 MB word", "<html><body><p>" + std::string(5 * 1024 * 1024, 'a') + "</p>"},
        {"one word past the bound", "<html><body><p>" + word + "</p>"},
        {"a word joined by non-breaking spaces", "<html><body><p>" + Repeat("ab&nbsp;", 1000) + "</p>"},
        {"too many list items", "<html><body><ul>" + Repeat("<li>item", HelpPageGuard::MaxTags) + "</ul>"},
        {"too many deep tables", "<html><body>" + Repeat(weightyChain, 20)},
        {"closing tags hidden in an attribute", "<html><body>" + Repeat("<div><img alt=\"</div>\">", 1000)},
        {"a picture asked 100,000 pixels wide", "<html><body><img src=\"x.bmp\" width=\"100000\">"},
        {"a page that is a pipe", ""},
    };
    QWidget owner;
    for (const auto& [name, page] : pages) {
        SCOPED_TRACE(name);
        BoundInTime(30, name.c_str());
        TempFolder game;
        fs::create_directories(game / "help");
        if (page.empty()) ASSERT_EQ(::mkfifo((game / "help/help.htm").c_str(), 0600), 0);
        else game.Write("help/help.htm", page);
        tolva::SetAppPath(game.Path());

        const HelpAsked asked = AskForHelp(owner);
        EXPECT_EQ(asked.window, nullptr);
        ASSERT_EQ(asked.boxes.size(), 1u);
        EXPECT_EQ(asked.boxes[0].Text, "HELP FILE WAS NOT FOUND!");
        EXPECT_EQ(asked.boxes[0].Icon, MessageIcon::Stop);
        EXPECT_EQ(OpenHelpWindows(), 0);
        // A sanity bound, far above the few milliseconds it takes.
        EXPECT_LT(asked.ms, 1000);
    }
    BoundInTime(0, "");
}

TEST(HelpWindow, PicturesComeOnlyFromRegularFilesOfTheGameFolder) {
    BoundInTime(60, "the help window's pictures");
    TempFolder outside;
    ASSERT_TRUE(tolva::testing::SolidImage(10, 10, qRgb(200, 0, 0)).save(QString::fromStdString(outside.Path() + "/red.bmp")));
    TempFolder game;
    fs::create_directories(game / "help");
    const QString help = QString::fromStdString(game.Path() + "/help/");
    ASSERT_TRUE(tolva::testing::SolidImage(10, 10, qRgb(0, 200, 0)).save(help + "green.bmp"));
    ASSERT_EQ(::mkfifo((game / "help/pic.bmp").c_str(), 0600), 0);
    ASSERT_EQ(::mkfifo((game / "help/style.css").c_str(), 0600), 0);
    fs::create_symlink(outside / "red.bmp", game / "help/link.bmp");
    fs::create_symlink("/dev/zero", game / "help/zero.bmp");
    // A picture whose header claims 30,000 x 30,000 pixels: refused before decoding.
    std::string header = "BM" + std::string(52, '\0');
    auto put = [&header](std::size_t at, std::uint32_t value) {
        for (int i = 0; i < 4; ++i) header[at + i] = static_cast<char>((value >> (8 * i)) & 0xFF);
    };
    put(10, 54), put(14, 40), put(18, 30000), put(22, 30000), put(26, 1 | (24 << 16));
    game.Write("help/huge.bmp", header);
    const std::vector<std::string> refused = {"pic.bmp", "/dev/zero", "zero.bmp", "link.bmp", "huge.bmp",
                                              outside.Path() + "/red.bmp", "../../etc/passwd"};
    std::string page = "<html><head><link rel=\"stylesheet\" href=\"style.css\"></head><body><p>Pictures</p>"
                       "<img src=\"green.bmp\">";
    for (const std::string& name : refused) page += "<img src=\"" + name + "\">";
    game.Write("help/help.htm", page + "</body></html>");
    tolva::SetAppPath(game.Path());

    QWidget owner;
    const long residentBefore = ResidentKb();
    HelpAsked asked = AskForHelp(owner);
    ASSERT_NE(asked.window, nullptr);
    EXPECT_TRUE(asked.boxes.empty());
    EXPECT_LT(asked.ms, 1000);
    EXPECT_LT(ResidentKb() - residentBefore, 200 * 1024);

    QTextDocument& document = *asked.window->Browser()->document();
    EXPECT_TRUE(document.toPlainText().contains("Pictures"));
    EXPECT_EQ(ResourceImage(document, "green.bmp").pixel(5, 5), qRgb(0, 200, 0));
    for (const std::string& name : refused)
        EXPECT_TRUE(ResourceImage(document, QString::fromStdString(name)).isNull()) << name;

    // The window goes when asked.
    QPointer<HelpWindow> window = asked.window;
    window->close();
    DeleteClosedWindows();
    EXPECT_TRUE(window.isNull());
    EXPECT_EQ(OpenHelpWindows(), 0);
    BoundInTime(0, "");
}

TEST(HelpWindow, MarkupIsMeasuredAsTheBrowserReadsIt) {
    // The game's page fits every bound with room to spare.
    const HelpPageGuard::Markup shipped = HelpPageGuard::MeasureMarkup(QByteArray::fromStdString(CommittedPage()));
    EXPECT_TRUE(HelpPageGuard::Fits(shipped));
    EXPECT_LT(shipped.Tags * 4, HelpPageGuard::MaxTags);
    EXPECT_LT(shipped.Nesting * 4, HelpPageGuard::MaxNesting);

    auto nesting = [](const char* markup) { return HelpPageGuard::MeasureMarkup(markup).Nesting; };
    EXPECT_EQ(nesting("<div><div><b>x</b></div></div>"), 3u);
    // Paragraphs and list items left open are siblings; empty elements hold nothing.
    EXPECT_EQ(nesting("<ul><li>a<li>b<li>c</ul><p>x<p>y<p>z<br><img src=a><hr><meta x=1>"), 2u);
    EXPECT_EQ(nesting("<div/><div/><div/>"), 0u);
    // A closing tag without its opening one closes nothing; one for an outer element
    // closes all inside it.
    EXPECT_EQ(nesting("</div></div><div><span><b><i></div><div>"), 4u);
    // Comments and declarations hold no tags; quoted attributes hold none either.
    EXPECT_EQ(nesting("<!DOCTYPE html><!-- <div><div><div> --><div title='<div><div>'>x</div>"), 1u);
    EXPECT_EQ(nesting("<div><a href=\"</div>\">x</a><div>"), 2u);
    EXPECT_EQ(HelpPageGuard::MeasureMarkup("<p>a</p><p>b</p> 1 < 2").Tags, 3u);
}
