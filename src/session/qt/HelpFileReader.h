#pragma once
// Reads the files the help page asks for, and only those a help page may have: regular
// files inside the game's folders (the page's own folder and the pictures it shows from
// the game's data and level folders), of bounded size. A name that leads outside the
// folder, to a device, a pipe, a socket or a folder, or to a file larger than asked for
// gives nothing, and no read ever waits on anything but a regular file.
#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace tolva {

class HelpFileReader final {
public:
    // `gameFolders`: native paths; an installed game has two, the player's folder and the
    // installed data folder.
    explicit HelpFileReader(const QStringList& gameFolders);

    // The bytes of `path` (a native path), or nothing.
    std::optional<QByteArray> Read(const QString& path, qint64 maxBytes) const;

private:
    bool Inside(const QString& canonicalPath) const;

    QStringList folders_;  // canonical, without a trailing separator; those that exist
};

} // namespace tolva
