#pragma once

#include "platform/record_set.h"

#include <functional>

namespace velmo {

// The scratch database of the variable window: NowTable lists the symbol's variables, PmnTable holds the rows
// of its dimension table. folder is the exchange folder, ending in a backslash, or empty.

QString WorkDatabasePath(const QString& folder);

// Shows the user a text and waits for OK.
using Inform = std::function<void(const QString& text)>;

// Puts a new work database with an empty NowTable in the place of an old one. Throws when the old file cannot
// be deleted or the new one not be made; what fails after that is only told through inform.
void CreateWorkDatabase(const QString& folder, const Inform& inform);

// The work database, for one user action.
Database OpenWorkDatabase(const QString& folder, Database::Access access);

// All of NowTable.
RecordSet SelectVariables(Database& database);
// The variables of a name; a quote in it is error 3075.
RecordSet SelectVariablesNamed(Database& database, const QString& name);

// Find the record of NowTable by the variable's number in the definition file, by its row in the variable
// grid (0 for the comment column), and by its column in the dimension table.
void FindVariableNumber(RecordSet& variables, int number);
void FindVariableRow(RecordSet& variables, int row);
void FindCommentRow(RecordSet& variables);
void FindTableColumn(RecordSet& variables, int column);

// The column of the dimension table that holds the variable of a row; 0 when there is none.
int TableColumnOfRow(RecordSet& variables, int row);

// All rows of PmnTable, in table order.
RecordSet SelectTableRows(Database& database);
// The rows of PmnTable whose first value is the nominal; a quote in it is error 3075.
RecordSet SelectGroup(Database& database, const QString& nominal);
// Finds the first of them among all rows.
void FindGroup(RecordSet& tableRows, const QString& nominal);

} // namespace velmo
