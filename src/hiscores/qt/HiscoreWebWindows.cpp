#include "hiscores/qt/HiscoreWebWindows.h"

#include "hiscores/HiscoreWeb.h"
#include "hiscores/Hiscores.h"
#include "hiscores/SubmissionPage.h"
#include "hiscores/qt/WebBrowserLoader.h"
#include "settings/GameSettings.h"
#include "shared/GameText.h"
#include "support/WindowOpener.h"
#include "support/ZenkorModule.h"
#include "support/platform/Dialogs.h"

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QUrl>

#include <memory>

namespace tolva {

namespace {

HiscoreMenuState StateOf(const HiscoreWebParts& parts) {
    const bool isDefault = !parts.IsDefaultSet || parts.IsDefaultSet();
    return {parts.Table, isDefault ? DefaultSetKey : OtherSetKey, isDefault,
            parts.GameRunning && parts.GameRunning(), parts.Boxes};
}

// The browser window's request, its submission page in the game folder as it is now.
WebBrowserRequest MakeRequest(const HiscoreWebParts& parts, bool submitHiscore) {
    const std::string gameFolder = AppPath();
    auto page = std::make_shared<SubmissionPage>(gameFolder);
    WebBrowserRequest request;
    request.Owner = parts.MainWindow;
    request.SubmitHiscore = submitHiscore;
    request.HiscoreUrl = parts.Settings.HiscoreUrl;
    request.PreparePage = [&parts, page, gameFolder]() -> std::optional<std::string> {
        // Only the default set's table is submitted.
        if (!page->Write(MakeSubmissionPage(gameFolder, parts.Settings, parts.Table, DefaultSetKey)))
            return std::nullopt;
        return page->NativeFile();
    };
    request.PageFailed = [&parts] {
        parts.Boxes.MessageBox("Unable to create data-connection!", std::string(GameTitle), MessageIcon::Stop,
                               MessageButtons::Ok);
    };
    request.RemovePage = [page] { page->Remove(); };
    request.OpenInDefaultBrowser = [&parts](const std::string& url) {
        const QUrl address(QString::fromLatin1(url.data(), static_cast<qsizetype>(url.size())));
        if (parts.OpenUrl) parts.OpenUrl(address);
        else QDesktopServices::openUrl(address);
    };
    return request;
}

} // namespace

std::string DesktopFolder() {
    const QString desktop = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
    const QString folder = !desktop.isEmpty() && QDir(desktop).exists() ? desktop : QDir::homePath();
    return QFile::encodeName(folder).toStdString();
}

void RegisterHiscoreWebWindows(WindowOpener& windows, HiscoreWebParts given) {
    // One copy shared by the three entries, living as long as the entries do.
    auto parts = std::make_shared<HiscoreWebParts>(std::move(given));
    const OpenWebBrowser open = [parts](bool submitHiscore) {
        const QString plugin = parts->PluginFile.isEmpty() ? WebBrowserLoader::DefaultPluginFile() : parts->PluginFile;
        WebBrowserLoader::Show(MakeRequest(*parts, submitHiscore), parts->Boxes, plugin);
    };
    windows.Register(GameWindow::ExportHiscore, [parts] { ExportHiscore(StateOf(*parts), DesktopFolder()); });
    windows.Register(GameWindow::SubmitInternetHiscores,
                     [parts, open] { SubmitInternetHiscores(StateOf(*parts), open); });
    windows.Register(GameWindow::ShowInternetHiscores, [open] { ShowInternetHiscores(open); });
}

} // namespace tolva
