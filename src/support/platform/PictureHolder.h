#pragma once
// A picture holder: one named place that holds a picture for the game, such as a brick
// picture, a spell picture or the board's background.
//
// Loading never half-succeeds: a file that is missing or can't be read leaves the holder
// exactly as it was, which is what lets a level folder supply only some of its pictures
// while the others keep whatever the level before showed.
//
// Colours are 0xRRGGBB. Sizes are in the picture's own pixels. A holder that some window
// shows (the bonus screen) also has a visibility; holders that only feed the painting of
// the board are simply never shown.
#include <cstdint>
#include <string>

namespace tolva {

class PictureHolder {
public:
    virtual ~PictureHolder() = default;

    // The name the board gave the holder ("Gfx(3)", "TmpBack"); for reports and tests.
    virtual const std::string& Name() const = 0;

    // Loads the file at a stored path (backslashes, maybe the wrong case). Gives false,
    // with the holder unchanged, if the file is missing or unreadable.
    virtual bool LoadFile(const std::string& storedPath) = 0;
    // Takes over the picture of another holder of the same store.
    virtual void Assign(const PictureHolder& other) = 0;
    // Drops the picture: the holder then has none and a size of 0 x 0.
    virtual void Clear() = 0;

    virtual bool HasPicture() const = 0;
    virtual double ScaleWidth() const = 0;
    virtual double ScaleHeight() const = 0;
    // The colour of the picture at (x, y), or -1 outside the picture or with none.
    virtual std::int32_t Point(double x, double y) const = 0;

    virtual bool Visible() const = 0;
    virtual void SetVisible(bool visible) = 0;
    virtual std::int32_t BackColor() const = 0;
    virtual void SetBackColor(std::int32_t colour) = 0;
};

} // namespace tolva
