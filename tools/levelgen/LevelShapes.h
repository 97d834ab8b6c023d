#pragma once
// LevelShapes: the layouts of the designed levels: full boards, boards with holes,
// figures and words spelled in bricks. A layout is only where bricks stand at the
// start; bricks in the air stay there until the first click lets them fall, so a figure
// shows whole when the level begins.
#include "LevelDesigner.h"

#include <string>

namespace tolva::levelgen {

enum class Shape {
    Full, Diamond, Ring, Heart, Cross, Frame, Pillars, Pyramid, Hourglass, Arrow, Waves,
    Checker, Spiral, Tree, Drop, Flame, Gem, Windows, Scatter, Text
};

struct LayoutRequest {
    Shape shape = Shape::Full;
    std::string text;        // Shape::Text: one or two lines, '/' between them
    int baseRows = 0;        // Shape::Text: full rows under the words
};

// The layout on a side x side board. `seed` varies Scatter only.
Mask MakeShape(const LayoutRequest& layout, int side, unsigned seed = 1);
int MaskCount(const Mask& mask, int side);

} // namespace tolva::levelgen
