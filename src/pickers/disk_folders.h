#pragma once

#include "pickers/folder_source.h"
#include "platform/keyed_tree.h"

namespace velmo {

// The folders of the disk from the library home folder down. A folder's key is its path in upper case, ending
// in a backslash. A folder that was not read yet has a placeholder below it, whether it has folders or not.
class DiskFolders : public FolderSource {
public:
    // home: stored path; the current folder when it is empty.
    DiskFolders(KeyedTree& view, const QString& home);

    // The path of the tree's root.
    const QString& Root() const { return root_; }
    static QString KeyOf(const QString& folder);
    // Where a folder is, given by its key or by its path in any case: the root is spelled as it was given, so
    // that it is no other folder whose name differs only in case, and need not be found. A folder that is not
    // below the root stays as it is.
    QString PathOf(const QString& folder) const;

    void AddRoots() override;
    void Load(const QString& key) override;
    QString ChoiceText(const QString& key) const override { return key; }
    bool IsPlaceholder(const QString& key) const override;

    // Reads every folder on the way to a folder, and the folder itself. False when the tree has no such
    // folder.
    bool OpenWay(const QString& folder);

private:
    void Scan(const QString& key);

    KeyedTree& view_;
    QString root_;
};

} // namespace velmo
