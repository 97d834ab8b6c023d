#include "PictureSet.h"

#include "BackgroundPainter.h"
#include "BrickPainter.h"
#include "ControlPainter.h"
#include "StripPainter.h"
#include "WindowPainter.h"

const std::vector<PictureSet::World>& PictureSet::Worlds()
{
    // In the order the default set meets them, ten levels each.
    static const std::vector<World> worlds = {
        {"meadow", BrickPainter::Style::Meadow, &BackgroundPainter::Meadow},
        {"dunes", BrickPainter::Style::Dunes, &BackgroundPainter::Dunes},
        {"crystal", BrickPainter::Style::Crystal, &BackgroundPainter::Crystal},
        {"marble", BrickPainter::Style::Marble, &BackgroundPainter::Marble},
        {"forest", BrickPainter::Style::Forest, &BackgroundPainter::Forest},
        {"clockwork", BrickPainter::Style::Clockwork, &BackgroundPainter::Clockwork},
        {"ocean", BrickPainter::Style::Ocean, &BackgroundPainter::Ocean},
        {"neon", BrickPainter::Style::Neon, &BackgroundPainter::Neon},
        {"ember", BrickPainter::Style::Ember, &BackgroundPainter::Ember},
        {"cosmos", BrickPainter::Style::Cosmos, &BackgroundPainter::Cosmos},
    };
    return worlds;
}

void PictureSet::Bricks(AssetSink& sink)
{
    for (int i = 0; i < 10; ++i) {
        sink.BuiltinBitmap(QStringLiteral("Built-in bricks"), QStringLiteral("bricks/%1.bmp").arg(i),
                           BrickPainter::Paint(BrickPainter::Style::Classic, i));
    }
    for (const World& w : Worlds()) {
        const QString folder = QLatin1String(w.folder);
        for (int i = 0; i < 10; ++i) {
            sink.GameBitmap(QStringLiteral("Level graphics: %1").arg(folder),
                            QStringLiteral("levels/default/%1/%2.bmp").arg(folder).arg(i),
                            BrickPainter::Paint(w.bricks, i));
        }
    }
}

void PictureSet::Backgrounds(AssetSink& sink)
{
    const QString section = QStringLiteral("Board backgrounds");
    sink.BuiltinRaw(section, QStringLiteral("eBack.rgb32"), BackgroundPainter::Standard());
    for (const World& w : Worlds()) {
        sink.GameBitmap(section, QStringLiteral("levels/default/%1/background.bmp").arg(QLatin1String(w.folder)),
                        w.background());
    }
}

void PictureSet::Windows(AssetSink& sink)
{
    const QString section = QStringLiteral("Windows");
    sink.GameBitmap(section, QStringLiteral("data/0.bmp"), WindowPainter::Main());
    sink.BuiltinRaw(section, QStringLiteral("loading.rgb32"), WindowPainter::Loading());
    sink.GameBitmap(section, QStringLiteral("data/1.bmp"), WindowPainter::About());
    sink.GameBitmap(section, QStringLiteral("data/2.bmp"), WindowPainter::Initials());
    sink.GameBitmap(section, QStringLiteral("data/10.bmp"), WindowPainter::Settings());
    sink.GameBitmap(section, QStringLiteral("data/12.bmp"), WindowPainter::Bonus());
}

void PictureSet::Controls(AssetSink& sink)
{
    const QString buttons = QStringLiteral("Buttons");
    const char* labels[3] = {"GAME", "OPTIONS", "ABOUT"};
    for (int i = 0; i < 3; ++i) {
        for (int hover = 0; hover < 2; ++hover) {
            sink.GameBitmap(buttons, QStringLiteral("data/%1.bmp").arg(3 + i * 2 + hover),
                            ControlPainter::MenuButton(QLatin1String(labels[i]), i, hover != 0));
        }
    }
    sink.GameBitmap(buttons, QStringLiteral("data/18.bmp"), ControlPainter::CloseButton(false));
    sink.GameBitmap(buttons, QStringLiteral("data/19.bmp"), ControlPainter::CloseButton(true));
    const QString spells = QStringLiteral("Spells and spell buttons");
    for (int i = 0; i < 6; ++i) {
        sink.GameBitmap(spells, QStringLiteral("data/s%1.bmp").arg(i), ControlPainter::Spell(i));
    }
    for (int i = 0; i < 6; ++i) {
        sink.GameBitmap(spells, QStringLiteral("data/ss%1.bmp").arg(i), ControlPainter::SpellButton(i));
    }
    const QString pointers = QStringLiteral("Mouse pointers");
    sink.BuiltinPng(pointers, QStringLiteral("pointers/pipette.png"), ControlPainter::PipettePointer());
    sink.BuiltinPng(pointers, QStringLiteral("pointers/spell.png"), ControlPainter::SpellPointer());
    const QString digits = QStringLiteral("Bonus digits");
    for (int i = 0; i <= 10; ++i) {
        sink.GameBitmap(digits, QStringLiteral("data/n%1.bmp").arg(i), ControlPainter::Digit(i));
    }
}

void PictureSet::Strips(AssetSink& sink)
{
    const QString section = QStringLiteral("Animation strips");
    sink.GameBitmap(section, QStringLiteral("data/13.bmp"), StripPainter::Explosion());
    sink.GameBitmap(section, QStringLiteral("data/14.bmp"), StripPainter::Bomb());
    sink.GameBitmap(section, QStringLiteral("data/16.bmp"), StripPainter::Saw());
    sink.GameBitmap(section, QStringLiteral("data/17.bmp"), StripPainter::TestTube());
    sink.GameBitmap(section, QStringLiteral("data/9_H.bmp"), StripPainter::Hint());
    sink.GameBitmap(section, QStringLiteral("data/9.bmp"), StripPainter::Mascot());
}

void PictureSet::PaintAll(AssetSink& sink)
{
    Windows(sink);
    Controls(sink);
    Strips(sink);
    Bricks(sink);
    Backgrounds(sink);
}
