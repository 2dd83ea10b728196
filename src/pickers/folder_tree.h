#pragma once

#include "pickers/folder_source.h"
#include "platform/keyed_tree.h"
#include "platform/message_boxes.h"

#include <functional>

namespace velmo {

// The tree in which a dialog offers folders: reads each when the user opens it, tells which one the user
// chooses, and shows by the images which are open or chosen.
class FolderTree : public QObject {
    Q_OBJECT

public:
    // All outlive this object.
    FolderTree(KeyedTree& view, FolderSource& source, MessageBoxes& messages);

    // Fills the tree anew, then opens what else is to be open at first.
    void Fill(const std::function<void()>& open);
    // Makes a node the selected one, in sight, without FolderChosen. Throws 35601 when there is none.
    void Select(const QString& key);

Q_SIGNALS:
    // The user chose a folder; the one chosen before may be chosen again.
    void FolderChosen(const QString& key);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Expand(const QString& key);
    void Collapse(const QString& key);
    void NodeClick(const QString& key);
    void MarkSelected(const QString& key);

    KeyedTree& view_;
    FolderSource& source_;
    MessageBoxes& messages_;
    // The node that is marked as the selected one.
    QString marked_;
    // The tree is being filled: what happens to it is not the user's doing.
    bool loading_ = false;
};

} // namespace velmo
