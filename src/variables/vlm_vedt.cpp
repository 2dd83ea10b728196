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
#include <QScopedValueRollback>

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
    connect(ui_.Vedt_FlexGrid, &Grid::CellActivated, this,
            guarded([this](int row, int) { ActivateTableRow(row); }));
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
    connect(cellEditor_, &CellEditor::LeftForRow, this, guarded([this](int row) {
                if (!entryFailed_)
                    OpenValueEditor(row, ValueList::Unfold::No);
            }));
    connect(valueList_, &ValueList::LeftForRow, this,
            guarded([this](int row) { OpenValueEditor(row, ValueList::Unfold::No); }));
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
        state_.PickedPdf.clear();
        const bool measured = state_.RunMode == run_mode::ReturnFromMeasure;
        // A measurement is answered once, whatever becomes of the answer.
        const auto answered = qScopeGuard([&] {
            if (measured)
                state_.RunMode = run_mode::VariableInput;
        });
        if (measured) {
            settings_.Save(keys::VlmMode, run_mode::VariableInput);
            settings_.Flush();
        }
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
    else if (!table_.whole)
        ui_.hint->setText(QStringLiteral("寸法表のファイルに読めない部分があります: ") +
                          DimensionTablePath(state_.SymbolFile));
    else if (table_.rows > 0)
        ui_.hint->setText(
            QStringLiteral("寸法表の行を選ぶと値が入ります。値は「現在の値」をクリックして変えられます。"));
    else
        ui_.hint->setText(QStringLiteral("「現在の値」をクリックして値を入れてください。"));
}

void VLM_VEDT::RestoreChoice() {
    const LastChoice choice = RestoreLastChoice(state_, settings_, variables_);
    ui_.Vedt_NowFGrid->TextsChanged();
    rowTaken_ = choice.valuesRestored;
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
    if (variables_.IsMessage())
        ShowChosenRow();
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
    rowTaken_ = true;
    ui_.hint->setText(
        QStringLiteral("寸法表の %1 行目 (%2) の値を入れました。").arg(row).arg(table_.cells.Text(row, 1)));
}

// Enter takes a row over, and goes on to the values that the chosen one gave: it drops none that were typed
// over them.
void VLM_VEDT::ActivateTableRow(int row) {
    if (IsTableEditing())
        return;
    if (rowTaken_ && row == state_.TableLast)
        ui_.Vedt_NowFGrid->setFocus();
    else
        ChooseTableRow(row);
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

void VLM_VEDT::GiveUpEditors() {
    if (editing_)
        editing_->GiveUp();
    cellEditor_->GiveUp();
    valueList_->Close();
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
    return SettleEditors() && CheckVariableGrid() && CheckCharacters();
}

// The answer files stay as they were when the settings, with all that was saved in them before, find no room.
void VLM_VEDT::GiveAnswer() {
    SaveCurrentValues(state_, settings_, variables_);
    settings_.FlushAround([this] { EndProgramOnError([this] { WriteAnswer(state_, variables_); }); });
}

bool VLM_VEDT::Leave() {
    const QScopedValueRollback leaving(leaving_, true);
    return close();
}

void VLM_VEDT::Confirm() {
    if (!MayAnswer())
        return;
    const bool savesTable = editing_ && editing_->IsChanged();
    if (savesTable && !editing_->CheckCharacters())
        return;
    // What was to be measured was another answer's.
    if (state_.MeasureAsked)
        settings_.Save(keys::VlmMode, state_.RunMode);
    if (!savesTable)
        SaveLastChoice(state_, settings_);
    GiveAnswer();
    state_.MeasureAsked = false;
    if (savesTable) {
        if (!editing_->Save())
            return;
        SaveLastChoice(state_, settings_);
        settings_.Flush();
    }
    // Everything is on disk before the window says that a selection was handed back.
    state_.Confirmed = true;
    Leave();
    work_.DeleteIfOwn();
}

// The table is not saved.
void VLM_VEDT::Measure() {
    if (!MayAnswer() || !MayLoseChanges())
        return;
    settings_.Save(keys::VlmMode, run_mode::ReturnFromMeasure);
    settings_.Save(keys::DistNo, variables_.IsMessage() ? 0 : qMax(1, ui_.Vedt_NowFGrid->Row()));
    SaveLastChoice(state_, settings_);
    GiveAnswer();
    state_.MeasureAsked = true;
    state_.Confirmed = true;
    Leave();
}

// What is being typed is given up with all the rest.
void VLM_VEDT::Cancel() {
    GiveUpEditors();
    if (!MayLoseChanges())
        return;
    EndProgramOnError([this] { WriteNoSelection(state_.TempDir); });
    state_.Confirmed = false;
    Q_EMIT Cancelled();
    Leave();
    work_.DeleteIfOwn();
}

void VLM_VEDT::BackToTree() {
    GiveUpEditors();
    if (MayLoseChanges() && Leave())
        state_.RunMode = run_mode::VariableInput;
}

// The run ends with a document; neither the variables nor the table are handed over or kept.
void VLM_VEDT::ChooseDocument(const QString& caption) {
    if (!SettleEditors())
        return;
    const QString document = PickDocument(*this, caption, state_, messages_);
    if (document.isEmpty() || !MayLoseChanges() || !Leave())
        return;
    state_.PickedPdf = document;
    state_.RunMode = run_mode::Document;
}

// Asks where the table was changed.
bool VLM_VEDT::MayLoseChanges() {
    return !editing_ || !editing_->IsChanged() ||
           messages_.Ask(this,
                         QStringLiteral("寸法表の変更は保存されていません。破棄して閉じてよろしいですか"));
}

// The close box, unlike the buttons, may be pressed with an editor open by mistake: what is being typed
// counts.
void VLM_VEDT::closeEvent(QCloseEvent* event) {
    if (leaving_ || (SettleEditors() && MayLoseChanges()))
        ModalWindow::closeEvent(event);
    else
        event->ignore();
}

// Enter that no control has taken accepts the window.
void VLM_VEDT::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        ui_.Vedt_OKBtn->click();
    else
        ModalWindow::keyPressEvent(event);
}

} // namespace velmo
