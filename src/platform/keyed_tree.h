#pragma once

#include "platform/keeps_selection.h"
#include "platform/keyed_tree_model.h"

#include <QTreeView>

namespace velmo {

// A tree whose nodes are addressed by their keys. Everything that takes a key throws 35601 when no node has
// it.
class KeyedTree : public KeepsSelection<QTreeView> {
    Q_OBJECT

public:
    explicit KeyedTree(QWidget* parent = nullptr);

    KeyedTreeModel& Nodes() { return *model_; }
    const KeyedTreeModel& Nodes() const { return *model_; }

    QString Text(const QString& key) const;
    // The key of a node's parent, or empty for a node of the top level.
    QString ParentKey(const QString& key) const;
    // The key of the first node of the tree, or of a node's first child; empty when there is none.
    QString FirstKey() const;
    QString FirstChildKey(const QString& key) const;

    void SetExpanded(const QString& key, bool expanded);
    bool IsExpanded(const QString& key) const;
    // From the top; a node comes before what is below it.
    QStringList ExpandedKeys() const;

    // Makes a node the selected one and scrolls to it, without NodeClicked.
    void Select(const QString& key);
    QString SelectedKey() const;
    // Takes the vertical scroll bar back to a value, as far as the selected node then stays in sight.
    void ScrollBackTo(int value);
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

Q_SIGNALS:
    // The user chose a node, with the mouse or the keyboard; the node chosen before may be chosen again.
    void NodeClicked(const QString& key);
    // Enter on the selected node; it is left to the window as well.
    void EnterPressed(const QString& key);
    void NodeExpanded(const QString& key);
    void NodeCollapsed(const QString& key);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void updateGeometries() override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void verticalScrollbarValueChanged(int value) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

private:
    void FitColumn();
    int RoomFor(const QModelIndex& index) const;
    void OnExpanded(const QString& key);
    void OpenSelected();

    KeyedTreeModel* model_;
    bool selecting_ = false;
    // The user has not scrolled the selected node away.
    bool inSight_ = true;
    // Where the names of the nodes seen so far are readable, in pixels of the column.
    int widestNode_ = 0;
    bool fitting_ = false;
    // The program says what is open; it may call a node without children so.
    bool settingExpanded_ = false;
    // The mouse press under way has been told already.
    bool told_ = false;
};

} // namespace velmo
