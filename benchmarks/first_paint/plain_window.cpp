#include <QApplication>
#include <QLabel>
#include <QMainWindow>

// The yardstick of a start: a window with nothing in it but one Japanese text.
int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QMainWindow window;
    window.setObjectName(QStringLiteral("plain"));
    window.setCentralWidget(new QLabel(QStringLiteral("シンボルライブラリ")));
    window.resize(433, 433);
    window.show();
    return QApplication::exec();
}
