#pragma once
// Where the painted pictures go: the game folder (24-bit bitmaps under data/ and the level
// graphics folders), the folder of pictures that are compiled into the program, and the
// list that the contact sheet is made from. A failed write is remembered, not fatal, so
// that one run reports every file it could not write.
#include <QImage>
#include <QString>
#include <QStringList>
#include <vector>

struct SheetEntry {
    QString section;
    QString label;
    QImage image;
};

class AssetSink {
public:
    AssetSink(const QString& gameDir, const QString& builtinDir);

    // A 24-bit bitmap at gameDir/relativePath (forward slashes).
    void GameBitmap(const QString& section, const QString& relativePath, const QImage& image);
    // A 24-bit bitmap among the compiled-in pictures.
    void BuiltinBitmap(const QString& section, const QString& name, const QImage& image);
    // A compiled-in picture the game shows straight from its pages (RawPicture.h).
    void BuiltinRaw(const QString& section, const QString& name, const QImage& image);
    // A picture with alpha (mouse pointers) among the compiled-in pictures, as PNG.
    void BuiltinPng(const QString& section, const QString& name, const QImage& image);

    const std::vector<SheetEntry>& Entries() const { return entries_; }
    const QStringList& Failures() const { return failures_; }
    int Written() const { return written_; }

private:
    void Record(const QString& section, const QString& label, const QImage& image);
    bool EnsureFolder(const QString& filePath);

    QString gameDir_;
    QString builtinDir_;
    std::vector<SheetEntry> entries_;
    QStringList failures_;
    int written_ = 0;
};
