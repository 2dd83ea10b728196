#include "benchmarks/lazy.h"
#include "benchmarks/ratio_table.h"
#include "benchmarks/ratios.h"
#include "benchmarks/scratch.h"
#include "library/category_tree.h"
#include "library/entry_list.h"
#include "platform/files.h"
#include "platform/slide_view.h"

#include <QApplication>
#include <SQLiteCpp/SQLiteCpp.h>

namespace velmo::bench {

namespace {

constexpr int Subcategories = 5'000;
constexpr int AllCategories = 30'000;
constexpr int Entries = 10'000;
// The category that is opened; the root is 1.
constexpr int Opened = 2;

// Root, below it the category with 5,000 subcategories, below each of these some of the rest.
void MakeLibrary(const QString& path) {
    CreateLibraryFile(path);
    SQLite::Database database(NativePath(path).toStdString(), SQLite::OPEN_READWRITE);
    SQLite::Transaction transaction(database);
    SQLite::Statement folder(database,
                             "INSERT INTO FolderTable (ParentID,FolderName,SLDFileName) VALUES (?,?,'')");
    for (int id = 1; id <= AllCategories; ++id) {
        const int firstChild = Opened + 1;
        int parent = id == 1 ? 0 : id == Opened ? 1 : Opened;
        if (id >= firstChild + Subcategories)
            parent = firstChild + (id - firstChild) % Subcategories;
        folder.bind(1, parent);
        folder.bind(2, QStringLiteral("分類 %1").arg(id).toStdString());
        folder.exec();
        folder.reset();
    }
    SQLite::Statement entry(
        database, "INSERT INTO PDFFileTable (FolderID,PDFName,PDFFileName,SLDFileName) VALUES (?,?,?,?)");
    for (int i = 0; i < Entries; ++i) {
        entry.bind(1, Opened);
        entry.bind(2, QStringLiteral("シンボル %1").arg(i).toStdString());
        entry.bind(3, "SMB\\CAT\\SYMBOL" + std::to_string(i) + ".TXT");
        entry.bind(4, "SMB\\CAT\\SYMBOL" + std::to_string(i) + ".SLD");
        entry.exec();
        entry.reset();
    }
    transaction.commit();
}

// A texts' size keeps the compiler from leaving the reading out.
qsizetype Read(SQLite::Statement& row) {
    return row.getColumn(0).getInt() + QString::fromUtf8(row.getColumn(1).getText()).size();
}

double QueryChildrenBare(const Scratch& scratch) {
    return Seconds([&] {
        SQLite::Database database(scratch.Native("l.mdb").toStdString());
        SQLite::Statement children(database, "SELECT ID,FolderName FROM FolderTable WHERE ParentID=?");
        SQLite::Statement grandchildren(database, "SELECT ID,FolderName FROM FolderTable WHERE ParentID=?");
        qsizetype read = 0;
        children.bind(1, Opened);
        while (children.executeStep()) {
            read += Read(children);
            grandchildren.bind(1, children.getColumn(0).getInt());
            if (grandchildren.executeStep())
                read += Read(grandchildren);
            grandchildren.reset();
        }
        if (read == 0)
            qFatal("nothing read");
    });
}

double QueryEntriesBare(const Scratch& scratch) {
    return Seconds([&] {
        SQLite::Database database(scratch.Native("l.mdb").toStdString());
        SQLite::Statement entries(database, "SELECT ID,PDFName FROM PDFFileTable WHERE FolderID=?");
        qsizetype read = 0;
        entries.bind(1, Opened);
        while (entries.executeStep())
            read += Read(entries);
        if (read == 0)
            qFatal("nothing read");
    });
}

double OpenCategory(const Scratch& scratch) {
    GlobalState state;
    state.LibraryDb = scratch.Path("l.mdb");
    MessageBoxes messages;
    KeyedTree view;
    CategoryTree tree(view, state, messages);
    tree.BuildCategoryTree();
    view.resize(300, 500);
    view.show();
    QApplication::processEvents();
    return Seconds([&] {
        view.SetExpanded(QStringLiteral("Nod%1").arg(Opened), true);
        view.viewport()->repaint();
    });
}

double ShowEntries(const Scratch& scratch) {
    GlobalState state;
    state.LibraryDb = scratch.Path("l.mdb");
    state.CurFolderID = Opened;
    MessageBoxes messages;
    const SettingsStore settings(scratch.Native("velmo.ini"));
    KeepsSelection<QListView> view;
    SlideView slide;
    EntryList list(view, slide, state, settings, messages);
    view.resize(300, 500);
    view.show();
    QApplication::processEvents();
    return Seconds([&] {
        list.FillEntryList(EntryList::Restore::No);
        view.viewport()->repaint();
    });
}

// A window's tree on the large category, opened.
struct ShownTree {
    explicit ShownTree(const Scratch& scratch) {
        state.LibraryDb = scratch.Path("l.mdb");
        state.CurFolderID = Opened;
        view.resize(300, 500);
    }
    void Show() {
        tree.BuildCategoryTree();
        tree.RestoreSelection();
        view.show();
        QApplication::processEvents();
        view.viewport()->repaint();
    }

    GlobalState state;
    MessageBoxes messages;
    KeyedTree view;
    CategoryTree tree{view, state, messages};
};

double ShowTree(const Scratch& scratch) {
    return Seconds([&] {
        ShownTree shown(scratch);
        shown.Show();
    });
}

double RebuildTree(const Scratch& scratch) {
    ShownTree shown(scratch);
    shown.Show();
    return Seconds([&] {
        shown.tree.Rebuild();
        shown.view.viewport()->repaint();
    });
}

// A window's list of the large category.
struct ShownList {
    explicit ShownList(const Scratch& scratch) : settings(scratch.Native("velmo.ini")) {
        state.LibraryDb = scratch.Path("l.mdb");
        state.CurFolderID = Opened;
        view.resize(300, 500);
    }
    void Show() {
        list.FillEntryList(EntryList::Restore::No);
        view.show();
        QApplication::processEvents();
        view.viewport()->repaint();
    }

    GlobalState state;
    MessageBoxes messages;
    SettingsStore settings;
    KeepsSelection<QListView> view;
    SlideView slide;
    EntryList list{view, slide, state, settings, messages};
};

// With an entry selected, as it is after a change too: finding it by its name costs more than all the rest.
double ShowList(const Scratch& scratch) {
    return Seconds([&] {
        ShownList shown(scratch);
        shown.Show();
        shown.list.SelectAgain(Entries / 2);
    });
}

double RefillList(const Scratch& scratch) {
    ShownList shown(scratch);
    shown.Show();
    shown.list.SelectAgain(Entries / 2);
    return Seconds([&] {
        shown.list.Refill();
        shown.view.viewport()->repaint();
    });
}

} // namespace

void AddCategories() {
    const Lazy<Scratch> scratch([] {
        auto made = std::make_unique<Scratch>();
        MakeLibrary(made->Path("l.mdb"));
        return made;
    });
    AddRatio(
        "4 open a category of 5,000 subcategories", 4, [scratch] { return OpenCategory(*scratch); },
        [scratch] { return QueryChildrenBare(*scratch); });
    AddRatio(
        "4 show a category of 10,000 entries", 3, [scratch] { return ShowEntries(*scratch); },
        [scratch] { return QueryEntriesBare(*scratch); });
    AddRatio(
        "15 the tree after a change, against showing it", 1, [scratch] { return RebuildTree(*scratch); },
        [scratch] { return ShowTree(*scratch); });
    AddRatio(
        "15 the list after a change, against showing it", 1, [scratch] { return RefillList(*scratch); },
        [scratch] { return ShowList(*scratch); });
}

} // namespace velmo::bench
