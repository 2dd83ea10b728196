#pragma once

#include "symbol_sample.h"
#include "variables/table_editor.h"

#include <optional>

namespace velmo {

// A symbol whose dimension table is being edited: variables W, H, D, T (V1 to V4), of which the table shows
// the first two behind the comment column.
class EditedTable : public testing::Test {
protected:
    using Direction = TableEditor::Direction;

    // All that an action can change.
    struct State {
        Rows cells;
        int rows = 0;
        Rows nowTable;
        Rows variableGrid;

        bool operator==(const State&) const = default;
    };

    EditedTable() {
        symbol.state.RunMode = run_mode::UserLibrary;
        symbol.Define({QStringLiteral("V1=PRO(\"W\",1)"), QStringLiteral("V2=PRO(\"H\",2)"),
                       QStringLiteral("V3=PRO(\"D\",3)"), QStringLiteral("V4=PRO(\"T\",4)")});
    }

    void Open(const QList<SymbolSample::Column>& columns, const QStringList& rows) {
        symbol.WriteTable(columns, rows);
        symbol.Load();
        Start();
    }
    void OpenUsual() {
        Open(
            {{QStringLiteral("ｺﾒﾝﾄ"), 4, QStringLiteral("呼び"), 7},
             {QStringLiteral("V1"), 5, QStringLiteral("幅"), 1},
             {QStringLiteral("V2"), 3, QStringLiteral("高"), 2}},
            {QStringLiteral(" M10   10100"), QStringLiteral(" M12   12120"), QStringLiteral(" M16   16160")});
    }
    void Start() { editor_.emplace(symbol.work, symbol.table, symbol.variables); }

    TableEditor& Editor() { return *editor_; }
    const GridCells& Cells() const { return symbol.table.cells; }

    State Now() const {
        return {SymbolSample::Texts(Cells()), symbol.table.rows, symbol.NowTable(),
                SymbolSample::Texts(symbol.variables)};
    }
    static QStringList Column(const Rows& rows, int column) {
        QStringList texts;
        for (const QStringList& row : rows)
            texts << row[column];
        return texts;
    }
    // ValDis of the comment column and of variables 1, 2, 3 ...
    QStringList ShownIn() const { return Column(symbol.NowTable(), 3); }
    QStringList Widths() const { return Column(symbol.NowTable(), 4); }
    // The rows below the header, without their numbers; the numbers are what they have to be.
    Rows Data() const {
        Rows data;
        for (int row = 1; row < Cells().Rows(); ++row) {
            EXPECT_EQ(Cells().Text(row, 0), QString::number(row));
            QStringList texts;
            for (int column = 1; column < Cells().Cols(); ++column)
                texts << Cells().Text(row, column);
            data << texts;
        }
        EXPECT_EQ(symbol.table.rows, data.size());
        return data;
    }
    QStringList Header() const { return SymbolSample::Texts(Cells()).front().sliced(1); }

    // The action is one step of this name; undone and redone it leaves what it has to.
    template <typename Action>
    void ExpectStep(const QString& name, Action&& action) {
        QUndoStack& history = Editor().History();
        const State before = Now();
        const int steps = history.index();
        action();
        ASSERT_EQ(history.index(), steps + 1);
        EXPECT_EQ(history.undoText(), name);
        EXPECT_TRUE(Editor().IsChanged());
        const State after = Now();
        EXPECT_FALSE(after == before);
        history.undo();
        EXPECT_EQ(Now(), before);
        EXPECT_EQ(history.redoText(), name);
        EXPECT_EQ(Editor().IsChanged(), steps > 0);
        history.redo();
        EXPECT_EQ(Now(), after);
    }

    template <typename Action>
    void ExpectNothing(Action&& action) {
        const State before = Now();
        const int steps = Editor().History().count();
        const bool changed = Editor().IsChanged();
        action();
        EXPECT_EQ(Now(), before);
        EXPECT_EQ(Editor().History().count(), steps);
        EXPECT_EQ(Editor().IsChanged(), changed);
    }

    SymbolSample symbol;

    friend void PrintTo(const State& state, std::ostream* out) {
        for (const Rows& rows : {state.cells, state.nowTable, state.variableGrid}) {
            for (const QStringList& row : rows)
                *out << '\n' << row.join(u'|').toStdString();
            *out << "\n--";
        }
        *out << ' ' << state.rows << " rows";
    }

private:
    std::optional<TableEditor> editor_;
};

} // namespace velmo
