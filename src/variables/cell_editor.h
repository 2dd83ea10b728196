#pragma once

#include "variables/cell_overlay.h"

#include <QLineEdit>

namespace velmo {

// The window's edit box CurEdit, which is laid over a cell of either grid, header cells included. The cells
// are changed by whoever hears of the text.
//
// Over the variable grid Enter enters the text, and Tab, Down and Up go on to other rows. Over the table
// Enter and Tab go from cell to cell as they do in the grid, and so do the arrow keys, Left and Right once
// the caret is at the text's end. Over a header every one of these enters the text. Escape gives the old text
// back.
class CellEditor : public QObject {
    Q_OBJECT

public:
    CellEditor(Grid& variables, Grid& table);

    // Lays CurEdit over a cell, with the cell's text and the focus; what was edited so far is entered first.
    void StartCellEditing(Grid& grid, int row, int column);
    bool IsEditing() const { return over_.IsOpen(); }

    // Enters the text as it stands into the cell, and closes the editor.
    void Enter();
    // The same with what an input method still holds; nothing when no cell is edited.
    void Settle();

    // Closes the editor; the cell keeps its text.
    void GiveUp();

    // Hands the first key or input-method event of a text on to the open editor; it replaces the old text.
    void StartTyping(QEvent* event);

Q_SIGNALS:
    void TextEntered(Grid* grid, int row, int column, const QString& text);
    // While the user types.
    void TextEdited(Grid* grid, int row, int column, const QString& text);
    // The old text was given back.
    void GivenUp();
    // The user left the editor for another row of the variable grid, which may not exist.
    void LeftForRow(int row);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool Key(QKeyEvent& event);
    bool VariableKey(const QKeyEvent& event);
    bool HeaderKey(const QKeyEvent& event);
    bool TableKey(QKeyEvent& event);
    bool CaretKey(const QKeyEvent& event);
    void LeaveForRow(int step);
    void LeaveForCell(int down, int right);
    void LeaveByStep(int step);

    const Grid& variables_;
    const Grid& table_;
    QLineEdit* CurEdit_;
    CellOverlay over_;
};

} // namespace velmo
