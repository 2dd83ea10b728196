#pragma once

#include "platform/grid_cells.h"

#include <QAbstractTableModel>
#include <QTableView>

#include <vector>

namespace velmo::bench {

// A table as a bare vector of rows of strings, shown in a plain view: what an edited table is measured
// against.
class PlainModel : public QAbstractTableModel {
public:
    // The same texts.
    explicit PlainModel(const GridCells& cells);

    void SetText(int row, int column, const QString& text);
    void InsertRow(int row);
    void RemoveRow(int row);
    // With the column right of it.
    void SwapColumns(int left);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<QString> header_;
    std::vector<std::vector<QString>> rows_;
};

} // namespace velmo::bench
