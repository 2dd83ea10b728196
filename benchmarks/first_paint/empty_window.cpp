#include <QApplication>
#include <QMainWindow>

// The yardstick of a start: a window with nothing in it.
int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QMainWindow window;
    window.setObjectName(QStringLiteral("empty"));
    window.resize(433, 433);
    window.show();
    return QApplication::exec();
}
