#include "controls/ScrollerValue.h"

#include "support/ZenkorModule.h"

#include <algorithm>

namespace tolva {

void ScrollerValue::SetMin(std::int32_t newMin) {
    std::int32_t mended = std::max<std::int32_t>(newMin, 0);
    mended = std::min<std::int32_t>(mended, max_ - 1);
    min_ = static_cast<std::int16_t>(mended);
    if (value_ < min_) SetValue(min_);
    setValue();
}

void ScrollerValue::SetMax(std::int32_t newMax) {
    std::int32_t mended = std::max<std::int32_t>(newMax, min_ + 1);
    mended = std::min<std::int32_t>(mended, HighestMax);
    max_ = static_cast<std::int16_t>(mended);
    if (value_ > max_) SetValue(max_);
}

void ScrollerValue::SetValue(std::int32_t newValue) {
    const std::int32_t mended = std::clamp<std::int32_t>(newValue, min_, max_);
    value_ = static_cast<std::int16_t>(mended);
    if (!knobDragging_ && !trackPressed_) setValue();
}

void ScrollerValue::SetToMid() { SetValue(CInt((static_cast<double>(max_) + min_) / 2.0)); }

void ScrollerValue::SetLengths(double trackLength, double knobLength) {
    trackLength_ = trackLength;
    knobLength_ = knobLength;
}

void ScrollerValue::setValue() {
    const double r = FreeLength();
    PlaceKnob(r > 0 ? (static_cast<double>(value_) - min_) * r / (static_cast<double>(max_) - min_) : 0.0);
    if (OnScroll) OnScroll(value_);
}

void ScrollerValue::ValueStep(bool afterScroll) {
    const double r = FreeLength();
    const double k = (static_cast<double>(max_) - min_) / r;
    SetValue(r > 0 ? CInt(knobPos_ * k) : 0);
    SetValue(static_cast<std::int32_t>(value_) + min_);
    const auto& event = afterScroll ? OnAfterScroll : OnScroll;
    if (event) event(value_);
}

void ScrollerValue::KnobPress(double mouse) {
    if (knobDragging_) return;
    pressMouse_ = mouse;
    pressKnob_ = knobPos_;
    knobDragging_ = true;
}

void ScrollerValue::KnobMove(double mouse) {
    if (!knobDragging_) return;
    double p = pressKnob_ + mouse - pressMouse_;
    if (p < 0) p = 0;
    if (p + knobLength_ > trackLength_) p = FreeLength();
    PlaceKnob(p);
    pressKnob_ = knobPos_;
    ValueStep();
}

void ScrollerValue::TrackPress(double c) {
    trackPressed_ = true;
    CentreKnobAt(c);
    ValueStep();
}

void ScrollerValue::StepKey(bool plus) {
    CentreKnobAt(plus ? knobPos_ + knobLength_ + 1 : knobPos_ - 1);
    ValueStep();
}

void ScrollerValue::CentreKnobAt(double c) {
    const double d = knobLength_ / 2;
    if (c + d > trackLength_)
        PlaceKnob(FreeLength());
    else if (c - d < 0)
        PlaceKnob(0);
    else
        PlaceKnob(c - d);
}

void ScrollerValue::PlaceKnob(double p) {
    // A track shorter than the knob has no travel: the knob stays at the start.
    knobPos_ = FreeLength() > 0 ? p : 0.0;
    if (OnKnobMoved) OnKnobMoved();
}

} // namespace tolva
