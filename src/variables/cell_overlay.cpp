#include "variables/cell_overlay.h"

#include <QHeaderView>
#include <QScrollBar>

namespace velmo {

CellOverlay::CellOverlay(QWidget& control) : control_(&control) {
    control_->hide();
}

void CellOverlay::Open(Grid& grid, int row, int column) {
    grid_ = &grid;
    row_ = row;
    column_ = column;
    if (row == 0)
        grid.ShowColumn(column);
    if (control_->parentWidget() != grid.CellParent(row))
        control_->setParent(grid.CellParent(row));
    const auto place = [this] { control_->setGeometry(grid_->CellRect(row_, column_)); };
    place();
    following_ = std::make_unique<QObject>();
    QObject::connect(grid.horizontalHeader(), &QHeaderView::sectionResized, following_.get(), place);
    QObject::connect(grid.horizontalHeader(), &QHeaderView::geometriesChanged, following_.get(), place);
    for (const QScrollBar* bar : {grid.horizontalScrollBar(), grid.verticalScrollBar()})
        QObject::connect(bar, &QScrollBar::valueChanged, following_.get(), place);
    control_->show();
    control_->setFocus();
}

void CellOverlay::Close() {
    if (!IsOpen())
        return;
    following_.reset();
    const QWidget* focus = control_->window()->focusWidget();
    // A focused control that hides would hand the focus on to whatever comes next.
    if (focus == control_ || control_->isAncestorOf(focus))
        grid_->setFocus();
    control_->hide();
}

} // namespace velmo
