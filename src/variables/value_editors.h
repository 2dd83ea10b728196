#pragma once

#include "platform/grid.h"

#include <QComboBox>
#include <QLineEdit>

class QAbstractItemView;

namespace velmo {

// The two editors that are laid over a current value in the variable grid: the edit box CurEdit and the
// drop-down CurCmb. At most one is open. The grid's cells are changed by whoever hears the signals.
class ValueEditors : public QObject {
    Q_OBJECT

public:
    // The editors live in the grid.
    explicit ValueEditors(Grid& grid);

    // Lays CurEdit over the grid's current cell, with the cell's text and the focus.
    void StartCellEditing();
    // Lays CurCmb over the grid's current cell, with the cell's text and these values to choose from.
    enum class Unfold { No, Yes };
    void OfferValues(const QStringList& values, Unfold unfold);

    bool IsEditing() const { return CurEdit_->isVisibleTo(&grid_); }
    bool IsOffering() const { return CurCmb_->isVisibleTo(&grid_); }

    // Enters the text of the open editor into the cell as it stands, and closes the editor.
    void Enter();
    // An open CurEdit is entered, an open CurCmb closed.
    void Settle();
    // Closes an open CurCmb without any change.
    void CloseList();

    // Hands the first key or input-method event of a text on to the open editor; it replaces the old text.
    void StartTyping(QEvent* event);

Q_SIGNALS:
    void TextEntered(int row, int column, const QString& text);
    // Chosen in the drop-down with the mouse or Enter.
    void ValueChosen(int row, const QString& value);
    // What was typed in the drop-down begins none of its values.
    void ValueNotFound(const QString& typed);
    // The user left the editor for the current value of another row, which may not exist.
    void LeftForRow(int row);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Place(QWidget* editor);
    void Close(QWidget* editor);
    bool EditKey(const QKeyEvent& event);
    bool ListKey(const QKeyEvent& event);
    bool UnfoldedListKey(const QKeyEvent& event);
    void Leave(int step);
    void StepList(int step);
    void FindEntry(const QString& typed);
    bool ShowsEntry() const;

    Grid& grid_;
    QLineEdit* CurEdit_;
    QComboBox* CurCmb_;
    // The drop-down's own parts: the text that it shows and the unfolded list.
    QLineEdit* listText_ = nullptr;
    QAbstractItemView* list_ = nullptr;
    // So far, for the entry that begins so.
    QString typed_;
    // The cell under the open editor.
    int row_ = 0;
    int column_ = 0;
};

} // namespace velmo
