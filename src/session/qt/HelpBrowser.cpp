#include "session/qt/HelpBrowser.h"

#include "session/qt/HelpPageGuard.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>

namespace tolva {

HelpBrowser::HelpBrowser(const QStringList& gameFolders, QWidget* parent)
    : QTextBrowser(parent), reader_(gameFolders) {}

void HelpBrowser::doSetSource(const QUrl& name, QTextDocument::ResourceType type) {
    // A link within the page only moves in it; the page keeps its pictures.
    const QUrl page = base_.resolved(name).adjusted(QUrl::RemoveFragment);
    if (page != base_) pictureBytes_ = 0;
    base_ = page;
    pageFits_ = true;
    QTextBrowser::doSetSource(name, type);
    // The document is parsed but not yet laid out: this is the last moment to refuse it.
    if (pageFits_ && !HelpPageGuard::Fits(HelpPageGuard::MeasureDocument(*document()))) pageFits_ = false;
    if (!pageFits_) document()->clear();
}

QString HelpBrowser::LocalPath(const QUrl& name) const {
    const QUrl url = base_.resolved(name);
    return url.isLocalFile() ? url.toLocalFile() : QString();
}

QVariant HelpBrowser::loadResource(int type, const QUrl& name) {
    // Whatever is refused is answered with an empty value rather than none: with none,
    // the document would read the file itself.
    const QString path = LocalPath(name);
    switch (type) {
    case QTextDocument::HtmlResource:
        return LoadPage(path);
    case QTextDocument::ImageResource:
        return LoadPicture(path);
    case QTextDocument::StyleSheetResource:
        return reader_.Read(path, MaxStyleSheetBytes).value_or(QByteArray());
    default:
        return QByteArray();
    }
}

QVariant HelpBrowser::LoadPage(const QString& path) {
    const std::optional<QByteArray> page = reader_.Read(path, static_cast<qint64>(HelpPageGuard::MaxPageBytes));
    if (!page || !HelpPageGuard::Fits(HelpPageGuard::MeasureMarkup(*page))) {
        pageFits_ = false;
        return QByteArray();
    }
    return *page;
}

QVariant HelpBrowser::LoadPicture(const QString& path) {
    std::optional<QByteArray> bytes = reader_.Read(path, MaxPictureFileBytes);
    if (!bytes) return QImage();
    QBuffer buffer(&*bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader picture(&buffer);
    // The size comes from the picture's header; nothing is decoded past the bounds.
    const QSize size = picture.size();
    if (!size.isValid() || size.width() > HelpPageGuard::MaxPictureSide ||
        size.height() > HelpPageGuard::MaxPictureSide)
        return QImage();
    const qint64 decoded = static_cast<qint64>(size.width()) * size.height() * 4;
    if (pictureBytes_ + decoded > MaxPicturesBytes) return QImage();
    pictureBytes_ += decoded;
    return picture.read();
}

} // namespace tolva
