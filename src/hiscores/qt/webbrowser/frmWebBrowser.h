#pragma once
// frmWebBrowser: the Internet hiscore window. It shows either the hiscore address, or the
// submission page, whose onload script posts the table to that address, so that the
// server's answer stands in the window. The game does not talk to the network itself and
// never learns whether the post arrived: a failed connection shows the engine's own error
// page, and the window waits for "Close".
//
// The window comes up first and the work begins at the one tick of Timer1, half a
// second later, so that the player sees "CONNECTING TO THE INTERNET, PLEASE WAIT" rather
// than a frozen menu. A submission shows the browser over that label as soon as it is
// sent to the submission page (which is blank and posts itself at once), so that the
// server's answer, or the engine's page saying the post failed, is what stays there.
// Showing the hiscore address keeps the label until that page has loaded.
//
// The status line shows what the engine is doing (opening, loading with its progress,
// done or failed) and, while the mouse is over a link, the link's address.
#include "hiscores/qt/WebBrowserPlugin.h"

#include <QDialog>
#include <QTimer>
#include <QUrl>

class QLabel;
class QPushButton;
class QWebEngineView;

namespace tolva {

class frmWebBrowser final : public QDialog {
    Q_OBJECT
public:
    static constexpr int FormWidth = 667;    // the client area, in pixels
    static constexpr int FormHeight = 459;
    static constexpr int TimerIntervalMs = 500;

    explicit frmWebBrowser(WebBrowserRequest request);
    // The window's unload: the submission page goes with it.
    ~frmWebBrowser() override;

    // Takes the owner's icon, centres on it, starts Timer1 and opens a blank page.
    void Form_Load();

private:
    void Timer1_Timer();
    void Command1_Click();
    void Command2_Click();
    void WebBrowser1_StatusTextChange(const QString& text);
    void WebBrowser1_LoadFinished(bool ok);
    void MakeControls();

    WebBrowserRequest request_;
    QWebEngineView* WebBrowser1 = nullptr;
    QLabel* Label1 = nullptr;
    QLabel* Label2 = nullptr;
    QPushButton* Command1 = nullptr;
    QPushButton* Command2 = nullptr;
    QTimer Timer1;
    // The page the tick navigated to, and the submission page (which only passes through).
    bool ticked_ = false;
    QUrl pageUrl_;
    QString statusText_ = "Ready";
};

} // namespace tolva
