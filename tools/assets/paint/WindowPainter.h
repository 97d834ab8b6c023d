#pragma once
// Backgrounds of the windows: the main window (laid out for its controls), the Loading
// window, the about window, the initials entry, the settings and the bonus screen.
//
// The main window's picture is drawn around fixed places: the board at 20, 41 (500 x 500),
// the score box at 543, 55, the level and bonus values at top 104, the two groups of spell
// buttons at top 149 and 168, the spell caption at 543, 197, the armed spell at 610, 214,
// the hiscore table at 543, 297, the three picture buttons at 541, 431 / 472 / 512 and the
// status labels along the bottom at top 543. Wells and captions sit behind and beside
// those places so that the controls look set into the panel.
#include <QImage>

class WindowPainter {
public:
    static QImage Main();
    static QImage Loading();
    static QImage About();
    static QImage Initials();
    static QImage Settings();
    static QImage Bonus();

    // Places of the controls on the bonus screen and the initials entry, shared with the
    // digit pictures and the tests.
    static constexpr int BonusRowTops[3] = {133, 281, 411};
    static constexpr int BonusRowHeight = 60;

private:
    static QImage Backdrop(int width, int height, int seed);
    static void MainTop(QPainter& p);
    static void MainPanel(QPainter& p);
    static void MainStatus(QPainter& p);
    static void SectionCaption(QPainter& p, const QRect& r, const QString& text, double spacing = 1.5);
};
