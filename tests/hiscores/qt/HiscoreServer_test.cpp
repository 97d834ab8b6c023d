// The game and the hiscore server together: tolva2-hiscored runs on a free port of
// 127.0.0.1 with a database of its own, the game built by its composition root points its
// HiscoreUrl at it, "Submit to Internet Hiscores" posts the default set's table through
// the game's own browser window, and the server's page of the best then lists the
// entries. Every wait is bounded.
#include "qtsupport/GameWindowKit.h"
#include "hiscores/Hiscores.h"
#include "hiscores/qt/WebBrowserLoader.h"
#include "support/WindowOpener.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QProcess>
#include <QPushButton>
#include <gtest/gtest.h>

using namespace tolva;
using tolva::testing::TempFolder;

namespace {

constexpr int WaitLimitMs = 30000;

// The server as its own process, stopped with SIGTERM at the end.
class Server {
public:
    explicit Server(const std::string& database) {
        process_.setProgram(QString(TOLVA_GAME_DIR) + "/tolva2-hiscored");
        process_.setArguments({"--listen", "127.0.0.1:0", "--db", QString::fromStdString(database)});
        process_.start();
        // It tells where it listens once it does.
        QElapsedTimer clock;
        clock.start();
        QByteArray said;
        while (clock.elapsed() < 10000 && !said.contains('\n') && process_.state() != QProcess::NotRunning) {
            process_.waitForReadyRead(100);
            said += process_.readAllStandardOutput();
        }
        const qsizetype colon = said.indexOf("127.0.0.1:");
        if (colon >= 0) Port = said.mid(colon + 10).split('/').value(0).toInt();
    }
    ~Server() {
        process_.terminate();
        if (!process_.waitForFinished(5000)) process_.kill();
    }
    QString Url() const { return QString("http://127.0.0.1:%1/tolva2/updatehiscore.asp").arg(Port); }
    int Port = 0;

private:
    QProcess process_;
};

// The body of a GET of `url`, or empty after the time limit.
QString Fetch(const QString& url) {
    QNetworkAccessManager network;
    QNetworkReply* reply = network.get(QNetworkRequest(QUrl(url)));
    QElapsedTimer clock;
    clock.start();
    while (!reply->isFinished() && clock.elapsed() < WaitLimitMs) QApplication::processEvents(QEventLoop::AllEvents, 50);
    const QString body = reply->isFinished() ? QString::fromUtf8(reply->readAll()) : QString();
    delete reply;
    return body;
}

} // namespace

TEST(HiscoreServer, ATableSubmittedFromTheGameShowsOnTheServersPage) {
    const QString plugin = QString(TOLVA_GAME_DIR) + "/plugins/libtolva2_webbrowser.so";
    std::string why;
    if (!QFileInfo::exists(plugin)) GTEST_SKIP() << "the browser plug-in was not built (no Qt WebEngine)";
    if (WebBrowserLoader::Load(plugin, why) == nullptr) GTEST_SKIP() << "the browser engine cannot start here: " << why;

    TempFolder store;
    Server server(store / "hiscores.sqlite");
    ASSERT_GT(server.Port, 0) << "tolva2-hiscored did not say where it listens";

    // A game folder with the default set, its table, and the server's address.
    tolva::testing::TestGame t("[main]\r\nplaysounds=0\r\nplaymusic=0\r\nsupplystatfile=0\r\nHiscoreUrl=" +
                               server.Url().toStdString() + "\r\n");
    auto& [folder, loop, dialogs, app] = t;
    Hiscores table;
    table[0] = {"ZOE", 14, 812345};
    table[1] = {"MAX", 3, 5040};
    ASSERT_TRUE(table.SaveScore((folder.Dir / "levels/default/hiscore.hi"), DefaultSetKey));
    ASSERT_TRUE(app.Start(1));

    // The player submits, waits for the server's answer in the window, and closes it.
    QElapsedTimer clock;
    clock.start();
    QString answer;
    QTimer driver;
    driver.setInterval(50);
    QObject::connect(&driver, &QTimer::timeout, [&] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr || dialog->objectName() != "frmWebBrowser") return;
        const QWidget* browser = dialog->findChild<QWidget*>("WebBrowser1");
        answer = browser != nullptr ? browser->property("title").toString() : QString();
        if (answer == "Hiscores received" || clock.elapsed() > WaitLimitMs) {
            driver.stop();
            dialog->findChild<QPushButton*>("Command1")->click();
        }
    });
    driver.start();
    app.Windows().Open(GameWindow::SubmitInternetHiscores);
    driver.stop();
    EXPECT_EQ(answer, "Hiscores received");
    EXPECT_TRUE(dialogs.ShownBoxes().empty());

    // The server's page of the best lists both entries, in the game's score form.
    const QString page = Fetch(server.Url());
    EXPECT_TRUE(page.contains("<td>ZOE</td><td>14</td><td>000.812.345</td>")) << page.toStdString();
    EXPECT_TRUE(page.contains("<td>MAX</td><td>3</td><td>000.005.040</td>")) << page.toStdString();
}
