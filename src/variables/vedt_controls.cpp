#include "variables/vedt_controls.h"

#include "platform/slide_view.h"
#include "platform/window_places.h"
#include "variables/variable_icons.h"

#include <QBoxLayout>
#include <QMainWindow>
#include <QMenuBar>
#include <QSplitter>
#include <QStatusBar>

namespace velmo {

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

// Gives the first columns a width, or more where the desktop's font needs it. Returns by how much they became
// wider together, in twips.
int WidenColumns(Grid& grid, int columns, int least) {
    int beyond = 0;
    for (int column = 0; column < columns; ++column) {
        const int width = qMax(least, grid.NeededWidth(column));
        grid.SetColWidth(column, width);
        beyond += width - least;
    }
    return beyond;
}

} // namespace

void VedtControls::SetUp(QMainWindow& window, const GridCells& variables, const GridCells& table) {
    auto* panes = new QSplitter(Qt::Vertical);
    panes->setChildrenCollapsible(false);
    panes->addWidget(MakeVariablePane(variables));
    panes->addWidget(MakeTablePane(table));
    panes->setStretchFactor(0, 0);
    panes->setStretchFactor(1, 1);
    window.setCentralWidget(panes);
    // What is only looked at comes last.
    QWidget::setTabOrder(VEdt_CanBtn, Vedt_Slide);
    window.setWindowIcon(VariableIcon("variables"));
    AcceptByKey(window);
    MakeFileMenu(window);

    hint = new ElidedLabel;
    hint->setIndent(window.fontMetrics().averageCharWidth());
    window.statusBar()->addWidget(hint, 1);

    window.resize(TwipsToPixels(WindowWidth), TwipsToPixels(WindowHeight));
    KeepWithinScreen(&window);
    const int variablePane = Vedt_Toolbar->minimumHeight() + TwipsToPixels(VariableGridHeight) + Gap;
    panes->setSizes({variablePane, window.height() - variablePane});
}

// The menu bar's first menu; the place of all that is below counts from the bar's lower edge.
void VedtControls::MakeFileMenu(QMainWindow& window) {
    QMenu* file = window.menuBar()->addMenu(QStringLiteral("ファイル(&F)"));
    file->setObjectName(QStringLiteral("VedtMnuFile"));
    const auto add = [file](const char* name, const QString& text) {
        QAction* action = file->addAction(text);
        action->setObjectName(QLatin1String(name));
        return action;
    };
    VedtMnuFileOpen = add("VedtMnuFileOpen", QStringLiteral("PDFを開く(&O)..."));
    VedtMnuFileWrite = add("VedtMnuFileWrite", QStringLiteral("PDFに保存(&S)..."));
    file->addSeparator();
    VedtMnuFileCan = add("VedtMnuFileCan", QStringLiteral("キャンセル(&C)"));
}

// The tool bar, the variable grid and the symbol's picture.
QWidget* VedtControls::MakeVariablePane(const GridCells& variables) {
    Vedt_Toolbar = new QToolBar;
    Vedt_Toolbar->setObjectName(QStringLiteral("Vedt_Toolbar"));
    Vedt_Toolbar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    TB_POINT = Vedt_Toolbar->addAction(VariableIcon("measure"), QStringLiteral("測定"));
    TB_POINT->setObjectName(QStringLiteral("TB_POINT"));
    TB_POINT->setShortcut(Qt::CTRL | Qt::Key_M);
    TB_POINT->setToolTip(QStringLiteral("選択中の変数の値を図面上で測ります (Ctrl+M)"));
    Vedt_Toolbar->setFixedHeight(qMax(TwipsToPixels(VariableGridTop), Vedt_Toolbar->sizeHint().height()));

    Vedt_NowFGrid = new Grid(variables);
    Vedt_NowFGrid->setObjectName(QStringLiteral("Vedt_NowFGrid"));
    Vedt_NowFGrid->setAccessibleName(QStringLiteral("変数と現在の値"));
    Vedt_Slide = new SlideView;
    Vedt_Slide->setObjectName(QStringLiteral("Vedt_Slide"));
    Vedt_Slide->setAccessibleName(QStringLiteral("シンボルのスライド"));
    Vedt_Slide->SetEmptyText(QStringLiteral("このシンボルにスライドはありません"));

    auto* pane = new QWidget;
    auto* side = new QHBoxLayout;
    side->setContentsMargins(TwipsToPixels(VariableGridLeft), 0, Gap, Gap);
    side->setSpacing(Gap);
    side->addWidget(Vedt_NowFGrid);
    side->addWidget(Vedt_Slide, 1);
    auto* all = new QVBoxLayout(pane);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(0);
    all->addWidget(Vedt_Toolbar);
    all->addLayout(side, 1);
    return pane;
}

// The table grid and the buttons that end the window.
QWidget* VedtControls::MakeTablePane(const GridCells& table) {
    Vedt_FlexGrid = new Grid(table);
    Vedt_FlexGrid->setObjectName(QStringLiteral("Vedt_FlexGrid"));
    Vedt_FlexGrid->setAccessibleName(QStringLiteral("寸法表"));

    findBar = new FindBar;

    const auto button = [](const char* name, const QString& text) {
        auto* made = new QPushButton(text);
        made->setObjectName(QLatin1String(name));
        made->setAutoDefault(true);
        made->setMinimumWidth(ButtonWidth);
        return made;
    };
    Vedt_TreeBtn = button("Vedt_TreeBtn", QStringLiteral("ツリーへ戻る(&T)"));
    Vedt_OKBtn = button("Vedt_OKBtn", QStringLiteral("&OK"));
    VEdt_CanBtn = button("VEdt_CanBtn", QStringLiteral("キャンセル(&C)"));
    // It stays the one that Enter presses, wherever the focus has been.
    Vedt_OKBtn->setAutoDefault(false);
    Vedt_OKBtn->setDefault(true);
    Vedt_OKBtn->setToolTip(QStringLiteral("値を確定します (Ctrl+Enter)"));
    Vedt_TreeBtn->setToolTip(QStringLiteral("値を確定せずに、シンボルの選択へ戻ります"));

    auto* pane = new QWidget;
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(Gap);
    buttons->addWidget(Vedt_TreeBtn);
    buttons->addStretch(1);
    buttons->addWidget(Vedt_OKBtn);
    buttons->addWidget(VEdt_CanBtn);
    auto* all = new QVBoxLayout(pane);
    all->setContentsMargins(TwipsToPixels(VariableGridLeft), 0, Gap, 0);
    all->setSpacing(Gap);
    all->addWidget(Vedt_FlexGrid, 1);
    all->addWidget(findBar);
    all->addLayout(buttons);
    return pane;
}

// A button's own shortcut is its mnemonic, so this one is the window's.
void VedtControls::AcceptByKey(QMainWindow& window) {
    auto* accept = new QAction(&window);
    accept->setShortcuts({Qt::CTRL | Qt::Key_Return, Qt::CTRL | Qt::Key_Enter});
    QObject::connect(accept, &QAction::triggered, Vedt_OKBtn, &QPushButton::click);
    window.addAction(accept);
}

void VedtControls::ShowCells() {
    for (Grid* grid : {Vedt_NowFGrid, Vedt_FlexGrid})
        grid->CellsReplaced();
    const int beyond = Vedt_NowFGrid->Cells().IsMessage()
                           ? WidenColumns(*Vedt_NowFGrid, 1, MessageWidth)
                           : WidenColumns(*Vedt_NowFGrid, 2, VariableColumnWidth);
    Vedt_NowFGrid->setFixedWidth(TwipsToPixels(VariableGridWidth + beyond));
    if (Vedt_FlexGrid->Cells().IsMessage())
        WidenColumns(*Vedt_FlexGrid, 1, MessageWidth);
    else
        Vedt_FlexGrid->FitColumns();
}

} // namespace velmo
