#pragma once

#include "platform/message_boxes.h"
#include "platform/modal_window.h"
#include "platform/settings_store.h"
#include "startup/global_state.h"
#include "variables/cell_editor.h"
#include "variables/current_values.h"
#include "variables/dimension_table.h"
#include "variables/table_editing.h"
#include "variables/value_list.h"
#include "variables/vedt_controls.h"

namespace velmo {

// The variable window: the chosen symbol's dimension table and variables, with the current values that go to
// the CAD side.
class VLM_VEDT : public ModalWindow {
    Q_OBJECT

public:
    VLM_VEDT(GlobalState& state, SettingsStore& settings, MessageBoxes& messages);
    ~VLM_VEDT() override;

    // Reads the symbol of SymbolFile and its table and restores what was confirmed last. Every failure ends
    // the program.
    void Load();

Q_SIGNALS:
    // The user cancelled with the button.
    void Cancelled();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void ConnectControls();

    void ReadSymbol();
    void RestoreChoice();
    void ShowSymbol();
    void StartTableEditing();
    void ShowHint();

    bool IsTableEditing() const { return state_.RunMode == run_mode::UserLibrary; }
    ValueGrids Values();
    void ChooseTableRow(int row);
    void ActivateTableRow(int row);
    void ShowChosenRow();
    bool SettleEditors();
    void GiveUpEditors();
    void OpenValueEditor(int row, ValueList::Unfold unfold);
    void ActivateVariable(int row);
    void ApplyDropDown(int row, const QString& value);
    void EnterText(const Grid& grid, int row, int column, const QString& text);
    void EnterValue(int row, int column, const QString& text);
    void TypeOver(QEvent* event);
    void SearchTable(QEvent* event);

    bool CheckVariableGrid();
    bool CheckCharacters();
    bool MayAnswer();
    void GiveAnswer();
    bool Leave();
    void Confirm();
    void Measure();
    void Cancel();
    void BackToTree();
    void ChooseDocument(const QString& caption);
    bool MayLoseChanges();

    GlobalState& state_;
    SettingsStore& settings_;
    MessageBoxes& messages_;

    GridCells variables_{GridCells::FirstColumn::Texts};
    WorkDatabase work_;
    DimensionTable table_;
    std::optional<TableFileStamp> stamp_;

    VedtControls ui_;
    CellEditor* cellEditor_ = nullptr;
    ValueList* valueList_ = nullptr;
    // In run mode 3, when there is a table to edit.
    TableEditing* editing_ = nullptr;
    // The window closes by a command that has asked what there was to ask.
    bool leaving_ = false;
    // The values are those of the chosen row, or what the user had made of them.
    bool rowTaken_ = false;
    // The text of an editor could not be entered; the user has been told.
    bool entryFailed_ = false;
};

} // namespace velmo
