// A small program with every kind of control the driver has to work, for the tests of the driver itself.

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPushButton>
#include <QShortcut>
#include <QStatusBar>
#include <QTableWidget>
#include <QToolBar>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

template <typename T>
T* Named(T* object, const char* name) {
    object->setObjectName(name);
    return object;
}

void Ask(QWidget* parent, QLabel* panel) {
    QMessageBox box(QMessageBox::Question, "VELMO2", "削除しますか", QMessageBox::Yes | QMessageBox::No,
                    parent);
    panel->setText(box.exec() == QMessageBox::Yes ? "yes" : "no");
}

// A message whose buttons have no room until F5 is pressed.
void AskLate(QWidget* parent, QLabel* panel) {
    QMessageBox box(QMessageBox::Question, "VELMO2", "遅れました", QMessageBox::Yes | QMessageBox::No,
                    parent);
    const QList<QAbstractButton*> buttons = box.buttons();
    for (QAbstractButton* button : buttons)
        button->setFixedSize(0, 0);
    QShortcut layOut(Qt::Key_F5, &box);
    QObject::connect(&layOut, &QShortcut::activated, &box, [&] {
        for (QAbstractButton* button : buttons)
            button->setFixedSize(80, 30);
    });
    panel->setText(box.exec() == QMessageBox::Yes ? "yes" : "no");
}

// A menu over which the mouse is reported to move as soon as it is there.
class RestlessMenu : public QMenu {
protected:
    void showEvent(QShowEvent* event) override {
        QMenu::showEvent(event);
        const QPoint pos = actionGeometry(actions().first()).center();
        constexpr int moves = 10;
        for (int move = 0; move < moves; ++move) {
            QMouseEvent moved(QEvent::MouseMove, pos, mapToGlobal(pos), Qt::NoButton, Qt::RightButton,
                              Qt::NoModifier);
            QApplication::sendEvent(this, &moved);
        }
    }
};

// A dialog that is run in an event loop of its own.
void OpenDialog(QWidget* parent, QLabel* panel) {
    QDialog dialog(parent);
    dialog.setObjectName("DIALOG");
    dialog.setWindowTitle("入力");
    dialog.setWindowFlag(Qt::WindowStaysOnTopHint);
    auto* layout = new QVBoxLayout(&dialog);
    auto* edit = Named(new QLineEdit(&dialog), "Edit");
    auto* ok = Named(new QPushButton("OK", &dialog), "OkButton");
    layout->addWidget(edit);
    layout->addWidget(ok);
    QObject::connect(ok, &QPushButton::clicked, &dialog, [&] {
        if (edit->text().isEmpty())
            QMessageBox::warning(&dialog, "VELMO2", "値を入力してください。");
        else
            dialog.accept();
    });
    if (dialog.exec() == QDialog::Accepted)
        panel->setText(edit->text());
}

QTreeWidget* MakeTree(QWidget* parent) {
    auto* tree = Named(new QTreeWidget(parent), "Tree");
    auto* root = new QTreeWidgetItem(tree, {"根"});
    for (int branch = 1; branch <= 40; ++branch) {
        auto* item = new QTreeWidgetItem(root, {QString("枝%1").arg(branch)});
        new QTreeWidgetItem(item, {QString("葉%1").arg(branch)});
    }
    root->setExpanded(true);
    return tree;
}

QTableWidget* MakeTable(QWidget* parent) {
    auto* table = Named(new QTableWidget(3, 2, parent), "Table");
    table->setHorizontalHeaderLabels({"呼び", "W"});
    for (int row = 0; row < 3; ++row) {
        for (int col = 0; col < 2; ++col)
            table->setItem(row, col, new QTableWidgetItem(QString("%1%2").arg(QChar('A' + row)).arg(col)));
    }
    return table;
}

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    int status = 0;
    QMainWindow window;
    window.setObjectName("MAIN");
    window.setWindowTitle("見本");
    auto* panel = Named(new QLabel("-"), "Panel");
    window.statusBar()->setObjectName("StatusBar");
    window.statusBar()->addWidget(panel);
    window.statusBar()->addWidget(new QLabel("二"));

    auto* center = new QWidget(&window);
    auto* layout = new QVBoxLayout(center);
    auto* tree = MakeTree(center);
    auto* table = MakeTable(center);
    auto* list = Named(new QListWidget(center), "List");
    list->addItems({"M10", "M12"});
    auto* combo = Named(new QComboBox(center), "Combo");
    combo->addItems({"10", "12", "16"});
    for (QWidget* widget : std::initializer_list<QWidget*>{tree, table, list, combo})
        layout->addWidget(widget);
    window.setCentralWidget(center);

    auto* menu = Named(window.menuBar()->addMenu("編集(&E)"), "MenuEdit");
    auto* more = Named(menu->addMenu("その他(&M)"), "MenuMore");
    Named(menu->addAction("ダイアログ(&D)"), "MenuDialog");
    QAction* ask = Named(more->addAction("削除(&D)..."), "MenuAsk");
    QAction* askLate = Named(more->addAction("遅い質問"), "MenuAskLate");
    // An entry that no window owns.
    QAction quit("終了(&X)");
    Named(&quit, "MenuQuit")->setEnabled(false);
    menu->addSeparator();
    menu->addAction(&quit);
    QAction* dialog = window.findChild<QAction*>("MenuDialog");
    auto* tools = window.addToolBar("道具");
    QAction* fail = Named(tools->addAction("失敗"), "ToolFail");
    dialog->setShortcut(Qt::CTRL | Qt::Key_D);
    QObject::connect(ask, &QAction::triggered, &window, [&] { Ask(&window, panel); });
    QObject::connect(askLate, &QAction::triggered, &window, [&] { AskLate(&window, panel); });
    QObject::connect(dialog, &QAction::triggered, &window, [&] { OpenDialog(&window, panel); });
    QObject::connect(fail, &QAction::triggered, &window, [&] {
        status = 7;
        window.close();
    });

    list->setContextMenuPolicy(Qt::CustomContextMenu);
    QObject::connect(list, &QWidget::customContextMenuRequested, list, [&](const QPoint& pos) {
        RestlessMenu popUp;
        Named(popUp.addAction("追加"), "PopAdd");
        if (popUp.exec(list->mapToGlobal(pos) - QPoint(8, 8)) != nullptr)
            list->addItem(list->itemAt(pos) != nullptr ? list->itemAt(pos)->text() + "の次" : "空");
    });
    QObject::connect(list, &QListWidget::itemDoubleClicked, list,
                     [&](const QListWidgetItem* item) { panel->setText("double " + item->text()); });
    QObject::connect(tree, &QTreeWidget::itemClicked, tree,
                     [&](const QTreeWidgetItem* item) { panel->setText(item->text(0)); });
    QObject::connect(combo, &QComboBox::textActivated, combo,
                     [&](const QString& text) { panel->setText(text); });
    window.resize(430, 500);
    window.show();
    QApplication::exec();
    return status;
}
