#pragma once

#include "platform/record_set.h"

#include <optional>
#include <vector>

namespace velmo {

// A category: a row of FolderTable.
struct Category {
    std::int16_t id = 0;
    std::int16_t parentId = 0;
    QString name;
    // Relative to the home folder; may be empty.
    QString slide;
};

// What is shown of an entry of a category: a row of PDFFileTable. Files are relative to the home folder.
struct Entry {
    QString name;
    QString file;
    QString slide;
};

// Makes an empty library database at a stored path; there must be no file of that name.
void CreateLibraryFile(const QString& path);

// Finds out whether the library can be written before anything is begun. Throws 3027 when it cannot, 3260
// when another program is writing it, and what opening throws.
void RequireWritable(const QString& library);

// Throws 6 when the row added last received a number that the program cannot handle; the transaction is to
// end with it.
void RequireHandledId(const Database& database);

// What the windows ask a library database, each statement once. Rows come in the order they were added.
RecordSet AllCategories(Database& database);
RecordSet RootCategories(Database& database);
RecordSet CategoryWithId(Database& database, int id);
RecordSet ChildCategories(Database& database, int parentId);
RecordSet AllEntries(Database& database);
RecordSet EntryWithId(Database& database, int id);
RecordSet EntriesOf(Database& database, int folderId);
// The entries of a category that bear a name. A quote in the name breaks the statement (error 3075).
RecordSet EntriesNamed(Database& database, const QString& name, int folderId);

// The current row; throws 3021 when there is none.
Category ReadCategory(const RecordSet& row);
Entry ReadEntry(const RecordSet& row);

// The criterion that finds an entry by its file, relative to the home folder.
QString EntryFileCriterion(const QString& file);

} // namespace velmo
