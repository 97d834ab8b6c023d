// The game folder, stored paths and the file helpers.
//
// The game addresses every file as AppPath() plus a relative path with backslashes, and
// keeps those relative forms in its own files (levelset=levels\default\). So a path is
// held in that stored form everywhere and mapped only where a file is opened:
//
//  - AppPath() is the absolute folder with its '/' separators and one closing
//    backslash ("/home/ana/tolva2\"), so that joining "levels\default\" gives a stored
//    path like any other. The root folder is stored as a lone backslash.
//  - NativePath() turns every backslash into '/', collapses doubled separators, and
//    where a name is missing looks for one that differs only in the case of A-Z in the
//    same folder, so that sets made on case-blind systems load. Once a name is missing
//    altogether the rest of the path is left as it was: a file about to be created
//    keeps the name it was given.
//
// "Read-only" is the owner's write bit, the nearest thing this system has to the file
// attribute the game clears before it rewrites a file; it is read from the mode bits,
// so it holds for a process running as root as well.
#include "support/ZenkorDetail.h"
#include "support/ZenkorModule.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <thread>

namespace tolva {

namespace {

namespace fs = std::filesystem;

std::string& StoredAppPath() {
    static std::string path;
    return path;
}

bool IsSeparator(char c) { return c == '/' || c == '\\'; }

// The folder of the running executable, as a native path.
std::string ExecutableFolder() {
    std::error_code error;
    const fs::path exe = fs::read_symlink("/proc/self/exe", error);
    if (!error && exe.has_parent_path()) return exe.parent_path().string();
    return fs::current_path(error).string();
}

// A name in `folder` that equals `name` but for the case of A-Z; the first in byte
// order if there are several, so the choice does not depend on the directory's order.
std::string FindNameIgnoringCase(const std::string& folder, const std::string& name) {
    DIR* dir = ::opendir(folder.empty() ? "." : folder.c_str());
    if (dir == nullptr) return {};
    std::string best;
    while (const dirent* entry = ::readdir(dir)) {
        const std::string candidate = entry->d_name;
        if (detail::EqualsNoCase(candidate, name) && (best.empty() || candidate < best)) best = candidate;
    }
    ::closedir(dir);
    return best;
}

bool StatPath(const std::string& nativePath, struct stat& info) {
    return !nativePath.empty() && ::stat(nativePath.c_str(), &info) == 0;
}

int OpenTemporaryBeside(const std::string& target, mode_t mode, std::string& tempPath) {
    static unsigned counter = 0;
    const std::size_t slash = target.rfind('/');
    const std::string folder = slash == std::string::npos ? std::string() : target.substr(0, slash + 1);
    const std::string name = slash == std::string::npos ? target : target.substr(slash + 1);
    for (int attempt = 0; attempt < 100; ++attempt) {
        tempPath = folder + "." + name + ".tmp" + std::to_string(::getpid()) + "." + std::to_string(counter++);
        const int fd = ::open(tempPath.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        if (fd >= 0 || errno != EEXIST) return fd;
    }
    return -1;
}

bool WriteAll(int fd, const std::string& bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return false;
        done += static_cast<std::size_t>(n);
    }
    return true;
}

} // namespace

// ---- low-level access shared with the ini writer ------------------------------------

namespace detail {

bool ReadFileBytes(const std::string& nativePath, std::string& contents) {
    if (nativePath.empty()) return false;
    // Non-blocking open, so that a pipe of that name is turned away instead of waited on.
    const int fd = ::open(nativePath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0) return false;
    struct stat info {};
    if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode)) {
        ::close(fd);
        return false;
    }
    std::string bytes;
    bytes.resize(static_cast<std::size_t>(info.st_size));
    std::size_t done = 0;
    for (;;) {
        if (done == bytes.size()) bytes.resize(bytes.size() + 4096);  // the file may have grown
        const ssize_t n = ::read(fd, bytes.data() + done, bytes.size() - done);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) {
            ::close(fd);
            return false;
        }
        if (n == 0) break;
        done += static_cast<std::size_t>(n);
    }
    ::close(fd);
    bytes.resize(done);
    contents = std::move(bytes);
    return true;
}

bool ReplaceFileContents(const std::string& nativePath, const std::string& bytes) {
    if (nativePath.empty()) return false;
    std::string target = nativePath;
    std::error_code error;
    if (fs::is_symlink(target, error)) {
        const fs::path resolved = fs::weakly_canonical(target, error);
        if (error) return false;
        target = resolved.string();
    }
    struct stat info {};
    const bool exists = ::stat(target.c_str(), &info) == 0;
    if (exists && !S_ISREG(info.st_mode)) return false;

    std::string tempPath;
    const int fd = OpenTemporaryBeside(target, exists ? S_IRUSR | S_IWUSR : 0666, tempPath);
    if (fd < 0) return false;
    bool ok = WriteAll(fd, bytes);
    if (ok && exists) ok = ::fchmod(fd, info.st_mode & 07777) == 0;
    ok = (::close(fd) == 0) && ok;
    if (ok) ok = ::rename(tempPath.c_str(), target.c_str()) == 0;
    if (!ok) ::unlink(tempPath.c_str());
    return ok;
}

} // namespace detail

// ---- the game folder and stored paths ---------------------------------------------

std::string AppPath() {
    if (StoredAppPath().empty()) SetAppPath(ExecutableFolder());
    return StoredAppPath();
}

void SetAppPath(const std::string& folder) {
    std::error_code error;
    std::string path = folder;
    if (path.empty() || !IsSeparator(path.front())) path = fs::absolute(folder.empty() ? "." : folder, error).string();
    while (!path.empty() && IsSeparator(path.back())) path.pop_back();
    StoredAppPath() = path + "\\";
}

void InitAppPath(int argc, char** argv) {
    const std::string option = "--game-dir";
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == option && i + 1 < argc) {
            SetAppPath(argv[i + 1]);
            return;
        }
        if (arg.rfind(option + "=", 0) == 0) {
            SetAppPath(arg.substr(option.size() + 1));
            return;
        }
    }
    SetAppPath(ExecutableFolder());
}

std::string NativePath(const std::string& storedPath) {
    // Backslashes to '/', runs of separators to one.
    std::string plain;
    plain.reserve(storedPath.size());
    for (char c : storedPath) {
        const char mapped = c == '\\' ? '/' : c;
        if (mapped == '/' && !plain.empty() && plain.back() == '/') continue;
        plain.push_back(mapped);
    }

    // Each name that is missing as written is looked up without regard to case.
    std::string result;
    result.reserve(plain.size());
    std::size_t pos = 0;
    if (!plain.empty() && plain.front() == '/') {
        result = "/";
        pos = 1;
    }
    while (pos < plain.size()) {
        std::size_t slash = plain.find('/', pos);
        if (slash == std::string::npos) slash = plain.size();
        const std::string name = plain.substr(pos, slash - pos);
        const std::string folder = result;
        std::string candidate = folder + name;
        struct stat info {};
        if (name != "." && name != ".." && ::lstat(candidate.c_str(), &info) != 0) {
            const std::string found = FindNameIgnoringCase(folder, name);
            if (found.empty()) return folder + plain.substr(pos);  // missing: the rest as given
            candidate = folder + found;
        }
        result = candidate;
        if (slash < plain.size()) result += '/';
        pos = slash + 1;
    }
    return result;
}

// ---- files and folders --------------------------------------------------------------

bool FileExists(const std::string& path) {
    struct stat info {};
    return StatPath(NativePath(path), info) && !S_ISDIR(info.st_mode);
}

bool FolderExists(const std::string& path) {
    struct stat info {};
    const std::string native = NativePath(path);
    return StatPath(native, info) && S_ISDIR(info.st_mode) && ::access(native.c_str(), X_OK) == 0;
}

void ClearFileAttributes(const std::string& path) {
    const std::string native = NativePath(path);
    struct stat info {};
    if (!StatPath(native, info) || S_ISDIR(info.st_mode)) return;
    if ((info.st_mode & S_IWUSR) == 0) ::chmod(native.c_str(), (info.st_mode & 07777) | S_IWUSR);
}

std::vector<std::string> ListSubfolders(std::string& path) {
    if (path.empty() || !IsSeparator(path.back())) path += '\\';
    std::vector<std::string> names;
    const std::string folder = NativePath(path);
    DIR* dir = ::opendir(folder.c_str());
    if (dir == nullptr) return names;
    while (const dirent* entry = ::readdir(dir)) {
        const std::string name = entry->d_name;
        if (name == "." || name == "..") continue;
        bool isFolder = entry->d_type == DT_DIR;
        if (entry->d_type == DT_UNKNOWN || entry->d_type == DT_LNK) {
            struct stat info {};
            isFolder = ::stat((folder + name).c_str(), &info) == 0 && S_ISDIR(info.st_mode);
        }
        if (isFolder) names.push_back(name);
    }
    ::closedir(dir);
    return names;
}

bool ReadWholeFile(const std::string& path, std::string& contents) {
    return detail::ReadFileBytes(NativePath(path), contents);
}

int WriteWholeFile(const std::string& path, const std::string& text, const std::function<void()>& doEvents) {
    // The new file replaces the old one in a single rename, which stands for the
    // delete-then-create of the original: a failed write leaves the old file whole.
    if (FileExists(path)) {
        if (doEvents) doEvents();
        ClearFileAttributes(path);
        if (doEvents) doEvents();
    }
    return detail::ReplaceFileContents(NativePath(path), text) ? 0 : -1;
}

std::string GetFileExtension(const std::string& fileName, bool withDot) {
    // Only the last name of a path counts: a dot in a folder name is no extension.
    for (std::size_t i = fileName.size(); i > 0; --i) {
        const char c = fileName[i - 1];
        if (IsSeparator(c)) break;
        if (c == '.') return fileName.substr(withDot ? i - 1 : i);
    }
    return {};
}

void Pause(std::int32_t ms) {
    if (ms > 0) std::this_thread::sleep_for(std::chrono::milliseconds(ms));
}

} // namespace tolva
