#include "platform/keyed_tree.h"

#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

namespace velmo {

KeyedTree::KeyedTree(QWidget* parent) : KeepsSelection(parent), model_(new KeyedTreeModel(this)) {
    setModel(model_);
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setEditTriggers(NoEditTriggers);
    connect(this, &QTreeView::expanded, this,
            [this](const QModelIndex& index) { Q_EMIT NodeExpanded(model_->Key(index)); });
    connect(this, &QTreeView::collapsed, this,
            [this](const QModelIndex& index) { Q_EMIT NodeCollapsed(model_->Key(index)); });
}

QString KeyedTree::Text(const QString& key) const {
    return model_->Find(key).data().toString();
}

QString KeyedTree::ParentKey(const QString& key) const {
    return model_->Key(model_->Find(key).parent());
}

QString KeyedTree::FirstKey() const {
    return model_->Key(model_->index(0, 0));
}

QString KeyedTree::FirstChildKey(const QString& key) const {
    return model_->Key(model_->index(0, 0, model_->Find(key)));
}

void KeyedTree::SetExpanded(const QString& key, bool expanded) {
    setExpanded(model_->Find(key), expanded);
}

bool KeyedTree::IsExpanded(const QString& key) const {
    return isExpanded(model_->Find(key));
}

QStringList KeyedTree::ExpandedKeys() const {
    QStringList keys;
    for (QModelIndex index = model_->index(0, 0); index.isValid(); index = indexBelow(index)) {
        if (isExpanded(index))
            keys << model_->Key(index);
    }
    return keys;
}

void KeyedTree::ScrollBackTo(int value) {
    executeDelayedItemsLayout();
    verticalScrollBar()->setValue(value);
    scrollTo(currentIndex());
}

void KeyedTree::Select(const QString& key) {
    const QScopedValueRollback<bool> quiet(selecting_, true);
    const QModelIndex index = model_->Find(key);
    setCurrentIndex(index);
    scrollTo(index);
}

QString KeyedTree::SelectedKey() const {
    const QModelIndexList selected = selectionModel()->selectedIndexes();
    return selected.isEmpty() ? QString() : model_->Key(selected.first());
}

void KeyedTree::mousePressEvent(QMouseEvent* event) {
    told_ = false;
    QTreeView::mousePressEvent(event);
    const QModelIndex pressed = indexAt(event->position().toPoint());
    if (!pressed.isValid() || !visualRect(pressed).contains(event->position().toPoint()))
        return;
    if (!told_)
        Q_EMIT NodeClicked(model_->Key(pressed));
}

void KeyedTree::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QTreeView::keyPressEvent(event);
        return;
    }
    event->ignore();
    if (const QString key = SelectedKey(); !key.isEmpty())
        Q_EMIT EnterPressed(key);
}

void KeyedTree::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QTreeView::selectionChanged(selected, deselected);
    if (selecting_ || selected.isEmpty())
        return;
    told_ = true;
    Q_EMIT NodeClicked(SelectedKey());
}

} // namespace velmo
