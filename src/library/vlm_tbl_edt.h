#pragma once

#include "library/entry_editing.h"
#include "platform/message_boxes.h"
#include "platform/modal_dialog.h"
#include "startup/global_state.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace velmo {

// The entry editor: registers or edits a category or an entry, as EditMode says; EditMode tells afterwards
// what was stored, 0 when nothing was.
class Vlm_TBlEdt : public ModalDialog {
    Q_OBJECT

public:
    // Reads what is to be edited; throws 3021 when it is gone.
    Vlm_TBlEdt(GlobalState& state, MessageBoxes& messages, QWidget* parent);

    void reject() override;

private:
    void BuildControls();
    void ShowMode();
    void BrowseForName3();
    void BrowseForName4();
    QString PickFile(const QString& caption, const QString& pattern);
    void Accept();
    void Save();
    EntryTexts Texts() const;
    bool IsEntry() const { return state_.EditMode >= edit_mode::AddEntry; }

    GlobalState& state_;
    MessageBoxes& messages_;
    QLabel* Head1_ = nullptr;
    QLabel* Head2_ = nullptr;
    QLabel* Head3_ = nullptr;
    QLabel* Head4_ = nullptr;
    QLabel* Name1_ = nullptr;
    QLineEdit* Name2_ = nullptr;
    QLineEdit* Name3_ = nullptr;
    QLineEdit* Name4_ = nullptr;
    QPushButton* Srch3_ = nullptr;
    QPushButton* Srch4_ = nullptr;
    QPushButton* OK_btn_ = nullptr;
    QPushButton* Can_Btn_ = nullptr;
    // The texts were good when OK was last pressed.
    bool EditOK_ = false;
};

} // namespace velmo
