// The game's own reader of plain 24-bit pictures must give exactly what Qt's decoder
// gives, row padding and row order included, and must hand every other kind of file back
// untouched, so that Qt reads it as before.
#include "board/BmpWriter.h"
#include "support/TempFolder.h"
#include "support/platform/qt/PlainBmp.h"
#include "support/platform/qt/QtPictureHolder.h"

#include <QImageReader>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

using namespace tolva;
using tolva::testing::MakeBmp;
using tolva::testing::TempFolder;

namespace {

std::uint32_t Colour(int x, int y) {
    return static_cast<std::uint32_t>((x * 53 + y * 7) & 0xFF) << 16 | static_cast<std::uint32_t>((x * 11 + y * 97) & 0xFF) << 8 |
           static_cast<std::uint32_t>((x + y * 31) & 0xFF);
}

QImage QtReads(const std::string& path) {
    QImageReader reader(QString::fromStdString(path), "bmp");
    return reader.read().convertToFormat(QImage::Format_RGB32);
}

// The plain reader's answer for the file, and where it left the file's position.
std::pair<QImage, off_t> PlainReads(const std::string& path, int maxSide = 16384) {
    const int fd = ::open(path.c_str(), O_RDONLY);
    EXPECT_GE(fd, 0);
    QImage image = ReadPlainBmp(fd, maxSide);
    const off_t at = ::lseek(fd, 0, SEEK_CUR);
    ::close(fd);
    return {image, at};
}

} // namespace

TEST(PlainBmp, ReadsEveryRowWidthAndOrderAsQtDoes) {
    TempFolder dir;
    // Widths 1 to 5 cover every row padding; a tall one spans several read chunks.
    const std::vector<std::pair<int, int>> sizes = {{1, 1}, {2, 3}, {3, 2}, {4, 5}, {5, 4}, {301, 250}};
    for (const auto& [width, height] : sizes) {
        for (const bool topDown : {false, true}) {
            const std::string path = dir.Path() + "/p.bmp";
            dir.Write("p.bmp", MakeBmp(width, height, 24, Colour, {}, topDown));
            const auto [image, at] = PlainReads(path);
            SCOPED_TRACE(std::to_string(width) + "x" + std::to_string(height) + (topDown ? " top-down" : ""));
            ASSERT_FALSE(image.isNull());
            EXPECT_EQ(image.format(), QImage::Format_RGB32);
            EXPECT_EQ(image, QtReads(path));
            EXPECT_EQ(image.pixel(0, height - 1), 0xFF000000u | Colour(0, height - 1));   // and Qt reads it right
        }
    }
}

TEST(PlainBmp, OtherKindsGoBackToQtWithTheFileAtItsStart) {
    TempFolder dir;
    const std::string plain = MakeBmp(6, 4, 24, Colour);
    std::string bigger = plain;
    bigger[18] = 0x10;   // width 16: over a bound of 8
    std::string huge = plain;
    huge[18] = static_cast<char>(0x80);
    huge[19] = 0x3E;
    huge[22] = static_cast<char>(0x80);
    huge[23] = 0x3E;
    std::string compressed = plain;
    compressed[30] = 1;  // run-length coded
    const std::vector<std::pair<std::string, std::string>> files = {
        {"palette", MakeBmp(6, 4, 8, [](int x, int) { return static_cast<std::uint32_t>(x % 2); }, {0x112233, 0xAABBCC})},
        {"32 bits", MakeBmp(6, 4, 32, Colour)},
        {"cut short", plain.substr(0, plain.size() - 10)},
        {"head only", plain.substr(0, 30)},
        {"over the bound", bigger},
        {"compressed", compressed},
        {"not a picture", "GIF89a and then some more bytes of nothing much at all"},
    };
    for (const auto& [name, bytes] : files) {
        SCOPED_TRACE(name);
        dir.Write("o.bmp", bytes);
        const auto [image, at] = PlainReads(dir.Path() + "/o.bmp", 8);
        EXPECT_TRUE(image.isNull());
        EXPECT_EQ(at, 0);
    }
    // A header that promises more rows than the file holds (16000 x 16000 pixels) is turned
    // away before any memory is taken for them, whatever the bound on the sides.
    dir.Write("o.bmp", huge);
    const auto [none, where] = PlainReads(dir.Path() + "/o.bmp", 16384);
    EXPECT_TRUE(none.isNull());
    EXPECT_EQ(where, 0);
    // The picture holder still reads those through Qt, as it always did.
    dir.Write("o.bmp", files[0].second);
    QtPictureHolder holder("palette");
    ASSERT_TRUE(holder.LoadFile(dir.Path() + "/o.bmp"));
    EXPECT_EQ(holder.Point(1, 0), 0xAABBCC);
    EXPECT_EQ(holder.Point(0, 3), 0x112233);
    dir.Write("o.bmp", plain);
    ASSERT_TRUE(holder.LoadFile(dir.Path() + "/o.bmp"));
    EXPECT_EQ(holder.Point(5, 3), static_cast<std::int32_t>(Colour(5, 3)));
}

// The parts are read through LoadPictureParts, which hands a plain picture to the plain
// reader and any other to Qt.
TEST(PlainBmp, PartsAreTheRectanglesOfTheWholePictureCutToIt) {
    TempFolder dir;
    const std::vector<QRect> parts = {
        QRect(0, 0, 301, 40),            // a band across the top
        QRect(0, 200, 100000, 100000),   // reaching past the bottom right
        QRect(10, 40, 5, 160),           // a narrow one in the middle
        QRect(290, 40, 100, 160),        // past the right side
        QRect(400, 400, 10, 10),         // outside
    };
    const auto check = [&](const std::vector<QImage>& images, const QImage& whole) {
        ASSERT_EQ(images.size(), parts.size());
        for (std::size_t i = 0; i < parts.size(); ++i) {
            SCOPED_TRACE(i);
            const QRect area = parts[i].intersected(whole.rect());
            if (area.isEmpty()) {
                EXPECT_TRUE(images[i].isNull());
                continue;
            }
            EXPECT_EQ(images[i].format(), QImage::Format_RGB32);
            EXPECT_EQ(images[i], whole.copy(area));
        }
    };
    for (const bool topDown : {false, true}) {
        SCOPED_TRACE(topDown ? "top-down" : "bottom-up");
        dir.Write("p.bmp", MakeBmp(301, 250, 24, Colour, {}, topDown));
        check(LoadPictureParts(dir.Path() + "/p.bmp", parts), QtReads(dir.Path() + "/p.bmp"));
    }
    // Another kind of picture goes to Qt whole and is cut there; a plain one cut short is
    // handed back with the file at its start, and a missing file has no parts.
    dir.Write("q.bmp", MakeBmp(301, 250, 32, Colour));
    check(LoadPictureParts(dir.Path() + "/q.bmp", parts), QtReads(dir.Path() + "/q.bmp"));
    const std::string plain = MakeBmp(301, 250, 24, Colour);
    dir.Write("s.bmp", plain.substr(0, plain.size() - 1));
    const int fd = ::open((dir.Path() + "/s.bmp").c_str(), O_RDONLY);
    EXPECT_TRUE(ReadPlainBmpParts(fd, 16384, parts).empty());
    EXPECT_EQ(::lseek(fd, 0, SEEK_CUR), 0);
    ::close(fd);
    EXPECT_TRUE(LoadPictureParts(dir.Path() + "/none.bmp", parts).empty());
}
