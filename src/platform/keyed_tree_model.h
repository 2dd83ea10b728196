#pragma once

#include <QAbstractItemModel>
#include <QHash>
#include <QIcon>

#include <memory>
#include <vector>

namespace velmo {

// What a tree shows of a node that is to be added; its own children come with it.
struct NewNode {
    QString key;
    QString text;
    // 1-based index into the tree's images; 0 for none.
    int image = 0;
    std::vector<NewNode> children;
};

// The nodes of a tree, each found by a key that no other node of the tree has.
class KeyedTreeModel : public QAbstractItemModel {
    Q_OBJECT

public:
    explicit KeyedTreeModel(QObject* parent = nullptr);
    ~KeyedTreeModel() override;

    void SetImages(const QList<QIcon>& images);
    void Clear();
    // Adds nodes behind the children of the parent; an empty parent key means the top level.
    // Throws 35601 when there is no such parent, 35602 when a key is in the tree already.
    void Add(const QString& parentKey, const std::vector<NewNode>& nodes);
    // Takes a node and everything below it out. Throws 35601.
    void Remove(const QString& key);
    // Throws 35601.
    void SetImage(const QString& key, int image);

    bool Contains(const QString& key) const { return nodes_.contains(key); }
    // The index of a node; throws 35601 when there is none.
    QModelIndex Find(const QString& key) const;
    // Empty for an invalid index.
    QString Key(const QModelIndex& index) const;
    int Image(const QString& key) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    struct Node;

    Node* NodeOf(const QModelIndex& index) const;
    Node* Require(const QString& key) const;
    QModelIndex IndexOf(const Node* node) const;
    void Append(Node* parent, const NewNode& added);
    void Forget(const Node* node);

    std::unique_ptr<Node> root_;
    QHash<QString, Node*> nodes_;
    QList<QIcon> images_;
};

} // namespace velmo
