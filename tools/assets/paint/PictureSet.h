#pragma once
// The list of every picture of the game, in the order the contact sheet shows them.
#include "AssetSink.h"
#include "BrickPainter.h"

#include <QImage>
#include <vector>

class PictureSet {
public:
    // A world of the level sets: its graphics folder under levels/default/, the material
    // of its bricks and the painter of its background.
    struct World {
        const char* folder;
        BrickPainter::Style bricks;
        QImage (*background)();
    };
    static const std::vector<World>& Worlds();

    static void PaintAll(AssetSink& sink);

private:
    static void Windows(AssetSink& sink);
    static void Controls(AssetSink& sink);
    static void Strips(AssetSink& sink);
    static void Bricks(AssetSink& sink);
    static void Backgrounds(AssetSink& sink);
};
