// TOLVA II: the game's entry point.
#include <QApplication>
#include <QWidget>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName("TOLVA II");
    QWidget window;
    window.setWindowTitle("TOLVA II");
    window.setFixedSize(750, 561);
    window.show();
    return QApplication::exec();
}
