#include "benchmarks/lazy.h"
#include "benchmarks/plain_view.h"
#include "benchmarks/ratio_table.h"
#include "benchmarks/ratios.h"
#include "benchmarks/table_symbol.h"
#include "platform/files.h"
#include "platform/grid.h"
#include "variables/symbol_definition.h"
#include "variables/table_editor.h"
#include "variables/table_file.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QStringConverter>

#include <cstdio>
#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

namespace velmo::bench {

namespace {

const QSize ViewSize(900, 600);
const QString NewText = QStringLiteral("12345678");
// Each measured time is that of so many changes and their undoing.
constexpr int Repeats = 10;
constexpr int HistorySteps = 10'000;

void Fail(const QString& text) {
    qFatal("%s", qUtf8Printable(text));
}

// A table that is edited in its grid, as in the variable window.
struct EditedTable {
    explicit EditedTable(int rows)
        : symbol(Variables, Columns, rows, Nominals::Different), state(symbol.State(run_mode::UserLibrary)) {
        variables.SetCols(2);
        const int count = ReadSymbolDefinition(state, work, variables, Fail);
        table = LoadDimensionTable(state, work, count, variables);
        editor = std::make_unique<TableEditor>(work, table, variables);
        grid = std::make_unique<Grid>(table.cells);
        grid->MakeEditable();
        grid->CellsReplaced();
        grid->FitColumns();
        QObject::connect(editor.get(), &TableEditor::RowsInserted, grid.get(), &Grid::RowsInserted);
        QObject::connect(editor.get(), &TableEditor::RowsRemoved, grid.get(), &Grid::RowsRemoved);
        QObject::connect(editor.get(), &TableEditor::ColumnsSwapped, grid.get(), &Grid::ColumnsSwapped);
        QObject::connect(editor.get(), &TableEditor::TextsChanged, grid.get(), &Grid::RangeChanged);
        QObject::connect(editor.get(), &TableEditor::Went, grid.get(), [this](int row, int column) {
            grid->SetCurrentCell(row > 0 ? row : grid->Row(), column > 0 ? column : grid->Col());
        });
        QObject::connect(editor.get(), &TableEditor::WentTo, grid.get(), &Grid::SelectRange);
        grid->resize(ViewSize);
        grid->show();
    }

    Symbol symbol;
    GlobalState state;
    WorkDatabase work{state.TempDir};
    GridCells variables{GridCells::FirstColumn::Texts};
    DimensionTable table;
    std::unique_ptr<TableEditor> editor;
    std::unique_ptr<Grid> grid;
};

// The same texts in a plain view that looks like the grid.
struct PlainTable {
    explicit PlainTable(const EditedTable& edited) : model(edited.table.cells) {
        view.setModel(&model);
        view.setWordWrap(false);
        view.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
        view.verticalHeader()->setDefaultSectionSize(edited.grid->verticalHeader()->defaultSectionSize());
        for (int column = 0; column < Columns; ++column)
            view.setColumnWidth(column, edited.grid->columnWidth(column));
        view.setCurrentIndex(model.index(0, 0));
        view.resize(ViewSize);
        view.show();
    }

    PlainModel model;
    QTableView view;
};

// Shows what changed.
void Paint(QWidget& view) {
    QCoreApplication::sendPostedEvents();
    if (view.grab().isNull())
        qFatal("the view was not painted");
}

double Time(QWidget& view, const std::function<void()>& change, const std::function<void()>& undo) {
    Paint(view);
    return Seconds([&] {
        for (int i = 0; i < Repeats; ++i) {
            change();
            Paint(view);
            undo();
            Paint(view);
        }
    });
}

// Both tables show the same before and after the change, and nothing is left of it when it is undone.
void AddChange(const std::string& name, const Lazy<EditedTable>& edited, const Lazy<PlainTable>& plain,
               const std::function<void(TableEditor&)>& change,
               const std::function<void(PlainModel&)>& changePlain,
               const std::function<void(PlainModel&)>& undoPlain) {
    AddRatio(
        name, 3,
        [=] {
            TableEditor& editor = *edited->editor;
            edited->grid->SetCurrentCell(1, 1);
            const double seconds = Time(
                *edited->grid, [&] { change(editor); }, [&] { editor.History().undo(); });
            if (editor.IsChanged() || editor.History().count() != 1)
                qFatal("the change was no single step");
            editor.History().clear();
            return seconds;
        },
        [=] {
            return Time(
                plain->view, [&] { changePlain(plain->model); }, [&] { undoPlain(plain->model); });
        });
}

void AddChanges() {
    // With one row more it holds all that a table can.
    const Lazy<EditedTable> edited([] { return std::make_unique<EditedTable>(Rows - 1); });
    const Lazy<PlainTable> plain([edited] { return std::make_unique<PlainTable>(*edited); });
    const QString before = QStringLiteral("0");
    AddChange(
        "8 edit a cell of 32,766 x 30 and undo it", edited, plain,
        [](TableEditor& editor) { editor.EnterText(1, 1, NewText); },
        [](PlainModel& model) { model.SetText(0, 0, NewText); },
        [before](PlainModel& model) { model.SetText(0, 0, before); });
    AddChange(
        "9 insert a row at the top and undo it", edited, plain,
        [](TableEditor& editor) { editor.InsertRow(1); }, [](PlainModel& model) { model.InsertRow(0); },
        [](PlainModel& model) { model.RemoveRow(0); });
    AddChange(
        "10 move a column and undo it", edited, plain,
        [](TableEditor& editor) { editor.MoveColumn(1, TableEditor::Direction::After); },
        [](PlainModel& model) { model.SwapColumns(0); }, [](PlainModel& model) { model.SwapColumns(0); });
}

// Encodes a whole text at once and puts it in the place of a file, as durably as the table is saved: file and
// folder are on the disk.
double EncodeAndWrite(const Scratch& scratch, const QString& text) {
    return Seconds([&] {
        QStringEncoder encoder("windows-31j");
        const QByteArray bytes = encoder(text);
        const QByteArray target = QFile::encodeName(scratch.Native("bare.PMN"));
        QFile file(scratch.Native("bare.TMP"));
        if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || file.write(bytes) != bytes.size() ||
            ::fsync(file.handle()) != 0 || std::rename(QFile::encodeName(file.fileName()), target) != 0)
            qFatal("cannot write %s", target.constData());
        QFile folder(scratch.Native({}));
        const int handle = ::open(QFile::encodeName(folder.fileName()), O_RDONLY | O_DIRECTORY);
        if (handle < 0 || ::fsync(handle) != 0 || ::close(handle) != 0)
            qFatal("cannot sync %s", qUtf8Printable(folder.fileName()));
    });
}

void AddSaving() {
    const Lazy<EditedTable> edited([] { return std::make_unique<EditedTable>(Rows); });
    // What the table's file holds.
    const Lazy<QString> text([edited] {
        QFile file(edited->symbol.Folder().Native("S.PMN"));
        if (!file.open(QIODevice::ReadOnly))
            qFatal("cannot read %s", qUtf8Printable(file.fileName()));
        return std::make_unique<QString>(QString::fromLatin1(file.readAll()));
    });
    AddRatio(
        "11 save 32,767 x 30", 3,
        [edited, text] {
            const double seconds =
                Seconds([&] { SaveDimensionTable(edited->state, edited->work, edited->table.cells, Fail); });
            const QString saved = *text;
            QFile file(edited->symbol.Folder().Native("S.PMN"));
            if (!file.open(QIODevice::ReadOnly) || file.readAll() != saved.toLatin1())
                qFatal("something else was saved");
            return seconds;
        },
        [edited, text] { return EncodeAndWrite(edited->symbol.Folder(), *text); });
}

// Bytes in use on the heap.
double Heap() {
    const struct mallinfo2 info = ::mallinfo2();
    return double(info.uordblks + info.hblkhd);
}

// Keeps what a changed cell needs: its place and its two texts, as a step of the history.
class BareStep : public QUndoCommand {
public:
    BareStep(const QString& name, int row, int column, QString before, QString after)
        : QUndoCommand(name),
          row_(row),
          column_(column),
          before_(std::move(before)),
          after_(std::move(after)) {}

    int Row() const { return row_; }
    int Column() const { return column_; }
    const QString& Before() const { return before_; }
    const QString& After() const { return after_; }

private:
    int row_;
    int column_;
    QString before_;
    QString after_;
};

QString TextOfStep(int step) {
    return QString::number(10'000'000 + step);
}

void AddHistory() {
    const Lazy<EditedTable> edited([] { return std::make_unique<EditedTable>(Rows); });
    AddAmounts(
        "12 memory of 10,000 steps, to bare steps", 2,
        [edited] {
            TableEditor& editor = *edited->editor;
            // The cells have room for the new texts before it is measured.
            for (int i = 0; i < HistorySteps; ++i)
                editor.EnterText(i + 1, 2, TextOfStep(i));
            editor.History().clear();
            const double before = Heap();
            for (int i = 0; i < HistorySteps; ++i)
                editor.EnterText(i + 1, 2, TextOfStep(i + HistorySteps));
            const double after = Heap();
            if (editor.History().count() != HistorySteps)
                qFatal("not every edit was a step");
            editor.History().clear();
            return after - before;
        },
        [] {
            const double before = Heap();
            QUndoStack history;
            for (int i = 0; i < HistorySteps; ++i)
                history.push(new BareStep(QStringLiteral("step"), i + 1, 2, TextOfStep(i),
                                          TextOfStep(i + HistorySteps)));
            return Heap() - before;
        });
}

} // namespace

void AddTableEditing() {
    AddChanges();
    AddSaving();
    AddHistory();
}

} // namespace velmo::bench
