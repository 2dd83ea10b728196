#include "items.h"

#include "driver_error.h"

#include <QComboBox>
#include <QCryptographicHash>
#include <QIcon>
#include <QImage>
#include <QJsonArray>
#include <QTableView>
#include <QTreeView>

#include <algorithm>

namespace velmo::driver {

namespace {

QString Text(const QModelIndex& index) {
    return index.data(Qt::DisplayRole).toString();
}

QString IconDigest(const QModelIndex& index) {
    const QVariant value = index.data(Qt::DecorationRole);
    QImage image;
    if (value.canConvert<QIcon>())
        image = value.value<QIcon>().pixmap(16, 16).toImage();
    if (image.isNull() && value.canConvert<QImage>())
        image = value.value<QImage>();
    if (image.isNull())
        return {};
    image = image.convertToFormat(QImage::Format_ARGB32);
    const QByteArrayView bytes(image.constBits(), image.sizeInBytes());
    return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex().left(12));
}

QHeaderView* Header(const QAbstractItemView* view, Qt::Orientation orientation) {
    if (const auto* table = qobject_cast<const QTableView*>(view))
        return orientation == Qt::Horizontal ? table->horizontalHeader() : table->verticalHeader();
    if (const auto* tree = qobject_cast<const QTreeView*>(view);
        tree != nullptr && orientation == Qt::Horizontal)
        return tree->header();
    return nullptr;
}

bool IsExpanded(const QAbstractItemView* view, const QModelIndex& index) {
    const auto* tree = qobject_cast<const QTreeView*>(view);
    return tree != nullptr && tree->isExpanded(index);
}

QJsonArray HeaderTexts(const QAbstractItemView* view, Qt::Orientation orientation) {
    QJsonArray texts;
    const QHeaderView* header = Header(view, orientation);
    if (header == nullptr || header->isHidden())
        return texts;
    for (int section = 0; section < header->count(); ++section)
        texts.append(view->model()->headerData(section, orientation).toString());
    return texts;
}

QModelIndex ChildWithText(const QAbstractItemView* view, const QModelIndex& parent, const QString& text,
                          int col) {
    for (int row = 0; row < view->model()->rowCount(parent); ++row) {
        const QModelIndex index = view->model()->index(row, col, parent);
        if (Text(index) == text)
            return index;
    }
    throw DriverError("no item " + text + " in " + view->objectName());
}

// Scrolling to an item would open the items around it, which is the user's to do.
void RequireUnfolded(const QAbstractItemView* view, const QModelIndex& index) {
    if (qobject_cast<const QTreeView*>(view) == nullptr)
        return;
    for (QModelIndex parent = index.parent(); parent.isValid(); parent = parent.parent()) {
        if (!IsExpanded(view, parent))
            throw DriverError("the item " + Text(index) + " is folded away below " + Text(parent));
    }
}

QJsonArray Place(const QModelIndex& index) {
    return {index.row(), index.column()};
}

} // namespace

QAbstractItemView* FindView(const QString& name, bool popup) {
    QWidget* widget = FindWidget(name);
    auto* view = qobject_cast<QAbstractItemView*>(widget);
    if (popup) {
        const auto* combo = qobject_cast<QComboBox*>(widget);
        if (combo == nullptr || !combo->view()->isVisible())
            throw DriverError(name + " is not an open combo box");
        view = combo->view();
    }
    if (view == nullptr || view->model() == nullptr)
        throw DriverError(name + " is not an item view");
    return view;
}

QModelIndex FindItem(const QAbstractItemView* view, const QJsonObject& address) {
    const int col = address["col"].toInt();
    QModelIndex index;
    if (address.contains("path")) {
        const QJsonArray path = address["path"].toArray();
        for (const QJsonValue text : path)
            index = ChildWithText(view, index, text.toString(), col);
    } else if (address.contains("text")) {
        index = ChildWithText(view, view->rootIndex(), address["text"].toString(), col);
    } else {
        index = view->model()->index(address["row"].toInt(), col, view->rootIndex());
    }
    if (!index.isValid()) {
        throw DriverError(
            QString("%1 has no cell (%2, %3)").arg(view->objectName()).arg(address["row"].toInt()).arg(col));
    }
    return index;
}

QJsonObject DescribeItem(const QAbstractItemView* view, const QModelIndex& index) {
    const QRect rect = view->visualRect(index);
    return {{"text", Text(index)},
            {"row", index.row()},
            {"col", index.column()},
            {"icon", IconDigest(index)},
            {"current", view->currentIndex() == index},
            {"selected", view->selectionModel()->isSelected(index)},
            {"expanded", IsExpanded(view, index)},
            {"children", view->model()->rowCount(index)},
            {"hasChildren", view->model()->hasChildren(index)},
            {"editable", index.flags().testFlag(Qt::ItemIsEditable)},
            {"visible", view->viewport()->rect().intersects(rect)},
            {"rect", QJsonArray{rect.x(), rect.y(), rect.width(), rect.height()}}};
}

QJsonObject DescribeView(const QAbstractItemView* view) {
    const QAbstractItemModel* model = view->model();
    const QModelIndex root = view->rootIndex();
    QJsonArray rows;
    for (int row = 0; row < model->rowCount(root); ++row) {
        QJsonArray cells;
        for (int col = 0; col < model->columnCount(root); ++col)
            cells.append(Text(model->index(row, col, root)));
        rows.append(cells);
    }
    QModelIndexList selected = view->selectionModel()->selectedIndexes();
    std::sort(selected.begin(), selected.end());
    QJsonArray selection;
    for (const QModelIndex& index : std::as_const(selected))
        selection.append(Place(index));
    QJsonObject answer{{"rows", model->rowCount(root)},
                       {"cols", model->columnCount(root)},
                       {"texts", rows},
                       {"columnHeaders", HeaderTexts(view, Qt::Horizontal)},
                       {"rowHeaders", HeaderTexts(view, Qt::Vertical)},
                       {"selection", selection}};
    if (view->currentIndex().isValid())
        answer["current"] = Place(view->currentIndex());
    return answer;
}

QJsonArray DescribeTree(const QAbstractItemView* view, const QModelIndex& parent) {
    QJsonArray items;
    for (int row = 0; row < view->model()->rowCount(parent); ++row) {
        const QModelIndex index = view->model()->index(row, 0, parent);
        QJsonObject item = DescribeItem(view, index);
        item["items"] = DescribeTree(view, index);
        items.append(item);
    }
    return items;
}

Spot ItemSpot(QAbstractItemView* view, const QModelIndex& index) {
    RequireUnfolded(view, index);
    view->scrollTo(index);
    const QRect rect = view->visualRect(index).intersected(view->viewport()->rect());
    if (rect.isEmpty())
        throw DriverError("the item " + Text(index) + " of " + view->objectName() + " cannot be seen");
    QPoint pos = rect.center();
    // In lists and trees a user aims at the text, which begins at the left.
    if (qobject_cast<QTableView*>(view) == nullptr)
        pos.setX(rect.left() + std::min(rect.width() / 2, 24));
    return {view->viewport(), pos};
}

Spot BranchSpot(QAbstractItemView* view, const QModelIndex& index) {
    const auto* tree = qobject_cast<QTreeView*>(view);
    if (tree == nullptr)
        throw DriverError(view->objectName() + " is not a tree");
    RequireUnfolded(view, index);
    view->scrollTo(index);
    const QRect rect = tree->visualRect(index);
    return {view->viewport(), {rect.left() - tree->indentation() / 2, rect.center().y()}};
}

Spot EmptySpot(QAbstractItemView* view) {
    const QRect area = view->viewport()->rect();
    const QPoint corners[] = {area.bottomRight() - QPoint(3, 3), area.bottomLeft() + QPoint(3, -3)};
    for (const QPoint& corner : corners) {
        if (!view->indexAt(corner).isValid())
            return {view->viewport(), corner};
    }
    throw DriverError(view->objectName() + " has no empty part");
}

Spot HeaderSpot(QAbstractItemView* view, Qt::Orientation orientation, int section) {
    const QHeaderView* header = Header(view, orientation);
    if (header == nullptr || header->isHidden() || section < 0 || section >= header->count())
        throw DriverError(view->objectName() + " has no such header cell");
    if (view->model()->rowCount(view->rootIndex()) > 0) {
        const bool columns = orientation == Qt::Horizontal;
        view->scrollTo(view->model()->index(columns ? 0 : section, columns ? section : 0, view->rootIndex()));
    }
    const int along = header->sectionViewportPosition(section) + header->sectionSize(section) / 2;
    const QPoint center = header->viewport()->rect().center();
    if (orientation == Qt::Horizontal)
        return {header->viewport(), {along, center.y()}};
    return {header->viewport(), {center.x(), along}};
}

Spot BorderSpot(QAbstractItemView* view, int section) {
    const Spot middle = HeaderSpot(view, Qt::Horizontal, section);
    const QHeaderView* header = Header(view, Qt::Horizontal);
    const int end = header->sectionViewportPosition(section) + header->sectionSize(section);
    return {middle.widget, {end - 1, middle.pos.y()}};
}

} // namespace velmo::driver
