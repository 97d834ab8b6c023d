// The game's own colours on Qt's pop-ups: the menus, and the message and input boxes the
// game asks and tells through, down to the labels, fields and buttons inside them.
#include "session/qt/MenuLook.h"

#include <QApplication>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <gtest/gtest.h>

using namespace tolva;

namespace {

const QColor Face(20, 55, 60);
const QColor Gold(242, 190, 72);

// Every label, field and button of `box` reads gold on the panel's face, in bold.
void ExpectTheGamesLook(const QWidget& box, const char* what) {
    EXPECT_EQ(box.palette().color(QPalette::Window), Face) << what;
    EXPECT_TRUE(box.font().bold()) << what;
    const auto labels = box.findChildren<QLabel*>();
    const auto buttons = box.findChildren<QPushButton*>();
    EXPECT_FALSE(buttons.isEmpty()) << what;
    for (const QLabel* label : labels) {
        if (label->text().isEmpty()) continue;   // the icon's picture
        EXPECT_EQ(label->palette().color(QPalette::WindowText), Gold) << what << ": " << label->text().toStdString();
    }
    for (const QPushButton* button : buttons) {
        EXPECT_EQ(button->palette().color(QPalette::Button), Face) << what;
        EXPECT_EQ(button->palette().color(QPalette::ButtonText), Gold) << what;
        EXPECT_TRUE(button->font().bold()) << what;
    }
    for (const QLineEdit* field : box.findChildren<QLineEdit*>()) {
        EXPECT_EQ(field->palette().color(QPalette::Base), Face) << what;
        EXPECT_EQ(field->palette().color(QPalette::Text), Gold) << what;
    }
}

} // namespace

TEST(MenuLook, MenusAndTheSmallBoxesWearThePanelsColours) {
    const QColor plain = QApplication::palette().color(QPalette::Window);
    ApplyMenuLook();
    // The window's own widgets keep the desktop's palette; only the pop-ups change.
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), plain);

    QMenu menu;
    menu.addAction("New game");
    menu.ensurePolished();
    EXPECT_EQ(menu.palette().color(QPalette::Window), Face);
    EXPECT_EQ(menu.palette().color(QPalette::WindowText), Gold);
    EXPECT_TRUE(menu.font().bold());

    QMessageBox message(QMessageBox::Critical, "TOLVA II", "INVALID LEVEL-CODE!", QMessageBox::Ok);
    message.ensurePolished();
    ExpectTheGamesLook(message, "message box");

    QInputDialog input;
    input.setInputMode(QInputDialog::TextInput);
    input.setLabelText("LEVEL-CODE:");
    input.show();   // it makes its field and buttons when first shown
    ExpectTheGamesLook(input, "input box");
    EXPECT_EQ(input.findChildren<QLineEdit*>().size(), 1);
}
