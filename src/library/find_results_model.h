#pragma once

#include "library/name_index.h"

#include <QAbstractListModel>
#include <QIcon>

namespace velmo {

// The names that were found, the best first. Holds their numbers only; texts are made for rows that are seen.
class FindResultsModel : public QAbstractListModel {
    Q_OBJECT

public:
    // The names on the way to where a name stands.
    static constexpr int WayRole = Qt::UserRole;

    explicit FindResultsModel(const NameIndex& names, QObject* parent = nullptr);

    // Shows these names of the index, as they are numbered now.
    void SetHits(std::vector<int> hits);
    // The number of the name in a row.
    int NameIn(int row) const { return hits_[size_t(row)]; }
    // The row of a name; -1 when it is not among them.
    int RowOf(int name) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    // Way and name in one line.
    QString FullText(int name) const;

    const NameIndex& names_;
    std::vector<int> hits_;
    QIcon folderIcon_;
    QIcon symbolIcon_;
};

} // namespace velmo
