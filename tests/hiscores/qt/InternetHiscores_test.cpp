// The Internet hiscore entries on screen, end to end: the real browser plug-in under the
// offscreen platform posts the submission page's form to a small HTTP endpoint of this
// test on 127.0.0.1, which checks the fields byte for byte; the window's layout, the
// showing of the hiscore address, the default browser, an address that does not answer,
// a page that cannot be written and a missing plug-in. Every wait is bounded.
#include "hiscores/Hiscores.h"
#include "hiscores/qt/HiscoreWebWindows.h"
#include "hiscores/qt/WebBrowserLoader.h"
#include "settings/GameSettings.h"
#include "support/TempFolder.h"
#include "support/WindowOpener.h"
#include "support/ZenkorModule.h"
#include "testsupport/ScriptedDialogs.h"

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <QUrl>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

using namespace tolva;
using tolva::testing::TempFolder;

namespace {

constexpr int WaitLimitMs = 30000;

#ifdef TOLVA_WEBBROWSER_PLUGIN
const QString PluginFile = TOLVA_WEBBROWSER_PLUGIN;
#else
const QString PluginFile;
#endif

// One request as the endpoint saw it.
struct Request {
    std::string Method;
    std::string Path;
    std::string Body;
};

// A tiny HTTP/1.1 endpoint: reads one request per connection, answers with a small page
// whose title names what it got, and closes. The browser's own asking for a site icon
// is answered "not found" and not counted.
class Endpoint {
public:
    Endpoint() {
        server_.listen(QHostAddress::LocalHost, 0);
        QObject::connect(&server_, &QTcpServer::newConnection, [this] {
            while (QTcpSocket* socket = server_.nextPendingConnection()) Serve(socket);
        });
    }
    std::string Url(const std::string& path) const {
        return "http://127.0.0.1:" + std::to_string(server_.serverPort()) + path;
    }
    std::vector<Request> Requests;

private:
    void Serve(QTcpSocket* socket) {
        auto buffer = std::make_shared<QByteArray>();
        QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket, buffer] {
            buffer->append(socket->readAll());
            const qsizetype headEnd = buffer->indexOf("\r\n\r\n");
            if (headEnd < 0) return;
            const QByteArray head = buffer->left(headEnd);
            qsizetype length = 0;
            for (const QByteArray& line : head.split('\n'))
                if (line.toLower().startsWith("content-length:")) length = line.mid(15).trimmed().toLongLong();
            if (buffer->size() < headEnd + 4 + length) return;
            const QList<QByteArray> first = head.left(head.indexOf("\r\n")).split(' ');
            Request r{first.value(0).toStdString(), first.value(1).toStdString(),
                      buffer->mid(headEnd + 4, length).toStdString()};
            if (r.Path == "/favicon.ico") {
                socket->write("HTTP/1.1 404 Not Found\r\nConnection: close\r\nContent-Length: 0\r\n\r\n");
                socket->disconnectFromHost();
                return;
            }
            Requests.push_back(r);
            const QByteArray page = "<html><head><title>ANSWER " + QByteArray::fromStdString(r.Method) +
                                    "</title></head><body>Thank you</body></html>";
            socket->write("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nConnection: close\r\nContent-Length: " +
                          QByteArray::number(page.size()) + "\r\n\r\n" + page);
            socket->disconnectFromHost();
        });
    }

    QTcpServer server_;
};

// application/x-www-form-urlencoded, decoded to the bytes that were sent (a plus is a
// blank; a plus of the data comes as %2B, so it is turned before the percent signs).
std::map<std::string, std::string> DecodeForm(std::string body) {
    std::replace(body.begin(), body.end(), '+', ' ');
    std::map<std::string, std::string> fields;
    for (const QByteArray& pair : QByteArray::fromStdString(body).split('&')) {
        const qsizetype eq = pair.contains('=') ? pair.indexOf('=') : pair.size();
        if (!pair.isEmpty())
            fields[QByteArray::fromPercentEncoding(pair.left(eq)).toStdString()] =
                QByteArray::fromPercentEncoding(pair.mid(eq + 1)).toStdString();
    }
    return fields;
}

// The main window stand-in, the game folder and the three registered entries.
struct Game {
    TempFolder Folder;
    Hiscores Table;
    GameSettings Settings;
    ScriptedDialogs Boxes;
    QWidget MainWindow;
    WindowOpener Windows;
    std::vector<QUrl> OpenedInDefaultBrowser;
    bool Playing = false;

    explicit Game(const QString& plugin = PluginFile) {
        SetAppPath(Folder.Path());
        Table[0] = {"ANN", 12, 45000};
        Table[1] = {"<b>", 7, 9000};
        Settings.SupplyStatFile = true;
        MainWindow.setWindowIcon(QIcon(QPixmap(16, 16)));
        MainWindow.setGeometry(200, 150, 750, 561);
        MainWindow.show();
        RegisterHiscoreWebWindows(Windows, {Table, Settings, Boxes, &MainWindow, [] { return true; },
                                            [this] { return Playing; }, plugin,
                                            [this](const QUrl& url) { OpenedInDefaultBrowser.push_back(url); }});
    }
    bool PageLeft() const { return std::filesystem::exists(Folder / "submithiscore.htm"); }
};

// Opens `window` and, while it is modal, calls `step` every 50 ms with the browser
// window (null until it is up) until `step` gives true. A window still open after the
// time limit is closed and the test fails.
void OpenAndDrive(Game& game, GameWindow window, const std::function<bool(QDialog*)>& step) {
    QElapsedTimer clock;
    clock.start();
    bool timedOut = false;
    QTimer driver;
    driver.setInterval(50);
    QObject::connect(&driver, &QTimer::timeout, [&] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog != nullptr && dialog->objectName() != "frmWebBrowser") dialog = nullptr;
        if (clock.elapsed() > WaitLimitMs) {
            timedOut = true;
            driver.stop();
            if (dialog != nullptr) dialog->reject();
            return;
        }
        if (step(dialog)) driver.stop();
    });
    driver.start();
    game.Windows.Open(window);
    driver.stop();
    EXPECT_FALSE(timedOut) << "the browser window did not get there within " << WaitLimitMs / 1000 << " s";
}

template <typename T>
T* Child(QDialog* dialog, const char* name) { return dialog->template findChild<T*>(name); }

QString Status(QDialog* dialog) { return Child<QLabel>(dialog, "Label2")->text(); }
bool BrowserShown(QDialog* dialog) { return Child<QWidget>(dialog, "WebBrowser1")->isVisible(); }

#define SKIP_WITHOUT_ENGINE()                                                                       \
    do {                                                                                            \
        if (PluginFile.isEmpty()) GTEST_SKIP() << "Qt WebEngine was not found at build time";       \
        std::string why;                                                                            \
        if (WebBrowserLoader::Load(PluginFile, why) == nullptr)                                      \
            GTEST_SKIP() << "the browser engine cannot start here: " << why;                        \
    } while (false)

} // namespace

TEST(InternetHiscores, TheSubmissionPostsTheTableAndShowsTheAnswer) {
    SKIP_WITHOUT_ENGINE();
    Endpoint endpoint;
    Game game;
    game.Settings.HiscoreUrl = endpoint.Url("/tolva2/updatehiscore.asp");
    const std::string stat = "[LEVEL1]\r\nclicks=5\r\ntarget=7\r\n";
    game.Folder.Write("stat.ini", stat);
    const std::string expected = game.Table.MakeHiscoreString(DefaultSetKey);
    // The page escapes nothing: a quotation mark or an ampersand in the string would cut
    // or change the value, so the table chosen here has none.
    ASSERT_EQ(expected.find_first_of("\"&"), std::string::npos);

    bool pageWhileOpen = false;
    bool checkedLayout = false;
    OpenAndDrive(game, GameWindow::SubmitInternetHiscores, [&](QDialog* dialog) {
        if (dialog == nullptr) return false;
        if (!checkedLayout) {
            checkedLayout = true;
            EXPECT_TRUE(dialog->isModal());
            EXPECT_EQ(dialog->parentWidget(), &game.MainWindow);
            EXPECT_EQ(dialog->windowIcon().cacheKey(), game.MainWindow.windowIcon().cacheKey());
            EXPECT_LE((dialog->frameGeometry().center() - game.MainWindow.frameGeometry().center()).manhattanLength(), 40);
        }
        // The browser shows from the moment it is sent to the page, before any answer.
        if (game.PageLeft()) {
            EXPECT_TRUE(BrowserShown(dialog));
        }
        pageWhileOpen = pageWhileOpen || game.PageLeft();
        if (endpoint.Requests.empty() || !BrowserShown(dialog)) return false;
        if (Child<QWidget>(dialog, "WebBrowser1")->property("title").toString() != "ANSWER POST") return false;
        Child<QPushButton>(dialog, "Command1")->click();
        return true;
    });

    ASSERT_EQ(endpoint.Requests.size(), 1u);
    const Request& post = endpoint.Requests[0];
    EXPECT_EQ(post.Method, "POST");
    EXPECT_EQ(post.Path, "/tolva2/updatehiscore.asp");
    const auto fields = DecodeForm(post.Body);
    ASSERT_EQ(fields.count("hiscoredata"), 1u) << post.Body;
    EXPECT_EQ(fields.at("hiscoredata"), expected);
    ASSERT_EQ(fields.count("stat"), 1u) << post.Body;
    EXPECT_EQ(fields.at("stat"), stat);
    EXPECT_TRUE(pageWhileOpen);
    EXPECT_FALSE(game.PageLeft());
    EXPECT_TRUE(game.Boxes.ShownBoxes().empty());
}

TEST(InternetHiscores, ShowingAsksForTheAddressAndTheDefaultBrowserTakesIt) {
    SKIP_WITHOUT_ENGINE();
    Endpoint endpoint;
    Game game;
    game.Playing = true;   // showing works during a game
    game.Settings.HiscoreUrl = endpoint.Url("/tolva2/updatehiscore.asp");
    // The page's title can follow the page's showing by a moment on a busy machine.
    QString title;
    OpenAndDrive(game, GameWindow::ShowInternetHiscores, [&](QDialog* dialog) {
        if (dialog == nullptr || endpoint.Requests.empty() || !BrowserShown(dialog)) return false;
        title = Child<QWidget>(dialog, "WebBrowser1")->property("title").toString();
        if (title != "ANSWER GET") return false;
        Child<QPushButton>(dialog, "Command2")->click();
        return true;
    });
    EXPECT_EQ(title, "ANSWER GET");
    ASSERT_EQ(endpoint.Requests.size(), 1u);
    EXPECT_EQ(endpoint.Requests[0].Method, "GET");
    EXPECT_EQ(endpoint.Requests[0].Path, "/tolva2/updatehiscore.asp");
    EXPECT_EQ(game.OpenedInDefaultBrowser, std::vector<QUrl>{QUrl(QString::fromStdString(game.Settings.HiscoreUrl))});
    EXPECT_FALSE(game.PageLeft());

    // The submission is refused during the game, and no window opens.
    bool opened = false;
    OpenAndDrive(game, GameWindow::SubmitInternetHiscores, [&](QDialog* dialog) {
        opened = opened || dialog != nullptr;
        return false;
    });
    EXPECT_FALSE(opened);
    ASSERT_EQ(game.Boxes.ShownBoxes().size(), 1u);
    EXPECT_EQ(game.Boxes.ShownBoxes()[0].Text.substr(0, 48), "You can't submit hiscores while you are playing.");
}

TEST(InternetHiscores, AnAddressThatDoesNotAnswerShowsTheErrorPageAndWaits) {
    SKIP_WITHOUT_ENGINE();
    Game game;
    {
        QTcpServer closed;   // a port that was free a moment ago and is closed now
        closed.listen(QHostAddress::LocalHost, 0);
        game.Settings.HiscoreUrl = "http://127.0.0.1:" + std::to_string(closed.serverPort()) + "/x.asp";
    }
    QElapsedTimer shownFor;
    OpenAndDrive(game, GameWindow::SubmitInternetHiscores, [&](QDialog* dialog) {
        // The browser shows from the post on; the engine's error page comes into it.
        if (dialog == nullptr || !BrowserShown(dialog)) return false;
        if (!shownFor.isValid()) {
            if (Status(dialog) != "The page could not be loaded") return false;
            shownFor.start();
            EXPECT_TRUE(game.PageLeft());
        }
        if (shownFor.elapsed() < 1000) return false;   // it stays until "Close"
        EXPECT_TRUE(dialog->isVisible());
        Child<QPushButton>(dialog, "Command1")->click();
        return true;
    });
    EXPECT_TRUE(shownFor.isValid());
    EXPECT_FALSE(game.PageLeft());
}

TEST(InternetHiscores, APageThatCannotBeWrittenIsToldAndTheWindowCloses) {
    SKIP_WITHOUT_ENGINE();
    Game game;
    game.Settings.HiscoreUrl = "http://127.0.0.1:9/never-asked";
    SetAppPath(game.Folder / "no-such-folder");
    bool sawWindow = false;
    OpenAndDrive(game, GameWindow::SubmitInternetHiscores, [&](QDialog* dialog) {
        sawWindow = sawWindow || dialog != nullptr;
        return false;
    });
    EXPECT_TRUE(sawWindow);
    ASSERT_EQ(game.Boxes.ShownBoxes().size(), 1u);
    EXPECT_EQ(game.Boxes.ShownBoxes()[0].Text, "Unable to create data-connection!");
    EXPECT_EQ(game.Boxes.ShownBoxes()[0].Icon, MessageIcon::Stop);
}

TEST(InternetHiscores, AMissingPluginIsToldAndNothingOpens) {
    Game game(QString::fromStdString(std::string(::testing::TempDir()) + "/no-such-plugin.so"));
    for (GameWindow window : {GameWindow::ShowInternetHiscores, GameWindow::SubmitInternetHiscores})
        game.Windows.Open(window);
    ASSERT_EQ(game.Boxes.ShownBoxes().size(), 2u);
    for (const auto& box : game.Boxes.ShownBoxes()) {
        EXPECT_EQ(box.Icon, MessageIcon::Stop);
        EXPECT_NE(box.Text.find("not installed"), std::string::npos) << box.Text;
    }
}
