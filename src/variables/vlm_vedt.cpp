#include "variables/vlm_vedt.h"

#include "platform/files.h"
#include "platform/guarded.h"
#include "platform/slide_view.h"
#include "platform/window_places.h"
#include "startup/hand_off_files.h"
#include "startup/settings_keys.h"
#include "variables/last_choice.h"
#include "variables/symbol_definition.h"
#include "variables/variable_answer.h"
#include "variables/work_database.h"

#include <QAction>
#include <QBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QProgressDialog>
#include <QSplitter>
#include <QStatusBar>

// A static library's resources are not registered by themselves; outside any namespace, as the macro demands.
static void RegisterVariableIcons() {
    Q_INIT_RESOURCE(variables_icons);
}

namespace velmo {

namespace keys = settings_keys;

namespace {

// Twips.
constexpr int VariableGridLeft = 120;
constexpr int VariableGridTop = 600;
constexpr int VariableGridWidth = 3860;
constexpr int VariableGridHeight = 2775;
constexpr int VariableColumnWidth = 1750;
constexpr int MessageWidth = 3600;
constexpr int WindowWidth = 12600;
constexpr int WindowHeight = 8700;

// Pixels.
constexpr int Gap = 8;
constexpr int ButtonWidth = 100;

// Shown while a large table is read, from the moment at which the user begins to wonder.
constexpr int ProgressDelayMilliseconds = 500;

// Stops the redrawing of widgets while many of their cells change.
class RedrawPause {
public:
    explicit RedrawPause(std::initializer_list<QWidget*> widgets) : widgets_(widgets) {
        for (QWidget* widget : widgets_)
            widget->setUpdatesEnabled(false);
    }
    ~RedrawPause() {
        for (QWidget* widget : widgets_)
            widget->setUpdatesEnabled(true);
    }
    RedrawPause(const RedrawPause&) = delete;
    RedrawPause& operator=(const RedrawPause&) = delete;

private:
    QList<QWidget*> widgets_;
};

// What the program does not survive.
template <typename Action>
void EndProgramOnError(Action&& action) {
    try {
        std::forward<Action>(action)();
    } catch (RuntimeError& error) {
        throw error.EndsProgram();
    }
}

} // namespace

VLM_VEDT::VLM_VEDT(GlobalState& state, SettingsStore& settings, MessageBoxes& messages)
    : state_(state), settings_(settings), messages_(messages) {
    setObjectName(QStringLiteral("VLM_VEDT"));
    variables_.SetCols(2);
    BuildControls();
    ConnectControls();
}

void VLM_VEDT::BuildControls() {
    auto* panes = new QSplitter(Qt::Vertical);
    panes->setChildrenCollapsible(false);
    panes->addWidget(BuildVariablePane());
    panes->addWidget(BuildTablePane());
    panes->setStretchFactor(0, 0);
    panes->setStretchFactor(1, 1);
    setCentralWidget(panes);

    hint_ = new QLabel;
    hint_->setTextFormat(Qt::PlainText);
    hint_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    statusBar()->addWidget(hint_, 1);

    resize(TwipsToPixels(WindowWidth), TwipsToPixels(WindowHeight));
    const int variablePane = TwipsToPixels(VariableGridTop + VariableGridHeight) + Gap;
    panes->setSizes({variablePane, height() - variablePane});
}

// The tool bar, the variable grid and the symbol's picture.
QWidget* VLM_VEDT::BuildVariablePane() {
    RegisterVariableIcons();
    Vedt_Toolbar_ = new QToolBar;
    Vedt_Toolbar_->setObjectName(QStringLiteral("Vedt_Toolbar"));
    Vedt_Toolbar_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    Vedt_Toolbar_->setFixedHeight(TwipsToPixels(VariableGridTop));
    measure_ = Vedt_Toolbar_->addAction(QIcon(QStringLiteral(":/variables/icons/measure.svg")),
                                        QStringLiteral("測定"));
    measure_->setObjectName(QStringLiteral("TB_POINT"));
    measure_->setToolTip(QStringLiteral("選択中の変数の値を図面上で測ります"));

    Vedt_NowFGrid_ = new Grid(variables_);
    Vedt_NowFGrid_->setObjectName(QStringLiteral("Vedt_NowFGrid"));
    Vedt_NowFGrid_->setAccessibleName(QStringLiteral("変数と現在の値"));
    Vedt_NowFGrid_->setFixedWidth(TwipsToPixels(VariableGridWidth));
    slide_ = new SlideView;
    slide_->setObjectName(QStringLiteral("Vedt_Slide"));
    slide_->setAccessibleName(QStringLiteral("シンボルのスライド"));
    slide_->SetEmptyText(QStringLiteral("このシンボルにスライドはありません"));

    auto* pane = new QWidget;
    auto* side = new QHBoxLayout;
    side->setContentsMargins(TwipsToPixels(VariableGridLeft), 0, Gap, Gap);
    side->setSpacing(Gap);
    side->addWidget(Vedt_NowFGrid_);
    side->addWidget(slide_, 1);
    auto* all = new QVBoxLayout(pane);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(0);
    all->addWidget(Vedt_Toolbar_);
    all->addLayout(side, 1);
    return pane;
}

// The table grid and the buttons that end the window.
QWidget* VLM_VEDT::BuildTablePane() {
    Vedt_FlexGrid_ = new Grid(table_.cells);
    Vedt_FlexGrid_->setObjectName(QStringLiteral("Vedt_FlexGrid"));
    Vedt_FlexGrid_->setAccessibleName(QStringLiteral("寸法表"));

    const auto button = [](const char* name, const QString& text) {
        auto* made = new QPushButton(text);
        made->setObjectName(QLatin1String(name));
        made->setAutoDefault(true);
        made->setMinimumWidth(ButtonWidth);
        return made;
    };
    Vedt_TreeBtn_ = button("Vedt_TreeBtn", QStringLiteral("ツリーへ戻る"));
    Vedt_OKBtn_ = button("Vedt_OKBtn", QStringLiteral("OK"));
    VEdt_CanBtn_ = button("VEdt_CanBtn", QStringLiteral("キャンセル"));
    Vedt_OKBtn_->setDefault(true);

    auto* pane = new QWidget;
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(Gap);
    buttons->addWidget(Vedt_TreeBtn_);
    buttons->addStretch(1);
    buttons->addWidget(Vedt_OKBtn_);
    buttons->addWidget(VEdt_CanBtn_);
    auto* all = new QVBoxLayout(pane);
    all->setContentsMargins(TwipsToPixels(VariableGridLeft), 0, Gap, 0);
    all->setSpacing(Gap);
    all->addWidget(Vedt_FlexGrid_, 1);
    all->addLayout(buttons);
    return pane;
}

void VLM_VEDT::ConnectControls() {
    editors_ = new ValueEditors(*Vedt_NowFGrid_);
    const auto guarded = [this](auto action) {
        return
            [this, action](auto... arguments) { RunGuarded(messages_, this, [&] { action(arguments...); }); };
    };
    const auto chooseRow = guarded([this](int row, int) { ChooseTableRow(row); });
    connect(Vedt_FlexGrid_, &Grid::CellClicked, this, chooseRow);
    connect(Vedt_FlexGrid_, &Grid::CellActivated, this, chooseRow);
    connect(Vedt_NowFGrid_, &Grid::CellClicked, this, guarded([this](int row, int column) {
                if (column == 1)
                    OpenValueEditor(row, ValueEditors::Unfold::Yes);
            }));
    connect(Vedt_NowFGrid_, &Grid::CellActivated, this,
            guarded([this](int row, int) { ActivateVariable(row); }));
    connect(Vedt_NowFGrid_, &Grid::TypingStarted, this, guarded([this](QEvent* event) { TypeOver(event); }));
    connect(Vedt_NowFGrid_, &Grid::EscapePressed, editors_, &ValueEditors::CloseList);
    connect(editors_, &ValueEditors::TextEntered, this,
            guarded([this](int row, int column, const QString& text) { EnterText(row, column, text); }));
    connect(editors_, &ValueEditors::ValueChosen, this,
            guarded([this](int row, const QString& value) { ApplyDropDown(row, value); }));
    connect(editors_, &ValueEditors::GoOn, this,
            guarded([this](int row) { OpenValueEditor(row, ValueEditors::Unfold::No); }));
    connect(Vedt_OKBtn_, &QPushButton::clicked, this, guarded([this](bool) { Confirm(); }));
    connect(VEdt_CanBtn_, &QPushButton::clicked, this, guarded([this](bool) { Cancel(); }));
    connect(Vedt_TreeBtn_, &QPushButton::clicked, this, guarded([this](bool) { BackToTree(); }));
    connect(measure_, &QAction::triggered, this, guarded([this](bool) { Measure(); }));
}

void VLM_VEDT::Load() {
    EndProgramOnError([this] {
        ReadSymbol();
        ShowSymbol();
        RestoreChoice();
    });
}

void VLM_VEDT::ReadSymbol() {
    setWindowTitle(IsTableEditing() ? QStringLiteral("Velmo テーブル編集")
                                    : QStringLiteral("Velmo 変数入力"));
    variables_.SetText(0, 0, IsTableEditing() ? u"変 数 名" : u"変数名(別名)");
    variables_.SetText(0, 1, IsTableEditing() ? u"名  前" : u"現 在 の 値 ");
    const std::int16_t count = ReadSymbolDefinition(
        state_, variables_, [this](const QString& text) { messages_.Inform(this, text); });

    QProgressDialog progress(QStringLiteral("寸法表を読み込んでいます..."), QString(), 0, 100, this);
    progress.setWindowTitle(MessageTitle);
    progress.setWindowModality(Qt::ApplicationModal);
    progress.setMinimumDuration(ProgressDelayMilliseconds);
    table_ = LoadDimensionTable(state_, count, variables_, [&progress](qint64 done, qint64 size) {
        progress.setValue(size > 0 ? int(done * 100 / size) : 0);
    });
}

void VLM_VEDT::ShowSymbol() {
    Vedt_NowFGrid_->CellsReplaced();
    Vedt_FlexGrid_->CellsReplaced();
    if (variables_.IsMessage()) {
        Vedt_NowFGrid_->SetColWidth(0, MessageWidth);
    } else {
        Vedt_NowFGrid_->SetColWidth(0, VariableColumnWidth);
        Vedt_NowFGrid_->SetColWidth(1, VariableColumnWidth);
    }
    if (table_.cells.IsMessage())
        Vedt_FlexGrid_->SetColWidth(0, MessageWidth);
    else
        Vedt_FlexGrid_->FitColumns();
    slide_->ShowSlide(state_.SymbolFile.chopped(4) + QStringLiteral(".SLD"));
    (table_.rows > 0 ? Vedt_FlexGrid_ : Vedt_NowFGrid_)->setFocus();
    ShowHint();
}

void VLM_VEDT::ShowHint() {
    if (variables_.IsMessage() || IsTableEditing())
        hint_->clear();
    else if (table_.rows > 0)
        hint_->setText(
            QStringLiteral("寸法表の行を選ぶと値が入ります。値は「現在の値」をクリックして変えられます。"));
    else
        hint_->setText(QStringLiteral("「現在の値」をクリックして値を入れてください。"));
}

void VLM_VEDT::RestoreChoice() {
    const LastChoice choice = RestoreLastChoice(state_, settings_, variables_);
    Vedt_NowFGrid_->TextsChanged();
    if (state_.RunMode == run_mode::ReturnFromMeasure) {
        settings_.Save(keys::VlmMode, run_mode::VariableInput);
        settings_.Flush();
        state_.RunMode = run_mode::VariableInput;
    }
    Vedt_NowFGrid_->SetCurrentCell(choice.variableRow, 1);
    const bool stillThere = choice.tableRow >= 1 && choice.tableRow <= table_.rows;
    state_.TableLast = stillThere ? choice.tableRow : std::int16_t(1);
    Vedt_FlexGrid_->SetHighlight(IsTableEditing() ? Grid::Highlight::Cell : Grid::Highlight::Row);
    ShowChosenRow();
}

ValueGrids VLM_VEDT::Values() {
    return {state_.TempDir, table_.cells, state_.TableLast, variables_};
}

void VLM_VEDT::ShowChosenRow() {
    if (table_.rows == 0)
        return;
    Vedt_FlexGrid_->SetCurrentCell(state_.TableLast, 1);
    Vedt_FlexGrid_->MarkRow(IsTableEditing() ? 0 : state_.TableLast);
}

void VLM_VEDT::ChooseTableRow(int row) {
    if (table_.rows == 0 || variables_.IsMessage())
        return;
    editors_->Settle();
    const RedrawPause pause{Vedt_FlexGrid_, Vedt_NowFGrid_};
    state_.TableLast = std::int16_t(row);
    ShowChosenRow();
    if (IsTableEditing())
        return;
    CopyTableRow(Values());
    Vedt_NowFGrid_->TextsChanged();
    hint_->setText(
        QStringLiteral("寸法表の %1 行目 (%2) の値を入れました。").arg(row).arg(table_.cells.Text(row, 1)));
}

void VLM_VEDT::OpenValueEditor(int row, ValueEditors::Unfold unfold) {
    if (IsTableEditing() || row < 1 || row >= variables_.Rows())
        return;
    editors_->Settle();
    Vedt_NowFGrid_->SetCurrentCell(row, 1);
    const QStringList values = AllowedValues(Values(), row);
    if (values.isEmpty())
        editors_->StartCellEditing();
    else
        editors_->OfferValues(values, unfold);
}

void VLM_VEDT::ActivateVariable(int row) {
    if (editors_->IsEditing() || editors_->IsOffering())
        editors_->Enter();
    else
        OpenValueEditor(row, ValueEditors::Unfold::No);
}

void VLM_VEDT::TypeOver(QEvent* event) {
    if (!editors_->IsEditing() && !editors_->IsOffering())
        OpenValueEditor(Vedt_NowFGrid_->Row(), ValueEditors::Unfold::No);
    editors_->StartTyping(event);
}

void VLM_VEDT::ApplyDropDown(int row, const QString& value) {
    ApplyAllowedValue(Values(), row, value);
    editors_->CloseList();
    Vedt_NowFGrid_->TextsChanged();
}

void VLM_VEDT::EnterText(int row, int column, const QString& text) {
    variables_.SetText(row, column, text);
    Vedt_NowFGrid_->TextsChanged();
}

bool VLM_VEDT::CheckVariableGrid() {
    const int row = FirstRowWithoutValue(variables_);
    if (row == 0)
        return true;
    Vedt_NowFGrid_->SetCurrentCell(row, 1);
    messages_.Inform(this, QStringLiteral("値を入力してください。"));
    editors_->StartCellEditing();
    return false;
}

bool VLM_VEDT::CheckCharacters() {
    const std::optional<ForeignCharacter> found = FindForeignCharacter(state_, variables_);
    if (!found)
        return true;
    Vedt_NowFGrid_->SetCurrentCell(found->row, found->column);
    messages_.Inform(
        this, QStringLiteral("文字「%1」は CAD に渡せません (コードページ 932 にない文字です)。\n\n項目: %2")
                  .arg(found->character, found->field));
    if (found->row > 0 && found->column == 1)
        editors_->StartCellEditing();
    return false;
}

bool VLM_VEDT::MayAnswer() {
    editors_->Settle();
    return CheckVariableGrid() && CheckCharacters();
}

// Everything is on disk before the window says that a selection was handed back.
void VLM_VEDT::FinishAnswer() {
    SaveLastChoice(state_, settings_, variables_);
    settings_.Flush();
    state_.Confirmed = true;
}

void VLM_VEDT::Confirm() {
    if (!MayAnswer())
        return;
    EndProgramOnError([this] { WriteAnswer(state_, variables_); });
    FinishAnswer();
    DeleteFileIfAny(WorkDatabasePath(state_.TempDir));
    close();
}

void VLM_VEDT::Measure() {
    if (!MayAnswer())
        return;
    EndProgramOnError([this] { WriteAnswer(state_, variables_); });
    settings_.Save(keys::VlmMode, run_mode::ReturnFromMeasure);
    settings_.Save(keys::DistNo, qMax(1, Vedt_NowFGrid_->Row()));
    FinishAnswer();
    close();
}

void VLM_VEDT::Cancel() {
    EndProgramOnError([this] { WriteNoSelection(state_.TempDir); });
    state_.Confirmed = false;
    DeleteFileIfAny(WorkDatabasePath(state_.TempDir));
    Q_EMIT Cancelled();
    close();
}

void VLM_VEDT::BackToTree() {
    state_.RunMode = run_mode::VariableInput;
    close();
}

// Enter that no control has taken accepts the window.
void VLM_VEDT::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        Vedt_OKBtn_->click();
    else
        ModalWindow::keyPressEvent(event);
}

} // namespace velmo
