// The floor of the toolkit for the start-up benchmark: an empty Qt Widgets window of the
// main window's size with a label and a button, titled so that the probe finds it.
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QWidget>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QWidget window;
    window.setWindowTitle("TOLVA II  - empty window");
    window.setFixedSize(750, 561);
    QLabel label("An empty window", &window);
    label.move(20, 20);
    QPushButton button("OK", &window);
    button.move(20, 60);
    window.show();
    return QApplication::exec();
}
