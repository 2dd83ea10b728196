#pragma once

#include "library_samples.h"
#include "platform/files.h"
#include "startup/global_state.h"

#include <gtest/gtest.h>

#include <optional>

namespace velmo {

// A user library of its own that the maintenance changes: the root 1 and below it 2 with two entries and 3
// without any.
class MaintainedLibrary : public testing::Test {
protected:
    MaintainedLibrary() {
        state.HomeDir = folder.Path("home\\");
        state.LibRoot = state.HomeDir;
        state.LibraryDb = folder.Path("home\\VelmoUsr.mdb");
        state.UserLibrary = true;
        folder.Write("home\\readme", "");
        CreateLibraryFile(state.LibraryDb);
        Database database = Open();
        Transaction transaction(database);
        AddCategory(database, 0, "root");
        AddCategory(database, 1, "bolts", "B.SLD");
        AddCategory(database, 1, "nuts", "N.SLD");
        AddEntry(database, 2, "M10", "A\\M10.PDF", "A\\M10.SLD");
        AddEntry(database, 2, "M12", "A\\M12.PDF", "A\\M12.SLD");
        transaction.Commit();
        state.CurFolderID = 2;
        state.CurFolderName = "bolts";
    }

    Database Open() const { return Database(state.LibraryDb, Database::Access::Write); }
    void Execute(const QString& statement) const { Open().Execute(statement); }

    // The rows as texts, fields apart by bars.
    QStringList Rows(const QString& table) const {
        QStringList rows;
        Database database = Open();
        for (RecordSet set(database, table); !set.Eof(); set.MoveNext()) {
            QStringList fields;
            for (int i = 0; i < (table == "FolderTable" ? 4 : 5); ++i)
                fields << set.Text(i);
            rows << fields.join('|');
        }
        return rows;
    }
    QStringList Folders() const { return Rows("FolderTable"); }
    QStringList Entries() const { return Rows("PDFFileTable"); }

    // The file's permission bits for its owner, its group and others.
    void Permit(const QString& stored, QFileDevice::Permissions permissions) const {
        ASSERT_TRUE(QFile::setPermissions(NativePath(stored), permissions));
    }

    const TempFolder folder;
    GlobalState state;
    const QStringList rootFolders = {"1|0|root|", "2|1|bolts|B.SLD", "3|1|nuts|N.SLD"};
    const QStringList firstEntries = {"1|2|M10|A\\M10.PDF|A\\M10.SLD", "2|2|M12|A\\M12.PDF|A\\M12.SLD"};
    static constexpr QFileDevice::Permissions everyoneReads =
        QFileDevice::ReadOwner | QFileDevice::ReadUser | QFileDevice::ReadGroup | QFileDevice::ReadOther;
    static constexpr QFileDevice::Permissions everyoneWrites =
        everyoneReads | QFileDevice::WriteOwner | QFileDevice::WriteUser | QFileDevice::WriteGroup |
        QFileDevice::WriteOther;
};

// Another program that is writing a library.
class BusyWriter {
public:
    explicit BusyWriter(const QString& library)
        : database_(library, Database::Access::Write), transaction_(database_) {}

private:
    Database database_;
    Transaction transaction_;
};

} // namespace velmo
