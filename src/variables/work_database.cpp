#include "variables/work_database.h"

#include "platform/files.h"
#include "platform/runtime_error.h"
#include "platform/work_file.h"

#include <QRandomGenerator>

#include <limits>

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

WorkDatabase::WorkDatabase(const QString& folder) : path_(folder + QStringLiteral("VELMONOW.mdb")) {}

void WorkDatabase::CreateWorkDatabase(const Inform& inform) {
    // Windows that open at the same moment make theirs one after the other; the last one's stays.
    const std::unique_ptr<WorkFile> alone =
        TakeWorkFile(NativePath(path_) + QStringLiteral(".making"), WritingPatience);
    DeleteFileIfAny(path_);
    token_ = 0;
    Database database = Scratch(Database::Create(path_, Database::Collation::Japanese));
    const std::int32_t token =
        QRandomGenerator::system()->bounded(1, std::numeric_limits<std::int32_t>::max());
    try {
        // Together: where another window made the same file a moment before, neither is done.
        Transaction transaction(database);
        database.Execute(QStringLiteral("CREATE TABLE NowTable (ValNum integer, ValNo integer, ValName TEXT, "
                                        "ValDis integer,ValLen integer, ValSmall integer);"));
        database.SetToken(token);
        transaction.Commit();
        token_ = token;
    } catch (const RuntimeError&) {
        inform(QStringLiteral("NowDb Create Error"));
    }
}

Database WorkDatabase::Open(Database::Access access) const {
    if (FileExists(path_)) {
        Database database(path_, access);
        if (IsOwn(database))
            return Scratch(std::move(database));
    }
    throw RuntimeError(
        ErrorNumber::DatabaseFailed,
        QStringLiteral("作業データベースがほかで作り直されたか、削除されました。\n\n"
                       "同じ作業フォルダでほかの Velmo が開かれていたら閉じ、シンボルを開き直してください。"
                       "変更した寸法表は、コピー (Ctrl+C) して表計算ソフトに貼り付ければ残せます。"))
        .InFile(path_);
}

void WorkDatabase::RequireOwn() const {
    static_cast<void>(Open(Database::Access::Read));
}

void WorkDatabase::DeleteIfOwn() const {
    try {
        if (!FileExists(path_) || !IsOwn(Database(path_, Database::Access::Read)))
            return;
    } catch (const RuntimeError&) {
        // What cannot be read is not the one that was made here.
        return;
    }
    DeleteFileIfAny(path_);
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
