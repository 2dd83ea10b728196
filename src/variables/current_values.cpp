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

// The variable that a column's name means.
struct NamedVariable {
    // 0 for none.
    int row = 0;
    bool isExact = false;
};

// The variable of exactly that name, or else the first that compares equal. The comment row is no variable,
// whatever its name.
NamedVariable FindVariableNamed(Database& database, const QString& name) {
    NamedVariable alike;
    for (RecordSet named = SelectVariablesNamed(database, name); !named.Eof(); named.MoveNext()) {
        const int row = named.Integer(u"ValNum");
        if (row > 0 && named.Text(u"ValName") == name)
            return {row, true};
        alike.row = alike.row > 0 ? alike.row : row;
    }
    return alike;
}

// Tells the rows of a nominal group among all that compare equal to it: those of exactly that nominal, or
// else all of them.
class NominalGroup {
public:
    NominalGroup(Database& database, const QString& nominal) : nominal_(nominal) {
        for (RecordSet rows = SelectGroup(database, nominal_); !rows.Eof() && !exact_; rows.MoveNext())
            exact_ = IsExact(rows);
    }

    bool Holds(const RecordSet& row) const { return !exact_ || IsExact(row); }

private:
    bool IsExact(const RecordSet& row) const { return row.Text(1) == nominal_; }

    QString nominal_;
    bool exact_ = false;
};

// Current values are gathered before the first of them changes.
using Changes = std::vector<std::pair<int, QString>>;

void Make(const Changes& changes, GridCells& variables) {
    for (const auto& [row, value] : changes)
        variables.SetText(row, 1, value);
}

} // namespace

void CopyTableRow(const ValueGrids& grids) {
    Database database = grids.work.Open(Database::Access::Read);
    // What is exactly named goes last, and so over what is only alike.
    Changes alike;
    Changes exact;
    for (int column = 1; column < grids.table.Cols(); ++column) {
        const NamedVariable named =
            FindVariableNamed(database, TrimBlanks(grids.table.Text(0, column)).toString());
        if (named.row > 0)
            (named.isExact ? exact : alike).emplace_back(named.row, grids.table.Text(grids.tableRow, column));
    }
    Make(alike, grids.variables);
    Make(exact, grids.variables);
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
    const NominalGroup group(database, Nominal(grids));
    for (RecordSet rows = SelectGroup(database, Nominal(grids)); !rows.Eof(); rows.MoveNext()) {
        const QString value = rows.Text(column);
        if (group.Holds(rows) && !known.contains(value)) {
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
    const NominalGroup group(database, Nominal(grids));
    RecordSet rows = SelectTableRows(database);
    FindGroup(rows, Nominal(grids));
    const auto hasValue = [&] {
        return group.Holds(rows) && SameNumber(value, rows.Text(columns[size_t(variableRow)]));
    };
    while (!rows.NoMatch() && !hasValue())
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
