// tolva2-paint: paints every picture of the game into the game folder at build time.
//
//   tolva2-paint --game-dir DIR --builtin-dir DIR [--sheet FILE.png]
//
// DIR/data/ gets the pictures the game loads by name, DIR/levels/default/<world>/ the
// graphics folders of the ten worlds (both shipped sets use them), the builtin folder
// the pictures compiled into the program (bricks, standard board background, Loading
// background, mouse pointers).
// Text needs a font engine and so a QGuiApplication; the offscreen platform gives one
// without a display.
#include "AssetSink.h"
#include "ContactSheet.h"
#include "PictureSet.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <cstdio>

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption({QStringLiteral("game-dir"), QStringLiteral("Game folder."), QStringLiteral("dir")});
    parser.addOption({QStringLiteral("builtin-dir"), QStringLiteral("Folder of compiled-in pictures."),
                      QStringLiteral("dir")});
    parser.addOption({QStringLiteral("sheet"), QStringLiteral("Contact sheet to write."), QStringLiteral("png")});
    parser.process(app);
    if (!parser.isSet(QStringLiteral("game-dir")) || !parser.isSet(QStringLiteral("builtin-dir"))) {
        std::fprintf(stderr, "tolva2-paint: --game-dir and --builtin-dir are required\n");
        return 2;
    }

    AssetSink sink(parser.value(QStringLiteral("game-dir")), parser.value(QStringLiteral("builtin-dir")));
    PictureSet::PaintAll(sink);

    bool ok = sink.Failures().isEmpty();
    for (const QString& failed : sink.Failures()) {
        std::fprintf(stderr, "tolva2-paint: could not write %s\n", qPrintable(failed));
    }
    if (parser.isSet(QStringLiteral("sheet"))) {
        const QString sheetPath = parser.value(QStringLiteral("sheet"));
        if (!ContactSheet::Compose(sink.Entries()).save(sheetPath, "PNG")) {
            std::fprintf(stderr, "tolva2-paint: could not write %s\n", qPrintable(sheetPath));
            ok = false;
        }
    }
    std::printf("tolva2-paint: %d pictures written\n", sink.Written());
    return ok ? 0 : 1;
}
