#include "library/vlm_tool.h"

#include "library/category_source.h"
#include "library/symbol_file_move.h"
#include "pickers/vlm_sel_dir.h"
#include "platform/elided_label.h"
#include "platform/elided_tip_delegate.h"
#include "platform/empty_hint.h"
#include "platform/font_scale.h"
#include "platform/guarded.h"
#include "platform/numbers.h"
#include "platform/progress_box.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QScopeGuard>

#include <algorithm>

namespace velmo {

namespace {

// Pixels.
constexpr int Gap = 8;
constexpr int Margin = 12;
constexpr QSize WindowSize(720, 440);
constexpr int LeastColumnWidth = 180;
constexpr int MostColumnWidth = 320;

const QString NoSymbol = QStringLiteral("移動させるｼﾝﾎﾞﾙを指定してください");
const QString NoFolder = QStringLiteral("移動させるフォルダを指定してください");

} // namespace

Vlm_Tool::Vlm_Tool(GlobalState& state, MessageBoxes& messages, QWidget* parent)
    : ModalDialog(parent, "Vlm_Tool", state.DialogSizes), state_(state), messages_(messages) {
    // By this caption scripts know the window.
    setWindowTitle(QStringLiteral("Form1"));
    BuildControls();
    resize(WindowSize * FontScale(fontMetrics()));
    ListContent();
}

void Vlm_Tool::BuildControls() {
    MastFolder_ = new ElidedLabel;
    MastFolder_->setObjectName(QStringLiteral("MastFolder"));

    content_ = new ContentModel(this);
    SelList_ = new QTreeView;
    SelList_->setObjectName(QStringLiteral("SelList"));
    SelList_->setAccessibleName(QStringLiteral("フォルダの内容"));
    SelList_->setModel(content_);
    SelList_->setRootIsDecorated(false);
    SelList_->setUniformRowHeights(true);
    SelList_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    SelList_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    SelList_->setTextElideMode(Qt::ElideMiddle);
    SelList_->setItemDelegate(new ElidedTipDelegate(this));
    (new EmptyHint(*SelList_))->SetText(QStringLiteral("この分類には何も登録されていません"));

    const auto button = [this](const char* name, const QString& text, auto action) {
        auto* made = new QPushButton(text);
        made->setObjectName(QLatin1String(name));
        made->setAutoDefault(false);
        connect(made, &QPushButton::clicked, this, [this, action] { RunGuarded(messages_, this, action); });
        return made;
    };
    AllBtn_ = button("AllBtn", QStringLiteral("全選択"), [this] { SelList_->selectAll(); });
    NonBtn_ = button("NonBtn", QStringLiteral("全解除"), [this] { SelList_->clearSelection(); });
    FilMovBtn_ = button("FilMovBtn", QStringLiteral("ファイル移動"), [this] { MoveFiles(); });
    FolDerMovBtn_ = button("FolDerMovBtn", QStringLiteral("フォルダ移動"), [this] { MoveFolders(); });
    CanBtn_ = button("CanBtn", QStringLiteral("キャンセル"), [this] { reject(); });

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(Gap);
    buttons->addWidget(AllBtn_);
    buttons->addWidget(NonBtn_);
    buttons->addStretch(1);
    buttons->addWidget(FilMovBtn_);
    buttons->addWidget(FolDerMovBtn_);
    buttons->addSpacing(Gap);
    buttons->addWidget(CanBtn_);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(Margin, Margin, Margin, Margin);
    all->setSpacing(Gap);
    all->addWidget(MastFolder_);
    all->addWidget(SelList_, 1);
    all->addLayout(buttons);
    SelList_->setFocus();
}

void Vlm_Tool::ListContent() {
    MastFolder_->setText(state_.CurFolderName);
    const std::vector<ContentRow> selected = Selected();
    content_->SetRows(FolderContent(state_));
    Select(selected);
    for (const int column : {0, 1}) {
        SelList_->resizeColumnToContents(column);
        const double scale = FontScale(fontMetrics());
        SelList_->setColumnWidth(column,
                                 qBound(qRound(LeastColumnWidth * scale), SelList_->columnWidth(column),
                                        qRound(MostColumnWidth * scale)));
    }
    FolderCount_ = std::int16_t(std::ranges::count_if(content_->Rows(), &ContentRow::isFolder));
    FilMovBtn_->setEnabled(FolderCount_ == 0);
    FilMovBtn_->setToolTip(FolderCount_ == 0 ? QString()
                                             : QStringLiteral("サブフォルダのあるフォルダでは使えません"));
}

std::vector<ContentRow> Vlm_Tool::Selected() const {
    std::vector<ContentRow> selected;
    for (int row = 0; row < content_->rowCount(); ++row) {
        if (SelList_->selectionModel()->isRowSelected(row))
            selected.push_back(content_->Rows()[size_t(row)]);
    }
    return selected;
}

// Rows that are not listed any more are passed over.
void Vlm_Tool::Select(const std::vector<ContentRow>& rows) {
    QItemSelection selection;
    for (int row = 0; row < content_->rowCount(); ++row) {
        const ContentRow& listed = content_->Rows()[size_t(row)];
        const bool wanted = std::ranges::any_of(rows, [&listed](const ContentRow& one) {
            return one.isFolder == listed.isFolder && one.id == listed.id;
        });
        if (wanted)
            selection.select(content_->index(row, 0), content_->index(row, content_->columnCount() - 1));
    }
    SelList_->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

// The button with the focus takes Enter; there is none that takes it for the others.
void Vlm_Tool::keyPressEvent(QKeyEvent* event) {
    auto* button = qobject_cast<QPushButton*>(focusWidget());
    if (button && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) {
        if (!event->isAutoRepeat())
            button->click();
        return;
    }
    ModalDialog::keyPressEvent(event);
}

// False when the choice was cancelled.
bool Vlm_Tool::PickFolder(bool onDisk) {
    // Nobody is to choose a folder for nothing.
    RequireWritable(state_.LibraryDb);
    state_.PickDiskDir = onDisk;
    Vlm_SelDir(
        state_, messages_, [this](KeyedTree& tree) { return std::make_unique<CategorySource>(tree, state_); },
        this)
        .ShowModal();
    return !state_.PickedDir.isEmpty();
}

void Vlm_Tool::MoveFiles() {
    const std::vector<ContentRow> selected = Selected();
    if (selected.empty()) {
        messages_.Inform(this, NoSymbol);
        return;
    }
    if (!PickFolder(true))
        return;
    // A move that failed may have moved some files all the same.
    auto showWhatIsThere = qScopeGuard([this] { RunGuarded(messages_, this, [this] { ListContent(); }); });
    ProgressBox progress(this, QStringLiteral("ファイルを移動しています..."), ProgressBox::Cancel::Yes);
    FileMoveCallbacks callbacks;
    callbacks.inform = [this](const QString& text) { messages_.Inform(this, text); };
    callbacks.ask = [this](const QString& text) { return messages_.Ask(this, text); };
    callbacks.progress = [&progress](qint64 done, qint64 total) { return progress.Report(done, total); };
    MoveSymbolFiles(state_, selected, callbacks);
    showWhatIsThere.dismiss();
    accept();
}

void Vlm_Tool::MoveFolders() {
    const std::vector<ContentRow> selected = Selected();
    if (selected.empty()) {
        messages_.Inform(this, FolderCount_ != 0 ? NoFolder : NoSymbol);
        return;
    }
    if (!PickFolder(false))
        return;
    const std::int16_t target = ToInteger(state_.PickedDir);
    const QString question = QuestionBeforeMove(state_, content_->Rows(), selected, target);
    if (!question.isEmpty() && !messages_.Ask(this, question))
        return;
    MoveToCategory(state_, content_->Rows(), selected, target);
    accept();
}

} // namespace velmo
