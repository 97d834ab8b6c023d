#include "session/qt/HelpPageGuard.h"

#include <QString>
#include <QStringDecoder>
#include <QTextBlock>
#include <QTextBoundaryFinder>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextTable>

#include <algorithm>
#include <vector>

namespace tolva {
namespace {

// The tokenizer reads tags the way the browser's parser does: every '<' opens a tag, a
// word is quoted or runs to a space, '<', '>', '=' or "/>", attributes are words with an
// optional "= word", and the rest of a tag up to '>' is skipped. Where the two might
// still read a tag differently, the count of tags bounds what can hide.
struct Cursor {
    QStringView text;
    qsizetype pos = 0;

    bool AtEnd() const { return pos >= text.size(); }
    bool At(QChar c) const { return pos < text.size() && text[pos] == c; }
    void EatSpace() {
        while (!AtEnd() && text[pos].isSpace()) ++pos;
    }
    void SkipPast(QChar c) {
        while (!AtEnd() && text[pos++] != c) {}
    }
    QStringView Word() {
        if (At(u'"') || At(u'\'')) {
            const QChar quote = text[pos++];
            const qsizetype start = pos;
            while (!AtEnd() && text[pos] != quote) ++pos;
            const QStringView word = text.sliced(start, pos - start);
            if (!AtEnd()) ++pos;
            return word;
        }
        const qsizetype start = pos;
        while (!AtEnd()) {
            const QChar c = text[pos];
            if (c == u'>' || c == u'<' || c == u'=' || c.isSpace() ||
                (c == u'/' && pos + 1 < text.size() && text[pos + 1] == u'>'))
                break;
            ++pos;
        }
        return text.sliced(start, pos - start);
    }
    // Reads the attributes of an opening tag; true if the tag closes itself ("/>").
    bool Attributes() {
        while (!AtEnd()) {
            EatSpace();
            if (At(u'>') || At(u'/')) break;
            if (Word().isEmpty()) break;
            EatSpace();
            if (At(u'=')) {
                ++pos;
                EatSpace();
                Word();
            }
        }
        return At(u'/');
    }
};

// Elements that never hold others, as the parser has them.
bool IsEmptyElement(const QString& name) {
    return name == u"img" || name == u"br" || name == u"hr" || name == u"meta";
}

// Paragraphs and list items that follow one another are siblings, not nested.
bool IsNotSelfNesting(const QString& name) { return name == u"p" || name == u"li"; }

QString DecodePage(QByteArrayView page) {
    const QByteArray bytes = page.toByteArray();
    QStringDecoder decoder = QStringDecoder::decoderForHtml(bytes);
    if (!decoder.isValid()) decoder = QStringDecoder(QStringDecoder::Utf8);
    return decoder(bytes);
}

} // namespace

HelpPageGuard::Markup HelpPageGuard::MeasureMarkup(QByteArrayView page) {
    Markup measure;
    measure.Bytes = static_cast<std::size_t>(page.size());
    if (measure.Bytes > MaxPageBytes) return measure;
    const QString text = DecodePage(page);
    Cursor cursor{text};
    std::vector<QString> open;
    while (!cursor.AtEnd() && measure.Tags <= MaxTags && measure.Nesting <= MaxNesting) {
        if (text[cursor.pos++] != u'<') continue;
        cursor.EatSpace();
        if (cursor.At(u'!')) {
            ++cursor.pos;
            if (text.sliced(cursor.pos).startsWith(u"--")) {
                const qsizetype end = text.indexOf(u"-->", cursor.pos + 2);
                cursor.pos = end < 0 ? text.size() : end + 3;
            } else {
                cursor.SkipPast(u'>');
            }
        } else if (cursor.At(u'/')) {
            ++cursor.pos;
            const QString name = cursor.Word().toString().toLower();
            cursor.SkipPast(u'>');
            // A closing tag ends the nearest open element of its name, or nothing.
            auto it = std::find(open.rbegin(), open.rend(), name);
            if (it != open.rend()) open.erase(std::prev(it.base()), open.end());
        } else {
            const QString name = cursor.Word().toString().toLower();
            const bool closed = cursor.Attributes();
            cursor.SkipPast(u'>');
            ++measure.Tags;
            if (closed || IsEmptyElement(name)) continue;
            if (IsNotSelfNesting(name) && !open.empty() && open.back() == name) open.pop_back();
            open.push_back(name);
            measure.Nesting = std::max(measure.Nesting, open.size());
        }
    }
    return measure;
}

HelpPageGuard::Document HelpPageGuard::MeasureDocument(const QTextDocument& document) {
    Document measure;
    MeasureFrame(*document.rootFrame(), 0, measure);
    MeasureText(document, measure);
    return measure;
}

void HelpPageGuard::MeasureFrame(const QTextFrame& frame, int tableNesting, Document& measure) {
    for (const QTextFrame* child : frame.childFrames()) {
        int nesting = tableNesting;
        if (const auto* table = qobject_cast<const QTextTable*>(child)) {
            nesting = tableNesting + 1;
            measure.TableNesting = std::max(measure.TableNesting, nesting);
            const long cells = static_cast<long>(table->rows()) * table->columns();
            measure.TableWeight += cells << std::min(nesting - 1, 32);
        }
        // Past the bounds the rest does not matter; the frames are as deep as the
        // markup's nesting at most.
        if (measure.TableNesting > MaxTableNesting || measure.TableWeight > MaxTableWeight) return;
        MeasureFrame(*child, nesting, measure);
    }
}

void HelpPageGuard::MeasureText(const QTextDocument& document, Document& measure) {
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const QString text = block.text();
        QTextBoundaryFinder breaks(QTextBoundaryFinder::Line, text);
        qsizetype last = 0;
        for (qsizetype at = breaks.toNextBoundary(); at >= 0; at = breaks.toNextBoundary()) {
            measure.LongestWord = std::max(measure.LongestWord, static_cast<int>(at - last));
            last = at;
        }
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextCharFormat format = it.fragment().charFormat();
            if (!format.isImageFormat()) continue;
            const QTextImageFormat picture = format.toImageFormat();
            const double side = std::max(picture.width(), picture.height());
            measure.LargestPicture = std::max(measure.LargestPicture, static_cast<int>(std::min(side, 1e9)));
        }
    }
}

bool HelpPageGuard::Fits(const Markup& markup) {
    return markup.Bytes <= MaxPageBytes && markup.Tags <= MaxTags && markup.Nesting <= MaxNesting;
}

bool HelpPageGuard::Fits(const Document& document) {
    return document.TableNesting <= MaxTableNesting && document.TableWeight <= MaxTableWeight &&
           document.LongestWord <= MaxWordLength && document.LargestPicture <= MaxPictureSide;
}

} // namespace tolva
