#include "variables/table_editing.h"

#include "platform/guarded.h"
#include "platform/numbers.h"
#include "platform/text_folding.h"
#include "variables/cell_block.h"
#include "variables/table_file.h"
#include "variables/table_search.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <QScopeGuard>
#include <QScopedValueRollback>

namespace velmo {

namespace {

QString NamedStep(const QString& command, const QString& step) {
    return step.isEmpty() ? command : QStringLiteral("%1 %2").arg(command, step);
}

} // namespace

TableEditing::TableEditing(QMainWindow& window, VedtControls& ui, CellEditor& cellEditor,
                           DimensionTable& table, const TableFileStamp& stamp, GridCells& variables,
                           const GlobalState& state, const WorkDatabase& work, MessageBoxes& messages)
    : QObject(&window),
      window_(window),
      ui_(ui),
      grid_(*ui.Vedt_FlexGrid),
      cellEditor_(cellEditor),
      table_(table),
      stamp_(stamp),
      state_(state),
      work_(work),
      messages_(messages),
      editor_(work, table, variables),
      commands_(grid_, editor_, messages),
      status_(*window.statusBar()),
      choice_(grid_) {
    BuildMenu();
    ConnectGrid();
    ConnectFindBar();
    ConnectHistory();
    UpdateActions();
}

// A history empties itself as it ends, when the actions that it is shown in are gone.
TableEditing::~TableEditing() {
    editor_.History().disconnect(this);
}

void TableEditing::ConnectGrid() {
    connect(&editor_, &TableEditor::RowsInserted, &grid_, &Grid::RowsInserted);
    connect(&editor_, &TableEditor::RowsRemoved, &grid_, &Grid::RowsRemoved);
    connect(&editor_, &TableEditor::ColumnsInserted, &grid_, &Grid::ColumnsInserted);
    connect(&editor_, &TableEditor::ColumnsRemoved, &grid_, &Grid::ColumnsRemoved);
    connect(&editor_, &TableEditor::ColumnsSwapped, &grid_, &Grid::ColumnsSwapped);
    connect(&editor_, &TableEditor::TextsChanged, &grid_, &Grid::RangeChanged);
    connect(&editor_, &TableEditor::NameChanged, this, [this](int variableRow) {
        ui_.Vedt_NowFGrid->TextsChanged();
        if (!entering_)
            ui_.Vedt_NowFGrid->SetCurrentCell(variableRow, 1);
    });
    connect(&editor_, &TableEditor::Went, this, &TableEditing::GoTo);
    connect(&editor_, &TableEditor::WentTo, this, &TableEditing::GoToTexts);

    const auto editCell = [this](int row, int column) {
        RunGuarded(messages_, &window_, [&] { EditCell(row, column); });
    };
    connect(&grid_, &Grid::CellActivated, this, editCell);
    connect(&grid_, &Grid::TypingStarted, this, [this, editCell](QEvent* event) {
        editCell(grid_.Row(), grid_.Col());
        cellEditor_.StartTyping(event);
    });
    connect(&grid_, &Grid::CellMenuWanted, this, &TableEditing::ShowCellMenu);
    connect(&grid_, &Grid::DeletePressed, this,
            [this] { RunGuarded(messages_, &window_, [this] { Clear(); }); });
    connect(&grid_, &Grid::HeaderMenuWanted, &commands_, &TableCommands::ShowPopUp);
    connect(grid_.selectionModel(), &QItemSelectionModel::currentChanged, this, &TableEditing::UpdateActions);

    connect(&cellEditor_, &CellEditor::TextEdited, this,
            [this](const Grid* grid, int row, int column, const QString& text) {
                if (grid == &grid_)
                    status_.ShowLength(editor_, row, column, text.size());
            });
    connect(&cellEditor_, &CellEditor::GivenUp, this, &TableEditing::UpdateActions);

    connect(&commands_, &TableCommands::Starting, this, &TableEditing::Settle);
    connect(&commands_, &TableCommands::CellEditingWanted, this, editCell);
    connect(&commands_, &TableCommands::VariableChoiceWanted, this, &TableEditing::ChooseVariable);
    connect(&choice_, &VariableChoice::Chosen, this, [this](int variableRow) {
        RunGuarded(messages_, &window_, [&] {
            const auto leaveNoneOpen = qScopeGuard([this] { editor_.CloseColumn(); });
            editor_.ShowInOpenColumn(variableRow);
        });
        grid_.setFocus();
    });
    connect(&choice_, &VariableChoice::Cancelled, this, [this] {
        editor_.CloseColumn();
        GoTo(0, qMin(grid_.Col(), editor_.DataColumns()));
        grid_.setFocus();
    });
}

void TableEditing::ConnectFindBar() {
    connect(ui_.findBar, &FindBar::SearchWanted, this, &TableEditing::Find);
    connect(ui_.findBar, &FindBar::Closed, &grid_, qOverload<>(&QWidget::setFocus));
}

void TableEditing::ConnectHistory() {
    QUndoStack& history = editor_.History();
    connect(&history, &QUndoStack::indexChanged, this, &TableEditing::UpdateActions);
    connect(&history, &QUndoStack::cleanChanged, this, &TableEditing::UpdateActions);
}

QAction* TableEditing::AddAction(QMenu& menu, const char* name, const QString& text,
                                 const QKeySequence& shortcut, void (TableEditing::*run)()) {
    QAction* action = menu.addAction(text);
    action->setObjectName(QLatin1String(name));
    action->setShortcut(shortcut);
    connect(action, &QAction::triggered, this,
            [this, run] { RunGuarded(messages_, &window_, [&] { (this->*run)(); }); });
    return action;
}

void TableEditing::BuildMenu() {
    QMenu* edit = window_.menuBar()->addMenu(QStringLiteral("編集(&E)"));
    edit->setObjectName(QStringLiteral("VedtMnuEdit"));
    undo_ = AddAction(*edit, "VedtMnuEditUndo", {}, QKeySequence::Undo, &TableEditing::Undo);
    redo_ = AddAction(*edit, "VedtMnuEditRedo", {}, {}, &TableEditing::Redo);
    redo_->setShortcuts({Qt::CTRL | Qt::Key_Y, Qt::CTRL | Qt::SHIFT | Qt::Key_Z});
    edit->addSeparator();
    QAction* cut = AddAction(*edit, "VedtMnuEditCut", QStringLiteral("切り取り(&T)"), {}, &TableEditing::Cut);
    QAction* copy =
        AddAction(*edit, "VedtMnuEditCopy", QStringLiteral("コピー(&C)"), {}, &TableEditing::Copy);
    QAction* paste =
        AddAction(*edit, "VedtMnuEditPaste", QStringLiteral("貼り付け(&P)"), {}, &TableEditing::Paste);
    // The usual ones, key by key: what a desktop adds to them may be a key of the table's own.
    cut->setShortcuts({Qt::CTRL | Qt::Key_X, Qt::SHIFT | Qt::Key_Delete});
    copy->setShortcuts({Qt::CTRL | Qt::Key_C, Qt::CTRL | Qt::Key_Insert});
    paste->setShortcuts({Qt::CTRL | Qt::Key_V, Qt::SHIFT | Qt::Key_Insert});
    // The grid hears the key itself, so that it stays an editor's own while one is open.
    QAction* clear =
        AddAction(*edit, "VedtMnuEditClear", QStringLiteral("クリア(&L)\tDel"), {}, &TableEditing::Clear);
    KeepToGrid({cut, copy, paste});
    cellMenu_.addActions({cut, copy, paste, clear});
    cellMenu_.setObjectName(QStringLiteral("VedtCellPop"));
    edit->addSeparator();
    AddAction(*edit, "VedtMnuEditFind", QStringLiteral("検索(&F)..."), QKeySequence::Find,
              &TableEditing::OpenFind);
    AddAction(*edit, "VedtMnuEditFindNext", QStringLiteral("次を検索(&N)"), Qt::Key_F3,
              &TableEditing::FindNext);
    AddAction(*edit, "VedtMnuEditFindPrevious", QStringLiteral("前を検索(&V)"), Qt::SHIFT | Qt::Key_F3,
              &TableEditing::FindPrevious);
    QMenu* columns = window_.menuBar()->addMenu(QStringLiteral("列(&L)"));
    columns->setObjectName(QStringLiteral("VedtMnuCol"));
    QMenu* rows = window_.menuBar()->addMenu(QStringLiteral("行(&W)"));
    rows->setObjectName(QStringLiteral("VedtMnuRow"));
    commands_.AddTo(*columns, *rows);
    KeepToGrid(columns->actions() + rows->actions());
}

void TableEditing::KeepToGrid(const QList<QAction*>& actions) {
    for (QAction* action : actions)
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    grid_.addActions(actions);
}

void TableEditing::ShowCellMenu(const QPoint& position) {
    Settle();
    cellMenu_.popup(position);
}

void TableEditing::UpdateActions() {
    QUndoStack& history = editor_.History();
    undo_->setText(NamedStep(QStringLiteral("元に戻す(&U)"), history.undoText()));
    undo_->setEnabled(history.canUndo());
    redo_->setText(NamedStep(QStringLiteral("やり直し(&R)"), history.redoText()));
    redo_->setEnabled(history.canRedo());
    commands_.Update();
    status_.Show(editor_, grid_.Row(), grid_.Col());
}

void TableEditing::GoTo(int row, int column) {
    // A click elsewhere ended the entry, and what it hit must not move away under it.
    if (entering_)
        return;
    grid_.SetCurrentCell(row > 0 ? row : grid_.Row(), column > 0 ? column : grid_.Col());
}

void TableEditing::GoToTexts(const CellRange& range) {
    if (!entering_)
        grid_.SelectRange(range);
}

void TableEditing::Settle() {
    cellEditor_.Settle();
    choice_.Cancel();
}

void TableEditing::GiveUp() {
    cellEditor_.GiveUp();
    choice_.Cancel();
}

void TableEditing::EditCell(int row, int column) {
    if (column < 1)
        return;
    if (row > 0)
        grid_.SetCurrentCell(row, column);
    cellEditor_.StartCellEditing(grid_, row, column);
}

void TableEditing::ChooseVariable(int column) {
    std::vector<VariableChoice::Item> items;
    for (const TableVariable& variable : editor_.HiddenVariables())
        items.push_back(
            {variable.row == 0
                 ? variable.name + QStringLiteral(" (ｺﾒﾝﾄ)")
                 : QStringLiteral("%1 (V%2)").arg(variable.name, QString::number(variable.number)),
             variable.row});
    choice_.Offer(column, items);
}

void TableEditing::Enter(const Grid& grid, int row, int column, const QString& text) {
    const QScopedValueRollback entering(entering_, true);
    if (&grid == &grid_)
        // The file keeps no blanks around a value.
        editor_.EnterText(row, column, row > 0 ? TrimBlanks(text).toString() : text);
    else if (column == 1)
        editor_.EnterName(row, text);
}

void TableEditing::Undo() {
    Settle();
    editor_.History().undo();
}

void TableEditing::Redo() {
    Settle();
    editor_.History().redo();
}

void TableEditing::Copy() {
    Settle();
    if (grid_.Row() > 0)
        QGuiApplication::clipboard()->setText(ToTabText(CellBlock(editor_.Texts(grid_.SelectedRange()))));
}

void TableEditing::Cut() {
    Copy();
    Empty(QStringLiteral("切り取り"));
}

void TableEditing::Clear() {
    Settle();
    Empty(QStringLiteral("クリア"));
}

void TableEditing::Empty(const QString& step) {
    if (grid_.Row() == 0)
        return;
    const CellRange range = grid_.SelectedRange();
    const QStringList nothing(range.columns, QString());
    editor_.EnterTexts(range, std::vector<QStringList>(size_t(range.rows), nothing), step);
}

bool TableEditing::CheckTableGrid() {
    for (int row = 1; row < table_.cells.Rows(); ++row) {
        for (int column = 1; column < table_.cells.Cols(); ++column) {
            if (!table_.cells.TextView(row, column).isEmpty())
                continue;
            grid_.SetCurrentCell(row, column);
            messages_.Inform(&window_, QStringLiteral("値を入力してください。"));
            EditCell(row, column);
            return false;
        }
    }
    return true;
}

// True when there is none.
bool TableEditing::ShowFault(const std::optional<TableFault>& fault) {
    if (!fault)
        return true;
    GoTo(fault->row, fault->column);
    messages_.Inform(&window_, fault->Text());
    return false;
}

bool TableEditing::MayLeaveOut(const TableColumns& columns) {
    QStringList names;
    for (const int column : ColumnsWithoutVariable(columns))
        names << QStringLiteral("%1 列目 (%2)").arg(column).arg(table_.cells.Text(0, column));
    return names.isEmpty() ||
           messages_.Ask(&window_, QStringLiteral("変数のない列は保存されず、その後の表も次からは読めなくなり"
                                                  "ます: %1\n\nこのまま保存してよろしいですか")
                                       .arg(names.join(QStringLiteral("、"))));
}

bool TableEditing::MayCutNumbers(const TableColumns& columns) {
    QStringList names;
    for (const int column : ColumnsWithLongNumber(columns))
        names << QStringLiteral("%1 列目 (%2) V%3")
                     .arg(QString::number(column), columns[size_t(column - 1)]->name,
                          QString::number(columns[size_t(column - 1)]->number));
    return names.isEmpty() ||
           messages_.Ask(&window_, QStringLiteral("変数番号は下 4 桁だけが保存され、次からはほかの変数の列に"
                                                  "なります: %1\n\nこのまま保存してよろしいですか")
                                       .arg(names.join(QStringLiteral("、"))));
}

bool TableEditing::MayReplaceFile() {
    const QString path = DimensionTablePath(state_.SymbolFile);
    if (stamp_.IsOutdated() &&
        !messages_.Ask(&window_, path + QStringLiteral(" は、開いた後にほかで変更されています。"
                                                       "\n\n置き換えてよろしいですか")))
        return false;
    return table_.whole ||
           messages_.Ask(&window_, path + QStringLiteral(" には、読めなかった部分があります。"
                                                         "\n\n表示されている内容で置き換えてよろしいですか"));
}

bool TableEditing::CheckCharacters() {
    const TableColumns columns = ReadTableColumns(work_, editor_.DataColumns());
    return ShowFault(FindTableFault(columns, table_.cells, LookFor::ForeignCharacters));
}

bool TableEditing::Save() {
    Settle();
    const TableColumns columns = ReadTableColumns(work_, editor_.DataColumns());
    if (!CheckTableGrid() || !ShowFault(FindTableFault(columns, table_.cells)) || !MayLeaveOut(columns) ||
        !MayCutNumbers(columns))
        return false;
    if (!SaveDimensionTable(
            state_, work_, table_.cells, [this](const QString& text) { messages_.Inform(&window_, text); },
            [this] { return MayReplaceFile(); }))
        return false;
    editor_.History().setClean();
    stamp_ = TableFileStamp(DimensionTablePath(state_.SymbolFile));
    table_.whole = true;
    return true;
}

void TableEditing::Paste() {
    Settle();
    const CellBlock block = FromTabText(QGuiApplication::clipboard()->text());
    if (block.IsEmpty() || grid_.Row() == 0)
        return;
    const PasteTargets targets =
        TargetsOfPaste(block, grid_.SelectedRange(), editor_.DataRows(), editor_.DataColumns());
    if (!targets.Fit()) {
        messages_.Inform(&window_, QStringLiteral("貼り付ける範囲 (%1 行 × %2 列) が表からはみ出します。\n"
                                                  "ここに貼り付けられるのは %3 行 × %4 列までです。")
                                       .arg(targets.cells.rows)
                                       .arg(targets.cells.columns)
                                       .arg(targets.rowsThere)
                                       .arg(targets.columnsThere));
        return;
    }
    std::vector<QStringList> texts(size_t(targets.cells.rows));
    for (int row = 0; row < targets.cells.rows; ++row) {
        for (int column = 0; column < targets.cells.columns; ++column)
            texts[size_t(row)] << TrimBlanks(PastedText(block, row, column)).toString();
    }
    editor_.EnterTexts(targets.cells, texts, QStringLiteral("貼り付け"));
}

void TableEditing::OpenFind() {
    Settle();
    ui_.findBar->Open();
}

void TableEditing::FindNext() {
    Settle();
    ui_.findBar->Repeat(SearchDirection::Forward);
}

void TableEditing::FindPrevious() {
    Settle();
    ui_.findBar->Repeat(SearchDirection::Backward);
}

void TableEditing::Find(const QString& text, SearchDirection direction, SearchStart start) {
    const std::optional<FoundCell> found =
        FindInTable(table_.cells, FoldedForSearch(text), {grid_.Row(), grid_.Col()}, direction, start);
    if (found)
        grid_.SetCurrentCell(found->place.row, found->place.column);
    ui_.findBar->ShowOutcome(!found           ? FindBar::Outcome::NotFound
                             : found->wrapped ? FindBar::Outcome::FoundBeyondEnd
                                              : FindBar::Outcome::Found);
}

} // namespace velmo
