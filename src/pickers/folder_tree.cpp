#include "pickers/folder_tree.h"

#include "platform/folder_images.h"
#include "platform/guarded.h"

#include <QEvent>
#include <QScopeGuard>
#include <QScopedValueRollback>

namespace velmo {

FolderTree::FolderTree(KeyedTree& view, FolderSource& source, MessageBoxes& messages)
    : view_(view), source_(source), messages_(messages) {
    view_.Nodes().SetImages(FolderImages());
    view_.installEventFilter(this);
    const auto unlessLoading = [this](void (FolderTree::*action)(const QString&)) {
        return [this, action](const QString& key) {
            if (!loading_)
                RunGuarded(messages_, view_.window(), [&] { (this->*action)(key); });
        };
    };
    connect(&view_, &KeyedTree::NodeExpanded, this, unlessLoading(&FolderTree::Expand));
    connect(&view_, &KeyedTree::NodeCollapsed, this, unlessLoading(&FolderTree::Collapse));
    connect(&view_, &KeyedTree::NodeClicked, this, unlessLoading(&FolderTree::NodeClick));
}

void FolderTree::Fill(const std::function<void()>& open) {
    const QScopedValueRollback<bool> loading(loading_, true);
    view_.setUpdatesEnabled(false);
    const auto show = qScopeGuard([this] { view_.setUpdatesEnabled(true); });
    view_.Nodes().Clear();
    marked_.clear();
    source_.AddRoots();
    open();
}

void FolderTree::Select(const QString& key) {
    view_.Select(key);
    MarkSelected(key);
}

void FolderTree::Expand(const QString& key) {
    const QScopedValueRollback<bool> loading(loading_, true);
    // A node that could not be filled stays closed over its placeholder.
    auto closeAgain = qScopeGuard([&] { view_.SetExpanded(key, false); });
    source_.Load(key);
    closeAgain.dismiss();
    view_.Nodes().SetImage(key, OpenFolder);
}

void FolderTree::Collapse(const QString& key) {
    view_.Nodes().SetImage(key, ClosedFolder);
}

void FolderTree::NodeClick(const QString& key) {
    if (source_.IsPlaceholder(key))
        return;
    MarkSelected(key);
    Q_EMIT FolderChosen(key);
}

void FolderTree::MarkSelected(const QString& key) {
    if (view_.Nodes().Contains(marked_) && !view_.IsExpanded(marked_))
        view_.Nodes().SetImage(marked_, ClosedFolder);
    marked_ = key;
    view_.Nodes().SetImage(key, OpenFolder);
}

bool FolderTree::eventFilter(QObject*, QEvent* event) {
    // What was selected before the view had its size.
    if (event->type() == QEvent::Show)
        view_.scrollTo(view_.currentIndex(), QAbstractItemView::PositionAtCenter);
    return false;
}

} // namespace velmo
