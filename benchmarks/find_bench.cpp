#include "benchmarks/lazy.h"
#include "benchmarks/ratio_table.h"
#include "benchmarks/ratios.h"
#include "benchmarks/scratch.h"
#include "library/find_box.h"
#include "platform/files.h"
#include "platform/text_folding.h"

#include <QApplication>
#include <QLineEdit>
#include <QTreeView>
#include <SQLiteCpp/SQLiteCpp.h>

namespace velmo::bench {

namespace {

constexpr int Categories = 2'000;
constexpr int Entries = 30'000;

QString CategoryName(int id) {
    static const QStringList kinds = {QStringLiteral("六角ボルト"), QStringLiteral("ナット"),
                                      QStringLiteral("平座金"),     QStringLiteral("ﾊﾞﾈ座金"),
                                      QStringLiteral("アイボルト"), QStringLiteral("フランジ")};
    return QStringLiteral("%1 JIS B %2").arg(kinds[id % kinds.size()]).arg(1000 + id);
}

QString EntryName(int id) {
    return QStringLiteral("%1 M%2x%3").arg(CategoryName(id % 60)).arg(3 + id % 30).arg(10 + id / 30);
}

// What is found is too much to be seen at once, or only a few names.
const QString Common = QStringLiteral("ぼると");
const QString Rare = QStringLiteral("なっと m10x99");

void MakeLibrary(const Scratch& scratch) {
    const QString path = scratch.Path("l.mdb");
    CreateLibraryFile(path);
    {
        SQLite::Database database(NativePath(path).toStdString(), SQLite::OPEN_READWRITE);
        SQLite::Transaction transaction(database);
        SQLite::Statement folder(database, "INSERT INTO FolderTable (ParentID,FolderName) VALUES (?,?)");
        for (int id = 1; id <= Categories; ++id) {
            folder.bind(1, (id + 8) / 10);
            folder.bind(2, CategoryName(id).toStdString());
            folder.exec();
            folder.reset();
        }
        SQLite::Statement entry(database, "INSERT INTO PDFFileTable (FolderID,PDFName) VALUES (?,?)");
        for (int id = 1; id <= Entries; ++id) {
            entry.bind(1, 1 + id % Categories);
            entry.bind(2, EntryName(id).toStdString());
            entry.exec();
            entry.reset();
        }
        transaction.commit();
    }
    // A library that has not changed for a while is not looked into again.
    QFile file(scratch.Native("l.mdb"));
    if (!file.open(QIODevice::ReadWrite) ||
        !file.setFileTime(QDateTime::currentDateTime().addDays(-1), QFileDevice::FileModificationTime))
        qFatal("cannot set the time of %s", qUtf8Printable(file.fileName()));
}

// The same names without an index, folded.
struct BareNames {
    explicit BareNames(const Scratch& scratch) {
        SQLite::Database database(scratch.Native("l.mdb").toStdString());
        for (const char* query : {"SELECT FolderName FROM FolderTable", "SELECT PDFName FROM PDFFileTable"}) {
            SQLite::Statement rows(database, query);
            while (rows.executeStep())
                folded << FoldedForSearch(QString::fromUtf8(rows.getColumn(0).getText()));
        }
    }
    QStringList folded;
};

double ScanBare(const BareNames& names, const QString& text) {
    const QStringList words = FoldedForSearch(text).split(u' ');
    return Seconds([&] {
        int found = 0;
        for (const QString& name : names.folded) {
            bool holdsAll = true;
            for (const QString& word : words)
                holdsAll = holdsAll && name.contains(word);
            found += holdsAll ? 1 : 0;
        }
        if (found == 0)
            qFatal("nothing found");
    });
}

// The pane with the field, whose names have been read.
struct Pane {
    explicit Pane(const Scratch& scratch) {
        state.LibraryDb = scratch.Path("l.mdb");
        box = std::make_unique<FindBox>(*new QTreeView, state, messages);
        field = box->findChild<QLineEdit*>();
        box->resize(250, 600);
        box->show();
        QApplication::processEvents();
        // The list is built for the first search.
        field->setText(QStringLiteral("x"));
        list = box->findChild<QListView*>();
    }
    void Search(const QString& text) const {
        field->setText(text);
        list->viewport()->repaint();
    }

    GlobalState state;
    MessageBoxes messages;
    std::unique_ptr<FindBox> box;
    QLineEdit* field = nullptr;
    QListView* list = nullptr;
};

// The last letter of the text.
double Type(const Pane& pane, const QString& text) {
    pane.Search(text.chopped(1));
    const double seconds = Seconds([&] { pane.Search(text); });
    if (pane.list->model()->rowCount() == 0)
        qFatal("nothing found");
    return seconds;
}

} // namespace

void AddFind() {
    const Lazy<Scratch> scratch([] {
        auto made = std::make_unique<Scratch>();
        MakeLibrary(*made);
        return made;
    });
    const Lazy<BareNames> bare([scratch] { return std::make_unique<BareNames>(*scratch); });
    const Lazy<Pane> pane([scratch] { return std::make_unique<Pane>(*scratch); });
    for (const auto& [name, text] : {std::pair("16 find a common name among 32,000", Common),
                                     std::pair("16 find a rare name among 32,000", Rare)}) {
        AddRatio(
            name, 2, [pane, text = text] { return Type(*pane, text); },
            [bare, text = text] { return ScanBare(*bare, text); });
    }
}

} // namespace velmo::bench
