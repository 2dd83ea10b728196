#include "platform/grid.h"

#include "platform/window_places.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QToolTip>

namespace velmo {

namespace {

// So many rows decide how wide a column starts.
constexpr int RowsLookedAt = 200;
constexpr int NarrowestColumn = 64;
constexpr int WidestColumn = 320;

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
        SetCurrentCell(1, cells_.HasRowNumbers() ? 1 : 0);
}

void Grid::SetHighlight(Highlight highlight) {
    setSelectionBehavior(highlight == Highlight::Row ? SelectRows : SelectItems);
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
    setCurrentIndex(index);
    // The view follows a change only, and the cell may have been current all along.
    scrollTo(index);
}

int Grid::ColWidth(int column) const {
    return PixelsToTwips(columnWidth(model_->Section(column)));
}

void Grid::SetColWidth(int column, int twips) {
    setColumnWidth(model_->Section(column), TwipsToPixels(twips));
}

void Grid::FitColumns() {
    const int rows = qMin(cells_.Rows(), RowsLookedAt);
    const int room = fontMetrics().horizontalAdvance(QStringLiteral("00"));
    for (int column = cells_.HasRowNumbers() ? 1 : 0; column < cells_.Cols(); ++column) {
        int width = horizontalHeader()->sectionSizeHint(model_->Section(column)) + room;
        for (int row = 1; row < rows; ++row)
            width = qMax(width, fontMetrics().horizontalAdvance(cells_.Text(row, column)) + room);
        setColumnWidth(model_->Section(column), qBound(NarrowestColumn, width, WidestColumn));
    }
}

QRect Grid::CellRect(int row, int column) const {
    return visualRect(model_->IndexOf(row, column));
}

void Grid::keyPressEvent(QKeyEvent* event) {
    const bool activates = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter ||
                           event->key() == Qt::Key_F2 || event->key() == Qt::Key_Space;
    if (activates && Row() > 0) {
        Q_EMIT CellActivated(Row(), Col());
    } else if (event->key() == Qt::Key_Escape) {
        Q_EMIT EscapePressed();
    } else if (StartsTyping(*event)) {
        if (Row() > 0)
            Q_EMIT TypingStarted(event);
    } else {
        QTableView::keyPressEvent(event);
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
    QTableView::mousePressEvent(event);
}

void Grid::mouseMoveEvent(QMouseEvent* event) {
    if (!HighlightsRows() || event->buttons() == Qt::NoButton)
        QTableView::mouseMoveEvent(event);
}

void Grid::mouseReleaseEvent(QMouseEvent* event) {
    const bool click = pressed_.isValid() && pressed_ == indexAt(event->position().toPoint());
    QTableView::mouseReleaseEvent(event);
    if (HighlightsRows() && event->button() == Qt::LeftButton && !click && before_.isValid())
        setCurrentIndex(before_);
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
