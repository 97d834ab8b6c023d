#include "support/GameFolders.h"

#include "support/ZenkorDetail.h"
#include "support/ZenkorModule.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

namespace tolva {

namespace {

namespace fs = std::filesystem;

std::string& UsedPluginFolder() {
    static std::string folder;
    return folder;
}

std::string Environment(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

// The home folder from the password database, for a process started without HOME.
std::string AccountHome() {
    const passwd* account = ::getpwuid(::getuid());
    return account != nullptr && account->pw_dir != nullptr ? account->pw_dir : "";
}

// The player's folder: $XDG_DATA_HOME/tolva2, where only an absolute XDG_DATA_HOME
// counts (a relative one is to be ignored), else HOME/.local/share/tolva2.
std::string PlayerFolder(const std::string& xdgDataHome, const std::string& home) {
    if (!xdgDataHome.empty() && xdgDataHome.front() == '/') return (fs::path(xdgDataHome) / "tolva2").string();
    const std::string base = !home.empty() ? home : AccountHome();
    return (fs::path(base.empty() ? "/" : base) / ".local" / "share" / "tolva2").string();
}

} // namespace

GameFolders DecideGameFolders(const std::string& executableFolder, const std::string& gameDirOption,
                              const std::string& xdgDataHome, const std::string& home) {
    GameFolders folders;
    const fs::path exe = fs::path(executableFolder).lexically_normal();
    folders.PluginFolder = (exe / "plugins").string();
    if (!gameDirOption.empty()) {
        folders.GameFolder = gameDirOption;
        return folders;
    }
    const fs::path bin = exe.has_filename() ? exe : exe.parent_path();
    const fs::path prefix = bin.parent_path();
    const fs::path data = prefix / "share" / "games" / "tolva2";
    std::error_code error;
    if (bin.filename() == "games" && fs::is_directory(data, error)) {
        folders.Installed = true;
        folders.DataFolder = data.string();
        folders.PluginFolder = (prefix / "lib" / "games" / "tolva2" / "plugins").string();
        folders.GameFolder = PlayerFolder(xdgDataHome, home);
        return folders;
    }
    folders.GameFolder = executableFolder;
    return folders;
}

GameFolders DefaultGameFolders() {
    return DecideGameFolders(ExecutableFolderPath(), "", Environment("XDG_DATA_HOME"), Environment("HOME"));
}

bool UseGameFolders(const GameFolders& folders) {
    UsedPluginFolder() = folders.PluginFolder;
    if (!folders.Installed) {
        SetAppPath(folders.GameFolder);
        return true;
    }
    SetLayeredAppPath(folders.GameFolder, folders.DataFolder);
    return detail::MakeFolderChain(folders.GameFolder);
}

std::string PluginFolder() {
    if (UsedPluginFolder().empty()) return (fs::path(ExecutableFolderPath()) / "plugins").string();
    return UsedPluginFolder();
}

void InitAppPath(int argc, char** argv) {
    const std::string option = "--game-dir";
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        const bool separate = arg == option && i + 1 < argc;
        if (!separate && arg.rfind(option + "=", 0) != 0) continue;
        // A folder named on the command line is always a portable game folder.
        UseGameFolders(DecideGameFolders(ExecutableFolderPath(), "", "", ""));
        SetAppPath(separate ? argv[i + 1] : arg.substr(option.size() + 1));
        return;
    }
    UseGameFolders(DefaultGameFolders());
}

} // namespace tolva
