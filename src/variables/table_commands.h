#pragma once

#include "platform/grid.h"
#include "platform/message_boxes.h"
#include "variables/table_editor.h"

#include <QMenu>

#include <functional>
#include <vector>

namespace velmo {

// The commands on the columns and rows of the table: in the pop-up of the headers and, with their shortcuts,
// in the menus for columns and rows. Each works on the grid's current column or row.
class TableCommands : public QObject {
    Q_OBJECT

public:
    TableCommands(Grid& grid, TableEditor& editor, MessageBoxes& messages);

    // Fills the menus; the commands' shortcuts then work in the menus' window.
    void AddTo(QMenu& columns, QMenu& rows);
    // Shows the pop-up of a column's header (row 0) or of a row's label (column 0), which is current.
    void ShowPopUp(int row, int column, const QPoint& position);
    // Greys what cannot be done now.
    void Update();

Q_SIGNALS:
    // A command begins: what is being edited is to be entered or given up first.
    void Starting();
    // The current cell, or a column's header (row 0), is to be edited.
    void CellEditingWanted(int row, int column);
    // A variable is to be chosen for the open column.
    void VariableChoiceWanted(int column);

private:
    enum class Kind { Add, Insert, Copy, Delete, After, Before, Rename };
    enum class Target { Column, Row };
    struct Command {
        Kind kind;
        Target target;
        QAction* action;
    };

    QAction* MakeAction(const char* name, Kind kind, std::function<void()> run);
    void AddToMenu(QMenu& menu, const char* name, Kind kind, Target target, const QKeySequence& shortcut);
    void Run(Kind kind, Target target, int place);
    void RunOnColumn(Kind kind, int column);
    void RunOnRow(Kind kind, int row);
    void OpenColumn(int column);
    bool IsPossible(Kind kind, Target target, int place) const;
    int CurrentPlace(Target target) const;

    Grid& grid_;
    TableEditor& editor_;
    MessageBoxes& messages_;
    QMenu popUp_;
    // The column or row whose header the pop-up was opened on.
    Target popUpTarget_ = Target::Column;
    int popUpPlace_ = 0;
    std::vector<Command> popUpCommands_;
    std::vector<Command> menuCommands_;
};

} // namespace velmo
