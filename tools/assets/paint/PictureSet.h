#pragma once
// The list of every picture of the game, in the order the contact sheet shows them.
#include "AssetSink.h"

class PictureSet {
public:
    static void PaintAll(AssetSink& sink);

private:
    static void Windows(AssetSink& sink);
    static void Controls(AssetSink& sink);
    static void Strips(AssetSink& sink);
    static void Bricks(AssetSink& sink);
    static void Backgrounds(AssetSink& sink);
};
