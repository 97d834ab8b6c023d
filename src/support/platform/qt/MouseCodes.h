#pragma once
// The mouse as the game's controls and board receive it: buttons as 1 left, 2 right and
// 4 middle (added together for the buttons held during a move), and the keys held as
// 1 shift, 2 control, 4 alt.
#include <QMouseEvent>

#include <cstdint>

namespace tolva {

inline std::int16_t MouseButtonCode(Qt::MouseButtons buttons) {
    std::int16_t code = 0;
    if (buttons & Qt::LeftButton) code |= 1;
    if (buttons & Qt::RightButton) code |= 2;
    if (buttons & Qt::MiddleButton) code |= 4;
    return code;
}

inline std::int16_t MouseShiftCode(Qt::KeyboardModifiers modifiers) {
    std::int16_t code = 0;
    if (modifiers & Qt::ShiftModifier) code |= 1;
    if (modifiers & Qt::ControlModifier) code |= 2;
    if (modifiers & Qt::AltModifier) code |= 4;
    return code;
}

} // namespace tolva
