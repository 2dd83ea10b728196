#pragma once

#include "platform/grid.h"
#include "support/message_queue.h"
#include "symbol_sample.h"
#include "variables/vlm_vedt.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace velmo {

// The variable window on a symbol, used by mouse and keys. The symbol has the variables W (V12) and H (V3),
// which its table holds beside the nominal, and T (V5), which it does not.
class WindowTest : public testing::Test {
protected:
    WindowTest() : settings(NativePath(QStringLiteral("Velmo2.ini"))) {
        symbol.Define({QStringLiteral("V12=PRO(\"W\",100)"), QStringLiteral("V3=PRO(\"H\",20)"),
                       QStringLiteral("V5=PRO(\"T\",3)")});
    }

    ~WindowTest() override {
        if (messages.ExitStatus() == 0)
            return;
        // The end that a test brought about must not end the loops of the next one.
        QTimer::singleShot(0, qApp, &QCoreApplication::quit);
        QCoreApplication::exec();
    }

    QString NativePath(const QString& file) const { return symbol.folder.Path(file).replace(u'\\', u'/'); }

    void WriteRows(const QStringList& rows) {
        symbol.WriteTable(
            {{QStringLiteral("ｺﾒﾝﾄ"), 4, QStringLiteral("呼び")}, {"V12", 5, "W"}, {"V3", 5, "H"}}, rows);
    }
    void WriteRows() {
        WriteRows({"M10   10   1", "M12   12   2", "M10    8   3", "M12   14   4", "M16   16   5"});
    }

    void Open() {
        window = std::make_unique<VLM_VEDT>(symbol.state, settings, messages);
        window->Load();
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }

    template <typename Control>
    Control* Find(const char* name) const {
        auto* control = window->findChild<Control*>(QLatin1String(name));
        if (!control)
            ADD_FAILURE() << "no control " << name;
        return control;
    }
    Grid* Table() const { return Find<Grid>("Vedt_FlexGrid"); }
    Grid* Variables() const { return Find<Grid>("Vedt_NowFGrid"); }
    QLineEdit* CurEdit() const { return Find<QLineEdit>("CurEdit"); }
    QComboBox* CurCmb() const { return Find<QComboBox>("CurCmb"); }

    static void ClickCell(Grid* grid, int row, int column) {
        grid->scrollTo(grid->model()->index(row - 1, 0));
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->CellRect(row, column).center());
    }
    void ClickTable(int row, int column = 1) { ClickCell(Table(), row, column); }
    void ClickValue(int row) { ClickCell(Variables(), row, 1); }
    void ClickButton(const char* name) { QTest::mouseClick(Find<QPushButton>(name), Qt::LeftButton); }
    void ClickMeasure() {
        auto* bar = Find<QToolBar>("Vedt_Toolbar");
        QTest::mouseClick(bar->widgetForAction(Find<QAction>("TB_POINT")), Qt::LeftButton);
    }
    // A key for whatever has the focus.
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        ASSERT_TRUE(QApplication::focusWidget());
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    void Type(const QString& text) {
        ASSERT_TRUE(QApplication::focusWidget());
        QTest::keyClicks(QApplication::focusWidget(), text);
    }

    QStringList CurrentValues() const {
        QStringList values;
        const QAbstractItemModel* model = Variables()->model();
        for (int row = 0; row < model->rowCount(); ++row)
            values << model->index(row, 1).data().toString();
        return values;
    }
    QString Setting(const QString& key) const {
        // What is on disk, not what the window remembers.
        return SettingsStore(NativePath(QStringLiteral("Velmo2.ini"))).Get(key, QStringLiteral("none"));
    }
    bool HasWorkDatabase() const { return symbol.folder.Exists(QStringLiteral("VELMONOW.mdb")); }
    // A folder that is not empty takes a file's place, so that it can be neither written nor deleted.
    void Block(const QString& file) const {
        const QString path = NativePath(file);
        QFile::remove(path);
        ASSERT_TRUE(QDir().mkpath(path + QStringLiteral("/in the way")));
    }
    void Unblock(const QString& file) const { ASSERT_TRUE(QDir(NativePath(file)).removeRecursively()); }
    QByteArray SymbolLine() const { return symbol.state.SymbolFile.toLatin1() + "\r\n"; }

    SymbolSample symbol;
    SettingsStore settings;
    MessageQueue messages;
    std::unique_ptr<VLM_VEDT> window;
};

} // namespace velmo
