#pragma once
// Message and input boxes on screen: Qt's own, with the icon each box asks for. They are
// modal to their owner window and run a nested event loop, so the game's timers go on
// while a box waits for its answer.
//
// The game's texts are 8-bit and are shown as Latin-1; an answer typed into an input box
// comes back the same way, with a character outside Latin-1 as "?".
#include "support/platform/Dialogs.h"

#include <QMessageBox>
#include <QPointer>

class QWidget;

namespace tolva {

class QtDialogs final : public Dialogs {
public:
    explicit QtDialogs(QWidget* owner = nullptr) : owner_(owner) {}

    MessageResult MessageBox(const std::string& text, const std::string& title, MessageIcon icon,
                             MessageButtons buttons) override;
    std::string InputBox(const std::string& prompt, const std::string& title, const std::string& offered) override;

    static QMessageBox::Icon QtIcon(MessageIcon icon);

private:
    QPointer<QWidget> owner_;
};

} // namespace tolva
