#include "plain_table.h"
#include "symbol_sample.h"
#include "variables/table_editor.h"
#include "variables/table_file.h"

#include <optional>
#include <random>

namespace velmo {
namespace {

constexpr int Variables = 6;
constexpr int Steps = 600;
constexpr int StepsBetweenSaves = 57;

// Knows of the cells only what the editor's signals tell.
class Listener {
public:
    Listener(const TableEditor& editor, const GridCells& variableGrid)
        : editor_(editor), cells_(SymbolSample::Texts(editor.Cells())) {
        for (int row = 0; row < variableGrid.Rows(); ++row)
            names_ << variableGrid.Text(row, 1);
        using Editor = TableEditor;
        QObject::connect(&editor, &Editor::RowsInserted, [this](int row, int count) {
            for (int i = row; i < row + count; ++i)
                cells_.insert(i, Row(i));
            Number();
        });
        QObject::connect(&editor, &Editor::RowsRemoved, [this](int row, int count) {
            cells_.remove(row, count);
            Number();
        });
        QObject::connect(&editor, &Editor::ColumnsInserted, [this](int column) {
            for (int row = 0; row < cells_.size(); ++row)
                cells_[row].insert(column, editor_.Cells().Text(row, column));
        });
        QObject::connect(&editor, &Editor::ColumnsRemoved, [this](int column) {
            for (QStringList& row : cells_)
                row.removeAt(column);
        });
        QObject::connect(&editor, &Editor::ColumnsSwapped, [this](int left) {
            for (QStringList& row : cells_)
                row.swapItemsAt(left, left + 1);
        });
        QObject::connect(&editor, &Editor::TextsChanged, [this](const CellRange& range) {
            for (int row = range.row; row < range.row + range.rows; ++row) {
                for (int column = range.column; column < range.column + range.columns; ++column)
                    cells_[row][column] = editor_.Cells().Text(row, column);
            }
        });
        QObject::connect(&editor, &Editor::NameChanged,
                         [this, &variableGrid](int row) { names_[row] = variableGrid.Text(row, 1); });
    }

    const Rows& Cells() const { return cells_; }
    const QStringList& Names() const { return names_; }

private:
    QStringList Row(int row) const {
        QStringList texts;
        for (int column = 0; column < editor_.Cells().Cols(); ++column)
            texts << editor_.Cells().Text(row, column);
        return texts;
    }
    void Number() {
        for (int row = 1; row < cells_.size(); ++row)
            cells_[row][0] = QString::number(row);
    }

    const TableEditor& editor_;
    Rows cells_;
    QStringList names_;
};

// Does the same to a table editor and to a plain table that keeps a whole copy for each undo.
class TableEditorProperty : public testing::TestWithParam<unsigned> {
protected:
    TableEditorProperty() : random_(GetParam()) {
        symbol_.state.RunMode = run_mode::UserLibrary;
        QStringList lines;
        defined_.push_back({});
        for (int i = 1; i <= Variables; ++i) {
            lines << QStringLiteral("V%1=PRO(\"n%1\",1)").arg(i * 3);
            defined_.push_back({i, i * 3, QStringLiteral("n%1").arg(i * 3), 0, 10, 0});
        }
        symbol_.Define(lines);
        Begin();
        editor_.emplace(symbol_.work, symbol_.table, symbol_.variables);
        listener_.emplace(*editor_, symbol_.variables);
        database_.emplace(symbol_.work.Open(Database::Access::Read));
        history_.push_back(plain_);
    }

    enum class Table { None, Usual, WithUnknownColumn };

    // What the seed starts with.
    static Table Start() { return Table(GetParam() % 3); }

    void Begin() {
        QList<SymbolSample::Column> columns;
        plain_.variables = defined_;
        plain_.cells.emplace_back();
        if (Start() == Table::None) {
            for (int row = 0; row <= Variables; ++row) {
                const QString name = row == 0 ? QStringLiteral("呼び") : defined_[size_t(row)].name;
                plain_.variables[size_t(row)] = {row, defined_[size_t(row)].number, name, row + 1, 10, 0};
                plain_.cells[0].push_back(name);
            }
            plain_.InsertRow(1);
            symbol_.Load();
            return;
        }
        for (int row = 0; row < 4; ++row) {
            const QString key = row == 0 ? QStringLiteral("ｺﾒﾝﾄ") : QStringLiteral("V%1").arg(row * 3);
            const QString name = QStringLiteral("列%1").arg(row);
            plain_.variables[size_t(row)] = {row,    defined_[size_t(row)].number, name, row + 1, 4 + row,
                                             row * 7};
            columns.append({key, 4 + row, name, row * 7});
            plain_.cells[0].push_back(name);
        }
        if (Start() == Table::WithUnknownColumn) {
            columns.append({QStringLiteral("V99"), 4, QStringLiteral("不明"), 0});
            plain_.cells[0].push_back(QStringLiteral("不明"));
        }
        plain_.InsertRow(1);
        plain_.InsertRow(2);
        plain_.cells[1][0] = QStringLiteral("A");
        plain_.cells[2][0] = QStringLiteral("B");
        symbol_.WriteTable(columns, {QStringLiteral("   A"), QStringLiteral("   B")});
        symbol_.Load();
    }

    int Any(int first, int last) { return first + int(random_() % unsigned(last - first + 1)); }
    QString AnyText() {
        static const QStringList letters{"A",
                                         "B",
                                         "1",
                                         "0",
                                         " ",
                                         ".",
                                         "'",
                                         QStringLiteral("全"),
                                         QStringLiteral("ｱ"),
                                         QStringLiteral("ー"),
                                         "\\"};
        QString text;
        for (int length = Any(0, 3); length > 0; --length)
            text += letters[Any(0, int(letters.size()) - 1)];
        return text;
    }

    // The plain table has changed by one step.
    void Stepped() {
        history_.resize(at_ + 1);
        clean_ = clean_ > int(at_) ? -1 : clean_;
        history_.push_back(plain_);
        ++at_;
    }

    void Go() {
        const int rows = plain_.Rows();
        const int columns = plain_.Columns();
        switch (Any(0, 14)) {
        case 0:
        case 1:
            if (rows > 0 && columns > 0)
                EnterText(Any(1, rows), Any(1, columns));
            break;
        case 2:
            if (columns > 0)
                RenameColumn(Any(1, columns));
            break;
        case 3:
            RenameVariable(Any(1, Variables));
            break;
        case 4:
            if (rows > 0 && columns > 0)
                EnterBlock();
            break;
        case 5:
            editor_->AppendRow();
            plain_.InsertRow(rows + 1);
            Stepped();
            break;
        case 6:
            if (rows > 0)
                InsertOrCopyRow(Any(1, rows));
            break;
        case 7:
        case 8:
            if (rows > 0)
                DeleteRow(Any(1, rows));
            break;
        case 9:
            if (rows > 0)
                MoveRow(Any(1, rows));
            break;
        case 10:
            if (columns > 0)
                MoveColumn(Any(1, columns));
            break;
        case 11:
            if (columns > 0)
                DeleteColumn(Any(1, columns));
            break;
        case 12:
            OpenColumn(Any(1, columns + 1));
            break;
        case 13:
            Undo(Any(1, 3));
            break;
        default:
            Redo(Any(1, 3));
            break;
        }
    }

    void EnterText(int row, int column) {
        const QString text = AnyText();
        QString& cell = plain_.cells[size_t(row)][size_t(column) - 1];
        editor_->EnterText(row, column, text);
        if (std::exchange(cell, text) != text)
            Stepped();
    }
    void EnterBlock() {
        CellRange range;
        range.row = Any(1, plain_.Rows());
        range.column = Any(1, plain_.Columns());
        range.rows = Any(1, plain_.Rows() - range.row + 1);
        range.columns = Any(1, plain_.Columns() - range.column + 1);
        const QString same = AnyText();
        const bool fill = Any(0, 1) == 0;
        std::vector<QStringList> texts(static_cast<size_t>(range.rows));
        bool changes = false;
        for (int row = 0; row < range.rows; ++row) {
            for (int column = 0; column < range.columns; ++column) {
                const QString text = fill ? same : AnyText();
                texts[size_t(row)] << text;
                QString& cell = plain_.cells[size_t(range.row + row)][size_t(range.column + column) - 1];
                changes = std::exchange(cell, text) != text || changes;
            }
        }
        editor_->EnterTexts(range, texts, QStringLiteral("貼り付け"));
        EXPECT_EQ(editor_->Texts(range), texts);
        if (changes)
            Stepped();
    }
    void RenameColumn(int column) {
        const QString name = AnyText();
        const bool changes = plain_.cells[0][size_t(column) - 1] != name;
        editor_->EnterText(0, column, name);
        if (const PlainTable::Variable* variable = plain_.Of(column))
            plain_.Rename(variable->row, name);
        plain_.cells[0][size_t(column) - 1] = name;
        if (changes)
            Stepped();
    }
    void RenameVariable(int row) {
        const QString name = AnyText();
        const bool changes = plain_.variables[size_t(row)].name != name;
        editor_->EnterName(row, name);
        plain_.Rename(row, name);
        if (changes)
            Stepped();
    }
    void InsertOrCopyRow(int row) {
        if (Any(0, 1) == 0) {
            editor_->InsertRow(row);
            plain_.InsertRow(row);
        } else {
            editor_->CopyRow(row);
            plain_.InsertRow(row + 1, plain_.cells[size_t(row)]);
        }
        Stepped();
    }
    void DeleteRow(int row) {
        editor_->DeleteRow(row);
        plain_.DeleteRow(row);
        Stepped();
    }
    void MoveRow(int row) {
        const auto direction =
            Any(0, 1) == 0 ? TableEditor::Direction::Before : TableEditor::Direction::After;
        editor_->MoveRow(row, direction);
        const int upper = direction == TableEditor::Direction::Before ? row - 1 : row;
        if (upper < 1 || upper >= plain_.Rows())
            return;
        plain_.SwapRows(upper);
        Stepped();
    }
    void MoveColumn(int column) {
        const auto direction =
            Any(0, 1) == 0 ? TableEditor::Direction::Before : TableEditor::Direction::After;
        editor_->MoveColumn(column, direction);
        const int left = direction == TableEditor::Direction::Before ? column - 1 : column;
        if (left < 1 || left >= plain_.Columns())
            return;
        plain_.SwapColumns(left);
        Stepped();
    }
    void DeleteColumn(int column) {
        editor_->DeleteColumn(column);
        plain_.DeleteColumn(column);
        Stepped();
    }
    void OpenColumn(int column) {
        const std::vector<int> hidden = plain_.Hidden();
        editor_->OpenColumn(column);
        if (hidden.empty() || Any(0, 4) == 0) {
            editor_->CloseColumn();
            return;
        }
        const int variable = hidden[size_t(Any(0, int(hidden.size()) - 1))];
        editor_->ShowInOpenColumn(variable);
        plain_.Show(variable, column);
        Stepped();
    }
    void Undo(int steps) {
        for (; steps > 0; --steps) {
            editor_->History().undo();
            if (at_ > 0)
                plain_ = history_[--at_];
        }
    }
    void Redo(int steps) {
        for (; steps > 0; --steps) {
            editor_->History().redo();
            if (at_ + 1 < history_.size())
                plain_ = history_[++at_];
        }
    }

    static Rows GridOf(const PlainTable& plain) {
        Rows grid;
        for (int row = 0; row <= plain.Rows(); ++row) {
            QStringList texts{row == 0 ? QString() : QString::number(row)};
            for (const QString& text : plain.cells[size_t(row)])
                texts << text;
            grid << texts;
        }
        return grid;
    }
    static Rows NowTableOf(const PlainTable& plain) {
        Rows rows;
        for (const PlainTable::Variable& variable : plain.variables)
            rows << QStringList{QString::number(variable.row),
                                QString::number(variable.number),
                                variable.name,
                                QString::number(variable.column),
                                QString::number(variable.width),
                                QString::number(variable.small)};
        return rows;
    }
    static QStringList NamesOf(const PlainTable& plain) {
        QStringList names;
        for (const PlainTable::Variable& variable : plain.variables)
            names << variable.name;
        names[0] = QString();
        return names;
    }

    void Compare() {
        const Rows grid = GridOf(plain_);
        EXPECT_EQ(SymbolSample::Texts(editor_->Cells()), grid);
        EXPECT_EQ(listener_->Cells(), grid);
        EXPECT_EQ(listener_->Names(), NamesOf(plain_));
        EXPECT_EQ(QStringList{QString()} + symbol_.CurrentValues(), NamesOf(plain_));
        EXPECT_EQ(symbol_.table.rows, plain_.Rows());
        Rows nowTable;
        for (RecordSet set(*database_, QStringLiteral("NowTable")); !set.Eof(); set.MoveNext()) {
            QStringList& row = nowTable.emplace_back();
            for (int i = 0; i < 6; ++i)
                row << set.Text(i);
        }
        EXPECT_EQ(nowTable, NowTableOf(plain_));
        for (int column = 1; column <= plain_.Columns(); ++column) {
            const PlainTable::Variable* variable = plain_.Of(column);
            const TableVariable* known = editor_->VariableOf(column);
            EXPECT_EQ(known ? known->row : -1, variable ? variable->row : -1);
        }
        EXPECT_EQ(editor_->HiddenVariables().size(), plain_.Hidden().size());
        EXPECT_EQ(editor_->IsChanged(), clean_ != int(at_));
        EXPECT_EQ(editor_->History().canUndo(), at_ > 0);
        EXPECT_EQ(editor_->History().canRedo(), at_ + 1 < history_.size());
    }

    void SaveAndLoad() {
        EXPECT_TRUE(SaveDimensionTable(symbol_.state, symbol_.work, editor_->Cells(),
                                       [](const QString& text) { ADD_FAILURE() << text.toStdString(); }));
        EXPECT_EQ(symbol_.folder.Read(QStringLiteral("S1.PMN")), plain_.File());
        editor_->History().setClean();
        clean_ = int(at_);
        bool readable = plain_.Columns() > 0;
        for (int column = 1; column <= plain_.Columns(); ++column)
            readable = readable && plain_.Of(column);
        if (!readable)
            return;
        const TempFolder exchange;
        GlobalState state = symbol_.state;
        state.TempDir = exchange.Path();
        WorkDatabase work(state.TempDir);
        GridCells names(GridCells::FirstColumn::Texts);
        names.SetCols(2);
        const int count = ReadSymbolDefinition(
            state, work, names, [](const QString& text) { ADD_FAILURE() << text.toStdString(); });
        const DimensionTable loaded = LoadDimensionTable(state, work, count, names);
        const PlainTable expected = plain_.Read(defined_);
        EXPECT_EQ(SymbolSample::Texts(loaded.cells), GridOf(expected));
        EXPECT_EQ(loaded.rows, expected.Rows());
        EXPECT_EQ(SymbolSample::NowTableOf(work), NowTableOf(expected));
        ++loads_;
    }

    std::mt19937 random_;
    SymbolSample symbol_;
    std::vector<PlainTable::Variable> defined_;
    PlainTable plain_;
    std::vector<PlainTable> history_;
    size_t at_ = 0;
    int clean_ = 0;
    int loads_ = 0;
    std::optional<TableEditor> editor_;
    std::optional<Listener> listener_;
    std::optional<Database> database_;
};

TEST_P(TableEditorProperty, DoesWhatAPlainTableDoes) {
    Compare();
    for (int step = 1; step <= Steps && !HasFailure(); ++step) {
        SCOPED_TRACE(step);
        Go();
        Compare();
        if (step % StepsBetweenSaves == 0)
            SaveAndLoad();
    }
    SaveAndLoad();
    // Only what stands for no variable keeps a table from being read again.
    EXPECT_TRUE(loads_ > 0 || Start() == Table::WithUnknownColumn);
    // All the way back, and forth again.
    Undo(int(at_));
    Compare();
    Redo(int(history_.size()));
    Compare();
}

INSTANTIATE_TEST_SUITE_P(Seeds, TableEditorProperty, testing::Range(1U, 13U));

} // namespace
} // namespace velmo
