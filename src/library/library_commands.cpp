#include "library/library_commands.h"

#include "library/entry_removal.h"
#include "library/symbol_file_move.h"
#include "library/vlm_tbl_edt.h"
#include "library/vlm_tool.h"
#include "platform/guarded.h"
#include "platform/keyed_tree.h"
#include "platform/slide_view.h"

#include <QAction>

namespace velmo {

LibraryCommands::LibraryCommands(Browser browser, GlobalState& state, MessageBoxes& messages)
    : browser_(std::move(browser)), state_(state), messages_(messages) {
    BuildPopUp();
    BuildEditMenu();
    QAbstractItemView* tree = browser_.panes.VlmTreeView;
    QAbstractItemView* list = browser_.panes.VlmPdfList;
    for (QAbstractItemView* view : {tree, list})
        view->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(tree, &QWidget::customContextMenuRequested, this, &LibraryCommands::ShowTreePopUp);
    connect(list, &QWidget::customContextMenuRequested, this, &LibraryCommands::ShowListPopUp);
    for (QAbstractItemView* view : {tree, list}) {
        AddKey(view, Qt::Key_Insert, &LibraryCommands::Add);
        AddKey(view, Qt::Key_F2, &LibraryCommands::Edit);
        AddKey(view, Qt::Key_Delete, &LibraryCommands::Delete);
        AddMenuKey(view);
    }
}

// The keys belong to tree and list, which tell what to work on; a menu only shows them.
QAction* LibraryCommands::MakeAction(const char* name, const QString& caption, Command command,
                                     const QKeySequence& shown) {
    auto* action = new QAction(caption, this);
    action->setObjectName(QLatin1String(name));
    action->setShortcut(shown);
    action->setShortcutContext(Qt::WidgetShortcut);
    if (command)
        connect(action, &QAction::triggered, this, [this, command] { Run(command); });
    return action;
}

void LibraryCommands::BuildPopUp() {
    VlmMnuPop_.setObjectName(QStringLiteral("VlmMnuPop"));
    VlmMnuPop_.setTitle(QStringLiteral("Velmo2 シンボル編集"));
    const auto add = [this](const char* name, const QString& caption, Command command,
                            const QKeySequence& key = {}) {
        QAction* action = MakeAction(name, caption, command, key);
        VlmMnuPop_.addAction(action);
        return action;
    };
    VlmMnuPopAdd_ =
        add("VlmMnuPopAdd", QStringLiteral("新規登録(&I)"), &LibraryCommands::Add, Qt::Key_Insert);
    VlmMnuPopDel_ = add("VlmMnuPopDel", QStringLiteral("削除(&D)"), &LibraryCommands::Delete, Qt::Key_Delete);
    VlmMnuPopEdt_ = add("VlmMnuPopEdt", QStringLiteral("変更(&E)"), &LibraryCommands::Edit, Qt::Key_F2);
    VlmMnuPopTool_ = add("VlmMnuPopTool", QStringLiteral("ツール(&T)"), &LibraryCommands::MoveTool);
    VlmMnuPopCopy_ = add("VlmMnuPopCopy", QStringLiteral("フォルダコピー(&C)"), &LibraryCommands::Copy);
    VlmMnuPopCut_ = add("VlmMnuPopCut", QStringLiteral("フォルダ移動(&M)"), &LibraryCommands::Cut);
    VlmMnuPopPaste_ = add("VlmMnuPopPaste", QStringLiteral("フォルダ貼付け(&P)"), &LibraryCommands::Paste);
    add("VlmMnuPopSort", QStringLiteral("ソート(&S)"), nullptr)->setEnabled(false);
}

void LibraryCommands::BuildEditMenu() {
    VlmMnuEdit_.setObjectName(QStringLiteral("VlmMnuEdit"));
    VlmMnuEdit_.setTitle(QStringLiteral("編集(&E)"));
    const auto repeat = [this](const char* name, QAction* popUp) {
        QAction* action = MakeAction(name, popUp->text(), nullptr);
        connect(action, &QAction::triggered, popUp, &QAction::trigger);
        connect(popUp, &QAction::enabledChanged, action, &QAction::setEnabled);
        VlmMnuEdit_.addAction(action);
    };
    repeat("VlmMnuEditAdd", VlmMnuPopAdd_);
    repeat("VlmMnuEditDel", VlmMnuPopDel_);
    repeat("VlmMnuEditEdt", VlmMnuPopEdt_);
    connect(&VlmMnuEdit_, &QMenu::aboutToShow, this, &LibraryCommands::ShowWhatIsPossible);
}

void LibraryCommands::AddKey(QWidget* view, const QKeySequence& key, Command command) {
    auto* action = new QAction(view);
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetShortcut);
    view->addAction(action);
    keys_ << action;
    connect(action, &QAction::triggered, this, [this, view, command] {
        if (view == browser_.panes.VlmTreeView)
            PopSource_ = Tree;
        else
            PopSource_ = HasSelectedEntry() ? Entry : EmptyList;
        if (IsPossible(command))
            Run(command);
    });
}

// Not every keyboard has a menu key.
void LibraryCommands::AddMenuKey(QAbstractItemView* view) {
    auto* action = new QAction(view);
    action->setShortcut(Qt::SHIFT | Qt::Key_F10);
    action->setShortcutContext(Qt::WidgetShortcut);
    view->addAction(action);
    keys_ << action;
    connect(action, &QAction::triggered, view, [view] {
        Q_EMIT view->customContextMenuRequested(view->visualRect(view->currentIndex()).center());
    });
}

void LibraryCommands::SwitchOff() {
    VlmMnuEdit_.menuAction()->setVisible(false);
    for (QWidget* view : {static_cast<QWidget*>(browser_.panes.VlmTreeView),
                          static_cast<QWidget*>(browser_.panes.VlmPdfList)})
        view->setContextMenuPolicy(Qt::PreventContextMenu);
    for (QAction* key : keys_)
        key->setEnabled(false);
}

void LibraryCommands::Run(Command command) {
    RunGuarded(messages_, &browser_.window, [&] { (this->*command)(); });
    Q_EMIT Done();
}

bool LibraryCommands::HasSelectedEntry() const {
    return browser_.entries.CurrentPlace().row >= 0;
}

// Whether there is something to add to, edit or delete where the commands work.
bool LibraryCommands::IsPossible(Command command) const {
    if (!browser_.isCategoryShown())
        return false;
    if (command == &LibraryCommands::Add || PopSource_ == Tree)
        return true;
    // An entry is deleted by its name, but edited by its number, which is unknown when it could not be read.
    return HasSelectedEntry() && (command == &LibraryCommands::Delete || state_.CurPdfID != 0);
}

void LibraryCommands::ShowWhatIsPossible() {
    VlmMnuPopAdd_->setEnabled(IsPossible(&LibraryCommands::Add));
    VlmMnuPopDel_->setEnabled(IsPossible(&LibraryCommands::Delete));
    VlmMnuPopEdt_->setEnabled(IsPossible(&LibraryCommands::Edit));
    VlmMnuPopCopy_->setEnabled(PopSource_ == Tree);
    VlmMnuPopCut_->setEnabled(PopSource_ == Tree);
    VlmMnuPopPaste_->setEnabled(PopSource_ == Tree && clipboard_.HasFolder());
}

void LibraryCommands::ShowPopUp(QAbstractItemView& view, PopSource source, const QPoint& place) {
    PopSource_ = source;
    ShowWhatIsPossible();
    if (source == EmptyList) {
        VlmMnuPopDel_->setEnabled(false);
        VlmMnuPopEdt_->setEnabled(false);
    }
    VlmMnuPop_.popup(view.viewport()->mapToGlobal(place));
}

// The press before has selected what is under the mouse, unless that failed.
void LibraryCommands::ShowTreePopUp(const QPoint& place) {
    KeyedTree& tree = *browser_.panes.VlmTreeView;
    const QString key = tree.Nodes().Key(tree.indexAt(place));
    if (!key.isEmpty() && key == tree.SelectedKey() && browser_.isCategoryShown())
        ShowPopUp(tree, Tree, place);
}

void LibraryCommands::ShowListPopUp(const QPoint& place) {
    QListView& list = *browser_.panes.VlmPdfList;
    if (!browser_.isCategoryShown())
        return;
    if (!list.selectionModel()->isSelected(list.indexAt(place)))
        ShowPopUp(list, EmptyList, place);
    else if (state_.CurPdfID != 0)
        ShowPopUp(list, Entry, place);
}

void LibraryCommands::Add() {
    ShowEditor(PopSource_ == Tree ? edit_mode::AddFolder : edit_mode::AddEntry);
    if (state_.EditMode == edit_mode::AddFolder)
        ShowStoredFolder();
    else if (state_.EditMode == edit_mode::AddEntry)
        browser_.entries.Refill();
}

void LibraryCommands::Edit() {
    ShowEditor(PopSource_ == Tree ? edit_mode::EditFolder : edit_mode::EditEntry);
    if (state_.EditMode == edit_mode::EditFolder) {
        ShowStoredFolder();
    } else if (state_.EditMode == edit_mode::EditEntry) {
        browser_.entries.Refill();
        browser_.entries.SelectAgain(state_.CurPdfIndex);
    }
}

void LibraryCommands::ShowEditor(std::int16_t editMode) {
    RequireWritable(state_.LibraryDb);
    const StepsBack steps(browser_.window);
    state_.EditMode = editMode;
    Vlm_TBlEdt(state_, messages_, &browser_.window).ShowModal();
}

void LibraryCommands::RebuildTree() {
    const EntryList::Place place = browser_.entries.CurrentPlace();
    browser_.panes.namePanel->clear();
    browser_.rebuildTree();
    browser_.entries.ReturnTo(place);
}

void LibraryCommands::ShowStoredFolder() {
    RebuildTree();
    browser_.panes.VlmTreeSlide->ShowSlide(state_.CurSldFile);
    browser_.panes.namePanel->setText(state_.CurFolderName);
}

void LibraryCommands::Delete() {
    const RemovalCallbacks callbacks{
        [this](const QString& text) { messages_.Inform(&browser_.window, text); },
        [this](const QString& text, const QString& title) {
            return messages_.Ask(&browser_.window, text, title);
        }};
    if (PopSource_ == Tree) {
        if (DeleteFolder(state_, browser_.entries.Count(), callbacks))
            RebuildTree();
    } else if (DeletePdfEntry(state_, browser_.entries.SelectedName(), callbacks)) {
        browser_.entries.Refill();
    }
}

void LibraryCommands::MoveTool() {
    const StepsBack steps(browser_.window);
    FinishInterruptedMove(state_.LibraryDb, state_.LibRoot);
    Vlm_Tool(state_, messages_, &browser_.window).ShowModal();
    RebuildTree();
    browser_.entries.SelectAgain(state_.CurPdfIndex);
}

void LibraryCommands::Copy() {
    clipboard_.Copy(state_);
}

void LibraryCommands::Cut() {
    clipboard_.Cut(state_);
}

void LibraryCommands::Paste() {
    const QString question = clipboard_.QuestionBeforePaste(state_);
    if (!question.isEmpty() && !messages_.Ask(&browser_.window, question))
        return;
    clipboard_.Paste(state_);
    RebuildTree();
}

} // namespace velmo
