#pragma once

#include "platform/record_set.h"

#include <functional>

namespace velmo {

// Shows the user a text and waits for OK.
using Inform = std::function<void(const QString& text)>;

// The scratch database of a variable window: NowTable lists the symbol's variables, PmnTable holds the rows
// of its dimension table. Another window on the same exchange folder puts one of its own in the place of this
// one; a random number in the file tells them apart, so that nothing of another symbol is ever taken for the
// window's own.
class WorkDatabase {
public:
    // folder is the exchange folder, ending in a backslash, or empty.
    explicit WorkDatabase(const QString& folder);

    const QString& Path() const { return path_; }

    // Puts a new work database with an empty NowTable in the place of an old one, whoever made that. Throws
    // when the old file cannot be deleted or the new one not be made; what fails after that is only told
    // through inform.
    void CreateWorkDatabase(const Inform& inform);

    // The database, for one user action. Throws 3197 when the file is not the one that was created here, or
    // is gone.
    Database Open(Database::Access access) const;
    // Throws the same when it cannot be opened, for actions that do not need it but are its window's.
    void RequireOwn() const;

    // Deletes the file unless it is another window's or gone. Throws 70 when it cannot be deleted.
    void DeleteIfOwn() const;

private:
    bool IsOwn(const Database& database) const { return database.Token() == token_; }

    QString path_;
    // 0 before there is a NowTable.
    std::int32_t token_ = 0;
};

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
