#include "library/find_results_model.h"

#include "library/browser_icons.h"
#include "library/category_keys.h"
#include "platform/folder_images.h"
#include "platform/plain_tool_tip.h"

namespace velmo {

FindResultsModel::FindResultsModel(const NameIndex& names, QObject* parent)
    : QAbstractListModel(parent),
      names_(names),
      folderIcon_(FolderImages()[ClosedFolder - 1]),
      symbolIcon_(SymbolIcon()) {}

void FindResultsModel::SetHits(std::vector<int> hits) {
    beginResetModel();
    hits_ = std::move(hits);
    endResetModel();
}

int FindResultsModel::RowOf(int name) const {
    const auto hit = std::find(hits_.begin(), hits_.end(), name);
    return hit == hits_.end() ? -1 : int(hit - hits_.begin());
}

int FindResultsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(hits_.size());
}

Qt::ItemFlags FindResultsModel::flags(const QModelIndex& index) const {
    return index.isValid() ? Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren
                           : Qt::ItemFlags(Qt::NoItemFlags);
}

QVariant FindResultsModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const int name = NameIn(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return names_.Text(name);
    case WayRole:
        return names_.Way(name);
    case Qt::ToolTipRole:
        return PlainToolTip(FullText(name));
    case Qt::AccessibleTextRole:
        return FullText(name);
    case Qt::DecorationRole:
        return names_.IsCategory(name) ? folderIcon_ : symbolIcon_;
    default:
        return {};
    }
}

QString FindResultsModel::FullText(int name) const {
    const QString way = names_.Way(name);
    return way.isEmpty() ? names_.Text(name) : way + PathSeparator + names_.Text(name);
}

} // namespace velmo
