#include "benchmarks/lazy.h"
#include "benchmarks/ratio_table.h"
#include "benchmarks/ratios.h"
#include "benchmarks/scratch.h"
#include "library/library_database.h"
#include "library/library_files.h"
#include "platform/code_page.h"
#include "platform/files.h"

#include <SQLiteCpp/SQLiteCpp.h>

namespace velmo::bench {

namespace {

constexpr int Categories = 700;
constexpr int Entries = 32'000;

// 700 categories nested up to 8 deep, with 32,000 entries spread over them.
QByteArray ListFile() {
    QByteArray file = EncodeCodePage(u"(\"トルヴィク,  \\ROOT.SLD,\"\r\n");
    int depth = 0;
    for (int category = 1; category < Categories; ++category) {
        while (depth > 0 && category % 8 < depth) {
            file += ")\r\n";
            --depth;
        }
        file += EncodeCodePage(QStringLiteral("(\"分類 %1,  \\CAT\\CATEGORY%1.SLD,\"\r\n").arg(category));
        ++depth;
        for (int entry = category; entry <= Entries; entry += Categories - 1)
            file += EncodeCodePage(
                QStringLiteral("(\"シンボル %1,  \\CAT\\SYMBOL%1.SLD,  \\CAT\\SYMBOL%1.TXT\")\r\n")
                    .arg(entry));
    }
    return file;
}

struct Rows {
    std::vector<std::array<std::string, 3>> folders;
    std::vector<std::array<std::string, 4>> entries;
};

// The rows that the import makes, as the texts that it stores.
Rows RowsOf(const QString& library) {
    Rows rows;
    SQLite::Database database(NativePath(library).toStdString());
    for (SQLite::Statement q(database, "SELECT ParentID,FolderName,SLDFileName FROM FolderTable");
         q.executeStep();)
        rows.folders.push_back({q.getColumn(0), q.getColumn(1), q.getColumn(2)});
    for (SQLite::Statement q(database, "SELECT FolderID,PDFName,PDFFileName,SLDFileName FROM PDFFileTable");
         q.executeStep();)
        rows.entries.push_back({q.getColumn(0), q.getColumn(1), q.getColumn(2), q.getColumn(3)});
    return rows;
}

template <size_t Columns>
void Insert(SQLite::Database& database, const char* statement,
            const std::vector<std::array<std::string, Columns>>& rows) {
    SQLite::Statement insert(database, statement);
    for (const auto& row : rows) {
        insert.bind(1, std::stoi(row[0]));
        for (size_t i = 1; i < Columns; ++i)
            insert.bind(int(i) + 1, row[i]);
        insert.exec();
        insert.reset();
    }
}

// Only the inserting counts: the tables are there already, and they have no indexes to keep.
double InsertBare(const QString& path, const Rows& rows) {
    DeleteFileIfAny(path);
    CreateLibraryFile(path);
    SQLite::Database database(NativePath(path).toStdString(), SQLite::OPEN_READWRITE);
    database.exec("DROP INDEX FolderParent");
    database.exec("DROP INDEX PDFFileFolder");
    return Seconds([&] {
        SQLite::Transaction transaction(database);
        Insert(database, "INSERT INTO FolderTable (ParentID,FolderName,SLDFileName) VALUES (?,?,?)",
               rows.folders);
        Insert(database,
               "INSERT INTO PDFFileTable (FolderID,PDFName,PDFFileName,SLDFileName) VALUES (?,?,?,?)",
               rows.entries);
        transaction.commit();
    });
}

} // namespace

void AddListImport() {
    const Lazy<Scratch> scratch([] {
        auto made = std::make_unique<Scratch>();
        made->Write("syst/vlmsymlib.lst", ListFile());
        return made;
    });
    const auto import = [scratch] {
        GlobalState state;
        state.HomeDir = scratch->Path();
        SettingsStore settings(scratch->Native("velmo.ini"));
        DeleteFileIfAny(scratch->Path("velmo2.mdb"));
        LibraryCallbacks callbacks;
        callbacks.progress = [](qint64, qint64) { return true; };
        return Seconds([&] { CreateSystemLibrary(state, settings, callbacks); });
    };
    const Lazy<Rows> rows([scratch] { return std::make_unique<Rows>(RowsOf(scratch->Path("velmo2.mdb"))); });
    AddRatio("3 import 32,000 entries in 700 categories", 2.5, import, [scratch, rows] {
        const Rows& same = *rows;
        return InsertBare(scratch->Path("bare.mdb"), same);
    });
}

} // namespace velmo::bench
