#pragma once

#include "library/content_model.h"
#include "platform/message_boxes.h"
#include "platform/modal_dialog.h"
#include "startup/global_state.h"

#include <QLabel>
#include <QPushButton>
#include <QTreeView>

namespace velmo {

// The move tool: moves what the category CurFolderID holds, subcategories and entries, to another category,
// or the files of its entries to another folder of the disk.
class Vlm_Tool : public ModalDialog {
    Q_OBJECT

public:
    // Throws what reading the category throws.
    Vlm_Tool(GlobalState& state, MessageBoxes& messages, QWidget* parent);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void BuildControls();
    void ListContent();
    std::vector<ContentRow> Selected() const;
    void Select(const std::vector<ContentRow>& rows);
    bool PickFolder(bool onDisk);
    void MoveFiles();
    void MoveFolders();

    GlobalState& state_;
    MessageBoxes& messages_;
    QLabel* MastFolder_ = nullptr;
    QTreeView* SelList_ = nullptr;
    QPushButton* AllBtn_ = nullptr;
    QPushButton* NonBtn_ = nullptr;
    QPushButton* CanBtn_ = nullptr;
    QPushButton* FilMovBtn_ = nullptr;
    QPushButton* FolDerMovBtn_ = nullptr;
    ContentModel* content_ = nullptr;
    // The first rows of the list are subcategories.
    std::int16_t FolderCount_ = 0;
};

} // namespace velmo
