#include "library/moved_names.h"

#include "library/library_database.h"
#include "platform/files.h"

#include <QHash>

namespace velmo {

namespace {

class MovedNames {
public:
    MovedNames(const QString& libRoot, const std::vector<NameChange>& moved) : libRoot_(libRoot) {
        for (const NameChange& change : moved) {
            newNames_.insert(change.oldName, change.newName);
            folded_.insert(change.oldName.toCaseFolded(), change.newName);
        }
    }

    // The new name of what a field names; nothing when that was not moved.
    std::optional<QString> Of(const QString& name) const {
        const auto exact = newNames_.constFind(name);
        if (exact != newNames_.constEnd())
            return *exact;
        const auto folded = folded_.constFind(name.toCaseFolded());
        return folded == folded_.constEnd() || FileExists(libRoot_ + name) ? std::nullopt
                                                                           : std::optional(*folded);
    }

private:
    const QString& libRoot_;
    QHash<QString, QString> newNames_;
    QHash<QString, QString> folded_;
};

int StoreIn(RecordSet rows, std::initializer_list<QStringView> fields, const MovedNames& names) {
    int changed = 0;
    for (; !rows.Eof(); rows.MoveNext()) {
        rows.Edit();
        bool found = false;
        for (const QStringView field : fields) {
            const std::optional<QString> newName = names.Of(rows.Text(field));
            if (!newName)
                continue;
            rows.Set(field, *newName);
            found = true;
        }
        rows.Update();
        changed += found ? 1 : 0;
    }
    return changed;
}

} // namespace

int StoreMovedNames(Database& library, const QString& libRoot, const std::vector<NameChange>& moved) {
    const MovedNames names(libRoot, moved);
    return StoreIn(AllEntries(library), {PdfField, SlideField}, names) +
           StoreIn(AllCategories(library), {SlideField}, names);
}

} // namespace velmo
