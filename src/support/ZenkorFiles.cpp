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
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <thread>

namespace tolva {

namespace {

namespace fs = std::filesystem;

bool IsSeparator(char c) { return c == '/' || c == '\\'; }

std::string& StoredAppPath() {
    static std::string path;
    return path;
}

// The installed, read-only data folder as a stored path with its closing backslash while
// the game runs installed; empty for a portable game folder, which is one layer.
std::string& StoredDataPath() {
    static std::string path;
    return path;
}

// The stored form of a native folder: absolute, '/' inside, one closing backslash.
std::string StoredFolder(const std::string& folder) {
    std::error_code error;
    std::string path = folder;
    if (path.empty() || !IsSeparator(path.front())) path = fs::absolute(folder.empty() ? "." : folder, error).string();
    while (!path.empty() && IsSeparator(path.back())) path.pop_back();
    return path + "\\";
}

// True when `storedPath` lies in a game folder of two layers; `rest` is then the part
// behind the game folder ("levels\default\levels.set").
bool InLayeredFolder(const std::string& storedPath, std::string& rest) {
    const std::string& own = StoredAppPath();
    if (StoredDataPath().empty() || own.empty() || storedPath.compare(0, own.size(), own) != 0) return false;
    rest = storedPath.substr(own.size());
    return true;
}


// The names of the folders directly in the native folder `folder` (closing '/').
void AddSubfolders(const std::string& folder, std::vector<std::string>& names) {
    DIR* dir = ::opendir(folder.c_str());
    if (dir == nullptr) return;
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
}

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

// The temporary files of a write are ".NAME.tmpPID.N" beside the target, so that one
// left behind by a kill is recognised by its name and the writer's process number.
std::string TemporaryPrefix(const std::string& name) { return "." + name + ".tmp"; }

void SplitFolder(const std::string& target, std::string& folder, std::string& name) {
    const std::size_t slash = target.rfind('/');
    folder = slash == std::string::npos ? std::string() : target.substr(0, slash + 1);
    name = slash == std::string::npos ? target : target.substr(slash + 1);
}

// The writer's process number of a temporary file of `name`, or -1 if `entry` is none.
long TemporaryOwner(const std::string& entry, const std::string& name) {
    const std::string prefix = TemporaryPrefix(name);
    if (entry.size() <= prefix.size() || entry.compare(0, prefix.size(), prefix) != 0) return -1;
    const std::string rest = entry.substr(prefix.size());   // PID.N
    const std::size_t dot = rest.find('.');
    if (dot == 0 || dot == std::string::npos || dot + 1 == rest.size() || dot > 9) return -1;
    for (std::size_t i = 0; i < rest.size(); ++i)
        if (i != dot && (rest[i] < '0' || rest[i] > '9')) return -1;
    return std::stol(rest.substr(0, dot));
}

// Removes the temporary files of `target` that a killed writer left behind: those of
// this process (it writes one file at a time, so none of its own is in use now) and
// those of processes that no longer exist. Another running game's file stays.
void RemoveStaleTemporaries(const std::string& target) {
    std::string folder, name;
    SplitFolder(target, folder, name);
    DIR* dir = ::opendir(folder.empty() ? "." : folder.c_str());
    if (dir == nullptr) return;
    std::vector<std::string> stale;
    while (const dirent* entry = ::readdir(dir)) {
        const long pid = TemporaryOwner(entry->d_name, name);
        if (pid < 0) continue;
        const bool gone = pid == ::getpid() || pid == 0 || (::kill(static_cast<pid_t>(pid), 0) != 0 && errno == ESRCH);
        if (gone) stale.push_back(folder + entry->d_name);
    }
    ::closedir(dir);
    for (const std::string& path : stale) {
        struct stat info {};
        if (::lstat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode)) ::unlink(path.c_str());
    }
}

int OpenTemporaryBeside(const std::string& target, mode_t mode, std::string& tempPath) {
    static unsigned counter = 0;
    std::string folder, name;
    SplitFolder(target, folder, name);
    for (int attempt = 0; attempt < 100; ++attempt) {
        tempPath = folder + TemporaryPrefix(name) + std::to_string(::getpid()) + "." + std::to_string(counter++);
        const int fd = ::open(tempPath.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        if (fd >= 0 || errno != EEXIST) return fd;
    }
    return -1;
}

// Makes the rename itself durable: the folder's entry is flushed as well. A file system
// that cannot flush a folder (some refuse with EINVAL) still has the renamed file.
void SyncFolderOf(const std::string& target) {
    std::string folder, name;
    SplitFolder(target, folder, name);
    const int fd = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) return;
    ::fsync(fd);
    ::close(fd);
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

BoundedFileBuffer::int_type BoundedFileBuffer::underflow() {
    if (gptr() < egptr()) return traits_type::to_int_type(*gptr());
    if (outcome_ != FileRead::Ok) return traits_type::eof();
    for (;;) {
        // One byte more than the bound allows shows that the file went past it.
        const std::size_t want = std::min(piece_.size(), left_ + 1);
        const ssize_t got = ::read(fd_, piece_.data(), want);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) outcome_ = FileRead::Failed;
        if (got <= 0) return traits_type::eof();
        if (static_cast<std::size_t>(got) > left_) {
            outcome_ = FileRead::TooLarge;
            return traits_type::eof();
        }
        left_ -= static_cast<std::size_t>(got);
        setg(piece_.data(), piece_.data(), piece_.data() + got);
        return traits_type::to_int_type(*gptr());
    }
}

int OpenRegularFile(const std::string& nativePath, std::size_t maxBytes, FileRead& result, std::size_t& size) {
    result = FileRead::Missing;
    if (nativePath.empty()) return -1;
    // Non-blocking open, so that a pipe of that name is turned away instead of waited on.
    const int fd = ::open(nativePath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0) {
        if (errno != ENOENT && errno != ENOTDIR && errno != ELOOP && errno != ENXIO) result = FileRead::Failed;
        return -1;
    }
    struct stat info {};
    if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode)) {
        ::close(fd);
        return -1;
    }
    if (static_cast<std::uintmax_t>(info.st_size) > maxBytes) {
        ::close(fd);
        result = FileRead::TooLarge;
        return -1;
    }
    size = static_cast<std::size_t>(info.st_size);
    result = FileRead::Ok;
    return fd;
}

FileRead ReadFileBytes(const std::string& nativePath, std::string& contents, std::size_t maxBytes) {
    FileRead opened = FileRead::Missing;
    std::size_t size = 0;
    const int fd = OpenRegularFile(nativePath, maxBytes, opened, size);
    if (fd < 0) return opened;
    // The size is only a first guess: the file may grow while it is read, and the bound
    // holds for what is actually read. One byte more than the size lets the first read
    // meet the end of an unchanged file without the buffer having to grow (and be copied).
    std::string bytes;
    bytes.resize(std::min(size + 1, maxBytes + 1));
    std::size_t done = 0;
    for (;;) {
        if (done == bytes.size()) {
            if (bytes.size() > maxBytes) {
                ::close(fd);
                return FileRead::TooLarge;
            }
            bytes.resize(std::min(bytes.size() + 65536, maxBytes + 1));
        }
        const ssize_t n = ::read(fd, bytes.data() + done, bytes.size() - done);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) {
            ::close(fd);
            return FileRead::Failed;
        }
        if (n == 0) break;
        done += static_cast<std::size_t>(n);
    }
    ::close(fd);
    if (done > maxBytes) return FileRead::TooLarge;
    bytes.resize(done);
    contents = std::move(bytes);
    return FileRead::Ok;
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

    RemoveStaleTemporaries(target);
    std::string tempPath;
    const int fd = OpenTemporaryBeside(target, exists ? S_IRUSR | S_IWUSR : 0666, tempPath);
    if (fd < 0) return false;
    bool ok = WriteAll(fd, bytes);
    if (ok && exists) ok = ::fchmod(fd, info.st_mode & 07777) == 0;
    // On the disk before the rename: after a power cut the name holds the old bytes or
    // the new ones, never an empty file.
    if (ok) ok = ::fsync(fd) == 0;
    ok = (::close(fd) == 0) && ok;
    if (ok) ok = ::rename(tempPath.c_str(), target.c_str()) == 0;
    if (!ok) {
        ::unlink(tempPath.c_str());
        return false;
    }
    SyncFolderOf(target);
    return true;
}

} // namespace detail

// ---- the game folder and stored paths ---------------------------------------------

std::string AppPath() {
    if (StoredAppPath().empty()) SetAppPath(ExecutableFolder());
    return StoredAppPath();
}

void SetAppPath(const std::string& folder) {
    StoredAppPath() = StoredFolder(folder);
    StoredDataPath().clear();
}

void SetLayeredAppPath(const std::string& playerFolder, const std::string& dataFolder) {
    StoredAppPath() = StoredFolder(playerFolder);
    StoredDataPath() = StoredFolder(dataFolder);
}

bool AppPathIsLayered() { return !StoredDataPath().empty(); }

std::string AppDataPath() { return StoredDataPath(); }

std::string ExecutableFolderPath() { return ExecutableFolder(); }

std::string NativePath(const std::string& storedPath) {
    std::string rest;
    if (!InLayeredFolder(storedPath, rest)) return detail::ResolveStoredPath(storedPath);
    // The player's file first, then the installed one; a name in neither is the player's,
    // so that a file about to be made goes where the game may write.
    const std::string own = detail::ResolveStoredPath(StoredAppPath() + rest);
    struct stat info {};
    if (::lstat(own.c_str(), &info) == 0) return own;
    const std::string shipped = detail::ResolveStoredPath(StoredDataPath() + rest);
    if (::lstat(shipped.c_str(), &info) == 0) return shipped;
    return own;
}

std::string WritablePath(const std::string& storedPath, bool makeFolders) {
    std::string rest;
    if (!InLayeredFolder(storedPath, rest)) return NativePath(storedPath);
    const std::string own = detail::ResolveStoredPath(StoredAppPath() + rest);
    if (makeFolders) {
        // Only folders inside the player's folder are made: a path that climbs out of it
        // with ".." gets none.
        const fs::path root = fs::path(detail::ResolveStoredPath(StoredAppPath())).lexically_normal();
        const fs::path parent = fs::path(own).lexically_normal().parent_path();
        const std::string rootText = root.string();
        if (parent.string().compare(0, rootText.size(), rootText) == 0) detail::MakeFolderChain(parent.string());
    }
    return own;
}

namespace detail {

bool MakeFolderChain(const std::string& folder) {
    std::error_code error;
    if (fs::is_directory(folder, error)) return true;
    const fs::path path(folder);
    if (path.has_parent_path() && path.parent_path() != path) MakeFolderChain(path.parent_path().string());
    return ::mkdir(folder.c_str(), 0700) == 0 || (errno == EEXIST && fs::is_directory(folder, error));
}

std::string ResolveStoredPath(const std::string& storedPath) {
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

} // namespace detail

// ---- files and folders --------------------------------------------------------------

bool FileExists(const std::string& path) {
    struct stat info {};
    return StatPath(NativePath(path), info) && S_ISREG(info.st_mode);
}

bool FolderExists(const std::string& path) {
    struct stat info {};
    const std::string native = NativePath(path);
    return StatPath(native, info) && S_ISDIR(info.st_mode) && ::access(native.c_str(), X_OK) == 0;
}

void ClearFileAttributes(const std::string& path) {
    const std::string native = WritablePath(path);
    struct stat info {};
    if (!StatPath(native, info) || S_ISDIR(info.st_mode)) return;
    if ((info.st_mode & S_IWUSR) == 0) ::chmod(native.c_str(), (info.st_mode & 07777) | S_IWUSR);
}

std::vector<std::string> ListSubfolders(std::string& path) {
    if (path.empty() || !IsSeparator(path.back())) path += '\\';
    std::vector<std::string> names;
    std::string rest;
    if (!InLayeredFolder(path, rest)) {
        AddSubfolders(NativePath(path), names);
        return names;
    }
    // The player's folders, then the installed ones the player has no folder of that
    // name for (without regard to case, as a stored path would find the player's).
    AddSubfolders(detail::ResolveStoredPath(StoredAppPath() + rest), names);
    std::vector<std::string> shipped;
    AddSubfolders(detail::ResolveStoredPath(StoredDataPath() + rest), shipped);
    for (const std::string& name : shipped) {
        const bool known = std::any_of(names.begin(), names.end(),
                                       [&name](const std::string& own) { return detail::EqualsNoCase(own, name); });
        if (!known) names.push_back(name);
    }
    return names;
}

FileRead ReadFileWithin(const std::string& path, std::string& contents, std::size_t maxBytes) {
    return detail::ReadFileBytes(NativePath(path), contents, maxBytes);
}

int OpenFileWithin(const std::string& path, std::size_t maxBytes, FileRead& result) {
    std::size_t size = 0;
    return detail::OpenRegularFile(NativePath(path), maxBytes, result, size);
}

bool ReadWholeFile(const std::string& path, std::string& contents, std::size_t maxBytes) {
    return ReadFileWithin(path, contents, maxBytes) == FileRead::Ok;
}

int WriteWholeFile(const std::string& path, const std::string& text, const std::function<void()>& doEvents) {
    // The new file replaces the old one in a single rename, which stands for the
    // delete-then-create of the original: a failed write leaves the old file whole.
    if (FileExists(path)) {
        if (doEvents) doEvents();
        ClearFileAttributes(path);
        if (doEvents) doEvents();
    }
    return detail::ReplaceFileContents(WritablePath(path, true), text) ? 0 : -1;
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
