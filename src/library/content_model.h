#pragma once

#include "library/folder_content.h"

#include <QAbstractTableModel>
#include <QIcon>

namespace velmo {

// What a category holds, a row each: name, PDF file and slide file.
class ContentModel : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit ContentModel(QObject* parent = nullptr);

    void SetRows(std::vector<ContentRow> rows);
    const std::vector<ContentRow>& Rows() const { return rows_; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<ContentRow> rows_;
    QIcon folderIcon_;
};

} // namespace velmo
