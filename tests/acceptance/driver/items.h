#pragma once

#include "controls.h"

#include <QAbstractItemView>
#include <QHeaderView>
#include <QJsonObject>

namespace velmo::driver {

// The view with this name; with popup set, the list that the combo box with this name has dropped down.
QAbstractItemView* FindView(const QString& name, bool popup = false);

// The item that address names: {"row","col"}, {"path":[texts from the root],"col"} or {"text","col"}. Throws
// when there is none.
QModelIndex FindItem(const QAbstractItemView* view, const QJsonObject& address);

// Text, icon (a digest of its picture), state and rectangle (in the viewport) of one item.
QJsonObject DescribeItem(const QAbstractItemView* view, const QModelIndex& index);

// Counts, header texts, all texts, current item and selection of a table or list; of a tree the top level's.
QJsonObject DescribeView(const QAbstractItemView* view);

// The items below index with their texts and whether they are expanded, as far as they are loaded.
QJsonArray DescribeTree(const QAbstractItemView* view, const QModelIndex& parent);

// Scrolls to the item and gives the point where a user would click it.
Spot ItemSpot(QAbstractItemView* view, const QModelIndex& index);
// The point of the mark that opens and closes a tree's item.
Spot BranchSpot(QAbstractItemView* view, const QModelIndex& index);
// A point of the view without an item.
Spot EmptySpot(QAbstractItemView* view);
// The middle of a header's section (logical index), scrolled into view.
Spot HeaderSpot(QAbstractItemView* view, Qt::Orientation orientation, int section);
// Where a user takes hold of a column's right border.
Spot BorderSpot(QAbstractItemView* view, int section);

} // namespace velmo::driver
