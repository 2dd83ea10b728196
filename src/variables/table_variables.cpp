#include "variables/table_variables.h"

namespace velmo {

namespace {

constexpr int NewWidth = 10;

void PutColumn(RecordSet& variables, int column) {
    variables.Edit();
    variables.SetNumber(u"Valdis", column);
    variables.Update();
}

// The variable of a column, if there is one, gets another.
void Renumber(RecordSet& variables, int column, int to) {
    FindTableColumn(variables, column);
    if (!variables.NoMatch())
        PutColumn(variables, to);
}

} // namespace

std::vector<TableVariable> ReadTableVariables(Database& database) {
    std::vector<TableVariable> variables;
    for (RecordSet rows = SelectVariables(database); !rows.Eof(); rows.MoveNext())
        variables.push_back({rows.Integer(u"ValNum"), rows.Integer(u"ValNo"), rows.Text(u"ValName"),
                             rows.Integer(u"ValDis"), rows.Integer(u"ValLen")});
    return variables;
}

void WriteTableVariables(Database& database, const std::vector<TableVariable>& variables) {
    RecordSet rows = SelectVariables(database);
    for (const TableVariable& variable : variables) {
        FindVariableRow(rows, variable.row);
        rows.Edit();
        rows.Set(u"ValName", variable.name);
        rows.SetNumber(u"ValDis", variable.column);
        rows.SetNumber(u"ValLen", variable.width);
        rows.Update();
    }
}

void HideColumn(Database& database, int column, int columns) {
    RecordSet variables = SelectVariables(database);
    Renumber(variables, column, 0);
    for (int right = column + 1; right <= columns; ++right)
        Renumber(variables, right, right - 1);
}

void SwapColumnNumbers(Database& database, int column, int other) {
    RecordSet variables = SelectVariables(database);
    FindTableColumn(variables, other);
    const bool found = !variables.NoMatch();
    const int otherRow = found ? variables.Integer(u"Valnum") : 0;
    Renumber(variables, column, other);
    if (!found)
        return;
    // For a moment two variables may have that column; the row tells them apart.
    FindVariableRow(variables, otherRow);
    PutColumn(variables, column);
}

void ShowInColumn(Database& database, int variableRow, int column, int columns) {
    RecordSet variables = SelectVariables(database);
    for (int shown = columns; shown >= column; --shown)
        Renumber(variables, shown, shown + 1);
    FindVariableRow(variables, variableRow);
    const bool widthless = variables.Integer(u"ValLen") == 0;
    variables.Edit();
    variables.SetNumber(u"ValDis", column);
    if (widthless)
        variables.SetNumber(u"ValLen", NewWidth);
    variables.Update();
}

void RenameVariable(Database& database, int variableRow, const QString& name) {
    RecordSet variables = SelectVariables(database);
    FindVariableRow(variables, variableRow);
    variables.Edit();
    variables.Set(u"ValName", name);
    variables.Update();
}

} // namespace velmo
