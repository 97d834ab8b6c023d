#include "AssetSink.h"

#include "support/platform/qt/RawPicture.h"

#include <QFile>

#include "BmpWriter.h"

#include <QDir>
#include <QFileInfo>

AssetSink::AssetSink(const QString& gameDir, const QString& builtinDir)
    : gameDir_(gameDir), builtinDir_(builtinDir)
{
}

bool AssetSink::EnsureFolder(const QString& filePath)
{
    return QDir().mkpath(QFileInfo(filePath).absolutePath());
}

void AssetSink::Record(const QString& section, const QString& label, const QImage& image)
{
    entries_.push_back({section, label, image});
}

void AssetSink::GameBitmap(const QString& section, const QString& relativePath, const QImage& image)
{
    const QString path = gameDir_ + QLatin1Char('/') + relativePath;
    if (EnsureFolder(path) && BmpWriter::Write(image, path)) {
        ++written_;
    } else {
        failures_ << path;
    }
    Record(section, relativePath, image);
}

void AssetSink::BuiltinBitmap(const QString& section, const QString& name, const QImage& image)
{
    const QString path = builtinDir_ + QLatin1Char('/') + name;
    if (EnsureFolder(path) && BmpWriter::Write(image, path)) {
        ++written_;
    } else {
        failures_ << path;
    }
    Record(section, QStringLiteral("builtin/") + name, image);
}

void AssetSink::BuiltinRaw(const QString& section, const QString& name, const QImage& image)
{
    const QString path = builtinDir_ + QLatin1Char('/') + name;
    QFile file(path);
    const QByteArray bytes = tolva::RawPictureBytes(image);
    if (EnsureFolder(path) && file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size()) {
        ++written_;
    } else {
        failures_ << path;
    }
    Record(section, QStringLiteral("builtin/") + name, image);
}

void AssetSink::BuiltinPng(const QString& section, const QString& name, const QImage& image)
{
    const QString path = builtinDir_ + QLatin1Char('/') + name;
    if (EnsureFolder(path) && image.save(path, "PNG")) {
        ++written_;
    } else {
        failures_ << path;
    }
    Record(section, QStringLiteral("builtin/") + name, image);
}
