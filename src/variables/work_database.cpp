#include "variables/work_database.h"

#include "platform/files.h"
#include "platform/runtime_error.h"

namespace velmo {

namespace {

const QString SelectNowTable = QStringLiteral("SELECT * FROM NowTable");
const QString SelectPmnTable = QStringLiteral("SELECT * FROM PmnTable");

// Nothing in the file is needed after a crash.
Database Scratch(Database database) {
    database.MakeScratch();
    return database;
}

} // namespace

QString WorkDatabasePath(const QString& folder) {
    return folder + QStringLiteral("VELMONOW.mdb");
}

void CreateWorkDatabase(const QString& folder, const Inform& inform) {
    const QString path = WorkDatabasePath(folder);
    DeleteFileIfAny(path);
    Database database = Scratch(Database::Create(path, Database::Collation::Japanese));
    try {
        database.Execute(QStringLiteral("CREATE TABLE NowTable (ValNum integer, ValNo integer, ValName TEXT, "
                                        "ValDis integer,ValLen integer, ValSmall integer);"));
    } catch (const RuntimeError&) {
        inform(QStringLiteral("NowDb Create Error"));
    }
}

Database OpenWorkDatabase(const QString& folder, Database::Access access) {
    return Scratch(Database(WorkDatabasePath(folder), access));
}

RecordSet SelectVariables(Database& database) {
    return RecordSet(database, SelectNowTable);
}

RecordSet SelectVariablesNamed(Database& database, const QString& name) {
    return RecordSet(database, SelectNowTable + QStringLiteral(" WHERE ValName='"), name,
                     QStringLiteral("';"));
}

void FindVariableNumber(RecordSet& variables, int number) {
    variables.FindFirst(QStringLiteral("ValNo = %1").arg(number));
}

void FindVariableRow(RecordSet& variables, int row) {
    variables.FindFirst(QStringLiteral("ValNum = %1").arg(row));
}

void FindCommentRow(RecordSet& variables) {
    variables.FindFirst(QStringLiteral("Valnum = 0"));
}

void FindTableColumn(RecordSet& variables, int column) {
    variables.FindFirst(QStringLiteral("Valdis = %1").arg(column));
}

int TableColumnOfRow(RecordSet& variables, int row) {
    FindVariableRow(variables, row);
    return variables.NoMatch() ? 0 : variables.Integer(u"ValDis");
}

RecordSet SelectTableRows(Database& database) {
    return RecordSet(database, SelectPmnTable);
}

RecordSet SelectGroup(Database& database, const QString& nominal) {
    return RecordSet(database, SelectPmnTable + QStringLiteral("  WHERE Val1='"), nominal,
                     QStringLiteral("';"));
}

void FindGroup(RecordSet& tableRows, const QString& nominal) {
    tableRows.FindFirst(QStringLiteral("Val1 = '") + nominal + u'\'');
}

} // namespace velmo
