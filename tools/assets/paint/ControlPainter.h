#pragma once
// Small pictures of the controls: the picture buttons, the spells on the board and on
// their buttons, the digits of the bonus count and the two mouse pointers.
#include <QImage>
#include <QString>

class ControlPainter {
public:
    // 190 x 31 menu button; `hover` gives the lit picture shown under the mouse.
    static QImage MenuButton(const QString& text, int icon, bool hover);
    // 78 x 21 close button of the about and settings windows.
    static QImage CloseButton(bool hover);
    // 50 x 50 spell as it lies on the board and stands in the panel.
    static QImage Spell(int spell);
    // 27 x 27 spell button.
    static QImage SpellButton(int spell);
    // Digit 0 to 9, or 10 for the point, 60 pixels high on the bonus band colour.
    static QImage Digit(int index);
    static constexpr int DigitWidth = 44;
    static constexpr int PointWidth = 22;
    static constexpr int DigitHeight = 60;
    // 32 x 32 pointers with alpha. The pipette's hot spot is its tip at (0, 15); the spell
    // pointer's is the tip of the wand at (1, 1).
    static QImage PipettePointer();
    static QImage SpellPointer();

private:
    static void ButtonIcon(QPainter& p, int icon, const QRectF& box, bool hover);
};
