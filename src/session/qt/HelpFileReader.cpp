#include "session/qt/HelpFileReader.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tolva {
namespace {

// Closes the descriptor on every way out.
struct Descriptor {
    int fd;
    ~Descriptor() {
        if (fd >= 0) ::close(fd);
    }
};

} // namespace

HelpFileReader::HelpFileReader(const QStringList& gameFolders) {
    for (const QString& folder : gameFolders) {
        const QString canonical = QFileInfo(folder).canonicalFilePath();
        if (!canonical.isEmpty()) folders_.append(canonical);
    }
}

bool HelpFileReader::Inside(const QString& canonicalPath) const {
    for (const QString& folder : folders_)
        if (canonicalPath.startsWith(folder + QLatin1Char('/'))) return true;
    return false;
}

std::optional<QByteArray> HelpFileReader::Read(const QString& path, qint64 maxBytes) const {
    // The canonical path has every link resolved, so what is opened is what was checked;
    // O_NOFOLLOW keeps a link put there since from leading elsewhere.
    const QString canonical = QFileInfo(path).canonicalFilePath();
    if (canonical.isEmpty() || !Inside(canonical)) return std::nullopt;
    const QByteArray name = QFile::encodeName(canonical);
    // O_NONBLOCK: opening a pipe with no writer would wait for one for ever.
    Descriptor file{::open(name.constData(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC | O_NOCTTY)};
    if (file.fd < 0) return std::nullopt;
    struct stat status {};
    if (::fstat(file.fd, &status) != 0 || !S_ISREG(status.st_mode) || status.st_size > maxBytes) return std::nullopt;

    // A file that grows while it is read is cut at the bound and refused.
    QByteArray bytes;
    bytes.resize(static_cast<qsizetype>(status.st_size) + 1);
    qsizetype got = 0;
    while (got < bytes.size()) {
        const ssize_t n = ::read(file.fd, bytes.data() + got, static_cast<size_t>(bytes.size() - got));
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return std::nullopt;
        if (n == 0) break;
        got += n;
    }
    if (got > maxBytes) return std::nullopt;
    bytes.truncate(got);
    return bytes;
}

} // namespace tolva
