#include "library/category_levels.h"

#include "library/category_keys.h"
#include "platform/folder_images.h"
#include "platform/runtime_error.h"

namespace velmo {

CategoryLevels::CategoryLevels(KeyedTree& view) : view_(view) {
    view_.Nodes().SetImages(FolderImages());
}

void CategoryLevels::AddRoots(Database& library, bool systemTree, Roots roots) {
    std::vector<Category> shown;
    RecordSet rows = RootCategories(library);
    if (rows.Eof() && roots == Roots::First)
        throw RuntimeError(ErrorNumber::NoCurrentRecord, QStringLiteral("分類がひとつもありません。"))
            .InFile(library.Path());
    for (; !rows.Eof() && (roots == Roots::All || shown.empty()); rows.MoveNext())
        shown.push_back(ReadCategory(rows));
    for (const Category& root : shown) {
        const QString key = CategoryKey(systemTree, root.id);
        view_.Nodes().Add({}, {NewNode{key, root.name, OpenFolder, {}}});
        Load(library, systemTree, root.id);
        view_.SetExpanded(key, true);
    }
}

void CategoryLevels::Load(Database& library, bool systemTree, int id) {
    const QString parent = CategoryKey(systemTree, id);
    if (IsLoaded(parent))
        return;
    const QString placeholder = systemTree ? SystemPlaceholder : LibraryPlaceholder;
    const QString first = view_.FirstChildKey(parent);

    std::vector<NewNode> children;
    for (RecordSet rows = ChildCategories(library, id); !rows.Eof(); rows.MoveNext()) {
        const int childId = rows.Integer(u"ID");
        NewNode child{CategoryKey(systemTree, childId), rows.Text(u"foldername"), ClosedFolder, {}};
        const RecordSet grandchildren = ChildCategories(library, childId);
        if (!grandchildren.Eof())
            child.children.push_back({placeholder + grandchildren.Text(u"ID"),
                                      grandchildren.Text(u"foldername"),
                                      ClosedFolder,
                                      {}});
        children.push_back(std::move(child));
    }
    if (!first.isEmpty())
        view_.Nodes().Remove(first);
    view_.Nodes().Add(parent, children);
}

bool CategoryLevels::IsLoaded(const QString& key) const {
    const QString first = view_.FirstChildKey(key);
    return !first.isEmpty() && !IsPlaceholderKey(first);
}

QString WayTo(const KeyedTree& view, const QString& key, FirstRoot firstRoot) {
    QString way;
    for (QString above = view.ParentKey(key); !above.isEmpty(); above = view.ParentKey(above)) {
        if (above == view.FirstKey() && firstRoot == FirstRoot::Without)
            break;
        way.prepend(view.Text(above) + PathSeparator);
    }
    return way;
}

} // namespace velmo
