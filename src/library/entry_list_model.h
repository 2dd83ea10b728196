#pragma once

#include <QIcon>
#include <QStringListModel>

namespace velmo {

// The captions of a category's entries, each with the symbols' picture.
class EntryListModel : public QStringListModel {
    Q_OBJECT

public:
    explicit EntryListModel(QObject* parent = nullptr);

    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    QIcon icon_;
};

} // namespace velmo
