#include "variables/table_editor.h"

#include "platform/runtime_error.h"

#include <functional>
#include <limits>
#include <memory>

namespace velmo {

namespace {

// Cells alone need no work database, but without its own they could not be saved: better known at once.
class Step : public QUndoCommand {
public:
    Step(const QString& name, const WorkDatabase& work, std::function<void()> redo,
         std::function<void()> undo)
        : QUndoCommand(name), work_(work), redo_(std::move(redo)), undo_(std::move(undo)) {}

    void redo() override {
        work_.RequireOwn();
        redo_();
    }
    void undo() override {
        work_.RequireOwn();
        undo_();
    }

private:
    const WorkDatabase& work_;
    std::function<void()> redo_;
    std::function<void()> undo_;
};

CellRow Packed(const QStringList& texts) {
    CellRow row;
    qsizetype characters = 0;
    for (const QString& text : texts)
        characters += text.size();
    row.Reserve(int(texts.size()), characters);
    for (const QString& text : texts)
        row.Append(text);
    return row;
}

} // namespace

TableEditor::TableEditor(const WorkDatabase& work, DimensionTable& table, GridCells& variableGrid)
    : work_(work), table_(table), variableGrid_(variableGrid) {
    Database database = work_.Open(Database::Access::Read);
    variables_ = ReadTableVariables(database);
    LinkColumns();
}

const TableVariable* TableEditor::VariableOf(int column) const {
    const bool exists = column >= 0 && column < int(shown_.size());
    const int index = exists ? shown_[size_t(column)] : -1;
    return index < 0 ? nullptr : &variables_[size_t(index)];
}

std::vector<TableVariable> TableEditor::HiddenVariables() const {
    std::vector<TableVariable> hidden;
    for (const TableVariable& variable : variables_) {
        if (variable.column == 0)
            hidden.push_back(variable);
    }
    return hidden;
}

void TableEditor::LinkColumns() {
    shown_.assign(size_t(table_.cells.Cols()), -1);
    for (size_t i = variables_.size(); i-- > 0;) {
        const int column = variables_[i].column;
        if (column > 0 && column < table_.cells.Cols())
            shown_[size_t(column)] = int(i);
    }
}

template <typename Action>
TableEditor::VariableChange TableEditor::ChangeOf(Action&& action) const {
    Database database = work_.Open(Database::Access::Write);
    // Taken back when it ends: what the step does, it does itself.
    const Transaction trial(database);
    const std::vector<TableVariable> before = ReadTableVariables(database);
    action(database);
    const std::vector<TableVariable> after = ReadTableVariables(database);
    VariableChange change;
    for (size_t i = 0; i < after.size(); ++i) {
        if (after[i] == before[i])
            continue;
        change.before.push_back(before[i]);
        change.after.push_back(after[i]);
    }
    return change;
}

void TableEditor::Write(const std::vector<TableVariable>& variables) {
    Database database = work_.Open(Database::Access::Write);
    Transaction transaction(database);
    WriteTableVariables(database, variables);
    std::vector<TableVariable> written = ReadTableVariables(database);
    transaction.Commit();
    variables_ = std::move(written);
}

template <typename Redo, typename Undo>
void TableEditor::Do(const QString& name, Redo&& redo, Undo&& undo) {
    auto step = std::make_unique<Step>(name, work_, std::forward<Redo>(redo), std::forward<Undo>(undo));
    // A step that fails is not taken into the history.
    history_.push(step.get());
    static_cast<void>(step.release());
}

void TableEditor::PutRow(int row, CellRow texts) {
    table_.cells.InsertRow(row, std::move(texts));
    ++table_.rows;
    Q_EMIT RowsInserted(row, 1);
}

CellRow TableEditor::DropRow(int row) {
    CellRow texts = table_.cells.TakeRow(row);
    --table_.rows;
    Q_EMIT RowsRemoved(row, 1);
    return texts;
}

void TableEditor::PutColumn(int column, GridCells::ColumnStore store) {
    table_.cells.InsertColumn(column, store);
    LinkColumns();
    Q_EMIT ColumnsInserted(column);
}

GridCells::ColumnStore TableEditor::DropColumn(int column) {
    const GridCells::ColumnStore store = table_.cells.TakeColumn(column);
    LinkColumns();
    Q_EMIT ColumnsRemoved(column);
    return store;
}

void TableEditor::SwapTexts(const CellRange& range, std::vector<CellRow>& texts) {
    for (int row = 0; row < range.rows; ++row) {
        CellRow& other = texts[size_t(row)];
        CellRow now;
        for (int column = 0; column < range.columns; ++column)
            now.Append(table_.cells.TextView(range.row + row, range.column + column));
        for (int column = 0; column < range.columns; ++column)
            table_.cells.SetText(range.row + row, range.column + column, other.Text(column));
        now.Squeeze();
        other = std::move(now);
    }
    Q_EMIT TextsChanged(range);
    Q_EMIT WentTo(range);
}

void TableEditor::EnterText(int row, int column, const QString& text) {
    if (row > 0) {
        EnterTexts({row, column, 1, 1}, {{text}}, QStringLiteral("セルの入力"));
        return;
    }
    const TableVariable* variable = VariableOf(column);
    if (variable)
        Rename(variable->row, column, text);
    else if (table_.cells.Text(0, column) != text)
        Do(
            QStringLiteral("名前の変更"), [=, this] { NameColumn(column, text); },
            [=, this, before = table_.cells.Text(0, column)] { NameColumn(column, before); });
}

void TableEditor::NameColumn(int column, const QString& name) {
    table_.cells.SetText(0, column, name);
    Q_EMIT TextsChanged({0, column, 1, 1});
    Q_EMIT Went(0, column);
}

void TableEditor::EnterName(int variableRow, const QString& name) {
    for (const TableVariable& variable : variables_) {
        if (variable.row == variableRow) {
            Rename(variableRow, variable.column, name);
            return;
        }
    }
}

void TableEditor::Rename(int variableRow, int column, const QString& name) {
    const VariableChange change =
        ChangeOf([&](Database& database) { RenameVariable(database, variableRow, name); });
    const bool shown = column > 0 && column < table_.cells.Cols();
    const QString before = shown ? table_.cells.Text(0, column) : QString();
    if (change.after.empty() && (!shown || before == name))
        return;
    const auto rename = [=, this](const std::vector<TableVariable>& variables, const QString& header) {
        Write(variables);
        LinkColumns();
        if (variableRow > 0) {
            variableGrid_.SetText(variableRow, 1, variables.empty() ? header : variables.front().name);
            Q_EMIT NameChanged(variableRow);
        }
        if (shown)
            NameColumn(column, header);
    };
    Do(
        QStringLiteral("名前の変更"), [=] { rename(change.after, name); },
        [=] { rename(change.before, before); });
}

void TableEditor::EnterTexts(const CellRange& range, const std::vector<QStringList>& texts,
                             const QString& step) {
    // Of the old and the new texts the step keeps those that the cells do not have.
    auto others = std::make_shared<std::vector<CellRow>>();
    others->reserve(size_t(range.rows));
    bool changes = false;
    for (int row = 0; row < range.rows; ++row) {
        const QStringList& line = texts[size_t(row)];
        others->push_back(Packed(line));
        for (int column = 0; column < range.columns; ++column)
            changes =
                table_.cells.TextView(range.row + row, range.column + column) != line[column] || changes;
    }
    if (!changes)
        return;
    const auto swap = [=, this] { SwapTexts(range, *others); };
    Do(step, swap, swap);
}

std::vector<QStringList> TableEditor::Texts(const CellRange& range) const {
    std::vector<QStringList> texts;
    texts.reserve(size_t(range.rows));
    for (int row = range.row; row < range.row + range.rows; ++row) {
        QStringList& line = texts.emplace_back();
        for (int column = range.column; column < range.column + range.columns; ++column)
            line << table_.cells.Text(row, column);
    }
    return texts;
}

void TableEditor::RequireRoomForRow() const {
    if (table_.rows == std::numeric_limits<std::int16_t>::max())
        throw RuntimeError(ErrorNumber::Overflow,
                           QStringLiteral("寸法表は %1 行までです。").arg(table_.rows));
}

void TableEditor::Require(int place, int last) {
    if (place < 1 || place > last)
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange, QString::number(place));
}

void TableEditor::InsertRowStep(int row, const CellRow& texts, const QString& name) {
    RequireRoomForRow();
    Do(
        name,
        [=, this] {
            PutRow(row, texts);
            Q_EMIT Went(row, 1);
        },
        [=, this] {
            DropRow(row);
            Q_EMIT Went(qMin(row, DataRows()), 0);
        });
}

void TableEditor::AppendRow() {
    InsertRowStep(table_.cells.Rows(), {}, QStringLiteral("行の追加"));
}

void TableEditor::InsertRow(int row) {
    InsertRowStep(row, {}, QStringLiteral("行の挿入"));
}

void TableEditor::CopyRow(int row) {
    Require(row, DataRows());
    InsertRowStep(row + 1, table_.cells.RowAt(row), QStringLiteral("行の複写"));
}

void TableEditor::DeleteRow(int row) {
    Do(
        QStringLiteral("行の削除"),
        [=, this] {
            DropRow(row);
            Q_EMIT Went(qMin(row, DataRows()), 0);
        },
        [=, this, texts = table_.cells.RowAt(row)] {
            PutRow(row, texts);
            Q_EMIT Went(row, 0);
        });
}

void TableEditor::MoveRow(int row, Direction direction) {
    const int other = row + int(direction);
    if (other < 1 || other >= table_.cells.Rows())
        return;
    const auto swap = [=, this](int wentTo) {
        table_.cells.SwapRows(row, other);
        Q_EMIT TextsChanged({qMin(row, other), 1, 2, DataColumns()});
        Q_EMIT Went(wentTo, 0);
    };
    Do(
        QStringLiteral("行の移動"), [=] { swap(other); }, [=] { swap(row); });
}

void TableEditor::OpenColumn(int column) {
    if (table_.cells.Cols() == std::numeric_limits<std::int16_t>::max())
        throw RuntimeError(ErrorNumber::Overflow);
    work_.RequireOwn();
    CloseColumn();
    table_.cells.InsertColumn(column, table_.cells.MakeColumn());
    shown_.insert(shown_.begin() + column, -1);
    openColumn_ = column;
    Q_EMIT ColumnsInserted(column);
}

void TableEditor::CloseColumn() {
    if (openColumn_ == 0)
        return;
    const int column = std::exchange(openColumn_, 0);
    table_.cells.TakeColumn(column);
    shown_.erase(shown_.begin() + column);
    Q_EMIT ColumnsRemoved(column);
}

void TableEditor::ShowInOpenColumn(int variableRow) {
    const int column = openColumn_;
    CloseColumn();
    const VariableChange change = ChangeOf(
        [&](Database& database) { ShowInColumn(database, variableRow, column, table_.cells.Cols() - 1); });
    QString name;
    for (const TableVariable& variable : change.after)
        name = variable.row == variableRow ? variable.name : name;
    const GridCells::ColumnStore store = table_.cells.MakeColumn();
    Do(
        QStringLiteral("列の追加"),
        [=, this] {
            Write(change.after);
            PutColumn(column, store);
            NameColumn(column, name);
        },
        [=, this] {
            Write(change.before);
            DropColumn(column);
            Q_EMIT Went(0, qMin(column, DataColumns()));
        });
}

void TableEditor::DeleteColumn(int column) {
    Require(column, DataColumns());
    const VariableChange change =
        ChangeOf([&](Database& database) { HideColumn(database, column, DataColumns()); });
    auto store = std::make_shared<GridCells::ColumnStore>();
    Do(
        QStringLiteral("列の削除"),
        [=, this] {
            Write(change.after);
            *store = DropColumn(column);
            Q_EMIT Went(0, qMin(column, DataColumns()));
        },
        [=, this] {
            Write(change.before);
            PutColumn(column, *store);
            Q_EMIT Went(0, column);
        });
}

void TableEditor::MoveColumn(int column, Direction direction) {
    const int other = column + int(direction);
    if (other < 1 || other > DataColumns())
        return;
    Require(column, DataColumns());
    const VariableChange change =
        ChangeOf([&](Database& database) { SwapColumnNumbers(database, column, other); });
    const auto swap = [=, this](const std::vector<TableVariable>& variables, int wentTo) {
        Write(variables);
        table_.cells.SwapColumns(column, other);
        LinkColumns();
        Q_EMIT ColumnsSwapped(qMin(column, other));
        Q_EMIT Went(0, wentTo);
    };
    Do(
        QStringLiteral("列の移動"), [=] { swap(change.after, other); }, [=] { swap(change.before, column); });
}

} // namespace velmo
