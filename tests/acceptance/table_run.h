#pragma once

#include "acceptance_test.h"

namespace velmo {

// Runs in which the user edits a dimension table: the CAD side asks in run mode 3 for a symbol. Places are
// those of the window: row 0 is the header row, column 0 the row numbers.
class TableRunTest : public AcceptanceTest {
protected:
    using Place = std::pair<int, int>;

    void SetUp() override;
    // Asks for a symbol of the category of bolts and waits for its table.
    void OpenTable(const QString& symbol = "HEX");
    // Writes a table of one comment column (10 wide) with these values for HEX.
    void WriteColumn(const QStringList& values);
    // The lines of HEX's table file as it is now.
    QStringList TableFile();

    Place Current();
    QStringList Headers();
    // "1,2": the selected cells' places, from the first to the last one.
    QString Selected();
    bool IsEditing() { return Run().IsVisible("CurEdit"); }
    // The editor lies over this cell, has the focus and holds the text.
    void ExpectEditing(Place place, const QString& text);
    // This cell is current, has the focus, and nothing is edited.
    void ExpectCurrent(Place place);
    void Click(Place place) { ClickTable(place.first, place.second); }
    void DoubleClick(Place place) { Run().DoubleClick("Vedt_FlexGrid", CellOf(place)); }
    void SelectBlock(Place first, Place last);
    // Types a value over a cell.
    void Enter(Place place, const QString& text);

    // Opens the pop-up of a column's header or of a row's number.
    void OpenColumnPopUp(int column);
    void OpenRowPopUp(int row);
    // The pop-up's entries that are shown, in order; greyed ones in parentheses.
    QStringList PopUpEntries();
    void ChooseOnColumn(int column, const QString& entry);
    void ChooseOnRow(int row, const QString& entry);
    // The column of the table that shows each variable, the comment first; 0 for none.
    QStringList ColumnsOfVariables();

    bool IsChanged();
    // OK, after which the program ends.
    void Confirm();

    static Item CellOf(Place place) { return Item::Cell(place.first - 1, place.second - 1); }
    QString Symbol(const QString& name) const { return session_.HomeDir() + "SMB\\BOLT\\" + name; }

    const QString tableFile_ = "SMB\\BOLT\\HEX.PMN";
};

} // namespace velmo
