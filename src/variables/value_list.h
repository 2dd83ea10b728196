#pragma once

#include "variables/cell_overlay.h"

#include <QComboBox>

class QAbstractItemView;
class QLineEdit;

namespace velmo {

// The drop-down CurCmb, which is laid over a current value in the variable grid and offers the values that
// the table allows. The grid's cells are changed by whoever hears the signals.
class ValueList : public QObject {
    Q_OBJECT

public:
    explicit ValueList(Grid& variables);

    // Lays CurCmb over the grid's current cell, with the cell's text and these values to choose from.
    enum class Unfold { No, Yes };
    void Offer(const QStringList& values, Unfold unfold);
    bool IsOffering() const { return over_.IsOpen(); }

    // Enters the text as it stands into the cell, and closes the drop-down.
    void Enter();
    // Closes it without any change.
    void Close();

    // Hands the first key of a text on to the open drop-down.
    void StartTyping(QEvent* event);

Q_SIGNALS:
    void TextEntered(int row, int column, const QString& text);
    // Chosen with the mouse or Enter.
    void ValueChosen(int row, const QString& value);
    // What was typed begins none of the values.
    void ValueNotFound(const QString& typed);
    // The user left the drop-down for the current value of another row, which may not exist.
    void LeftForRow(int row);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool Key(const QKeyEvent& event);
    bool UnfoldedKey(const QKeyEvent& event);
    void Leave(int step);
    void Step(int step);
    void FindEntry(const QString& typed);
    bool ShowsEntry() const;

    Grid& variables_;
    QComboBox* CurCmb_;
    CellOverlay over_;
    // The drop-down's own parts: the text that it shows and the unfolded list.
    QLineEdit* shown_;
    QAbstractItemView* list_;
    // So far, for the entry that begins so.
    QString typed_;
};

} // namespace velmo
