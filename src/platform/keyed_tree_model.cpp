#include "platform/keyed_tree_model.h"

#include "platform/plain_tool_tip.h"
#include "platform/runtime_error.h"

namespace velmo {

struct KeyedTreeModel::Node {
    QString key;
    QString text;
    int image = 0;
    Node* parent = nullptr;
    int row = 0;
    std::vector<std::unique_ptr<Node>> children;
};

KeyedTreeModel::KeyedTreeModel(QObject* parent)
    : QAbstractItemModel(parent), root_(std::make_unique<Node>()) {}

KeyedTreeModel::~KeyedTreeModel() = default;

void KeyedTreeModel::SetImages(const QList<QIcon>& images) {
    beginResetModel();
    images_ = images;
    endResetModel();
}

void KeyedTreeModel::Clear() {
    beginResetModel();
    nodes_.clear();
    root_->children.clear();
    endResetModel();
}

void KeyedTreeModel::Add(const QString& parentKey, const std::vector<NewNode>& nodes) {
    if (nodes.empty())
        return;
    Node* parent = parentKey.isEmpty() ? root_.get() : Require(parentKey);
    for (const NewNode& node : nodes) {
        if (nodes_.contains(node.key))
            throw RuntimeError(ErrorNumber::KeyNotUnique).InField(node.key);
    }
    const int first = int(parent->children.size());
    beginInsertRows(IndexOf(parent), first, first + int(nodes.size()) - 1);
    parent->children.reserve(parent->children.size() + nodes.size());
    nodes_.reserve(nodes_.size() + qsizetype(nodes.size()));
    for (const NewNode& node : nodes)
        Append(parent, node);
    endInsertRows();
}

void KeyedTreeModel::Append(Node* parent, const NewNode& added) {
    auto node = std::make_unique<Node>();
    node->key = added.key;
    node->text = added.text;
    node->image = added.image;
    node->parent = parent;
    node->row = int(parent->children.size());
    nodes_.insert(node->key, node.get());
    for (const NewNode& child : added.children)
        Append(node.get(), child);
    parent->children.push_back(std::move(node));
}

void KeyedTreeModel::Remove(const QString& key) {
    const Node* node = Require(key);
    Node* parent = node->parent;
    const int row = node->row;
    beginRemoveRows(IndexOf(parent), row, row);
    Forget(node);
    parent->children.erase(parent->children.begin() + row);
    for (size_t i = size_t(row); i < parent->children.size(); ++i)
        parent->children[i]->row = int(i);
    endRemoveRows();
}

void KeyedTreeModel::Forget(const Node* node) {
    nodes_.remove(node->key);
    for (const auto& child : node->children)
        Forget(child.get());
}

void KeyedTreeModel::SetImage(const QString& key, int image) {
    Node* node = Require(key);
    if (node->image == image)
        return;
    node->image = image;
    const QModelIndex changed = IndexOf(node);
    Q_EMIT dataChanged(changed, changed, {Qt::DecorationRole});
}

int KeyedTreeModel::Image(const QString& key) const {
    return Require(key)->image;
}

QModelIndex KeyedTreeModel::Find(const QString& key) const {
    return IndexOf(Require(key));
}

QString KeyedTreeModel::Key(const QModelIndex& index) const {
    return index.isValid() ? NodeOf(index)->key : QString();
}

KeyedTreeModel::Node* KeyedTreeModel::NodeOf(const QModelIndex& index) const {
    return index.isValid() ? static_cast<Node*>(index.internalPointer()) : root_.get();
}

KeyedTreeModel::Node* KeyedTreeModel::Require(const QString& key) const {
    Node* node = nodes_.value(key);
    if (!node)
        throw RuntimeError(ErrorNumber::ElementNotFound).InField(key);
    return node;
}

QModelIndex KeyedTreeModel::IndexOf(const Node* node) const {
    return node == root_.get() ? QModelIndex() : createIndex(node->row, 0, node);
}

QModelIndex KeyedTreeModel::index(int row, int column, const QModelIndex& parent) const {
    const Node* node = NodeOf(parent);
    if (column != 0 || row < 0 || row >= int(node->children.size()))
        return {};
    return createIndex(row, 0, node->children[size_t(row)].get());
}

QModelIndex KeyedTreeModel::parent(const QModelIndex& child) const {
    return child.isValid() ? IndexOf(NodeOf(child)->parent) : QModelIndex();
}

int KeyedTreeModel::rowCount(const QModelIndex& parent) const {
    return int(NodeOf(parent)->children.size());
}

int KeyedTreeModel::columnCount(const QModelIndex&) const {
    return 1;
}

QVariant KeyedTreeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const Node* node = NodeOf(index);
    switch (role) {
    case Qt::DisplayRole:
        return node->text;
    case Qt::ToolTipRole:
        return PlainToolTip(node->text);
    case Qt::DecorationRole:
        return node->image > 0 && node->image <= images_.size() ? QVariant(images_[node->image - 1])
                                                                : QVariant();
    default:
        return {};
    }
}

} // namespace velmo
