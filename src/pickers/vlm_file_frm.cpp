#include "pickers/vlm_file_frm.h"

#include "pickers/file_list.h"
#include "pickers/folder_scan.h"
#include "pickers/picker_layout.h"
#include "platform/font_scale.h"
#include "platform/slide_view.h"

#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSplitter>

namespace velmo {

namespace {

// Pixels.
constexpr QSize InitialSize(820, 520);
const QList<int> PaneWidths{240, 230, 330};

const QString SlidePattern = QStringLiteral("*.SLD");
const QString SlideEnding = QStringLiteral("SLD");

// The slide of a file that a list with this pattern shows: itself, or the one of the same base name.
QString SlideName(const QString& file, const QString& pattern) {
    if (pattern.compare(SlidePattern, Qt::CaseInsensitive) == 0)
        return file;
    return file.chopped(qMin(file.size(), SlideEnding.size())) + SlideEnding;
}

} // namespace

Vlm_FileFrm::Vlm_FileFrm(GlobalState& state, MessageBoxes& messages, QWidget* parent)
    : ModalDialog(parent, "Vlm_FileFrm", state.DialogSizes), state_(state), messages_(messages) {
    setWindowTitle(QStringLiteral("ファイル選択"));
    BuildControls();
    folders_ = std::make_unique<DiskFolders>(*VlmFileTV_, state_.HomeDir);
    tree_ = std::make_unique<FolderTree>(*VlmFileTV_, *folders_, messages_);
    connect(tree_.get(), &FolderTree::FolderChosen, this, &Vlm_FileFrm::ShowFolder);
    connect(Vlm_File_, &FileList::FileChosen, this, &Vlm_FileFrm::ShowFile);
    connect(Vlm_File_, &FileList::FileAccepted, this, &Vlm_FileFrm::Accept);
    connect(Vlm_FilOKBtn_, &QPushButton::clicked, this, &Vlm_FileFrm::Accept);
    connect(Vlm_FilCanBtn_, &QPushButton::clicked, this, &Vlm_FileFrm::reject);
    OpenAtPickedFile();
}

void Vlm_FileFrm::BuildControls() {
    VlmFileTV_ = Named(new KeyedTree, "VlmFileTV", QStringLiteral("フォルダ"));
    Vlm_File_ = Named(new FileList, "Vlm_File", QStringLiteral("ファイルの一覧"));
    Vlm_File_->SetPattern(SlidePattern);
    Vlm_FileSlide_ = Named(new SlideView, "Vlm_FileSlide", QStringLiteral("ファイルのスライド"));
    Vlm_Text_ = Named(new QLineEdit, "Vlm_Text", QStringLiteral("選択したファイル名"));
    Vlm_Text_->setReadOnly(true);
    Vlm_FilOKBtn_ = new QPushButton(QStringLiteral("&OK"));
    Vlm_FilOKBtn_->setObjectName(QStringLiteral("Vlm_FilOKBtn"));
    Vlm_FilOKBtn_->setDefault(true);
    Vlm_FilCanBtn_ = new QPushButton(QStringLiteral("キャンセル(&C)"));
    Vlm_FilCanBtn_->setObjectName(QStringLiteral("Vlm_FilCanBtn"));

    auto* panes = new QSplitter;
    panes->setChildrenCollapsible(false);
    panes->addWidget(Labelled(QStringLiteral("フォルダ(&D):"), VlmFileTV_));
    panes->addWidget(Labelled(QStringLiteral("ファイル(&F):"), Vlm_File_));
    panes->addWidget(Labelled(QStringLiteral("スライド:"), Vlm_FileSlide_));
    panes->setSizes(PaneWidths);
    panes->setStretchFactor(2, 1);

    AddPickerRows(*this, panes, QStringLiteral("ファイル名(&N):"), Vlm_Text_,
                  {Vlm_FilOKBtn_, Vlm_FilCanBtn_});
    resize(InitialSize * FontScale(fontMetrics()));
}

void Vlm_FileFrm::OpenAtPickedFile() {
    const QString folder =
        folders_->Root() + state_.PickedFile.first(state_.PickedFile.lastIndexOf(u'\\') + 1);
    bool isThere = false;
    tree_->Fill([&] { isThere = FolderExists(folder) && folders_->OpenWay(folder); });
    tree_->Select(DiskFolders::KeyOf(isThere ? folder : folders_->Root()));
    ListFiles(isThere ? DiskFolders::KeyOf(folder) : folders_->Root());
    BeginChoice();
}

void Vlm_FileFrm::SetPattern(const QString& pattern) {
    Vlm_File_->SetPattern(pattern);
    BeginChoice();
}

// Nothing is chosen yet; the keys go where a choice can be made.
void Vlm_FileFrm::BeginChoice() {
    ForgetFile();
    FramePickedFile();
    (Vlm_File_->IsEmpty() ? static_cast<QWidget*>(VlmFileTV_) : Vlm_File_)->setFocus();
}

void Vlm_FileFrm::FramePickedFile() {
    const QString name = state_.PickedFile.sliced(state_.PickedFile.lastIndexOf(u'\\') + 1);
    const QString picked = folders_->Root() + state_.PickedFile;
    if (!name.isEmpty() && UpperCasePath(PathIn(Vlm_File_->Folder(), name)) == UpperCasePath(picked))
        Vlm_File_->Frame(name);
}

void Vlm_FileFrm::ShowFolder(const QString& folder) {
    const QString before = Vlm_File_->Folder();
    ListFiles(folder);
    if (Vlm_File_->Folder() != before)
        ForgetFile();
}

// Below the root the folder is spelled as its node's key.
void Vlm_FileFrm::ListFiles(const QString& folder) {
    Vlm_File_->ShowFolder(folders_->PathOf(folder));
}

void Vlm_FileFrm::ForgetFile() {
    Vlm_Text_->clear();
    Vlm_FileSlide_->Clear();
    Vlm_FileSlide_->SetEmptyText(Vlm_File_->IsEmpty()
                                     ? QStringLiteral("ファイルのあるフォルダを選んでください")
                                     : QStringLiteral("一覧からファイルを選んでください"));
}

void Vlm_FileFrm::ShowFile(const QString& name) {
    Vlm_Text_->setText(name);
    Vlm_FileSlide_->SetEmptyText(QStringLiteral("このファイルにスライドはありません"));
    Vlm_FileSlide_->ShowSlide(PathIn(Vlm_File_->Folder(), SlideName(name, Vlm_File_->Pattern())));
}

void Vlm_FileFrm::Accept() {
    const QString name = Vlm_File_->FileName();
    if (name.isEmpty()) {
        messages_.Inform(this, QStringLiteral("ファイルを選択してください"));
        return;
    }
    const QString folder = Vlm_File_->Folder().sliced(folders_->Root().size());
    state_.PickedFile = folder.isEmpty() ? name : PathIn(folder, name);
    accept();
}

void Vlm_FileFrm::reject() {
    state_.PickedFile.clear();
    ModalDialog::reject();
}

} // namespace velmo
