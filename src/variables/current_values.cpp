#include "variables/current_values.h"

#include "platform/numbers.h"
#include "platform/runtime_error.h"

#include <QSet>

#include <array>
#include <utility>
#include <vector>

namespace velmo {

namespace {

// Variables that one choice from the drop-down can reach.
constexpr int MostGovernedRows = 30;

QString Nominal(const ValueGrids& grids) {
    return TrimBlanks(grids.table.Text(grids.tableRow, 1)).toString();
}

bool HasTableRow(const ValueGrids& grids) {
    return !grids.table.IsMessage() && grids.tableRow > 0 && grids.tableRow < grids.table.Rows();
}

bool SameNumber(const QString& left, const QString& right) {
    return ToNumber(left) == ToNumber(right);
}

// Current values are gathered before the first of them changes.
using Changes = std::vector<std::pair<int, QString>>;

void Make(const Changes& changes, GridCells& variables) {
    for (const auto& [row, value] : changes)
        variables.SetText(row, 1, value);
}

} // namespace

void CopyTableRow(const ValueGrids& grids) {
    Database database = grids.work.Open(Database::Access::Read);
    Changes changes;
    for (int column = 1; column < grids.table.Cols(); ++column) {
        RecordSet named = SelectVariablesNamed(database, TrimBlanks(grids.table.Text(0, column)).toString());
        // The comment row is no variable, whatever its name.
        while (!named.Eof() && named.Integer(u"ValNum") == 0)
            named.MoveNext();
        if (!named.Eof())
            changes.emplace_back(named.Integer(u"ValNum"), grids.table.Text(grids.tableRow, column));
    }
    Make(changes, grids.variables);
}

QStringList AllowedValues(const ValueGrids& grids, int variableRow) {
    Database database = grids.work.Open(Database::Access::Read);
    if (!HasTableRow(grids))
        return {};
    RecordSet variables = SelectVariables(database);
    const int column = TableColumnOfRow(variables, variableRow);
    if (column == 0)
        return {};
    QStringList values;
    QSet<QString> known;
    for (RecordSet rows = SelectGroup(database, Nominal(grids)); !rows.Eof(); rows.MoveNext()) {
        const QString value = rows.Text(column);
        if (!known.contains(value)) {
            known.insert(value);
            values << value;
        }
    }
    return values;
}

void ApplyAllowedValue(const ValueGrids& grids, int variableRow, const QString& value) {
    Database database = grids.work.Open(Database::Access::Read);
    std::array<int, MostGovernedRows + 1> columns{};
    {
        RecordSet variables = SelectVariables(database);
        for (int row = 1; row < grids.variables.Rows(); ++row) {
            if (row > MostGovernedRows)
                throw RuntimeError(
                    ErrorNumber::SubscriptOutOfRange,
                    QStringLiteral("表の値を選べるのは、変数が %1 個までの図形です。").arg(MostGovernedRows));
            columns[size_t(row)] = TableColumnOfRow(variables, row);
        }
    }
    RecordSet rows = SelectTableRows(database);
    FindGroup(rows, Nominal(grids));
    while (!rows.NoMatch() && !SameNumber(value, rows.Text(columns[size_t(variableRow)])))
        rows.FindNext();
    if (rows.NoMatch())
        return;
    Changes changes;
    for (int row = 1; row < grids.variables.Rows(); ++row) {
        if (columns[size_t(row)] > 0)
            changes.emplace_back(row, rows.Text(columns[size_t(row)]));
    }
    Make(changes, grids.variables);
}

} // namespace velmo
