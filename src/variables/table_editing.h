#pragma once

#include "platform/message_boxes.h"
#include "startup/global_state.h"
#include "variables/cell_editor.h"
#include "variables/table_commands.h"
#include "variables/table_editor.h"
#include "variables/table_fault.h"
#include "variables/table_file_stamp.h"
#include "variables/table_status.h"
#include "variables/variable_choice.h"
#include "variables/vedt_controls.h"

#include <QAction>

class QMainWindow;

namespace velmo {

// What the variable window does in run mode 3: the grid edits the dimension table, the Edit menu and the
// headers' pop-up command it, the status bar tells about it, and it is saved.
class TableEditing : public QObject {
    Q_OBJECT

public:
    // The table was read with this state, after its file was stamped, and is shown; all outlive this object.
    TableEditing(QMainWindow& window, VedtControls& ui, CellEditor& cellEditor, DimensionTable& table,
                 const TableFileStamp& stamp, GridCells& variables, const GlobalState& state,
                 const WorkDatabase& work, MessageBoxes& messages);
    ~TableEditing() override;

    bool IsChanged() const { return editor_.IsChanged(); }
    // Enters what is being edited, gives up a choice that was not made.
    void Settle();
    // Gives up both.
    void GiveUp();
    // What the user entered in a cell of either grid.
    void Enter(const Grid& grid, int row, int column, const QString& text);

    // False, after a message, when the table holds a character that its file cannot hold; its cell is
    // current.
    bool CheckCharacters();
    // Saves the table. False, after a message, when it stays unsaved; throws as SaveDimensionTable does.
    bool Save();

private:
    void ConnectGrid();
    void ConnectFindBar();
    void ConnectHistory();
    void BuildMenu();
    QAction* AddAction(QMenu& menu, const char* name, const QString& text, const QKeySequence& shortcut,
                       void (TableEditing::*run)());
    void UpdateActions();

    // The actions work from the keyboard only while the table has the focus.
    void KeepToGrid(const QList<QAction*>& actions);
    void ShowCellMenu(const QPoint& position);
    void EditCell(int row, int column);
    void ChooseVariable(int column);
    void GoTo(int row, int column);
    void GoToTexts(const CellRange& range);

    void Undo();
    void Redo();
    void Cut();
    void Copy();
    void Paste();
    void Clear();
    void Empty(const QString& step);
    void OpenFind();
    void FindNext();
    void FindPrevious();
    void Find(const QString& text, SearchDirection direction, SearchStart start);

    bool CheckTableGrid();
    bool ShowFault(const std::optional<TableFault>& fault);
    bool MayReplaceFile();
    bool MayLeaveOut(const TableColumns& columns);
    bool MayCutNumbers(const TableColumns& columns);

    QMainWindow& window_;
    VedtControls& ui_;
    Grid& grid_;
    CellEditor& cellEditor_;
    DimensionTable& table_;
    TableFileStamp stamp_;
    const GlobalState& state_;
    const WorkDatabase& work_;
    MessageBoxes& messages_;
    TableEditor editor_;
    TableCommands commands_;
    TableStatus status_;
    VariableChoice choice_;
    QMenu cellMenu_;
    // What is entered now is the user's own and in sight.
    bool entering_ = false;
    QAction* undo_ = nullptr;
    QAction* redo_ = nullptr;
};

} // namespace velmo
