#include "hiscores/qt/webbrowser/frmWebBrowser.h"

#include <QFont>
#include <QLabel>
#include <QPushButton>
#include <QWebEnginePage>
#include <QWebEngineSettings>
#include <QWebEngineView>

namespace tolva {

namespace {

QString Latin1(const std::string& text) { return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size())); }

} // namespace

frmWebBrowser::frmWebBrowser(WebBrowserRequest request) : QDialog(request.Owner), request_(std::move(request)) {
    setObjectName("frmWebBrowser");
    setWindowTitle("TOLVA II INTERNET HISCORES");
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setModal(true);
    setFixedSize(FormWidth, FormHeight);
    MakeControls();

    Timer1.setObjectName("Timer1");
    Timer1.setInterval(TimerIntervalMs);
    connect(&Timer1, &QTimer::timeout, this, &frmWebBrowser::Timer1_Timer);
}

frmWebBrowser::~frmWebBrowser() {
    Timer1.stop();
    if (request_.RemovePage) request_.RemovePage();
}

void frmWebBrowser::MakeControls() {
    QFont font("DejaVu Sans");
    font.setPixelSize(11);
    setFont(font);

    // The label lies behind the browser, which covers it once a page has come.
    Label1 = new QLabel("CONNECTING TO THE INTERNET, PLEASE WAIT", this);
    Label1->setObjectName("Label1");
    QFont big = font;
    big.setPointSize(18);
    big.setBold(true);
    Label1->setFont(big);
    Label1->setAlignment(Qt::AlignCenter);
    Label1->setGeometry(37, 139, 597, 29);

    WebBrowser1 = new QWebEngineView(this);
    WebBrowser1->setObjectName("WebBrowser1");
    WebBrowser1->setGeometry(1, 2, 666, 414);
    WebBrowser1->hide();
    // The submission page is a local file whose form posts to an http address.
    WebBrowser1->settings()->setAttribute(QWebEngineSettings::LocalContentCanAccessRemoteUrls, true);
    connect(WebBrowser1, &QWebEngineView::loadStarted, this, [this] {
        WebBrowser1_StatusTextChange("Opening " + WebBrowser1->url().toString() + "...");
    });
    connect(WebBrowser1, &QWebEngineView::loadProgress, this,
            [this](int percent) { WebBrowser1_StatusTextChange(QString("Loading... %1%").arg(percent)); });
    connect(WebBrowser1, &QWebEngineView::loadFinished, this, &frmWebBrowser::WebBrowser1_LoadFinished);
    connect(WebBrowser1->page(), &QWebEnginePage::linkHovered, this, [this](const QString& url) {
        Label2->setText(url.isEmpty() ? statusText_ : url);
    });

    // The status line: a short label in the corner under the browser.
    Label2 = new QLabel(statusText_, this);
    Label2->setObjectName("Label2");
    Label2->setGeometry(2, 415, 31, 13);

    Command2 = new QPushButton("Show hiscores in default browser", this);
    Command2->setObjectName("Command2");
    Command2->setGeometry(368, 425, 181, 27);
    Command2->setAutoDefault(false);
    connect(Command2, &QPushButton::clicked, this, &frmWebBrowser::Command2_Click);

    Command1 = new QPushButton("Close", this);
    Command1->setObjectName("Command1");
    Command1->setGeometry(559, 425, 102, 27);
    Command1->setAutoDefault(false);
    connect(Command1, &QPushButton::clicked, this, &frmWebBrowser::Command1_Click);
}

void frmWebBrowser::Form_Load() {
    if (QWidget* owner = parentWidget()) {
        setWindowIcon(owner->windowIcon());
        const QRect frame = owner->frameGeometry();
        move(frame.center() - QPoint(FormWidth / 2, FormHeight / 2));
    }
    Timer1.start();
    WebBrowser1->load(QUrl("about:blank"));
}

void frmWebBrowser::Timer1_Timer() {
    Timer1.stop();
    ticked_ = true;
    if (!request_.SubmitHiscore) {
        pageUrl_ = QUrl(Latin1(request_.HiscoreUrl));
        WebBrowser1->load(pageUrl_);
        return;
    }
    const std::optional<std::string> page = request_.PreparePage ? request_.PreparePage() : std::nullopt;
    if (!page) {
        if (request_.PageFailed) request_.PageFailed();
        reject();
        return;
    }
    pageUrl_ = QUrl::fromLocalFile(QString::fromLocal8Bit(page->c_str()));
    WebBrowser1->load(pageUrl_);
    // The browser covers the waiting text from now on: the page posts itself, and what
    // comes back (an answer, or the engine's word that the post failed) stands there.
    WebBrowser1->show();
}

void frmWebBrowser::WebBrowser1_LoadFinished(bool ok) {
    WebBrowser1_StatusTextChange(ok ? "Done" : "The page could not be loaded");
    // The page of the hiscore address is shown once it has come (a submission shows the
    // browser as soon as it posts); the blank page of the first moment passes unseen.
    const QUrl shown = WebBrowser1->url();
    if (!ticked_ || shown.scheme() == "about") return;
    WebBrowser1->show();
}

void frmWebBrowser::WebBrowser1_StatusTextChange(const QString& text) {
    statusText_ = text;
    Label2->setText(text);
}

void frmWebBrowser::Command1_Click() { accept(); }

void frmWebBrowser::Command2_Click() {
    if (request_.OpenInDefaultBrowser) request_.OpenInDefaultBrowser(request_.HiscoreUrl);
    accept();
}

} // namespace tolva
