#pragma once
// The help window: the game's help page, help\help.htm of the game folder, in a browser
// window of its own beside the game. It is not modal, so the player can read and play at
// once; asking for help again while it is open brings the same window to the front
// instead of opening a second one.
//
// The page is 8-bit text that names its own character set, and it shows the game's
// pictures through paths relative to itself ("../data/s0.bmp"), which the browser
// resolves against the page's own location. Links within the page move inside the
// window; links to the web open in the system's browser.
//
// The page and what it loads are bounded (HelpBrowser): a page past the bounds is the
// damaged file it is, and is told like a missing one rather than shown.
#include <QString>
#include <QWidget>

#include <string>

class QTextBrowser;

namespace tolva {

class Dialogs;
class HelpBrowser;

class HelpWindow final : public QWidget {
public:
    static constexpr int WidthPx = 640;
    static constexpr int HeightPx = 560;

    // A window over `owner` (which may be null) that shows the page at `pagePath`, a
    // native path.
    HelpWindow(QWidget* owner, const QString& pagePath);

    QTextBrowser* Browser() const;

    // False when the page could not be read or was past the bounds: the window then has
    // nothing to show.
    bool PageFits() const;

private:
    void PlaceOver(const QWidget* owner);

    HelpBrowser* browser_;
};

// The stored path of the help page: AppPath() + "help\help.htm".
std::string HelpPagePath();

// Shows the help page, or, when the game folder has none or it cannot be shown, tells so
// with the stop-icon box "HELP FILE WAS NOT FOUND!". Gives the window shown, or null.
HelpWindow* ShowHelp(QWidget* owner, Dialogs& dialogs);

} // namespace tolva
