#include "benchmarks/child.h"
#include "benchmarks/lazy.h"
#include "benchmarks/ratio_table.h"
#include "benchmarks/ratios.h"
#include "benchmarks/scratch.h"
#include "library/library_database.h"
#include "platform/files.h"

#include <SQLiteCpp/SQLiteCpp.h>

namespace velmo::bench {

namespace {

constexpr int Categories = 30'000;
constexpr int Children = 30;
constexpr int Depth = 10;
// A start waits for the display server time and again, and how long is chance.
constexpr int Starts = 101;

// A tree in which each category has up to 30 subcategories; the last category stands ten levels below the
// root.
void MakeLibrary(const QString& path) {
    CreateLibraryFile(path);
    SQLite::Database database(NativePath(path).toStdString(), SQLite::OPEN_READWRITE);
    SQLite::Transaction transaction(database);
    SQLite::Statement folder(database,
                             "INSERT INTO FolderTable (ParentID,FolderName,SLDFileName) VALUES (?,?,'')");
    // The parents come in the order of their numbers; the last categories form a chain.
    const int chainFrom = Categories - 6;
    for (int id = 1; id <= Categories; ++id) {
        const int parent = id == 1 ? 0 : (id - 2) / Children + 1;
        folder.bind(1, id > chainFrom ? id - 1 : parent);
        folder.bind(2, QStringLiteral("分類 %1").arg(id).toStdString());
        folder.exec();
        folder.reset();
    }
    transaction.commit();
}

// How deep below the root the last category stands.
int DepthOfLast(const QString& path) {
    Database database(path, Database::Access::Read);
    int depth = 0;
    for (Category category = ReadCategory(CategoryWithId(database, Categories)); category.parentId != 0;
         ++depth)
        category = ReadCategory(CategoryWithId(database, category.parentId));
    return depth;
}

} // namespace

void AddStart() {
    const Lazy<Scratch> scratch([] {
        auto made = std::make_unique<Scratch>();
        const QString library = made->Path("Velmo2.mdb");
        MakeLibrary(library);
        if (DepthOfLast(library) != Depth)
            qFatal("the last category stands %d levels deep", DepthOfLast(library));
        made->Write("config/Kestova2019/Velmo2.ini",
                    "[Settings]\nVlmHome=" + made->Path().toUtf8() + "\nVlmTemp=" + made->Path().toUtf8() +
                        "\nTreeLast=" + QByteArray::number(Categories) + "\n");
        return made;
    });
    AddRatio(
        "5 start to the browser's first paint", 1.4,
        [scratch] { return RunToFirstPaint(Velmo2Program, scratch->Native("config"), "VLM_MAIN").seconds; },
        [] { return RunToFirstPaint(PlainWindowProgram, {}, "plain").seconds; }, Starts);
}

} // namespace velmo::bench
