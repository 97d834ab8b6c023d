#pragma once
// The game's pop-up menus in its own colours: Qt's menus, drawn by Qt's style, on the
// dark teal of the panel with gold text, a teal bar under the entry at the mouse, and the
// window's typeface. It holds for every menu of the program (the game menus, the
// Scroller's right-button menu, the edit menus of text fields), so that none of them is
// the plain white of the desktop theme over the game's dark window; and for the message
// and input boxes, for the same reason.
namespace tolva {

void ApplyMenuLook();

} // namespace tolva
