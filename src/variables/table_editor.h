#pragma once

#include "platform/cell_range.h"
#include "variables/dimension_table.h"
#include "variables/table_variables.h"

#include <QUndoStack>

namespace velmo {

// The dimension table while it is edited: its cells, the variables that its columns show, the number of its
// rows and whether it differs from its file. Every change is one step that can be undone; NowTable is in step
// after each. Rows and columns count as in the table's cells: data from 1, row 0 the columns' names.
//
// A change that fails (in the work database, or because it would be too much: 6) leaves all as it was. None
// is made when the work database is no longer the window's own.
class TableEditor : public QObject {
    Q_OBJECT

public:
    enum class Direction { Before = -1, After = 1 };

    // All of them outlive the editor.
    TableEditor(const WorkDatabase& work, DimensionTable& table, GridCells& variableGrid);

    const GridCells& Cells() const { return table_.cells; }
    // The steps done and undone, each named for the Edit menu.
    QUndoStack& History() { return history_; }
    bool IsChanged() const { return !history_.isClean(); }
    int DataRows() const { return table_.rows; }
    int DataColumns() const { return table_.cells.Cols() - 1; }
    // The variable that a column shows; null for a column without one.
    const TableVariable* VariableOf(int column) const;
    // The variables that the table does not show yet, in the order of NowTable.
    std::vector<TableVariable> HiddenVariables() const;

    // What is entered as it was changes nothing and is no step. Row 0 renames, as EnterName does.
    void EnterText(int row, int column, const QString& text);
    // A name goes to the variable itself, to its row of the variable grid and to its column. Throws 3163 when
    // it is longer than 255 characters.
    void EnterName(int variableRow, const QString& name);
    // A text for each cell of a range of data cells; step names it in the Edit menu.
    void EnterTexts(const CellRange& range, const std::vector<QStringList>& texts, const QString& step);
    std::vector<QStringList> Texts(const CellRange& range) const;

    void AppendRow();
    void InsertRow(int row);
    // The copy stands below the row.
    void CopyRow(int row);
    void DeleteRow(int row);
    // With its neighbour; one that has none on that side stays.
    void MoveRow(int row, Direction direction);

    // An empty column comes to stand at a place, until a variable is chosen for it. Not a step yet.
    void OpenColumn(int column);
    bool HasOpenColumn() const { return openColumn_ > 0; }
    // Takes the empty column away again.
    void CloseColumn();
    // The open column becomes the variable's; when that fails, it is taken away.
    void ShowInOpenColumn(int variableRow);
    void DeleteColumn(int column);
    void MoveColumn(int column, Direction direction);

Q_SIGNALS:
    // The cells have changed already.
    void RowsInserted(int row, int count);
    void RowsRemoved(int row, int count);
    void ColumnsInserted(int column);
    void ColumnsRemoved(int column);
    // With the column right of it.
    void ColumnsSwapped(int left);
    // Row 0 too, when it is in the range.
    void TextsChanged(const CellRange& range);
    void NameChanged(int variableRow);
    // A step was done, undone or redone here; row 0 for a column as a whole, column 0 for a row.
    void Went(int row, int column);
    // The same for texts that were entered.
    void WentTo(const CellRange& range);

private:
    // What of NowTable an action changes: the variables before and after it.
    struct VariableChange {
        std::vector<TableVariable> before;
        std::vector<TableVariable> after;
    };
    template <typename Action>
    VariableChange ChangeOf(Action&& action) const;
    // Writes them to NowTable and takes it over as it is then; all of it or, when that fails, nothing. The
    // columns are to be linked afterwards.
    void Write(const std::vector<TableVariable>& variables);
    // Finds out which variable each column shows.
    void LinkColumns();

    template <typename Redo, typename Undo>
    void Do(const QString& name, Redo&& redo, Undo&& undo);
    void RequireRoomForRow() const;
    // Throws 9 when there is no such row or column of data.
    static void Require(int place, int last);
    void InsertRowStep(int row, const CellRow& texts, const QString& name);
    void Rename(int variableRow, int column, const QString& name);
    void NameColumn(int column, const QString& name);

    // Change the cells and tell so.
    void PutRow(int row, CellRow texts);
    CellRow DropRow(int row);
    void PutColumn(int column, GridCells::ColumnStore store);
    GridCells::ColumnStore DropColumn(int column);
    // The texts become those that the cells had.
    void SwapTexts(const CellRange& range, std::vector<CellRow>& texts);

    const WorkDatabase& work_;
    DimensionTable& table_;
    GridCells& variableGrid_;
    QUndoStack history_;
    std::vector<TableVariable> variables_;
    // By the column that shows it, an index into variables_; -1 for none.
    std::vector<int> shown_;
    // Empty and without a variable yet; 0 for none.
    int openColumn_ = 0;
};

} // namespace velmo
