#pragma once
// The text browser of the help window, bounded in all it takes from the page: every file
// it loads (the page, its style sheets, its pictures) comes through a HelpFileReader,
// pictures are measured before they are decoded and share a budget per page, and a page
// whose markup or document is past the bounds of HelpPageGuard is dropped before the
// layout sees it.
#include "session/qt/HelpFileReader.h"

#include <QTextBrowser>
#include <QUrl>

namespace tolva {

class HelpBrowser final : public QTextBrowser {
public:
    static constexpr qint64 MaxStyleSheetBytes = 64 * 1024;
    static constexpr qint64 MaxPictureFileBytes = 8 * 1024 * 1024;
    // The decoded pictures of one page, 4 bytes a pixel.
    static constexpr qint64 MaxPicturesBytes = 64 * 1024 * 1024;

    // `gameFolder`: a native path, the only place files are read from.
    HelpBrowser(const QStringList& gameFolders, QWidget* parent);

    // False once the page last asked for could not be read or was past the bounds; the
    // browser then shows nothing.
    bool PageFits() const { return pageFits_; }

    QVariant loadResource(int type, const QUrl& name) override;

protected:
    void doSetSource(const QUrl& name, QTextDocument::ResourceType type) override;

private:
    QString LocalPath(const QUrl& name) const;
    QVariant LoadPage(const QString& path);
    QVariant LoadPicture(const QString& path);

    HelpFileReader reader_;
    QUrl base_;                // the page that relative names are resolved against
    qint64 pictureBytes_ = 0;  // decoded for the page shown
    bool pageFits_ = true;
};

} // namespace tolva
