#pragma once

#include "variables/work_database.h"

#include <vector>

namespace velmo {

// The variables of NowTable as the table editor changes them.
struct TableVariable {
    // Row in the variable grid; 0 for the comment column.
    int row = 0;
    int number = 0;
    QString name;
    // Of the dimension table; 0 when it does not show the variable.
    int column = 0;
    // Characters of the column in the table file.
    int width = 0;

    bool operator==(const TableVariable&) const = default;
};

// All of them, in the order of NowTable.
std::vector<TableVariable> ReadTableVariables(Database& database);
// Writes name, column and width of these variables, found by their rows.
void WriteTableVariables(Database& database, const std::vector<TableVariable>& variables);

// The variable of a column leaves the table of so many columns; those right of it move one to the left.
void HideColumn(Database& database, int column, int columns);
// The variables of two columns change places; one that shows no variable takes part all the same.
void SwapColumnNumbers(Database& database, int column, int other);
// Shows a variable in a column; those there and right of it, in a table that had so many columns, move one to
// the right. One without a width gets 10.
void ShowInColumn(Database& database, int variableRow, int column, int columns);
// Gives a name to the variable of a row of the variable grid. Throws 3163 when it is too long.
void RenameVariable(Database& database, int variableRow, const QString& name);

} // namespace velmo
