#include "session/qt/HelpWindow.h"

#include "session/qt/HelpBrowser.h"

#include "shared/GameText.h"
#include "support/ZenkorModule.h"
#include "support/platform/Dialogs.h"

#include <QFile>
#include <QGuiApplication>
#include <QKeySequence>
#include <QPointer>
#include <QScreen>
#include <QShortcut>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>

namespace tolva {
namespace {

// The colours of the page, given to the browser as well, so that nothing light flashes
// up before the page has painted and the margins around it match.
const QColor PageBackground(0x0e, 0x26, 0x28);
const QColor PageText(0xe4, 0xee, 0xea);

// The one help window of the program while it is open.
QPointer<HelpWindow>& OpenWindow() {
    static QPointer<HelpWindow> window;
    return window;
}

// The folders the page and its pictures may come from: the game folder and, installed,
// the data folder under it.
QStringList GameFolders() {
    QStringList folders{QFile::decodeName(NativePath(AppPath()).c_str())};
    if (AppPathIsLayered()) folders.append(QFile::decodeName(NativePath(AppDataPath()).c_str()));
    return folders;
}

void TellNotFound(Dialogs& dialogs) {
    dialogs.MessageBox("HELP FILE WAS NOT FOUND!", std::string(GameTitle), MessageIcon::Stop, MessageButtons::Ok);
}

void BringToFront(QWidget& window) {
    if (window.isMinimized()) window.showNormal();
    else window.show();
    window.raise();
    window.activateWindow();
}

} // namespace

HelpWindow::HelpWindow(QWidget* owner, const QString& pagePath)
    : QWidget(owner, Qt::Window),
      browser_(new HelpBrowser(GameFolders(), this)) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QString::fromLatin1(GameTitle.data(), static_cast<int>(GameTitle.size())) +
                   QStringLiteral(" - Help"));
    if (owner != nullptr && !owner->window()->windowIcon().isNull()) setWindowIcon(owner->window()->windowIcon());
    resize(WidthPx, HeightPx);

    QPalette palette = browser_->palette();
    palette.setColor(QPalette::Base, PageBackground);
    palette.setColor(QPalette::Text, PageText);
    browser_->setPalette(palette);
    browser_->setFrameShape(QFrame::NoFrame);
    browser_->setOpenLinks(true);
    browser_->setOpenExternalLinks(true);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(browser_);

    // Escape puts the page away, as it does with the game's other windows.
    auto* close = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    connect(close, &QShortcut::activated, this, &QWidget::close);

    browser_->setSource(QUrl::fromLocalFile(pagePath));
    PlaceOver(owner);
}

QTextBrowser* HelpWindow::Browser() const { return browser_; }

bool HelpWindow::PageFits() const { return browser_->PageFits(); }

void HelpWindow::PlaceOver(const QWidget* owner) {
    const QScreen* screen = owner != nullptr ? owner->screen() : QGuiApplication::primaryScreen();
    const QRect area = screen != nullptr ? screen->availableGeometry() : QRect();
    QPoint centre = owner != nullptr ? owner->window()->frameGeometry().center() : area.center();
    QRect wanted(QPoint(0, 0), size());
    wanted.moveCenter(centre);
    // Keep the title bar on the screen, however the owner stands.
    if (area.isValid()) {
        wanted.moveLeft(std::max(area.left(), std::min(wanted.left(), area.right() - wanted.width())));
        wanted.moveTop(std::max(area.top(), std::min(wanted.top(), area.bottom() - wanted.height())));
    }
    move(wanted.topLeft());
}

std::string HelpPagePath() { return AppPath() + "help\\help.htm"; }

HelpWindow* ShowHelp(QWidget* owner, Dialogs& dialogs) {
    const std::string page = HelpPagePath();
    if (!FileExists(page)) {
        TellNotFound(dialogs);
        return nullptr;
    }
    QPointer<HelpWindow>& open = OpenWindow();
    // A window that has been closed may still wait for its deletion: it is not reused.
    if (open.isNull() || !open->isVisible()) {
        auto* window = new HelpWindow(owner, QFile::decodeName(NativePath(page).c_str()));
        // A page that cannot be shown safely is as good as none.
        if (!window->PageFits()) {
            delete window;
            TellNotFound(dialogs);
            return nullptr;
        }
        open = window;
    }
    BringToFront(*open);
    return open.data();
}

} // namespace tolva
