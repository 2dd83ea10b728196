#pragma once

#include "library/library_database.h"
#include "support/temp_folder.h"

namespace velmo {

// Adds rows to a library database that CreateLibraryFile made.
inline int AddCategory(Database& database, int parentId, const QString& name, const QString& slide = {}) {
    RecordSet rows(database, "FolderTable");
    rows.AddNew();
    rows.SetNumber(u"ParentID", parentId);
    rows.Set(u"FolderName", name);
    rows.Set(u"SLDFileName", slide);
    rows.Update();
    return int(database.LastAddedId());
}

inline int AddEntry(Database& database, int folderId, const QString& name, const QString& file,
                    const QString& slide = {}) {
    RecordSet rows(database, "PDFFileTable");
    rows.AddNew();
    rows.SetNumber(u"FolderID", folderId);
    rows.Set(u"PDFName", name);
    rows.Set(u"PDFFileName", file);
    rows.Set(u"SLDFileName", slide);
    rows.Update();
    return int(database.LastAddedId());
}

// A slide of one red line.
inline QByteArray SampleSlide() {
    return QByteArray::fromHex("4175746F43414420536C6964650D0A1A00560213000900472142010200341201FF02000200"
                               "0A00020000FC");
}

} // namespace velmo
