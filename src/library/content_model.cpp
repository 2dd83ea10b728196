#include "library/content_model.h"

#include "platform/folder_images.h"
#include "platform/plain_tool_tip.h"

namespace velmo {

namespace {

enum Column { Name, PdfFile, SlideFile, ColumnCount };

} // namespace

ContentModel::ContentModel(QObject* parent)
    : QAbstractTableModel(parent), folderIcon_(FolderImages()[ClosedFolder - 1]) {}

void ContentModel::SetRows(std::vector<ContentRow> rows) {
    beginResetModel();
    rows_ = std::move(rows);
    endResetModel();
}

int ContentModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(rows_.size());
}

int ContentModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant ContentModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const ContentRow& row = rows_[size_t(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return index.column() == Name ? row.name : index.column() == PdfFile ? row.pdf : row.slide;
    case Qt::ToolTipRole:
        return PlainToolTip(data(index, Qt::DisplayRole).toString());
    case Qt::DecorationRole:
        return index.column() == Name && row.isFolder ? QVariant(folderIcon_) : QVariant();
    default:
        return {};
    }
}

QVariant ContentModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == Name      ? QStringLiteral("名前")
           : section == PdfFile ? QStringLiteral("PDFファイル")
                                : QStringLiteral("SLDファイル");
}

} // namespace velmo
