#include "library/library_database.h"

#include "platform/runtime_error.h"

#include <limits>

namespace velmo {

namespace {

// A statement of the schema that fails is passed over: the next one may still be of use.
void TryExecute(Database& database, const QString& statement) {
    try {
        database.Execute(statement);
    } catch (const RuntimeError&) {
    }
}

} // namespace

void CreateLibraryFile(const QString& path) {
    Database database = Database::Create(path);
    Transaction transaction(database);
    for (const char* statement :
         {"CREATE TABLE FolderTable (ID COUNTER);", "ALTER TABLE FolderTable ADD COLUMN ParentID LONG;",
          "ALTER TABLE FolderTable ADD COLUMN FolderName TEXT;",
          "ALTER TABLE FolderTable ADD COLUMN SLDFileName TEXT;", "CREATE TABLE PDFFileTable (ID COUNTER);",
          "ALTER TABLE PDFFileTable ADD COLUMN FolderID LONG;",
          "ALTER TABLE PDFFileTable ADD COLUMN PDFName TEXT;",
          "ALTER TABLE PDFFileTable ADD COLUMN PDFFileName TEXT;",
          "ALTER TABLE PDFFileTable ADD COLUMN SLDFileName TEXT;",
          // Without these a category with many subcategories opens slowly.
          "CREATE INDEX FolderParent ON FolderTable (ParentID);",
          "CREATE INDEX PDFFileFolder ON PDFFileTable (FolderID);"})
        TryExecute(database, QString::fromLatin1(statement));
    transaction.Commit();
}

void RequireWritable(const QString& library) {
    Database database(library, Database::Access::Write);
    // Only a change, which is taken back, shows that the folder lets the engine keep its journal there.
    const Transaction trial(database);
    database.Execute(QStringLiteral("PRAGMA user_version=0"));
}

void RequireHandledId(const Database& database) {
    if (database.LastAddedId() > std::numeric_limits<std::int16_t>::max())
        throw RuntimeError(ErrorNumber::Overflow,
                           QStringLiteral("ライブラリにはこれ以上登録できません (ID は %1 まで)。")
                               .arg(std::numeric_limits<std::int16_t>::max()))
            .InFile(database.Path())
            .InField(QStringLiteral("ID"));
}

RecordSet AllCategories(Database& database) {
    return RecordSet(database, QStringLiteral("SELECT * FROM FolderTable"));
}

RecordSet RootCategories(Database& database) {
    return RecordSet(database, QStringLiteral("SELECT * FROM FolderTable WHERE ParentID=0"));
}

RecordSet CategoryWithId(Database& database, int id) {
    return RecordSet(database, QStringLiteral("SELECT * FROM FolderTable WHERE ID="), id);
}

RecordSet ChildCategories(Database& database, int parentId) {
    return RecordSet(database, QStringLiteral("SELECT * FROM FolderTable WHERE ParentID="), parentId);
}

RecordSet AllEntries(Database& database) {
    return RecordSet(database, QStringLiteral("SELECT * FROM PDFFileTable"));
}

RecordSet EntryWithId(Database& database, int id) {
    return RecordSet(database, QStringLiteral("SELECT * FROM PDFFileTable WHERE ID="), id);
}

RecordSet EntriesOf(Database& database, int folderId) {
    return RecordSet(database, QStringLiteral("SELECT * FROM PDFFileTable WHERE FolderID="), folderId);
}

RecordSet EntriesNamed(Database& database, const QString& name, int folderId) {
    return RecordSet(database, QStringLiteral("SELECT * FROM PDFFileTable WHERE PDFNAME='"), name,
                     QStringLiteral("' AND FolderID=") + QString::number(folderId));
}

Category ReadCategory(const RecordSet& row) {
    return {row.Integer(u"ID"), row.Integer(u"ParentID"), row.Text(u"foldername"), row.Text(u"SLDFileName")};
}

Entry ReadEntry(const RecordSet& row) {
    return {row.Text(u"PDFName"), row.Text(u"PDFFileName"), row.Text(u"SLDFileName")};
}

QString EntryFileCriterion(const QString& file) {
    return QStringLiteral("PDFFileName='") + file + u'\'';
}

} // namespace velmo
