#include "pickers/vlm_sel_dir.h"

#include "pickers/disk_folders.h"
#include "pickers/folder_scan.h"
#include "pickers/picker_layout.h"
#include "platform/font_scale.h"

#include <QContextMenuEvent>

namespace velmo {

namespace {

// Pixels.
constexpr QSize InitialSize(440, 480);
// The characters before the ID in a category's key.
constexpr qsizetype PrefixSize = 3;

} // namespace

Vlm_SelDir::Vlm_SelDir(GlobalState& state, MessageBoxes& messages, const MakeCategories& makeCategories,
                       QWidget* parent)
    : ModalDialog(parent, "Vlm_SelDir", state.DialogSizes), state_(state), messages_(messages) {
    setWindowTitle(QStringLiteral("フォルダ選択"));
    BuildControls();
    if (state_.PickDiskDir)
        OpenDisk();
    else
        OpenCategories(makeCategories);
    connect(tree_.get(), &FolderTree::FolderChosen, this, &Vlm_SelDir::ChooseFolder);
    VlmDirTV_->setFocus();
}

void Vlm_SelDir::BuildControls() {
    VlmDirTV_ = Named(new KeyedTree, "VlmDirTV", QStringLiteral("フォルダ"));
    VlmDirTV_->installEventFilter(this);
    VlmDirTV_->viewport()->installEventFilter(this);
    SelDir_ = Named(new QLineEdit, "SelDir", QStringLiteral("選択したフォルダ"));
    SelDir_->setReadOnly(true);
    auto* ok = Named(new QPushButton(QStringLiteral("&OK")), "OkBtn", {});
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &Vlm_SelDir::accept);
    auto* cancel = Named(new QPushButton(QStringLiteral("キャンセル(&C)")), "CanBtn", {});
    connect(cancel, &QPushButton::clicked, this, &Vlm_SelDir::reject);

    SelDirPop_ = new QMenu(this);
    SelDirPop_->setObjectName(QStringLiteral("SelDirPop"));
    SelDirPop_->addAction(QStringLiteral("新規フォルダ(&A)"))->setObjectName(QStringLiteral("SelDirPopAdd"));
    SelDirPop_->addAction(QStringLiteral("名前の変更(&R)"))->setObjectName(QStringLiteral("SelDirPopRen"));

    AddPickerRows(*this, Labelled(QStringLiteral("フォルダ(&D):"), VlmDirTV_), QStringLiteral("選択(&S):"),
                  SelDir_, {ok, cancel});
    resize(InitialSize * FontScale(fontMetrics()));
}

void Vlm_SelDir::OpenDisk() {
    auto disk = std::make_unique<DiskFolders>(*VlmDirTV_, state_.HomeDir);
    tree_ = std::make_unique<FolderTree>(*VlmDirTV_, *disk, messages_);
    const QString& preset = state_.PickedDir;
    bool isThere = false;
    tree_->Fill([&] {
        disk->OpenWay(state_.LibRoot);
        isThere = !preset.isEmpty() && FolderExists(disk->PathOf(preset)) && disk->OpenWay(preset);
    });
    if (isThere) {
        tree_->Select(DiskFolders::KeyOf(preset));
        SelDir_->setText(preset);
    }
    folders_ = std::move(disk);
}

void Vlm_SelDir::OpenCategories(const MakeCategories& makeCategories) {
    folders_ = makeCategories(*VlmDirTV_);
    tree_ = std::make_unique<FolderTree>(*VlmDirTV_, *folders_, messages_);
    tree_->Fill([] {});
}

void Vlm_SelDir::ChooseFolder(const QString& key) {
    if (!state_.PickDiskDir)
        category_ = key.sliced(PrefixSize).toShort();
    SelDir_->setText(folders_->ChoiceText(key));
}

// The pop-up of the chosen folder: where the mouse is on it, or below it for the keyboard.
void Vlm_SelDir::ShowPopUp(const QContextMenuEvent& event) {
    const QWidget* viewport = VlmDirTV_->viewport();
    const bool byMouse = event.reason() == QContextMenuEvent::Mouse;
    const QModelIndex index =
        byMouse ? VlmDirTV_->indexAt(viewport->mapFromGlobal(event.globalPos())) : VlmDirTV_->currentIndex();
    const QString key = VlmDirTV_->Nodes().Key(index);
    if (key.isEmpty() || key != VlmDirTV_->SelectedKey() || folders_->IsPlaceholder(key))
        return;
    VlmDirTV_->scrollTo(index);
    const QPoint below = VlmDirTV_->visualRect(index).bottomLeft();
    SelDirPop_->popup(byMouse ? event.globalPos() : viewport->mapToGlobal(below));
}

bool Vlm_SelDir::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::ContextMenu)
        return ModalDialog::eventFilter(watched, event);
    ShowPopUp(*static_cast<QContextMenuEvent*>(event));
    return true;
}

void Vlm_SelDir::accept() {
    state_.PickedDir = state_.PickDiskDir ? SelDir_->text() : QString::number(category_);
    ModalDialog::accept();
}

void Vlm_SelDir::reject() {
    state_.PickedDir.clear();
    ModalDialog::reject();
}

} // namespace velmo
