#pragma once

#include "library/category_levels.h"
#include "pickers/folder_source.h"
#include "startup/global_state.h"

namespace velmo {

// The categories of the library in use, for the folder picker: all of them, whatever root they belong to.
class CategorySource : public FolderSource {
public:
    CategorySource(KeyedTree& view, const GlobalState& state);

    void AddRoots() override;
    void Load(const QString& key) override;
    // The names on the way to the category.
    QString ChoiceText(const QString& key) const override;

private:
    Database OpenLibrary() const;

    KeyedTree& view_;
    const GlobalState& state_;
    CategoryLevels levels_;
};

} // namespace velmo
