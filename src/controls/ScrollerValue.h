#pragma once
// ScrollerValue: the arithmetic of the Scroller slider, kept apart from its pixels so that
// it can be driven and checked without a screen. It holds Min, Max and Value with their
// mending rules, the knob's position along the track, and the two mouse flags.
//
// Two numbers tie value and knob together. The track has a length L along its direction
// and the knob a length K; the knob's free travel is r = L - K, and its position p (its
// left or top edge) runs from 0 to r.
//  - setValue places the knob from the value: p = (Value - Min) * r / (Max - Min).
//  - ValueStep reads the value back from the knob after every move by mouse or key:
//    Value = p * (Max - Min) / r, rounded ties-to-even, and then Value = Value + Min.
//    Both assignments go through the mending setter, so at the far end the slider reads
//    Min + Min, not Min: the first lifts 0 to Min, the second adds Min once more. The
//    settings window depends on that (its delay slider of 1..1000 bottoms out at 2).
//
// Setting Value moves the knob only while neither KnobDragging nor TrackPressed is set:
// a value written from outside moves the knob, a value read from a dragged knob does not
// send the knob back. A key press sets no flag, so each of its assignments moves the knob
// again (and raises Scroll) on the way.
//
// Values pass through 32-bit arithmetic and are mended into Min..Max before they are
// stored, so the far end's Min + Min can never overflow the 16-bit value. A track no longer
// than the knob (r <= 0) keeps the knob at 0 and reads it as 0 rather than dividing by 0.
#include <cstdint>
#include <functional>

namespace tolva {

class ScrollerValue {
public:
    static constexpr std::int16_t HighestMax = 32766;

    // Raised by setValue and by the value step: the value has moved (maybe to itself).
    std::function<void(std::int16_t)> OnScroll;
    // Raised instead of Scroll at the end of the value step that follows the set menu.
    std::function<void(std::int16_t)> OnAfterScroll;
    // The knob's position along the track has been set; the owner moves its picture.
    std::function<void()> OnKnobMoved;

    std::int16_t Min() const { return min_; }
    std::int16_t Max() const { return max_; }
    std::int16_t Value() const { return value_; }
    // Min is kept within 0..Max-1 and lifts Value to it; then the knob is placed.
    void SetMin(std::int32_t newMin);
    // Max is kept within Min+1..32766 and lowers Value to it; the knob is not placed.
    void SetMax(std::int32_t newMax);
    // Value is kept within Min..Max; the knob follows unless the mouse holds it.
    void SetValue(std::int32_t newValue);

    // The track's length and the knob's length along the direction of the slider.
    void SetLengths(double trackLength, double knobLength);
    // r: how far the knob can travel.
    double FreeLength() const { return trackLength_ - knobLength_; }
    // p: the knob's left (or top) edge along the track.
    double KnobPos() const { return knobPos_; }

    bool KnobDragging() const { return knobDragging_; }
    bool TrackPressed() const { return trackPressed_; }

    // Places the knob where Value says and raises Scroll.
    void setValue();
    // Reads Value from the knob's position and raises Scroll, or AfterScroll.
    void ValueStep(bool afterScroll = false);

    // ---- the mouse and the keys; positions along the track's direction ----------------
    // A left press on the knob at `mouse` (in the knob's own units) starts a drag.
    void KnobPress(double mouse);
    // A move over the knob while it is dragged: the knob follows, stopping at either end,
    // and the value step runs (so Scroll comes on every move). Does nothing when no drag.
    void KnobMove(double mouse);
    void KnobRelease() { knobDragging_ = false; }
    // A left press on the track at `c`: the knob's middle jumps to it (within the ends)
    // and the value step runs. The caller then turns the press into a knob press at 0.
    void TrackPress(double c);
    void TrackRelease() { trackPressed_ = false; }
    // The plus and minus keys of the number block: the knob jumps as for a track press
    // just past its far edge (plus) or just before its near edge (minus).
    void StepKey(bool plus);

    // The set menu: Value to Min, to the middle of Min and Max, or to Max.
    void SetToMin() { SetValue(min_); }
    void SetToMid();
    void SetToMax() { SetValue(max_); }

private:
    // Puts the knob at `c` - K/2, kept within 0..r.
    void CentreKnobAt(double c);
    void PlaceKnob(double p);

    std::int16_t min_ = 0;
    std::int16_t max_ = HighestMax;
    std::int16_t value_ = 0;
    double trackLength_ = 0;
    double knobLength_ = 0;
    double knobPos_ = 0;
    bool knobDragging_ = false;
    bool trackPressed_ = false;
    double pressMouse_ = 0;     // where the mouse was on the knob at the press
    double pressKnob_ = 0;      // where the knob stood then, and after every drag move
};

} // namespace tolva
