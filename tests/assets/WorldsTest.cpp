// The worlds of pictures that the shipped level sets use: every level names a folder that
// the build painted, whole, and no two worlds look alike.
#include "AssetFiles.h"
#include "PictureSet.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QRegularExpression>
#include <cmath>
#include <map>
#include <vector>

using namespace assets_test;

namespace {

// The graphics folder of every level of the set in the game folder, in level order.
QStringList LevelFolders(const QString& set)
{
    const QString text = QString::fromLatin1(ReadAll(GamePath("levels/" + set + "/levels.set")));
    QStringList folders;
    const QRegularExpression line(QStringLiteral("^levelgfxfolder=(.*)$"), QRegularExpression::MultilineOption);
    for (auto it = line.globalMatch(text); it.hasNext();) {
        folders << it.next().captured(1).trimmed();
    }
    return folders;
}

double Distance(QRgb a, QRgb b)
{
    return std::hypot(qRed(a) - qRed(b), qGreen(a) - qGreen(b), qBlue(a) - qBlue(b));
}

// Mean distance of the pixels at the same place of two pictures of one size.
double PixelDistance(const QImage& a, const QImage& b)
{
    double sum = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            sum += Distance(a.pixel(x, y), b.pixel(x, y));
        }
    }
    return sum / (a.width() * a.height());
}

QRgb MeanColour(const QImage& image)
{
    double r = 0, g = 0, b = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb c = image.pixel(x, y);
            r += qRed(c);
            g += qGreen(c);
            b += qBlue(c);
        }
    }
    const double n = image.width() * image.height();
    return qRgb(static_cast<int>(r / n), static_cast<int>(g / n), static_cast<int>(b / n));
}

} // namespace

TEST(Worlds, EveryLevelOfTheShippedSetsFindsAWholeWorld)
{
    // A level without its own background would show the standard one, logo and all,
    // through its holes; a missing brick picture would keep the last world's.
    const std::map<QString, int> sets = {{QStringLiteral("default"), 100}, {QStringLiteral("miniatures"), 20}};
    for (const auto& [set, levels] : sets) {
        const QStringList folders = LevelFolders(set);
        ASSERT_EQ(folders.size(), levels) << set.toStdString();
        for (int n = 0; n < levels; ++n) {
            const QString& folder = folders[n];
            SCOPED_TRACE(QStringLiteral("%1 level %2: \"%3\"").arg(set).arg(n + 1).arg(folder).toStdString());
            ASSERT_FALSE(folder.isEmpty());
            // The game reads the folder relative to the set's own folder, with backslashes.
            const QString where = QDir::cleanPath(GamePath("levels/" + set + "/" + QString(folder).replace('\\', '/')));
            EXPECT_EQ(QImage(where + "/background.bmp").size(), QSize(500, 500));
            for (int i = 0; i < 10; ++i) {
                EXPECT_EQ(QImage(where + QStringLiteral("/%1.bmp").arg(i)).size(), QSize(25, 25)) << "brick " << i;
            }
        }
    }
}

TEST(Worlds, NoTwoWorldsLookAlike)
{
    // Each world has a palette and a texture of its own: the backgrounds differ in their
    // overall colour and, place by place, in what they show; and the same brick colour
    // wears a different surface in every world.
    struct Pictures {
        QString name;
        QImage background;
        std::vector<QImage> bricks;
    };
    std::vector<Pictures> worlds;
    for (const PictureSet::World& w : PictureSet::Worlds()) {
        const QString folder = GamePath(QStringLiteral("levels/default/%1/").arg(QLatin1String(w.folder)));
        Pictures p{QLatin1String(w.folder), Load(folder + "background.bmp"), {}};
        ASSERT_FALSE(p.background.isNull()) << w.folder;
        for (int i = 0; i < 10; ++i) {
            p.bricks.push_back(Load(folder + QStringLiteral("%1.bmp").arg(i)));
            ASSERT_FALSE(p.bricks.back().isNull()) << w.folder << " " << i;
        }
        worlds.push_back(p);
    }
    EXPECT_EQ(worlds.size(), 10u);
    for (std::size_t a = 0; a < worlds.size(); ++a) {
        for (std::size_t b = a + 1; b < worlds.size(); ++b) {
            SCOPED_TRACE((worlds[a].name + " and " + worlds[b].name).toStdString());
            EXPECT_GT(Distance(MeanColour(worlds[a].background), MeanColour(worlds[b].background)), 15.0);
            EXPECT_GT(PixelDistance(worlds[a].background, worlds[b].background), 35.0);
            double bricks = 0;
            for (int i = 0; i < 10; ++i) {
                bricks += PixelDistance(worlds[a].bricks[static_cast<std::size_t>(i)],
                                        worlds[b].bricks[static_cast<std::size_t>(i)]);
            }
            EXPECT_GT(bricks / 10, 25.0);
        }
    }
}
