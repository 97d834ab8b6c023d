#pragma once
// Tolvi, the little brick that lives in the corner of the main window. Now and then it
// hops, looks about, blinks, waves and winks. One pose per frame, 32 x 32 with alpha.
#include <QImage>

struct MascotPose {
    double lift = 0;       // pixels above the ground
    double squash = 0;     // > 0 flattens, < 0 stretches
    double lookX = 0;      // pupils, -1 left to 1 right
    double lid = 0;        // 0 open, 1 both eyes shut
    bool wink = false;     // right eye shut, smile wide
    double arm = -1;       // waving arm angle in degrees; below 0 no arm up
};

class MascotPainter {
public:
    static MascotPose PoseOf(int frame, int frames);
    static QImage Paint(const MascotPose& pose);
};
