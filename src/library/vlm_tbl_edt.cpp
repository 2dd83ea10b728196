#include "library/vlm_tbl_edt.h"

#include "pickers/vlm_file_frm.h"
#include "platform/elided_label.h"
#include "platform/guarded.h"
#include "platform/window_places.h"

#include <QGridLayout>

namespace velmo {

namespace {

// Pixels.
constexpr int Gap = 8;
constexpr int Margin = 12;
constexpr int BoxWidth = 340;
constexpr int ButtonWidth = 90;

const QString Documents = QStringLiteral("*.PDF");
const QString Slides = QStringLiteral("*.SLD");

// The file of the same base name with another ending, of three characters like the old one.
QString WithEnding(const QString& file, const QString& ending) {
    return file.left(file.size() - ending.size()) + ending;
}

} // namespace

Vlm_TBlEdt::Vlm_TBlEdt(GlobalState& state, MessageBoxes& messages, QWidget* parent)
    : ModalDialog(parent, "Vlm_TBlEdt", state.DialogSizes), state_(state), messages_(messages) {
    // For categories the editor has a row less.
    SetSizeKey(IsEntry() ? QStringLiteral("Vlm_TBlEdt/entry") : QStringLiteral("Vlm_TBlEdt/folder"));
    setWindowTitle(QStringLiteral("Velmoシンボル編集"));
    BuildControls();
    ShowMode();
}

void Vlm_TBlEdt::BuildControls() {
    const auto label = [this](const char* name) {
        auto* made = new QLabel(this);
        made->setObjectName(QLatin1String(name));
        made->setTextFormat(Qt::PlainText);
        return made;
    };
    const auto box = [this](const char* name, QLabel* head) {
        auto* made = new QLineEdit(this);
        made->setObjectName(QLatin1String(name));
        made->setMinimumWidth(BoxWidth);
        head->setBuddy(made);
        return made;
    };
    const auto button = [this](const char* name, const QString& text, auto action) {
        auto* made = new QPushButton(text, this);
        made->setObjectName(QLatin1String(name));
        connect(made, &QPushButton::clicked, this,
                [this, action] { RunGuarded(messages_, this, [&] { (this->*action)(); }); });
        return made;
    };
    Head1_ = label("Head1");
    Head2_ = label("Head2");
    Head3_ = label("Head3");
    Head4_ = label("Head4");
    Name1_ = new ElidedLabel(this);
    Name1_->setObjectName(QStringLiteral("Name1"));
    Name2_ = box("Name2", Head2_);
    Name3_ = box("Name3", Head3_);
    Srch3_ = button("Srch3", QStringLiteral("参照"), &Vlm_TBlEdt::BrowseForName3);
    Name4_ = box("Name4", Head4_);
    Srch4_ = button("Srch4", QStringLiteral("参照"), &Vlm_TBlEdt::BrowseForName4);
    OK_btn_ = button("OK_btn", QStringLiteral("O K"), &Vlm_TBlEdt::Accept);
    Can_Btn_ = button("Can_Btn", QStringLiteral("ｷｬﾝｾﾙ"), &Vlm_TBlEdt::reject);
    OK_btn_->setDefault(true);
    for (QPushButton* ending : {OK_btn_, Can_Btn_})
        ending->setMinimumWidth(ButtonWidth);

    auto* form = new QGridLayout;
    form->setHorizontalSpacing(Gap);
    form->setVerticalSpacing(Gap);
    form->setColumnStretch(1, 1);
    const auto row = [form](int at, QLabel* head, QWidget* name, QWidget* search) {
        form->addWidget(head, at, 0);
        form->addWidget(name, at, 1, 1, search ? 1 : 2);
        if (search)
            form->addWidget(search, at, 2);
    };
    row(0, Head1_, Name1_, nullptr);
    row(1, Head2_, Name2_, nullptr);
    row(2, Head3_, Name3_, Srch3_);
    row(3, Head4_, Name4_, Srch4_);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(Gap);
    buttons->addStretch(1);
    buttons->addWidget(OK_btn_);
    buttons->addWidget(Can_Btn_);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(Margin, Margin, Margin, Margin);
    all->setSpacing(Margin);
    all->addLayout(form);
    all->addStretch(1);
    all->addLayout(buttons);
}

void Vlm_TBlEdt::ShowMode() {
    const auto show = [this](const char16_t* caption, const char16_t* head1, const char16_t* head2,
                             const char16_t* head3) {
        setWindowTitle(QString::fromUtf16(caption));
        Head1_->setText(QString::fromUtf16(head1));
        Head2_->setText(QString::fromUtf16(head2));
        Head3_->setText(QString::fromUtf16(head3));
    };
    switch (state_.EditMode) {
    case edit_mode::AddFolder:
        show(u"Velmo分類ツリー登録", u"親フォルダ", u"フォルダ名", u"SLDファイル名");
        break;
    case edit_mode::EditFolder:
        show(u"Velmo分類ツリー編集", u"親フォルダ", u"フォルダ名", u"SLDファイル名");
        break;
    case edit_mode::AddEntry:
        show(u"VelmoPDFリスト登録", u"フォルダ名", u"ＰＤＦ名", u"PDFファイル名");
        break;
    case edit_mode::EditEntry:
        show(u"VelmoPDFリスト編集", u"フォルダ名", u"ＰＤＦ名", u"PDFファイル名");
        break;
    default:
        return;
    }
    Head4_->setText(QStringLiteral("SLDファイル名"));
    for (QWidget* control :
         {static_cast<QWidget*>(Head4_), static_cast<QWidget*>(Name4_), static_cast<QWidget*>(Srch4_)})
        control->setVisible(IsEntry());

    const EntryTexts texts = LoadEntryTexts(state_);
    Name1_->setText(texts.Name1);
    Name2_->setText(texts.Name2);
    Name3_->setText(texts.Name3);
    Name4_->setText(texts.Name4);
    Name2_->setFocus();
}

QString Vlm_TBlEdt::PickFile(const QString& caption, const QString& pattern) {
    Vlm_FileFrm picker(state_, messages_, this);
    picker.setWindowTitle(caption);
    picker.SetPattern(pattern);
    picker.ShowModal();
    return state_.PickedFile;
}

void Vlm_TBlEdt::BrowseForName3() {
    SetTopmost(this, false);
    const QString picked = IsEntry() ? PickFile(QStringLiteral("PDFファイル選択"), Documents)
                                     : PickFile(QStringLiteral("SLDファイル選択"), Slides);
    if (!picked.isEmpty()) {
        Name3_->setText(picked);
        if (IsEntry() && Name4_->text().isEmpty())
            Name4_->setText(WithEnding(picked, QStringLiteral("SLD")));
    }
    SetTopmost(this, true);
}

// Stays topmost: the picker comes before it all the same.
void Vlm_TBlEdt::BrowseForName4() {
    const QString picked = PickFile(QStringLiteral("SLDファイル選択"), Slides);
    if (picked.isEmpty())
        return;
    Name4_->setText(picked);
    if (Name3_->text().isEmpty())
        Name3_->setText(WithEnding(picked, QStringLiteral("PDF")));
}

EntryTexts Vlm_TBlEdt::Texts() const {
    return {Name1_->text(), Name2_->text(), Name3_->text(), Name4_->text()};
}

void Vlm_TBlEdt::Accept() {
    Save();
    if (EditOK_)
        accept();
}

void Vlm_TBlEdt::Save() {
    const EntryTexts texts = Texts();
    const std::optional<EntryRefusal> refusal = CheckEntryTexts(state_, texts);
    EditOK_ = !refusal;
    if (refusal) {
        messages_.Inform(this, refusal->text);
        (refusal->box == 2 ? Name2_ : refusal->box == 3 ? Name3_ : Name4_)->setFocus();
        return;
    }
    if (IsEntry())
        SavePdfEntry(state_, texts);
    else
        SaveFolderEntry(state_, texts);
}

void Vlm_TBlEdt::reject() {
    state_.EditMode = edit_mode::Cancelled;
    ModalDialog::reject();
}

} // namespace velmo
