#pragma once
// frmHiscore: the small borderless window that asks for three initials after a game
// that made the table. It is modal, centred over the board, has no close button and
// closes only by its keys (see InitialsEntry); it is dragged by any part of its surface.
// Keys are taken by their text: a key whose character is not in the game's 8-bit code
// page (Latin-1) is ignored, as are keys with no text at all (Shift, arrows).
#include "hiscores/InitialsEntry.h"
#include "support/platform/qt/QtPictureHolder.h"

#include <QDialog>
#include <QRect>

#include <string>

class QLabel;

namespace tolva {

class frmHiscore final : public QDialog {
    Q_OBJECT
public:
    static constexpr int FormWidth = 320;
    static constexpr int FormHeight = 150;

    // Loads data\2.bmp from the game folder and centres the window over `board`
    // (screen coordinates; a null rectangle leaves it where the system puts it).
    explicit frmHiscore(const QRect& board, QWidget* parent = nullptr);

    // Shows the window modally and gives the initials typed.
    static std::string Ask(const QRect& board, QWidget* parent);

    const std::string& EnteredInitials() const { return entry_.Text(); }
    // The initials' picture, for tests.
    QLabel* Picture1() const { return Picture1_; }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void PrintDisp();

    QtPictureHolder background_;
    QLabel* Label1_ = nullptr;
    QLabel* Picture1_ = nullptr;
    InitialsEntry entry_;
};

} // namespace tolva
