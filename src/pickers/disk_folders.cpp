#include "pickers/disk_folders.h"

#include "pickers/folder_scan.h"
#include "platform/folder_images.h"

namespace velmo {

namespace {

const QString RootText = QStringLiteral("トルヴィク");
const QString PlaceholderText = QStringLiteral("sub");
// No path begins so.
const QString Placeholder = QStringLiteral("\\\\\\");
const QString CurrentFolder = QStringLiteral(".\\");

} // namespace

DiskFolders::DiskFolders(KeyedTree& view, const QString& home)
    : view_(view), root_(home.isEmpty() ? CurrentFolder : FolderPath(home)) {}

QString DiskFolders::KeyOf(const QString& folder) {
    return UpperCasePath(FolderPath(folder));
}

QString DiskFolders::PathOf(const QString& folder) const {
    const QString path = FolderPath(folder);
    return path.startsWith(root_, Qt::CaseInsensitive) ? root_ + path.sliced(root_.size()) : path;
}

void DiskFolders::AddRoots() {
    const QString key = KeyOf(root_);
    view_.Nodes().Add({}, {NewNode{key, RootText, ClosedFolder, {}}});
    Scan(key);
}

void DiskFolders::Load(const QString& key) {
    if (IsPlaceholder(view_.FirstChildKey(key)))
        Scan(key);
}

bool DiskFolders::IsPlaceholder(const QString& key) const {
    return key.startsWith(Placeholder);
}

bool DiskFolders::OpenWay(const QString& folder) {
    const QString way = KeyOf(folder);
    const QString root = KeyOf(root_);
    if (!way.startsWith(root))
        return false;
    for (qsizetype end = way.indexOf(u'\\', root.size()); end >= 0; end = way.indexOf(u'\\', end + 1)) {
        const QString key = way.first(end + 1);
        if (!view_.Nodes().Contains(key))
            return false;
        Scan(key);
    }
    return true;
}

void DiskFolders::Scan(const QString& key) {
    if (const QString first = view_.FirstChildKey(key); IsPlaceholder(first))
        view_.Nodes().Remove(first);
    if (!view_.FirstChildKey(key).isEmpty())
        return;
    const QStringList names = SubFolders(PathOf(key));
    std::vector<NewNode> folders;
    folders.reserve(size_t(names.size()));
    for (const QString& name : names) {
        const QString folder = key + UpperCasePath(name) + u'\\';
        folders.push_back(
            {folder, name, ClosedFolder, {NewNode{Placeholder + folder, PlaceholderText, ClosedFolder, {}}}});
    }
    if (folders.empty())
        return;
    view_.Nodes().Add(key, folders);
    view_.SetExpanded(key, true);
    view_.Nodes().SetImage(key, OpenFolder);
}

} // namespace velmo
