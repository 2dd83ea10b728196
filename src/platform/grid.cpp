#include "platform/grid.h"

#include "platform/window_places.h"

#include <QGuiApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QToolTip>

namespace velmo {

namespace {

// So many rows decide how wide a column starts.
constexpr int RowsLookedAt = 200;
constexpr int NarrowestColumn = 64;
constexpr int WidestColumn = 320;

bool HasShift(const QInputEvent& event) {
    return event.modifiers().testFlag(Qt::ShiftModifier);
}

bool AsksForMenu([[maybe_unused]] const QKeyEvent& event) {
#ifdef Q_OS_WIN
    // The system sends the event for a menu itself.
    return false;
#else
    return event.key() == Qt::Key_F10 && HasShift(event);
#endif
}

bool StartsTyping(const QKeyEvent& event) {
    const bool command = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    return !command && !event.text().isEmpty() && event.text().front().isPrint();
}

} // namespace

Grid::Grid(const GridCells& cells, QWidget* parent)
    : KeepsSelection(parent), cells_(cells), model_(new GridModel(cells, this)) {
    setModel(model_);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setHorizontalScrollMode(ScrollPerPixel);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setMinimumSectionSize(24);
    // A double click on a border asks all rows.
    horizontalHeader()->setResizeContentsPrecision(-1);
    // A fixed height: thousands of rows are not asked for theirs.
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    verticalHeader()->setDefaultAlignment(Qt::AlignRight | Qt::AlignVCenter);
    connect(this, &QTableView::clicked, this, [this](const QModelIndex& index) {
        Q_EMIT CellClicked(model_->RowOf(index), model_->ColumnOf(index));
    });
    // A row number chooses by a click alone, as a cell does.
    disconnect(verticalHeader(), &QHeaderView::sectionPressed, this, nullptr);
    disconnect(verticalHeader(), &QHeaderView::sectionEntered, this, nullptr);
    connect(verticalHeader(), &QHeaderView::sectionClicked, this,
            [this](int section) { Q_EMIT CellClicked(section + 1, 0); });
    CellsReplaced();
}

void Grid::CellsReplaced() {
    model_->CellsReplaced();
    const bool message = cells_.IsMessage();
    horizontalHeader()->setVisible(!message);
    verticalHeader()->setVisible(!message && cells_.HasRowNumbers());
    setShowGrid(!message);
    if (!message)
        SetCurrentCell(1, FirstColumn());
}

void Grid::RowsInserted(int row, int count) {
    model_->RowsInserted(row, count);
    // The row numbers may need more room now.
    updateGeometries();
}

void Grid::RowsRemoved(int row, int count) {
    model_->RowsRemoved(row, count);
    updateGeometries();
}

void Grid::ColumnsInserted(int column) {
    model_->ColumnsInserted(column);
    FitColumn(column);
}

void Grid::ColumnsSwapped(int left) {
    const int leftWidth = ColWidth(left);
    const int rightWidth = ColWidth(left + 1);
    model_->ColumnsSwapped(left);
    SetColWidth(left, rightWidth);
    SetColWidth(left + 1, leftWidth);
}

void Grid::SetHighlight(Highlight highlight) {
    setSelectionBehavior(highlight == Highlight::Row ? SelectRows : SelectItems);
}

void Grid::MakeEditable() {
    editable_ = true;
    SetHighlight(Highlight::Cell);
    setSelectionMode(ContiguousSelection);
    setTabKeyNavigation(true);
    for (QHeaderView* header : {horizontalHeader(), verticalHeader()}) {
        header->setHighlightSections(true);
        ConnectEditableHeader(header);
    }
}

// The view's own answer to a header would begin with the cells in sight instead of the first ones.
void Grid::ConnectEditableHeader(QHeaderView* header) {
    disconnect(header, &QHeaderView::sectionPressed, this, nullptr);
    disconnect(header, &QHeaderView::sectionEntered, this, nullptr);
    connect(header, &QHeaderView::sectionPressed, this, [this, header](int section) {
        // A header takes no focus by itself.
        setFocus(Qt::MouseFocusReason);
        const bool extend = QGuiApplication::keyboardModifiers().testFlag(Qt::ShiftModifier);
        SelectLine(header->orientation(), section, extend);
    });
    connect(header, &QHeaderView::sectionEntered, this,
            [this, header](int section) { SelectLine(header->orientation(), section, true); });
    header->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(header, &QWidget::customContextMenuRequested, this, [this, header](const QPoint& place) {
        const int section = header->logicalIndexAt(place);
        WantHeaderMenu(header->orientation(), section, header->viewport()->mapToGlobal(place));
    });
}

int Grid::Row() const {
    return currentIndex().isValid() ? model_->RowOf(currentIndex()) : 0;
}

int Grid::Col() const {
    return currentIndex().isValid() ? model_->ColumnOf(currentIndex()) : 0;
}

void Grid::SetCurrentCell(int row, int column) {
    const QModelIndex index = model_->IndexOf(row, column);
    if (!index.isValid())
        return;
    anchor_ = index;
    if (index != currentIndex() || !selectionModel()->isSelected(index))
        MakeCurrent(index);
    // The view follows a change only, and the cell may have been current all along.
    scrollTo(index);
}

// Whatever keys are held meanwhile.
void Grid::MakeCurrent(const QModelIndex& index) {
    if (editable_)
        selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
    else
        setCurrentIndex(index);
}

void Grid::MakeCurrentInPlace(const QModelIndex& index) {
    setAutoScroll(false);
    MakeCurrent(index);
    setAutoScroll(true);
}

void Grid::ShowColumn(int column) {
    // A new width reaches the scroll bar only later by itself.
    updateGeometries();
    const QRect place = CellRect(0, column);
    const int beyond = qMin(place.left(), qMax(0, place.right() + 1 - viewport()->width()));
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + beyond);
}

void Grid::StepCell(int step) {
    int row = Row();
    int column = Col() + step;
    if (column >= cells_.Cols()) {
        column = FirstColumn();
        ++row;
    } else if (column < FirstColumn()) {
        column = cells_.Cols() - 1;
        --row;
    }
    SetCurrentCell(row, column);
}

void Grid::SelectRange(const CellRange& range) {
    const QModelIndex first = model_->IndexOf(range.row, range.column);
    const QModelIndex last = model_->IndexOf(range.row + range.rows - 1, range.column + range.columns - 1);
    if (!first.isValid() || !last.isValid())
        return;
    SetCurrentCell(range.row, range.column);
    SelectBlock(first, last);
}

CellRange Grid::SelectedRange() const {
    if (!currentIndex().isValid())
        return {0, 0, 0, 0};
    QRect all;
    for (const QItemSelectionRange& part : selectionModel()->selection())
        all |= QRect(QPoint(part.left(), part.top()), QPoint(part.right(), part.bottom()));
    if (all.isEmpty())
        return {Row(), Col(), 1, 1};
    const QModelIndex first = model_->index(all.top(), all.left());
    return {model_->RowOf(first), model_->ColumnOf(first), all.height(), all.width()};
}

void Grid::SelectBlock(const QModelIndex& from, const QModelIndex& to) {
    const QModelIndex first = model_->index(qMin(from.row(), to.row()), qMin(from.column(), to.column()));
    const QModelIndex last = model_->index(qMax(from.row(), to.row()), qMax(from.column(), to.column()));
    selectionModel()->select(QItemSelection(first, last), QItemSelectionModel::ClearAndSelect);
}

// Selects a whole row or column, or all from the one where the block began.
void Grid::SelectLine(Qt::Orientation header, int section, bool extend) {
    const bool row = header == Qt::Vertical;
    const int begin = row ? anchor_.row() : anchor_.column();
    const int from = extend && anchor_.isValid() ? begin : section;
    const QModelIndex first = row ? model_->index(from, 0) : model_->index(0, from);
    const QModelIndex last = row ? model_->index(section, model_->columnCount() - 1)
                                 : model_->index(model_->rowCount() - 1, section);
    if (!first.isValid() || !last.isValid())
        return;
    MakeCurrentInPlace(first);
    SelectBlock(first, last);
}

void Grid::WantHeaderMenu(Qt::Orientation header, int section, const QPoint& place) {
    const bool row = header == Qt::Vertical;
    if (section < 0 || section >= (row ? model_->rowCount() : model_->columnCount()))
        return;
    setFocus(Qt::MouseFocusReason);
    const QModelIndex index = row ? model_->index(section, qMax(0, currentIndex().column()))
                                  : model_->index(qMax(0, currentIndex().row()), section);
    MakeCurrentInPlace(index);
    // What the menu's commands work on is seen.
    if (index.isValid())
        SelectBlock(row ? model_->index(section, 0) : model_->index(0, section),
                    row ? model_->index(section, model_->columnCount() - 1)
                        : model_->index(model_->rowCount() - 1, section));
    Q_EMIT HeaderMenuWanted(row ? section + 1 : 0, row ? 0 : section + FirstColumn(), place);
}

int Grid::ColWidth(int column) const {
    return PixelsToTwips(columnWidth(model_->Section(column)));
}

void Grid::SetColWidth(int column, int twips) {
    setColumnWidth(model_->Section(column), TwipsToPixels(twips));
}

int Grid::NeededWidth(int column) const {
    const QHeaderView* header = horizontalHeader();
    const int pixels = cells_.IsMessage() ? sizeHintForColumn(model_->Section(column))
                                          : header->sectionSizeHint(model_->Section(column));
    return PixelsToTwips(pixels);
}

void Grid::FitColumns() {
    for (int column = FirstColumn(); column < cells_.Cols(); ++column)
        FitColumn(column);
}

void Grid::FitColumn(int column) {
    const int rows = qMin(cells_.Rows(), RowsLookedAt);
    const int room = fontMetrics().horizontalAdvance(QStringLiteral("00"));
    int width = horizontalHeader()->sectionSizeHint(model_->Section(column)) + room;
    for (int row = 1; row < rows; ++row)
        width = qMax(width, fontMetrics().horizontalAdvance(cells_.Text(row, column)) + room);
    setColumnWidth(model_->Section(column), qBound(NarrowestColumn, width, WidestColumn));
}

QRect Grid::CellRect(int row, int column) const {
    if (row > 0 || cells_.IsMessage())
        return visualRect(model_->IndexOf(row, column));
    const int section = model_->Section(column);
    const QHeaderView* header = horizontalHeader();
    return {header->sectionViewportPosition(section), 0, header->sectionSize(section),
            header->viewport()->height()};
}

QWidget* Grid::CellParent(int row) const {
    return row > 0 || cells_.IsMessage() ? viewport() : horizontalHeader()->viewport();
}

// The keys that mean something else where cells are edited.
bool Grid::EditingKey(const QKeyEvent& event) {
    const bool control = event.modifiers().testFlag(Qt::ControlModifier);
    switch (event.key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab: {
        const bool forward = event.key() == Qt::Key_Tab;
        // With Ctrl it leaves the cells, which Tab alone does not.
        if (control)
            // NOLINTNEXTLINE(bugprone-parent-virtual-call): that of the view would go from cell to cell.
            QWidget::focusNextPrevChild(forward);
        else
            StepCell(forward ? 1 : -1);
        return true;
    }
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
        Q_EMIT DeletePressed();
        return true;
    default:
        if (AsksForMenu(event))
            WantColumnMenuByKey();
        return AsksForMenu(event);
    }
}

void Grid::keyPressEvent(QKeyEvent* event) {
    const QScopedValueRollback extending(extending_, HasShift(*event));
    if (editable_ && EditingKey(*event)) {
        event->accept();
        return;
    }
    const bool activates = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter ||
                           event->key() == Qt::Key_F2 || (event->key() == Qt::Key_Space && !editable_);
    if (activates && Row() > 0) {
        Q_EMIT CellActivated(Row(), Col());
    } else if (activates && editable_) {
        // There is nothing to edit, and the key must not press a button of the window instead.
        event->accept();
    } else if (event->key() == Qt::Key_Escape) {
        Q_EMIT EscapePressed();
    } else if (StartsTyping(*event)) {
        if (Row() > 0)
            Q_EMIT TypingStarted(event);
    } else {
        KeepsSelection::keyPressEvent(event);
        return;
    }
    event->accept();
}

void Grid::mousePressEvent(QMouseEvent* event) {
    if (HighlightsRows() && event->button() != Qt::LeftButton) {
        event->accept();
        return;
    }
    before_ = currentIndex();
    pressed_ = indexAt(event->position().toPoint());
    const QScopedValueRollback extending(extending_, HasShift(*event));
    if (editable_ && !pressed_.isValid())
        return;
    if (editable_ && !extending_)
        anchor_ = pressed_;
    QTableView::mousePressEvent(event);
}

void Grid::mouseMoveEvent(QMouseEvent* event) {
    const bool drags = event->buttons() != Qt::NoButton;
    if (drags && (HighlightsRows() || (editable_ && !pressed_.isValid())))
        return;
    const QScopedValueRollback extending(extending_, drags);
    QTableView::mouseMoveEvent(event);
}

void Grid::mouseReleaseEvent(QMouseEvent* event) {
    const bool click = pressed_.isValid() && pressed_ == indexAt(event->position().toPoint());
    QTableView::mouseReleaseEvent(event);
    if (HighlightsRows() && event->button() == Qt::LeftButton && !click && before_.isValid())
        setCurrentIndex(before_);
}

void Grid::mouseDoubleClickEvent(QMouseEvent* event) {
    QTableView::mouseDoubleClickEvent(event);
    const QModelIndex index = indexAt(event->position().toPoint());
    if (editable_ && event->button() == Qt::LeftButton && index.isValid())
        Q_EMIT CellActivated(model_->RowOf(index), model_->ColumnOf(index));
}

void Grid::contextMenuEvent(QContextMenuEvent* event) {
    if (!editable_) {
        QTableView::contextMenuEvent(event);
        return;
    }
    if (event->reason() == QContextMenuEvent::Keyboard)
        WantColumnMenuByKey();
    else if (indexAt(event->pos()).isValid())
        Q_EMIT CellMenuWanted(event->globalPos());
}

void Grid::WantColumnMenuByKey() {
    if (Row() == 0)
        return;
    scrollTo(currentIndex());
    const QPoint below = CellRect(0, Col()).bottomLeft();
    WantHeaderMenu(Qt::Horizontal, currentIndex().column(), CellParent(0)->mapToGlobal(below));
}

void Grid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    if (!extending_)
        anchor_ = current;
}

void Grid::setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) {
    if (!editable_ || !command.testFlag(QItemSelectionModel::Select)) {
        QTableView::setSelection(rect, command);
        return;
    }
    // The view remembers where a block began only when a click or key began it.
    const QModelIndex end = indexAt(rect.bottomRight());
    if (end.isValid())
        SelectBlock(extending_ && anchor_.isValid() ? QModelIndex(anchor_) : end, end);
}

void Grid::inputMethodEvent(QInputMethodEvent* event) {
    if (Row() > 0 && (!event->preeditString().isEmpty() || !event->commitString().isEmpty()))
        Q_EMIT TypingStarted(event);
    event->accept();
}

QVariant Grid::inputMethodQuery(Qt::InputMethodQuery query) const {
    // The input method's window opens at the cell that the text goes into.
    if (query == Qt::ImCursorRectangle && currentIndex().isValid())
        return visualRect(currentIndex()).translated(viewport()->pos());
    return QTableView::inputMethodQuery(query);
}

bool Grid::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const QModelIndex index = indexAt(help->pos());
        // Only what is cut off needs saying again.
        if (!index.isValid() || sizeHintForIndex(index).width() <= columnWidth(index.column())) {
            QToolTip::hideText();
            return true;
        }
    }
    return QTableView::viewportEvent(event);
}

} // namespace velmo
