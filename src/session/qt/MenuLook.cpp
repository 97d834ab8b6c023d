#include "session/qt/MenuLook.h"

#include <QApplication>
#include <QColor>
#include <QFont>
#include <QPalette>

namespace tolva {

void ApplyMenuLook() {
    // The colours of the panel picture: its face, a deeper shade for the edges, the teal
    // of its bands and the gold of its captions.
    const QColor face(20, 55, 60);
    const QColor deep(6, 17, 20);
    const QColor teal(34, 116, 113);
    const QColor light(37, 89, 92);
    const QColor gold(242, 190, 72);
    const QColor muted(122, 140, 136);

    QPalette palette = QApplication::palette();
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        const bool off = group == QPalette::Disabled;
        palette.setColor(group, QPalette::Window, face);
        palette.setColor(group, QPalette::Base, face);
        palette.setColor(group, QPalette::Button, face);
        palette.setColor(group, QPalette::WindowText, off ? muted : gold);
        palette.setColor(group, QPalette::Text, off ? muted : gold);
        palette.setColor(group, QPalette::ButtonText, off ? muted : gold);
        palette.setColor(group, QPalette::Highlight, teal);
        palette.setColor(group, QPalette::HighlightedText, off ? muted : QColor(Qt::white));
        palette.setColor(group, QPalette::Light, light);
        palette.setColor(group, QPalette::Midlight, light);
        palette.setColor(group, QPalette::Mid, teal);
        palette.setColor(group, QPalette::Dark, deep);
        palette.setColor(group, QPalette::Shadow, deep);
    }
    QFont font("DejaVu Sans");
    font.setPixelSize(12);
    font.setBold(true);
    // The small boxes the game asks and tells through (a level code, "INVALID
    // LEVEL-CODE!", a question before a game is ended) wear the same colours; their
    // labels, fields and buttons take them from the box.
    for (const char* kind : {"QMenu", "QMessageBox", "QInputDialog"}) {
        QApplication::setPalette(palette, kind);
        QApplication::setFont(font, kind);
    }
}

} // namespace tolva
