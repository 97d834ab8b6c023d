#pragma once
// The picture strips of the short animations: frames stacked from the top, each frame
// as high as the strip is wide (or as its half is wide, for the mascot, whose right half
// is the mask). The first frame of each strip is also its picture at rest.
#include <QImage>

class StripPainter {
public:
    static constexpr int EffectFrame = 50;
    static constexpr int SmallFrame = 32;
    static constexpr int ExplosionFrames = 12;
    static constexpr int BombFrames = 10;
    static constexpr int SawFrames = 8;
    static constexpr int TubeFrames = 16;
    static constexpr int HintFrames = 16;
    static constexpr int MascotFrames = 48;

    static QImage Explosion();
    static QImage Bomb();
    static QImage Saw();
    static QImage TestTube();
    static QImage Hint();
    // The idle mascot in the transparent form: picture on the left, black where nothing
    // is drawn; mask on the right, white where the background shows, black elsewhere.
    static QImage Mascot();
    // One frame of the mascot with alpha, for the mask split and the contact sheet.
    static QImage MascotFrame(int frame);

private:
    static QImage Stack(int width, int height, int frames);
};
