#include "library/entry_list_model.h"

#include "library/browser_icons.h"
#include "platform/plain_tool_tip.h"

namespace velmo {

EntryListModel::EntryListModel(QObject* parent) : QStringListModel(parent), icon_(SymbolIcon()) {}

Qt::ItemFlags EntryListModel::flags(const QModelIndex& index) const {
    return index.isValid() ? Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren
                           : Qt::ItemFlags(Qt::NoItemFlags);
}

QVariant EntryListModel::data(const QModelIndex& index, int role) const {
    switch (role) {
    case Qt::DecorationRole:
        return icon_;
    case Qt::ToolTipRole:
        return PlainToolTip(QStringListModel::data(index, Qt::DisplayRole).toString());
    default:
        return QStringListModel::data(index, role);
    }
}

} // namespace velmo
