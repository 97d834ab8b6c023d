#pragma once
// Bounds on what the help page may ask of the text browser. The browser's parser and
// layout are fast for a page like the game's own, but some markup makes them explode:
// nested tables double the layout's work with each level (and deep enough crash it by
// recursion), deep nesting of any element makes parsing quadratic, one long unbroken
// word makes line breaking quadratic. A page past any bound here is a damaged file and
// is not shown.
//
// The page is measured twice: its markup, before the parser sees it (size, tags and
// nesting, with a tokenizer that reads tags the way the browser's parser does), and the
// document the parser made, before anything lays it out (tables, words and pictures,
// exactly as the layout would get them).
#include <QByteArrayView>

#include <cstddef>

class QTextDocument;
class QTextFrame;

namespace tolva {

class HelpPageGuard final {
public:
    // The game's page is about 24 KB with some 440 tags, nested 8 deep with tables two
    // deep; each bound leaves it room to grow many times over while staying well under a
    // second of work for the browser on a modest machine.
    static constexpr std::size_t MaxPageBytes = 512 * 1024;
    static constexpr std::size_t MaxTags = 3000;
    static constexpr std::size_t MaxNesting = 256;
    static constexpr int MaxTableNesting = 8;
    // A table cell costs the layout about twice as much for each table around it: cells
    // are weighed 1 at the top level, 2 one table down, 4 two down, and so on.
    static constexpr long MaxTableWeight = 4096;
    static constexpr int MaxWordLength = 2000;
    static constexpr int MaxPictureSide = 4096;

    struct Markup {
        std::size_t Bytes = 0;
        std::size_t Tags = 0;     // opening tags
        std::size_t Nesting = 0;  // the deepest open elements
    };

    struct Document {
        int TableNesting = 0;
        long TableWeight = 0;
        int LongestWord = 0;     // the longest text without a place to break the line
        int LargestPicture = 0;  // the largest width or height asked for a picture
    };

    static Markup MeasureMarkup(QByteArrayView page);
    static Document MeasureDocument(const QTextDocument& document);

    static bool Fits(const Markup& markup);
    static bool Fits(const Document& document);

private:
    static void MeasureFrame(const QTextFrame& frame, int tableNesting, Document& measure);
    static void MeasureText(const QTextDocument& document, Document& measure);
};

} // namespace tolva
