#pragma once

#include "pickers/disk_folders.h"
#include "pickers/folder_tree.h"
#include "platform/message_boxes.h"
#include "platform/modal_dialog.h"
#include "startup/global_state.h"

class QLineEdit;
class QPushButton;

namespace velmo {

class FileList;
class SlideView;

// Chooses a file below the library home folder, with a look at the slide of the same name. PickedFile is
// where it opens and what it answers; a cancelled choice leaves it empty. The file pattern is "*.SLD" unless
// another is set before it is shown.
class Vlm_FileFrm : public ModalDialog {
    Q_OBJECT

public:
    Vlm_FileFrm(GlobalState& state, MessageBoxes& messages, QWidget* parent);

    // Such as "*.PDF".
    void SetPattern(const QString& pattern);

    void reject() override;

private:
    void BuildControls();
    void OpenAtPickedFile();
    void BeginChoice();
    void FramePickedFile();
    void ShowFolder(const QString& folder);
    void ListFiles(const QString& folder);
    void ShowFile(const QString& name);
    void ForgetFile();
    void Accept();

    GlobalState& state_;
    MessageBoxes& messages_;
    KeyedTree* VlmFileTV_ = nullptr;
    FileList* Vlm_File_ = nullptr;
    SlideView* Vlm_FileSlide_ = nullptr;
    QLineEdit* Vlm_Text_ = nullptr;
    QPushButton* Vlm_FilOKBtn_ = nullptr;
    QPushButton* Vlm_FilCanBtn_ = nullptr;
    std::unique_ptr<DiskFolders> folders_;
    std::unique_ptr<FolderTree> tree_;
};

} // namespace velmo
