#pragma once
// The three hiscore entries of the Options menu on screen: "Export hiscore file..." with
// the save-file box starting on the player's desktop, and the two Internet entries with
// the browser window from its plug-in (WebBrowserLoader). The rules of the entries are
// the core's (HiscoreWeb); this file only gives them what the running game has.
#include <QString>

#include <functional>
#include <string>

class QUrl;
class QWidget;

namespace tolva {

class Dialogs;
class Hiscores;
class WindowOpener;
struct GameSettings;

struct HiscoreWebParts {
    const Hiscores& Table;            // the chosen set's table
    const GameSettings& Settings;     // HiscoreUrl and SupplyStatFile, read at each use
    Dialogs& Boxes;
    QWidget* MainWindow = nullptr;    // owner, place and icon of the windows
    std::function<bool()> IsDefaultSet;
    std::function<bool()> GameRunning;
    // Where the browser plug-in is; empty for plugins/ beside the executable.
    QString PluginFile = {};
    // Opens an address in the system's browser; empty for QDesktopServices.
    std::function<void(const QUrl&)> OpenUrl = {};
};

// Registers ExportHiscore, SubmitInternetHiscores and ShowInternetHiscores.
void RegisterHiscoreWebWindows(WindowOpener& windows, HiscoreWebParts parts);

// The player's desktop folder, or the home folder when there is no desktop folder.
std::string DesktopFolder();

} // namespace tolva
