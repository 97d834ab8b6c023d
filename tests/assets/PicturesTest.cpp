// The generated pictures: present, 24-bit, of the sizes and forms the game relies on.
#include "AssetFiles.h"
#include "BmpWriter.h"
#include "PictureSet.h"
#include "support/platform/qt/RawPicture.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QFile>
#include <QRegularExpression>
#include <cmath>
#include <vector>

using namespace assets_test;

namespace {

struct Expected {
    QString path;
    int width;   // 0: any width
    int height;
};

std::vector<Expected> EveryBitmap()
{
    std::vector<Expected> all = {
        {GamePath("data/0.bmp"), 750, 561},  {GamePath("data/1.bmp"), 450, 400},
        {GamePath("data/2.bmp"), 0, 0},      {GamePath("data/10.bmp"), 0, 0},
        {GamePath("data/12.bmp"), 500, 500}, {GamePath("data/18.bmp"), 78, 21},
        {GamePath("data/19.bmp"), 78, 21},
    };
    for (int i = 3; i <= 8; ++i) {
        all.push_back({GamePath(QStringLiteral("data/%1.bmp").arg(i)), 190, 31});
    }
    for (int i = 0; i < 6; ++i) {
        all.push_back({GamePath(QStringLiteral("data/s%1.bmp").arg(i)), 50, 50});
        all.push_back({GamePath(QStringLiteral("data/ss%1.bmp").arg(i)), 27, 27});
    }
    for (int i = 0; i <= 10; ++i) {
        all.push_back({GamePath(QStringLiteral("data/n%1.bmp").arg(i)), 0, 60});
    }
    for (int i = 0; i < 10; ++i) {
        all.push_back({GeneratedPath(QStringLiteral("builtin/bricks/%1.bmp").arg(i)), 25, 25});
    }
    for (const PictureSet::World& w : PictureSet::Worlds()) {
        const QString folder = QStringLiteral("levels/default/%1/").arg(QLatin1String(w.folder));
        for (int i = 0; i < 10; ++i) {
            all.push_back({GamePath(folder + QStringLiteral("%1.bmp").arg(i)), 25, 25});
        }
        all.push_back({GamePath(folder + QStringLiteral("background.bmp")), 500, 500});
    }
    return all;
}

// Perceived lightness, CIE L* from 0 to 100, of an sRGB colour.
double Lightness(QRgb c)
{
    auto linear = [](int v) {
        const double s = v / 255.0;
        return s <= 0.04045 ? s / 12.92 : std::pow((s + 0.055) / 1.055, 2.4);
    };
    const double y = 0.2126 * linear(qRed(c)) + 0.7152 * linear(qGreen(c)) + 0.0722 * linear(qBlue(c));
    return y > 0.008856 ? 116 * std::cbrt(y) - 16 : 903.3 * y;
}

double MeanLightnessDifference(const QImage& a, const QImage& b)
{
    double sum = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            sum += std::abs(Lightness(a.pixel(x, y)) - Lightness(b.pixel(x, y)));
        }
    }
    return sum / (a.width() * a.height());
}

} // namespace

TEST(Pictures, EveryBitmapIsUncompressed24BitOfItsSize)
{
    for (const Expected& e : EveryBitmap()) {
        SCOPED_TRACE(e.path.toStdString());
        const QByteArray bytes = ReadAll(e.path);
        const BmpHeader h = ReadBmpHeader(bytes);
        ASSERT_TRUE(h.valid) << "missing or not a bitmap";
        EXPECT_EQ(h.bitsPerPixel, 24);
        EXPECT_EQ(h.compression, 0);
        EXPECT_GT(h.width, 0);
        EXPECT_NE(h.height, 0);
        if (e.width > 0) {
            EXPECT_EQ(h.width, e.width);
        }
        if (e.height > 0) {
            EXPECT_EQ(std::abs(h.height), e.height);
        }
        EXPECT_EQ(QImage(e.path).size(), QSize(h.width, std::abs(h.height))) << "Qt reads it differently";
    }
}

TEST(Pictures, StripsHoldWholeFramesThatMove)
{
    const struct {
        const char* name;
        int frame;
    } strips[] = {{"13", 50}, {"14", 50}, {"16", 50}, {"17", 50}, {"9_H", 32}};
    for (const auto& s : strips) {
        SCOPED_TRACE(s.name);
        const QImage strip = Load(GamePath(QStringLiteral("data/%1.bmp").arg(QLatin1String(s.name))));
        ASSERT_FALSE(strip.isNull());
        EXPECT_EQ(strip.width(), s.frame);
        ASSERT_EQ(strip.height() % s.frame, 0);
        const int frames = strip.height() / s.frame;
        EXPECT_GE(frames, 4);
        int changes = 0;
        for (int f = 1; f < frames; ++f) {
            changes += strip.copy(0, f * s.frame, s.frame, s.frame) != strip.copy(0, (f - 1) * s.frame, s.frame, s.frame);
        }
        EXPECT_EQ(changes, frames - 1) << "two frames in a row are the same";
    }
}

TEST(Pictures, MascotStripIsPictureAndMaskHalves)
{
    const QImage strip = Load(GamePath("data/9.bmp"));
    ASSERT_EQ(strip.width(), 64);
    ASSERT_EQ(strip.height() % 32, 0);
    for (int f = 0; f < strip.height() / 32; ++f) {
        int covered = 0;
        for (int y = f * 32; y < f * 32 + 32; ++y) {
            for (int x = 0; x < 32; ++x) {
                const QRgb mask = strip.pixel(32 + x, y);
                ASSERT_TRUE(mask == qRgb(0, 0, 0) || mask == qRgb(255, 255, 255))
                    << "mask has a half tone at frame " << f;
                if (mask == qRgb(255, 255, 255)) {
                    // Where the background shows, the picture must add nothing to it.
                    ASSERT_EQ(strip.pixel(x, y), qRgb(0, 0, 0)) << "picture not black under the mask, frame " << f;
                } else {
                    ++covered;
                }
            }
        }
        EXPECT_GT(covered, 150) << "frame " << f << " shows almost nothing";
        EXPECT_LT(covered, 32 * 32 - 200) << "frame " << f << " hides the background";
    }
}

TEST(Pictures, BonusRowsHaveTheColourOfTheDigitGround)
{
    // The three number holders take the colour of the background at their top left, and
    // the digits are painted on their own ground: both must be one colour, or the numbers
    // would stand in boxes.
    const QImage bonus = Load(GamePath("data/12.bmp"));
    const QImage zero = Load(GamePath("data/n0.bmp"));
    ASSERT_FALSE(bonus.isNull());
    ASSERT_FALSE(zero.isNull());
    const QRgb ground = zero.pixel(0, 0);
    for (int i = 0; i <= 10; ++i) {
        const QImage digit = Load(GamePath(QStringLiteral("data/n%1.bmp").arg(i)));
        for (QPoint c : {QPoint(0, 0), QPoint(digit.width() - 1, 0), QPoint(0, 59), QPoint(digit.width() - 1, 59)}) {
            EXPECT_EQ(digit.pixel(c), ground) << "digit " << i;
        }
    }
    for (int top : {133, 281, 411}) {
        for (int y = top; y < top + 60; ++y) {
            for (int x = 0; x < 500; ++x) {
                ASSERT_EQ(bonus.pixel(x, y), ground) << "at " << x << ", " << y;
            }
        }
    }
}

TEST(Pictures, BrickColoursStayApartWithoutHue)
{
    // A player who sees no hue at all must still tell the ten bricks apart, by lightness
    // and emblem together. Compared as lightness pictures (CIE L*), averaged over the
    // whole cell, every pair must differ by a clear margin, so that no two colours merge
    // in grey (an emblem alone covers only a small part of the cell).
    const double MinimumDifference = 2.0;
    std::vector<QString> sets = {GeneratedPath("builtin/bricks/")};
    for (const PictureSet::World& w : PictureSet::Worlds()) {
        sets.push_back(GamePath(QStringLiteral("levels/default/%1/").arg(QLatin1String(w.folder))));
    }
    for (const QString& set : sets) {
        std::vector<QImage> bricks;
        for (int i = 0; i < 10; ++i) {
            bricks.push_back(Load(set + QStringLiteral("%1.bmp").arg(i)));
            ASSERT_FALSE(bricks.back().isNull()) << set.toStdString() << i;
        }
        for (int a = 0; a < 10; ++a) {
            for (int b = a + 1; b < 10; ++b) {
                EXPECT_GT(MeanLightnessDifference(bricks[static_cast<size_t>(a)], bricks[static_cast<size_t>(b)]), MinimumDifference)
                    << set.toStdString() << " bricks " << a << " and " << b;
            }
        }
    }
}

TEST(Pictures, PointersAndResourceFile)
{
    const QImage pipette(GeneratedPath("builtin/pointers/pipette.png"));
    const QImage spell(GeneratedPath("builtin/pointers/spell.png"));
    ASSERT_EQ(pipette.size(), QSize(32, 32));
    ASSERT_EQ(spell.size(), QSize(32, 32));
    EXPECT_TRUE(pipette.hasAlphaChannel());
    // The hot spots: the pipette's tip at (0, 15), the wand's at (1, 1).
    EXPECT_GT(qAlpha(pipette.pixel(1, 15)), 0);
    EXPECT_EQ(qAlpha(pipette.pixel(0, 0)), 0);
    EXPECT_GT(qAlpha(spell.pixel(1, 1)), 0);
    EXPECT_EQ(qAlpha(spell.pixel(31, 0)), 0);

    const QString qrc = QString::fromUtf8(ReadAll(GeneratedPath("builtin/builtin.qrc")));
    ASSERT_FALSE(qrc.isEmpty());
    const QRegularExpression file(QStringLiteral("<file[^>]*>([^<]+)</file>"));
    int listed = 0;
    for (auto it = file.globalMatch(qrc); it.hasNext(); ++listed) {
        const QString name = it.next().captured(1);
        EXPECT_FALSE(Load(GeneratedPath("builtin/" + name)).isNull()) << name.toStdString();
    }
    EXPECT_EQ(listed, 14);
    EXPECT_EQ(Load(GeneratedPath("builtin/eBack.rgb32")).size(), QSize(500, 500));
    EXPECT_EQ(Load(GeneratedPath("builtin/loading.rgb32")).size(), QSize(401, 231));
}

TEST(Pictures, RawPicturesShowAsWrittenAndRefuseWhatIsNotOne)
{
    QImage picture(3, 2, QImage::Format_RGB32);
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x) picture.setPixel(x, y, qRgb(40 * x, 100 * y, 7));
    const QByteArray bytes = tolva::RawPictureBytes(picture);
    ASSERT_EQ(bytes.size(), 16 + 3 * 2 * 4);
    const auto* data = reinterpret_cast<const uchar*>(bytes.constData());
    const QImage view = tolva::RawPictureView(data, bytes.size());
    EXPECT_EQ(view, picture);
    EXPECT_EQ(view.constBits(), data + 16);   // shown where it lies, not copied

    // Pixels that do not lie on a 4-byte boundary are copied, and still read right.
    QByteArray shifted = QByteArray(1, '\0') + bytes;
    const QImage moved = tolva::RawPictureView(reinterpret_cast<const uchar*>(shifted.constData()) + 1, bytes.size());
    EXPECT_EQ(moved, picture);

    QByteArray wrongMagic = bytes;
    wrongMagic[0] = 'X';
    QByteArray zeroWide = bytes;
    zeroWide[8] = 0;
    for (const QByteArray& bad : {wrongMagic, zeroWide, bytes.left(bytes.size() - 1), bytes + "x", bytes.left(10)}) {
        EXPECT_TRUE(tolva::RawPictureView(reinterpret_cast<const uchar*>(bad.constData()), bad.size()).isNull());
    }
    EXPECT_TRUE(tolva::RawPictureView(nullptr, 0).isNull());
}

TEST(Pictures, BmpWriterPadsRowsAndKeepsColours)
{
    // Widths of 1 to 4 pixels need 1 to 3 bytes of row padding or none.
    for (int width = 1; width <= 4; ++width) {
        QImage image(width, 3, QImage::Format_RGB32);
        for (int y = 0; y < 3; ++y) {
            for (int x = 0; x < width; ++x) {
                image.setPixel(x, y, qRgb(40 * x + 1, 80 * y + 2, 7 * x * y + 3));
            }
        }
        const QByteArray bytes = BmpWriter::Encode(image);
        const BmpHeader h = ReadBmpHeader(bytes);
        ASSERT_TRUE(h.valid);
        EXPECT_EQ(bytes.size(), 54 + ((width * 3 + 3) & ~3) * 3);
        QImage back;
        ASSERT_TRUE(back.loadFromData(bytes, "BMP"));
        EXPECT_EQ(back.convertToFormat(QImage::Format_RGB32), image) << "width " << width;
    }
}

TEST(Pictures, PanelCaptionsKeepClearOfTheirWells)
{
    // The level's well ends at x 624 and the bonus's begins at 674; the numbers in them
    // stand at fixed places. The BONUS caption between them keeps at least three columns
    // of bare panel from each, on every row it could reach.
    const QImage main = Load(GamePath("data/0.bmp"));
    ASSERT_EQ(main.size(), QSize(750, 561));
    auto bare = [&](int x, int y) {
        const QRgb c = main.pixel(x, y);
        return std::abs(qRed(c) - 40) <= 6 && std::abs(qGreen(c) - 70) <= 6 && std::abs(qBlue(c) - 75) <= 6;
    };
    for (int y = 101; y < 128; ++y) {
        for (int x : {625, 626, 627, 671, 672, 673}) {
            EXPECT_TRUE(bare(x, y)) << x << "," << y;
        }
    }
    // And the caption is there: some ink between the margins.
    int ink = 0;
    for (int y = 101; y < 128; ++y)
        for (int x = 628; x < 671; ++x) ink += bare(x, y) ? 0 : 1;
    EXPECT_GT(ink, 50);
}
