#pragma once
// Message and input boxes on screen: Qt's own, with the icon each box asks for. They are
// modal to their owner window and run a nested event loop, so the game's timers go on
// while a box waits for its answer.
//
// The game's texts are 8-bit and are shown as Latin-1; an answer typed into an input box
// comes back the same way, with a character outside Latin-1 as "?". A file name is no
// game text: it comes back in the file system's own encoding.
//
// The save-file box is Qt's own widget rather than the desktop's native one, so that it
// behaves the same on every desktop (and under the offscreen platform in tests).
#include "support/platform/Dialogs.h"

#include <QMessageBox>
#include <QPointer>
#include <QStringList>

class QWidget;

namespace tolva {

class QtDialogs final : public Dialogs {
public:
    explicit QtDialogs(QWidget* owner = nullptr) : owner_(owner) {}

    MessageResult MessageBox(const std::string& text, const std::string& title, MessageIcon icon,
                             MessageButtons buttons) override;
    std::string InputBox(const std::string& prompt, const std::string& title, const std::string& offered) override;
    std::string SaveFileBox(const SaveFileRequest& request) override;

    static QMessageBox::Icon QtIcon(MessageIcon icon);
    // "Tolva hiscore-file|*.hi" as Qt's name filters: {"Tolva hiscore-file (*.hi)"}.
    static QStringList NameFilters(const std::string& filter);

private:
    QPointer<QWidget> owner_;
};

} // namespace tolva
