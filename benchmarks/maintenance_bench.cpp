#include "benchmarks/ratio_table.h"
#include "benchmarks/ratios.h"
#include "benchmarks/scratch.h"
#include "library/folder_content.h"
#include "library/library_database.h"
#include "platform/files.h"

#include <SQLiteCpp/SQLiteCpp.h>

namespace velmo::bench {

namespace {

constexpr int Entries = 1'000;
constexpr std::int16_t Source = 2;
constexpr std::int16_t Target = 3;

// A root with two categories, the first full of entries.
QString MakeLibrary(const Scratch& scratch) {
    QString path = scratch.Path(QStringLiteral("l.mdb"));
    CreateLibraryFile(path);
    SQLite::Database database(NativePath(path).toStdString(), SQLite::OPEN_READWRITE);
    SQLite::Transaction transaction(database);
    for (const char* parent : {"0", "1", "1"})
        database.exec(std::string("INSERT INTO FolderTable (ParentID,FolderName) VALUES (") + parent +
                      ",'x')");
    SQLite::Statement entry(
        database, "INSERT INTO PDFFileTable (FolderID,PDFName,PDFFileName,SLDFileName) VALUES (?,?,?,?)");
    for (int i = 0; i < Entries; ++i) {
        entry.bind(1, Source);
        entry.bind(2, QStringLiteral("シンボル %1").arg(i).toStdString());
        entry.bind(3, "SMB\\CAT\\SYMBOL" + std::to_string(i) + ".PDF");
        entry.bind(4, "SMB\\CAT\\SYMBOL" + std::to_string(i) + ".SLD");
        entry.exec();
        entry.reset();
    }
    transaction.commit();
    return path;
}

GlobalState StateOf(const QString& library) {
    GlobalState state;
    state.LibraryDb = library;
    state.CurFolderID = Source;
    return state;
}

void RequireMoved(GlobalState state) {
    state.CurFolderID = Target;
    if (FolderContent(state).size() != Entries)
        qFatal("not moved");
}

double MoveEntries() {
    const Scratch scratch;
    const GlobalState state = StateOf(MakeLibrary(scratch));
    const std::vector<ContentRow> rows = FolderContent(state);
    const double seconds = Seconds([&] { MoveToCategory(state, rows, rows, Target); });
    RequireMoved(state);
    return seconds;
}

double UpdateBare() {
    const Scratch scratch;
    const GlobalState state = StateOf(MakeLibrary(scratch));
    const std::vector<ContentRow> rows = FolderContent(state);
    const double seconds = Seconds([&] {
        SQLite::Database database(NativePath(state.LibraryDb).toStdString(), SQLite::OPEN_READWRITE);
        SQLite::Transaction transaction(database);
        SQLite::Statement update(database, "UPDATE PDFFileTable SET FolderID=? WHERE ID=?");
        for (const ContentRow& row : rows) {
            update.bind(1, Target);
            update.bind(2, row.id);
            update.exec();
            update.reset();
        }
        transaction.commit();
    });
    RequireMoved(state);
    return seconds;
}

} // namespace

void AddMaintenance() {
    AddRatio("14 move 1,000 entries to another category", 3, MoveEntries, UpdateBare);
}

} // namespace velmo::bench
