#pragma once

#include "library/library_database.h"
#include "platform/keyed_tree.h"

namespace velmo {

// Reads the levels of a library's categories into a tree, each when it is asked for. A category whose own
// subcategories are not read yet has a placeholder below it.
class CategoryLevels {
public:
    explicit CategoryLevels(KeyedTree& view);

    // Which of the categories without a parent the tree shows.
    enum class Roots { First, All };
    // Adds them, opened, with the level below. Throws 3021 when the first is asked for and there is none.
    void AddRoots(Database& library, bool systemTree, Roots roots);

    // Fills a category that is in the tree, unless it is filled already. Throws 35601.
    void Load(Database& library, bool systemTree, int id);
    // Whether the node's own subcategories stand below it, not only the placeholder for them.
    bool IsLoaded(const QString& key) const;

private:
    KeyedTree& view_;
};

// The names of the categories above a node, each with the separator behind it; that of the tree's first root
// only when it is asked for.
enum class FirstRoot { Without, With };
QString WayTo(const KeyedTree& view, const QString& key, FirstRoot firstRoot);

} // namespace velmo
