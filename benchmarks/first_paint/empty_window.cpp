#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>

// The yardstick of a start: a main window with its usual bars and nothing in it.
int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QMainWindow window;
    window.setObjectName(QStringLiteral("empty"));
    window.setWindowTitle(QStringLiteral("空のウィンドウ"));
    window.menuBar()->addMenu(QStringLiteral("ファイル(&F)"));
    window.addToolBar(QStringLiteral("ツールバー"))->addAction(QStringLiteral("開く"));
    window.statusBar();
    window.resize(433, 433);
    window.show();
    return QApplication::exec();
}
