#include "library/category_way.h"

#include "library/library_database.h"

namespace velmo {

std::optional<QSet<std::int16_t>> WayToRoot(Database& library, std::int16_t id) {
    QSet<std::int16_t> way;
    while (id != 0 && !way.contains(id)) {
        const RecordSet row = CategoryWithId(library, id);
        if (row.Eof())
            return std::nullopt;
        way.insert(id);
        id = row.Integer(u"ParentID");
    }
    return id == 0 && !way.isEmpty() ? std::optional(way) : std::nullopt;
}

QString QuestionBeforeLoss(const QString& category) {
    return QStringLiteral(
               "移動先は、移動する分類「%1」の中にあります。\n\n移動すると、「%1」とその下の分類とシンボルは"
               "ツリーに表示されなくなります。移動してよろしいですか")
        .arg(category);
}

} // namespace velmo
