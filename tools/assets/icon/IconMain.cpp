// tolva2-icon: draws the game's menu icon into a hicolor theme folder at build time.
//
//   tolva2-icon --out DIR
//
// writes DIR/<n>x<n>/apps/tolva2.png for n in 16, 32, 48, 64, 128, 256 and
// DIR/scalable/apps/tolva2.svg.
#include "IconPainter.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <cstdio>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const QStringList args = app.arguments();
    const int at = static_cast<int>(args.indexOf(QStringLiteral("--out")));
    if (at < 0 || at + 1 >= args.size()) {
        std::fprintf(stderr, "usage: tolva2-icon --out DIR\n");
        return 2;
    }
    const QDir out(args[at + 1]);
    bool ok = true;
    for (int size : {16, 32, 48, 64, 128, 256}) {
        const QString folder = QStringLiteral("%1x%1/apps").arg(size);
        ok = out.mkpath(folder) && IconPainter::Paint(size).save(out.filePath(folder + "/tolva2.png"), "PNG") && ok;
    }
    QFile svg(out.filePath(QStringLiteral("scalable/apps/tolva2.svg")));
    ok = out.mkpath(QStringLiteral("scalable/apps")) && svg.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
         svg.write(IconPainter::Svg().toUtf8()) > 0 && ok;
    svg.close();
    if (!ok) std::fprintf(stderr, "tolva2-icon: could not write every icon into %s\n", qPrintable(out.path()));
    return ok ? 0 : 1;
}
