#include "variables/table_commands.h"

#include "platform/guarded.h"

#include <QAction>

namespace velmo {

namespace {

QString Caption(int kind) {
    static const QStringList captions{QStringLiteral("追加(&A)"),      QStringLiteral("挿入(&I)"),
                                      QStringLiteral("複写(&C)"),      QStringLiteral("削除(&D)"),
                                      QStringLiteral("後へ移動(&N)"),  QStringLiteral("前へ移動(&B)"),
                                      QStringLiteral("名前の変更(&R)")};
    return captions[kind];
}

} // namespace

TableCommands::TableCommands(Grid& grid, TableEditor& editor, MessageBoxes& messages)
    : grid_(grid), editor_(editor), messages_(messages) {
    popUp_.setObjectName(QStringLiteral("VedtHdrPop"));
    const auto add = [this](const char* name, Kind kind) {
        QAction* action = MakeAction(name, kind, [this, kind] { Run(kind, popUpTarget_, popUpPlace_); });
        popUpCommands_.push_back({kind, Target::Column, action});
        popUp_.addAction(action);
    };
    add("VedtHdrPopAdd", Kind::Add);
    add("VedtHdrPopIns", Kind::Insert);
    add("VedtHdrPopCpy", Kind::Copy);
    add("VedtHdrPopDel", Kind::Delete);
    popUp_.addSeparator();
    add("VedtHdrPopAft", Kind::After);
    add("VedtHdrPopBef", Kind::Before);
    popUp_.addSeparator();
    add("VedtHdrPopRen", Kind::Rename);
}

QAction* TableCommands::MakeAction(const char* name, Kind kind, std::function<void()> run) {
    auto* action = new QAction(Caption(int(kind)), this);
    action->setObjectName(QLatin1String(name));
    connect(action, &QAction::triggered, this,
            [this, run = std::move(run)] { RunGuarded(messages_, grid_.window(), run); });
    return action;
}

void TableCommands::AddToMenu(QMenu& menu, const char* name, Kind kind, Target target,
                              const QKeySequence& shortcut) {
    QAction* action = MakeAction(name, kind, [this, kind, target] {
        Q_EMIT Starting();
        Run(kind, target, CurrentPlace(target));
    });
    action->setShortcut(shortcut);
    menuCommands_.push_back({kind, target, action});
    menu.addAction(action);
}

void TableCommands::AddTo(QMenu& columns, QMenu& rows) {
    AddToMenu(columns, "VedtMnuColAdd", Kind::Add, Target::Column, Qt::CTRL | Qt::ALT | Qt::Key_Insert);
    AddToMenu(columns, "VedtMnuColIns", Kind::Insert, Target::Column, Qt::CTRL | Qt::SHIFT | Qt::Key_Insert);
    AddToMenu(columns, "VedtMnuColDel", Kind::Delete, Target::Column, Qt::CTRL | Qt::SHIFT | Qt::Key_Delete);
    AddToMenu(columns, "VedtMnuColAft", Kind::After, Target::Column, Qt::ALT | Qt::Key_Right);
    AddToMenu(columns, "VedtMnuColBef", Kind::Before, Target::Column, Qt::ALT | Qt::Key_Left);
    AddToMenu(columns, "VedtMnuColRen", Kind::Rename, Target::Column, Qt::SHIFT | Qt::Key_F2);
    AddToMenu(rows, "VedtMnuRowAdd", Kind::Add, Target::Row, Qt::ALT | Qt::Key_Insert);
    AddToMenu(rows, "VedtMnuRowIns", Kind::Insert, Target::Row, Qt::Key_Insert);
    AddToMenu(rows, "VedtMnuRowCpy", Kind::Copy, Target::Row, Qt::CTRL | Qt::SHIFT | Qt::Key_D);
    AddToMenu(rows, "VedtMnuRowDel", Kind::Delete, Target::Row, Qt::CTRL | Qt::Key_Delete);
    AddToMenu(rows, "VedtMnuRowAft", Kind::After, Target::Row, Qt::ALT | Qt::Key_Down);
    AddToMenu(rows, "VedtMnuRowBef", Kind::Before, Target::Row, Qt::ALT | Qt::Key_Up);
}

void TableCommands::ShowPopUp(int row, int column, const QPoint& position) {
    Q_EMIT Starting();
    popUpTarget_ = row == 0 ? Target::Column : Target::Row;
    popUpPlace_ = row == 0 ? column : row;
    const Kind hidden = popUpTarget_ == Target::Column ? Kind::Copy : Kind::Rename;
    for (const Command& command : popUpCommands_) {
        command.action->setVisible(command.kind != hidden);
        command.action->setEnabled(IsPossible(command.kind, popUpTarget_, popUpPlace_));
    }
    popUp_.popup(position);
}

void TableCommands::Update() {
    for (const Command& command : menuCommands_)
        command.action->setEnabled(IsPossible(command.kind, command.target, CurrentPlace(command.target)));
}

int TableCommands::CurrentPlace(Target target) const {
    if (target == Target::Row)
        return grid_.Row();
    // Without a row no cell tells the column.
    return grid_.Row() > 0 ? grid_.Col() : editor_.DataColumns();
}

bool TableCommands::IsPossible(Kind kind, Target target, int place) const {
    const bool onColumn = target == Target::Column;
    const int last = onColumn ? editor_.DataColumns() : editor_.DataRows();
    const bool mayOpen = !onColumn || !editor_.HiddenVariables().empty();
    switch (kind) {
    case Kind::Add:
        return place == last && mayOpen;
    case Kind::Insert:
        return place > 0 && mayOpen;
    default:
        return place > 0;
    }
}

void TableCommands::Run(Kind kind, Target target, int place) {
    if (!IsPossible(kind, target, place))
        return;
    if (kind == Kind::Delete && !messages_.Ask(grid_.window(), QStringLiteral("削除しますよろしいですか")))
        return;
    if (target == Target::Column)
        RunOnColumn(kind, place);
    else
        RunOnRow(kind, place);
}

void TableCommands::OpenColumn(int column) {
    editor_.OpenColumn(column);
    grid_.SetCurrentCell(qMax(1, grid_.Row()), column);
    Q_EMIT VariableChoiceWanted(column);
}

void TableCommands::RunOnColumn(Kind kind, int column) {
    switch (kind) {
    case Kind::Add:
        OpenColumn(column + 1);
        break;
    case Kind::Insert:
        OpenColumn(column);
        break;
    case Kind::Delete:
        editor_.DeleteColumn(column);
        break;
    case Kind::After:
        editor_.MoveColumn(column, TableEditor::Direction::After);
        break;
    case Kind::Before:
        editor_.MoveColumn(column, TableEditor::Direction::Before);
        break;
    case Kind::Rename:
        Q_EMIT CellEditingWanted(0, column);
        break;
    case Kind::Copy:
        break;
    }
}

void TableCommands::RunOnRow(Kind kind, int row) {
    switch (kind) {
    case Kind::Add:
        editor_.AppendRow();
        Q_EMIT CellEditingWanted(row + 1, 1);
        break;
    case Kind::Insert:
        editor_.InsertRow(row);
        Q_EMIT CellEditingWanted(row, 1);
        break;
    case Kind::Copy:
        editor_.CopyRow(row);
        break;
    case Kind::Delete:
        editor_.DeleteRow(row);
        break;
    case Kind::After:
        editor_.MoveRow(row, TableEditor::Direction::After);
        break;
    case Kind::Before:
        editor_.MoveRow(row, TableEditor::Direction::Before);
        break;
    case Kind::Rename:
        break;
    }
}

} // namespace velmo
