#pragma once

#include "platform/runtime_error.h"
#include "support/temp_folder.h"
#include "variables/dimension_table.h"
#include "variables/symbol_definition.h"
#include "variables/work_database.h"

#include <gtest/gtest.h>

namespace velmo {

// A symbol in a folder of its own, which is the exchange folder too.
class SymbolSample {
public:
    struct Column {
        QString key;
        int width = 5;
        QString name;
        int small = 0;
    };

    SymbolSample() {
        state.TempDir = folder.Path();
        state.SymbolFile = folder.Path(QStringLiteral("S1.TXT"));
        variables.SetCols(2);
    }

    // A definition file with these lines in its variable section.
    void Define(const QStringList& lines) const {
        DefineExactly(QStringList{QStringLiteral("* 試験"), QStringLiteral("$VAR")} + lines +
                      QStringList{QStringLiteral("$GEO"), QStringLiteral("V99=PRO(\"no\",1)")});
    }
    void DefineExactly(const QStringList& lines) const { folder.WriteLines(QStringLiteral("S1.TXT"), lines); }

    static QStringList TableLines(const QList<Column>& columns, const QStringList& rows) {
        QStringList lines{QStringLiteral("whatever"), QString::number(columns.size())};
        for (qsizetype i = 0; i < columns.size(); ++i)
            lines << QString::number(i + 1) << columns[i].key << QString::number(columns[i].width)
                  << QString::number(columns[i].small) << columns[i].name;
        return lines << QString::number(rows.size()) << rows;
    }
    void WriteTable(const QList<Column>& columns, const QStringList& rows) const {
        WriteTableLines(TableLines(columns, rows));
    }
    void WriteTableLines(const QStringList& lines) const {
        folder.WriteLines(QStringLiteral("S1.PMN"), lines);
    }

    // Reads definition and table as the window does.
    void Load() {
        count = ReadSymbolDefinition(state, work, variables,
                                     [](const QString& text) { ADD_FAILURE() << text.toStdString(); });
        table = LoadDimensionTable(state, work, count, variables);
    }

    // The rows of a table of the work database, fields in their order.
    static QList<QStringList> WorkRows(const WorkDatabase& work, const QString& name, int fields) {
        QList<QStringList> rows;
        Database database = work.Open(Database::Access::Read);
        for (RecordSet set(database, name); !set.Eof(); set.MoveNext()) {
            QStringList row;
            for (int i = 0; i < fields; ++i)
                row << set.Text(i);
            rows << row;
        }
        return rows;
    }
    QList<QStringList> WorkRows(const QString& name, int fields) const {
        return WorkRows(work, name, fields);
    }
    static QList<QStringList> NowTableOf(const WorkDatabase& work) {
        return WorkRows(work, QStringLiteral("NowTable"), 6);
    }
    QList<QStringList> NowTable() const { return NowTableOf(work); }

    // The texts of a grid, row by row, header and row numbers included.
    static QList<QStringList> Texts(const GridCells& cells) {
        QList<QStringList> rows;
        for (int row = 0; row < cells.Rows(); ++row) {
            QStringList texts;
            for (int column = 0; column < cells.Cols(); ++column)
                texts << cells.Text(row, column);
            rows << texts;
        }
        return rows;
    }
    QStringList CurrentValues() const {
        QStringList values;
        for (int row = 1; row < variables.Rows(); ++row)
            values << variables.Text(row, 1);
        return values;
    }

    TempFolder folder;
    WorkDatabase work{folder.Path()};
    GlobalState state;
    GridCells variables{GridCells::FirstColumn::Texts};
    DimensionTable table;
    std::int16_t count = 0;
};

using Rows = QList<QStringList>;

// The error that an action throws; fails the test when it throws none.
template <typename Action>
RuntimeError ErrorOf(Action&& action) {
    try {
        action();
    } catch (const RuntimeError& error) {
        return error;
    }
    ADD_FAILURE() << "no error was thrown";
    return RuntimeError(ErrorNumber::InvalidArgument);
}

} // namespace velmo
