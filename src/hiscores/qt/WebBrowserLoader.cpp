#include "hiscores/qt/WebBrowserLoader.h"

#include "shared/GameText.h"
#include "support/GameFolders.h"
#include "support/platform/Dialogs.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QLibrary>

#include <map>
#include <memory>
#include <unistd.h>

namespace tolva {

namespace {

// One library object per file for the whole run; never unloaded.
std::map<QString, ShowWebBrowserFunction>& LoadedPlugins() {
    static std::map<QString, ShowWebBrowserFunction> loaded;
    return loaded;
}

void AllowEngineForRoot() {
    if (::geteuid() == 0 && qEnvironmentVariableIsEmpty("QTWEBENGINE_DISABLE_SANDBOX"))
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
}

} // namespace

QString WebBrowserLoader::DefaultPluginFile() {
    return QFile::decodeName(PluginFolder().c_str()) + "/libtolva2_webbrowser.so";
}

ShowWebBrowserFunction WebBrowserLoader::Load(const QString& pluginFile, std::string& why) {
    auto& loaded = LoadedPlugins();
    if (const auto it = loaded.find(pluginFile); it != loaded.end()) return it->second;
    if (!QFileInfo::exists(pluginFile)) {
        why = "The Internet hiscore window is not installed with this game (" + pluginFile.toStdString() +
              " is missing). It needs Qt WebEngine when the game is built.";
        return nullptr;
    }
    AllowEngineForRoot();
    auto library = std::make_unique<QLibrary>(pluginFile);
    if (!library->load()) {
        why = "The Internet hiscore window could not be loaded: " + library->errorString().toStdString() +
              "\r\nIs Qt WebEngine installed?";
        return nullptr;
    }
    const auto version = reinterpret_cast<WebBrowserVersionFunction>(library->resolve(WebBrowserVersionSymbol));
    const auto show = reinterpret_cast<ShowWebBrowserFunction>(library->resolve(ShowWebBrowserSymbol));
    if (version == nullptr || show == nullptr || version() != WebBrowserPluginVersion) {
        why = "The Internet hiscore window (" + pluginFile.toStdString() +
              ") belongs to another version of the game.";
        library->unload();
        return nullptr;
    }
    // The library stays loaded for the rest of the run: QLibrary's destructor does not
    // unload it.
    loaded.emplace(pluginFile, show);
    return show;
}

bool WebBrowserLoader::Show(const WebBrowserRequest& request, Dialogs& boxes, const QString& pluginFile) {
    std::string why;
    const ShowWebBrowserFunction show = Load(pluginFile, why);
    if (show == nullptr) {
        boxes.MessageBox(why, std::string(GameTitle), MessageIcon::Stop, MessageButtons::Ok);
        return false;
    }
    show(&request);
    return true;
}

} // namespace tolva
