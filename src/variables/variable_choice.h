#pragma once

#include "variables/cell_overlay.h"

#include <QComboBox>

#include <vector>

namespace velmo {

// The drop-down list Vedt_Combo, which is laid unfolded over a column's header in the table grid, to choose
// the variable that the column is to show.
class VariableChoice : public QObject {
    Q_OBJECT

public:
    struct Item {
        QString text;
        // What the choice is told by.
        int value = 0;
    };

    explicit VariableChoice(Grid& table);

    // Without items nothing is shown, and the choice is cancelled at once.
    void Offer(int column, const std::vector<Item>& items);
    bool IsOffering() const { return over_.IsOpen(); }
    // Nothing when nothing is offered.
    void Cancel();

Q_SIGNALS:
    // Each offer ends with one of these, after the list closed.
    void Chosen(int value);
    void Cancelled();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Choose(int index);
    void CancelUnlessChosen();

    Grid& table_;
    QComboBox* Vedt_Combo_;
    CellOverlay over_;
};

} // namespace velmo
