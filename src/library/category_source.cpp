#include "library/category_source.h"

#include "library/category_keys.h"

namespace velmo {

CategorySource::CategorySource(KeyedTree& view, const GlobalState& state)
    : view_(view), state_(state), levels_(view) {}

void CategorySource::AddRoots() {
    Database library = OpenLibrary();
    levels_.AddRoots(library, false, CategoryLevels::Roots::All);
}

void CategorySource::Load(const QString& key) {
    if (levels_.IsLoaded(key))
        return;
    Database library = OpenLibrary();
    levels_.Load(library, false, CategoryIdOf(key));
}

QString CategorySource::ChoiceText(const QString& key) const {
    return WayTo(view_, key, FirstRoot::Without) + view_.Text(key);
}

Database CategorySource::OpenLibrary() const {
    return Database(CurrentLibrary(state_), Database::Access::Read);
}

} // namespace velmo
