#pragma once
// Reads the files the help page asks for, and only those a help page may have: regular
// files inside the game folder (the page's own folder and the pictures it shows from
// the game's data and level folders), of bounded size. A name that leads outside the
// folder, to a device, a pipe, a socket or a folder, or to a file larger than asked for
// gives nothing, and no read ever waits on anything but a regular file.
#include <QByteArray>
#include <QString>

#include <optional>

namespace tolva {

class HelpFileReader final {
public:
    // `gameFolder`: a native path.
    explicit HelpFileReader(const QString& gameFolder);

    // The bytes of `path` (a native path), or nothing.
    std::optional<QByteArray> Read(const QString& path, qint64 maxBytes) const;

private:
    bool Inside(const QString& canonicalPath) const;

    QString folder_;  // canonical, without a trailing separator; empty if it has none
};

} // namespace tolva
