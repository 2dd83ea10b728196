#pragma once

#include "library/category_levels.h"
#include "platform/message_boxes.h"
#include "startup/global_state.h"

namespace velmo {

// Fills the tree of categories from the library databases, level by level as the user opens it, and keeps the
// selected category in the state.
class CategoryTree : public QObject {
    Q_OBJECT

public:
    CategoryTree(KeyedTree& view, GlobalState& state, MessageBoxes& messages);

    // Builds the whole tree anew. Throws 3021 when a library has no root category.
    void BuildCategoryTree();
    // Shows what has changed in the libraries: builds the tree anew and selects CurFolderID; what was open
    // and in sight stays so. Throws as both do.
    void Rebuild();
    // Opens the way to CurFolderID and selects its node; a category that is gone or a root gives category 1.
    // Throws 35601 when the tree has no such node.
    void RestoreSelection();

    // Opens the way to a category (IDs from the root on) and chooses it as a click does. False when the
    // libraries have no such category any more; the tree was built anew then and its selection restored.
    bool Choose(bool systemTree, const std::vector<std::int16_t>& way);

    // The names on the way to the selected category.
    QString PathText() const;

Q_SIGNALS:
    // The user chose a category; CurFolderID and SystemTreeFirst name it.
    void CategoryChosen();

private:
    void AddRoot(bool systemTree);
    void AddSystemRoot();
    void LoadChildren(Database& library, int id);
    void LoadSystemChildren(Database& library, int id);
    void Open(const QString& key);
    void OpenAgain(const QString& key);
    void BuildAgain();
    bool LibraryShows(bool systemTree, std::int16_t id) const;
    bool OpenWay(bool systemTree, const std::vector<std::int16_t>& way);
    void Expand(const QString& key);
    void Collapse(const QString& key);
    void NodeClick(const QString& key);
    const QString& DatabasePath(bool systemTree) const;
    std::vector<int> WayToCurrent(Database& library) const;
    QString RequireNode(bool systemTree, int id) const;

    KeyedTree& view_;
    GlobalState& state_;
    MessageBoxes& messages_;
    CategoryLevels levels_;
    // The tree is being filled: expanding and collapsing are not the user's.
    bool busy_ = false;
};

} // namespace velmo
