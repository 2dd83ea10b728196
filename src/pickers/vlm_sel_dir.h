#pragma once

#include "pickers/folder_tree.h"
#include "platform/message_boxes.h"
#include "platform/modal_dialog.h"
#include "startup/global_state.h"

#include <QMenu>

#include <cstdint>
#include <functional>
#include <memory>

class QContextMenuEvent;
class QLineEdit;

namespace velmo {

// Chooses a folder: one of the disk below the library home folder when PickDiskDir is set, a category
// otherwise. PickedDir is the folder of the disk to begin with, and the answer: the folder's path, or the
// category's ID in decimal, 0 when none was chosen; empty when the choice was cancelled.
class Vlm_SelDir : public ModalDialog {
    Q_OBJECT

public:
    // Makes what fills the tree with categories. Their keys are three characters and the ID; a key that
    // begins with a backslash is a placeholder's.
    using MakeCategories = std::function<std::unique_ptr<FolderSource>(KeyedTree&)>;

    // Throws what reading the categories throws.
    Vlm_SelDir(GlobalState& state, MessageBoxes& messages, const MakeCategories& makeCategories,
               QWidget* parent);

    void accept() override;
    void reject() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void BuildControls();
    void OpenDisk();
    void OpenCategories(const MakeCategories& makeCategories);
    void ChooseFolder(const QString& key);
    void ShowPopUp(const QContextMenuEvent& event);

    GlobalState& state_;
    MessageBoxes& messages_;
    KeyedTree* VlmDirTV_ = nullptr;
    QLineEdit* SelDir_ = nullptr;
    QMenu* SelDirPop_ = nullptr;
    std::unique_ptr<FolderSource> folders_;
    std::unique_ptr<FolderTree> tree_;
    // The ID of the chosen category; 0 for none.
    std::int16_t category_ = 0;
};

} // namespace velmo
