#include "variables/vlm_vedt.h"

#include "platform/files.h"
#include "platform/guarded.h"
#include "platform/progress_box.h"
#include "platform/slide_view.h"
#include "startup/hand_off_files.h"
#include "startup/settings_keys.h"
#include "variables/document_choice.h"
#include "variables/last_choice.h"
#include "variables/redraw_pause.h"
#include "variables/symbol_definition.h"
#include "variables/variable_answer.h"
#include "variables/work_database.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QScopeGuard>

namespace velmo {

namespace keys = settings_keys;

VLM_VEDT::VLM_VEDT(GlobalState& state, SettingsStore& settings, MessageBoxes& messages)
    : state_(state), settings_(settings), messages_(messages), work_(state.TempDir) {
    setObjectName(QStringLiteral("VLM_VEDT"));
    variables_.SetCols(2);
    ui_.SetUp(*this, variables_, table_.cells);
    ConnectControls();
}

// What edits the table goes before the grids, and these before the cells that they show.
VLM_VEDT::~VLM_VEDT() {
    delete editing_;
    delete takeCentralWidget();
}

void VLM_VEDT::ConnectControls() {
    cellEditor_ = new CellEditor(*ui_.Vedt_NowFGrid, *ui_.Vedt_FlexGrid);
    valueList_ = new ValueList(*ui_.Vedt_NowFGrid);
    const auto guarded = [this](auto action) {
        return
            [this, action](auto... arguments) { RunGuarded(messages_, this, [&] { action(arguments...); }); };
    };
    const auto chooseRow = guarded([this](int row, int) { ChooseTableRow(row); });
    connect(ui_.Vedt_FlexGrid, &Grid::CellClicked, this, chooseRow);
    connect(ui_.Vedt_FlexGrid, &Grid::CellActivated, this, guarded([this](int row, int) {
                if (!IsTableEditing())
                    ChooseTableRow(row);
            }));
    connect(ui_.Vedt_FlexGrid, &Grid::TypingStarted, this,
            guarded([this](QEvent* event) { SearchTable(event); }));
    connect(ui_.Vedt_NowFGrid, &Grid::CellClicked, this, guarded([this](int row, int column) {
                if (column == 1)
                    OpenValueEditor(row, ValueList::Unfold::Yes);
            }));
    connect(ui_.Vedt_NowFGrid, &Grid::CellActivated, this,
            guarded([this](int row, int) { ActivateVariable(row); }));
    connect(ui_.Vedt_NowFGrid, &Grid::TypingStarted, this,
            guarded([this](QEvent* event) { TypeOver(event); }));
    connect(ui_.Vedt_NowFGrid, &Grid::EscapePressed, valueList_, &ValueList::Close);
    connect(cellEditor_, &CellEditor::TextEntered, this,
            guarded([this](Grid* grid, int row, int column, const QString& text) {
                EnterText(*grid, row, column, text);
            }));
    connect(valueList_, &ValueList::TextEntered, this,
            guarded([this](int row, int column, const QString& text) {
                EnterText(*ui_.Vedt_NowFGrid, row, column, text);
            }));
    connect(valueList_, &ValueList::ValueChosen, this,
            guarded([this](int row, const QString& value) { ApplyDropDown(row, value); }));
    connect(valueList_, &ValueList::ValueNotFound, this, [this](const QString& typed) {
        ui_.hint->setText(
            QStringLiteral("「%1」は寸法表にありません。表にある値だけを選べます。").arg(typed));
    });
    const auto goToRow = guarded([this](int row) { OpenValueEditor(row, ValueList::Unfold::No); });
    connect(cellEditor_, &CellEditor::LeftForRow, this, goToRow);
    connect(valueList_, &ValueList::LeftForRow, this, goToRow);
    connect(ui_.Vedt_OKBtn, &QPushButton::clicked, this, guarded([this](bool) { Confirm(); }));
    connect(ui_.VEdt_CanBtn, &QPushButton::clicked, this, guarded([this](bool) { Cancel(); }));
    connect(ui_.Vedt_TreeBtn, &QPushButton::clicked, this, guarded([this](bool) { BackToTree(); }));
    connect(ui_.TB_POINT, &QAction::triggered, this, guarded([this](bool) { Measure(); }));
    connect(ui_.VedtMnuFileOpen, &QAction::triggered, this,
            guarded([this](bool) { ChooseDocument(QStringLiteral("PDFファイル選択")); }));
    connect(ui_.VedtMnuFileWrite, &QAction::triggered, this,
            guarded([this](bool) { ChooseDocument(QStringLiteral("PDFファイル保存")); }));
    connect(ui_.VedtMnuFileCan, &QAction::triggered, ui_.VEdt_CanBtn, &QPushButton::click);
}

void VLM_VEDT::Load() {
    EndProgramOnError([this] {
        ReadSymbol();
        ShowSymbol();
        RestoreChoice();
        if (IsTableEditing() && !table_.cells.IsMessage())
            StartTableEditing();
    });
}

void VLM_VEDT::ReadSymbol() {
    setWindowTitle(IsTableEditing() ? QStringLiteral("Velmo テーブル編集")
                                    : QStringLiteral("Velmo 変数入力"));
    variables_.SetText(0, 0, IsTableEditing() ? u"変 数 名" : u"変数名(別名)");
    variables_.SetText(0, 1, IsTableEditing() ? u"名  前" : u"現 在 の 値 ");
    const std::int16_t count = ReadSymbolDefinition(
        state_, work_, variables_, [this](const QString& text) { messages_.Inform(this, text); });

    if (IsTableEditing())
        stamp_.emplace(DimensionTablePath(state_.SymbolFile));
    ProgressBox progress(this, QStringLiteral("寸法表を読み込んでいます..."), ProgressBox::Cancel::No);
    table_ = LoadDimensionTable(state_, work_, count, variables_,
                                [&progress](qint64 done, qint64 size) { progress.Report(done, size); });
}

void VLM_VEDT::ShowSymbol() {
    ui_.ShowCells();
    ui_.TB_POINT->setEnabled(!IsTableEditing());
    ui_.Vedt_Slide->ShowSlide(state_.SymbolFile.chopped(4) + QStringLiteral(".SLD"));
    (table_.rows > 0 ? ui_.Vedt_FlexGrid : ui_.Vedt_NowFGrid)->setFocus();
    ShowHint();
}

void VLM_VEDT::StartTableEditing() {
    ui_.Vedt_FlexGrid->MakeEditable();
    editing_ =
        new TableEditing(*this, ui_, *cellEditor_, table_, *stamp_, variables_, state_, work_, messages_);
}

void VLM_VEDT::ShowHint() {
    if (IsTableEditing() && !table_.cells.IsMessage())
        ui_.hint->setText(QStringLiteral("列の見出しか行番号を右クリックすると、列や行を変えられます。"));
    else if (variables_.IsMessage() || IsTableEditing())
        ui_.hint->clear();
    else if (table_.rows > 0)
        ui_.hint->setText(
            QStringLiteral("寸法表の行を選ぶと値が入ります。値は「現在の値」をクリックして変えられます。"));
    else
        ui_.hint->setText(QStringLiteral("「現在の値」をクリックして値を入れてください。"));
}

void VLM_VEDT::RestoreChoice() {
    const LastChoice choice = RestoreLastChoice(state_, settings_, variables_);
    ui_.Vedt_NowFGrid->TextsChanged();
    if (state_.RunMode == run_mode::ReturnFromMeasure) {
        settings_.Save(keys::VlmMode, run_mode::VariableInput);
        settings_.Flush();
        state_.RunMode = run_mode::VariableInput;
    }
    ui_.Vedt_NowFGrid->SetCurrentCell(choice.variableRow, 1);
    const bool stillThere = choice.tableRow >= 1 && choice.tableRow <= table_.rows;
    state_.TableLast = stillThere ? choice.tableRow : std::int16_t(1);
    ui_.Vedt_FlexGrid->SetHighlight(IsTableEditing() ? Grid::Highlight::Cell : Grid::Highlight::Row);
    ShowChosenRow();
}

ValueGrids VLM_VEDT::Values() {
    return {work_, table_.cells, state_.TableLast, variables_};
}

void VLM_VEDT::ShowChosenRow() {
    if (table_.rows == 0)
        return;
    ui_.Vedt_FlexGrid->SetCurrentCell(state_.TableLast, 1);
    ui_.Vedt_FlexGrid->MarkRow(IsTableEditing() ? 0 : state_.TableLast);
}

void VLM_VEDT::ChooseTableRow(int row) {
    if (table_.rows == 0 || variables_.IsMessage())
        return;
    SettleEditors();
    if (IsTableEditing()) {
        state_.TableLast = std::int16_t(row);
        return;
    }
    const RedrawPause pause{ui_.Vedt_FlexGrid, ui_.Vedt_NowFGrid};
    // A row that cannot be taken over leaves the one chosen before, which the click or key has left already.
    const auto showChosen = qScopeGuard([this] { ShowChosenRow(); });
    ValueGrids grids = Values();
    grids.tableRow = row;
    CopyTableRow(grids);
    ui_.Vedt_NowFGrid->TextsChanged();
    state_.TableLast = std::int16_t(row);
    ui_.hint->setText(
        QStringLiteral("寸法表の %1 行目 (%2) の値を入れました。").arg(row).arg(table_.cells.Text(row, 1)));
}

// False when what was being edited could not be entered.
bool VLM_VEDT::SettleEditors() {
    entryFailed_ = false;
    if (editing_)
        editing_->Settle();
    cellEditor_->Settle();
    valueList_->Close();
    return !entryFailed_;
}

void VLM_VEDT::OpenValueEditor(int row, ValueList::Unfold unfold) {
    if (row < 1 || row >= variables_.Rows())
        return;
    SettleEditors();
    ShowHint();
    ui_.Vedt_NowFGrid->SetCurrentCell(row, 1);
    // What run mode 3 shows there are names.
    const QStringList values = IsTableEditing() ? QStringList() : AllowedValues(Values(), row);
    if (values.isEmpty())
        cellEditor_->StartCellEditing(*ui_.Vedt_NowFGrid, row, 1);
    else
        valueList_->Offer(values, unfold);
}

void VLM_VEDT::ActivateVariable(int row) {
    if (cellEditor_->IsEditing())
        cellEditor_->Enter();
    else if (valueList_->IsOffering())
        valueList_->Enter();
    else
        OpenValueEditor(row, ValueList::Unfold::No);
}

void VLM_VEDT::TypeOver(QEvent* event) {
    if (!cellEditor_->IsEditing() && !valueList_->IsOffering())
        OpenValueEditor(ui_.Vedt_NowFGrid->Row(), ValueList::Unfold::No);
    cellEditor_->StartTyping(event);
    valueList_->StartTyping(event);
}

// Goes to the row whose first value begins with what was typed.
void VLM_VEDT::SearchTable(QEvent* event) {
    if (IsTableEditing() || event->type() != QEvent::KeyPress)
        return;
    ui_.Vedt_FlexGrid->SetCurrentCell(ui_.Vedt_FlexGrid->Row(), 1);
    ui_.Vedt_FlexGrid->keyboardSearch(static_cast<QKeyEvent*>(event)->text());
}

void VLM_VEDT::ApplyDropDown(int row, const QString& value) {
    valueList_->Close();
    ApplyAllowedValue(Values(), row, value);
    ui_.Vedt_NowFGrid->TextsChanged();
}

void VLM_VEDT::EnterText(const Grid& grid, int row, int column, const QString& text) {
    entryFailed_ = true;
    if (editing_)
        editing_->Enter(grid, row, column, text);
    else
        EnterValue(row, column, text);
    entryFailed_ = false;
}

void VLM_VEDT::EnterValue(int row, int column, const QString& text) {
    if (variables_.Text(row, column) == text)
        return;
    work_.RequireOwn();
    variables_.SetText(row, column, text);
    ui_.Vedt_NowFGrid->TextsChanged();
}

bool VLM_VEDT::CheckVariableGrid() {
    const int row = FirstRowWithoutValue(variables_);
    if (row == 0)
        return true;
    ui_.Vedt_NowFGrid->SetCurrentCell(row, 1);
    messages_.Inform(this, QStringLiteral("値を入力してください。"));
    cellEditor_->StartCellEditing(*ui_.Vedt_NowFGrid, row, 1);
    return false;
}

bool VLM_VEDT::CheckCharacters() {
    const std::optional<ForeignCharacter> found = FindForeignCharacter(state_, variables_);
    if (!found)
        return true;
    ui_.Vedt_NowFGrid->SetCurrentCell(found->row, found->column);
    messages_.Inform(
        this, QStringLiteral("文字「%1」は CAD に渡せません (コードページ 932 にない文字です)。\n\n項目: %2")
                  .arg(found->character, found->field));
    if (found->row > 0 && found->column == 1)
        cellEditor_->StartCellEditing(*ui_.Vedt_NowFGrid, found->row, 1);
    return false;
}

bool VLM_VEDT::MayAnswer() {
    if (!SettleEditors())
        return false;
    const bool tableChanged = editing_ && editing_->IsChanged();
    return CheckVariableGrid() && CheckCharacters() && (!tableChanged || editing_->CheckCharacters());
}

// The answer files stay as they were when the settings, with all that was saved in them before, find no room.
void VLM_VEDT::GiveAnswer() {
    SaveCurrentValues(state_, settings_, variables_);
    settings_.FlushAround([this] { EndProgramOnError([this] { WriteAnswer(state_, variables_); }); });
}

void VLM_VEDT::Leave() {
    leaving_ = true;
    close();
}

void VLM_VEDT::Confirm() {
    if (!MayAnswer())
        return;
    const bool savesTable = editing_ && editing_->IsChanged();
    if (!savesTable)
        SaveLastChoice(state_, settings_);
    GiveAnswer();
    if (savesTable) {
        if (!editing_->Save())
            return;
        SaveLastChoice(state_, settings_);
        settings_.Flush();
    }
    // Everything is on disk before the window says that a selection was handed back.
    state_.Confirmed = true;
    work_.DeleteIfOwn();
    Leave();
}

void VLM_VEDT::Measure() {
    if (!MayAnswer())
        return;
    settings_.Save(keys::VlmMode, run_mode::ReturnFromMeasure);
    settings_.Save(keys::DistNo, qMax(1, ui_.Vedt_NowFGrid->Row()));
    SaveLastChoice(state_, settings_);
    GiveAnswer();
    state_.Confirmed = true;
    Leave();
}

void VLM_VEDT::Cancel() {
    EndProgramOnError([this] { WriteNoSelection(state_.TempDir); });
    state_.Confirmed = false;
    Q_EMIT Cancelled();
    work_.DeleteIfOwn();
    Leave();
}

void VLM_VEDT::BackToTree() {
    state_.RunMode = run_mode::VariableInput;
    Leave();
}

// The run ends with a document; neither the variables nor the table are handed over or kept.
void VLM_VEDT::ChooseDocument(const QString& caption) {
    if (!SettleEditors())
        return;
    const QString document = PickDocument(*this, caption, state_, messages_);
    if (document.isEmpty() || !MayLoseChanges())
        return;
    state_.PickedPdf = document;
    state_.RunMode = run_mode::Document;
    Leave();
}

// Asks where the table was changed.
bool VLM_VEDT::MayLoseChanges() {
    return !editing_ || !editing_->IsChanged() ||
           messages_.Ask(this,
                         QStringLiteral("寸法表の変更は保存されていません。破棄して閉じてよろしいですか"));
}

// The close box says nothing about changes to the table.
void VLM_VEDT::closeEvent(QCloseEvent* event) {
    if (!SettleEditors()) {
        event->ignore();
        return;
    }
    if (!leaving_ && !MayLoseChanges()) {
        event->ignore();
        return;
    }
    ModalWindow::closeEvent(event);
}

// Enter that no control has taken accepts the window.
void VLM_VEDT::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        ui_.Vedt_OKBtn->click();
    else
        ModalWindow::keyPressEvent(event);
}

} // namespace velmo
