#pragma once

#include <QString>

namespace velmo {

// What a tree of folders shows, read level by level: folders of the disk, or the categories of a library.
// Each is made for one tree, which it fills; failures are run-time errors.
class FolderSource {
public:
    virtual ~FolderSource() = default;

    // Fills the empty tree with what it shows at first.
    virtual void AddRoots() = 0;
    // Fills a node that the user opens, unless it is filled already.
    virtual void Load(const QString& key) = 0;
    // How a node is named as the choice.
    virtual QString ChoiceText(const QString& key) const = 0;
    // Whether a node only stands for children that are not read yet; it cannot be chosen.
    virtual bool IsPlaceholder(const QString& key) const { return key.startsWith(u'\\'); }
};

} // namespace velmo
