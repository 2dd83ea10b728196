#include "library/library_names.h"

#include <QHash>
#include <QSet>

#include <limits>

namespace velmo {

namespace {

// Rows between two reports of progress.
constexpr qint64 RowsPerReport = 1024;
// What a table holds at most, as far as the program can tell its rows apart.
constexpr qint64 MostRows = std::numeric_limits<std::int16_t>::max();
constexpr qint64 Tables = 2;

struct CategoryRow {
    std::int16_t id = 0;
    std::int16_t parentId = 0;
    QString name;
};

// A whole number of 16 bits; nothing when the field holds none.
std::optional<std::int16_t> NumberIn(const RecordSet& row, QStringView field) {
    bool isNumber = false;
    const std::int16_t number = row.Text(field).toShort(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

// Counts the rows of one table after the other.
class ReadingSteps {
public:
    explicit ReadingSteps(const ReadingProgress& progress) : progress_(progress) {}

    bool GoOn() {
        ++row_;
        return row_ % RowsPerReport != 0 || !progress_ ||
               progress_(table_ * MostRows + qMin(row_, MostRows), Tables * MostRows);
    }
    void NextTable() {
        ++table_;
        row_ = 0;
    }

private:
    const ReadingProgress& progress_;
    qint64 table_ = 0;
    qint64 row_ = 0;
};

bool ReadCategories(Database& library, ReadingSteps& steps, std::vector<CategoryRow>& read) {
    QSet<std::int16_t> known;
    for (RecordSet rows = AllCategories(library); !rows.Eof(); rows.MoveNext()) {
        if (!steps.GoOn())
            return false;
        const auto id = NumberIn(rows, u"ID");
        const auto parentId = NumberIn(rows, u"ParentID");
        if (id.value_or(0) == 0 || !parentId || known.contains(*id))
            continue;
        known.insert(*id);
        read.push_back({*id, *parentId, rows.Text(u"FolderName")});
    }
    return true;
}

// Marks what the first root leads to and puts it in order.
std::vector<bool> Reach(const std::vector<CategoryRow>& rows, std::vector<int>& fromTheRoot) {
    std::vector<bool> reached(rows.size(), false);
    QHash<std::int16_t, std::vector<int>> below;
    for (int row = 0; row < int(rows.size()); ++row) {
        const std::int16_t parentId = rows[size_t(row)].parentId;
        if (parentId != 0)
            below[parentId].push_back(row);
        else if (fromTheRoot.empty())
            fromTheRoot.push_back(row);
    }
    // Every row has one parent only, so none is met twice.
    for (size_t next = 0; next < fromTheRoot.size(); ++next) {
        const size_t row = size_t(fromTheRoot[next]);
        reached[row] = true;
        const auto children = below.constFind(rows[row].id);
        if (children != below.constEnd())
            fromTheRoot.insert(fromTheRoot.end(), children->begin(), children->end());
    }
    return reached;
}

} // namespace

std::optional<LibraryNames> ReadLibraryNames(Database& library, const ReadingProgress& progress) {
    ReadingSteps steps(progress);
    std::vector<CategoryRow> rows;
    if (!ReadCategories(library, steps, rows))
        return std::nullopt;

    LibraryNames names;
    const std::vector<bool> reached = Reach(rows, names.fromTheRoot);
    QHash<std::int16_t, int> categoryOf;
    std::vector<int> placeOf(rows.size(), -1);
    for (size_t row = 0; row < rows.size(); ++row) {
        if (!reached[row])
            continue;
        placeOf[row] = int(names.categories.size());
        categoryOf.insert(rows[row].id, placeOf[row]);
        names.categories.push_back({rows[row].id, -1, std::move(rows[row].name)});
    }
    for (int& category : names.fromTheRoot) {
        const CategoryRow& row = rows[size_t(category)];
        category = placeOf[size_t(category)];
        names.categories[size_t(category)].parent = categoryOf.value(row.parentId, -1);
    }

    steps.NextTable();
    for (RecordSet entries = AllEntries(library); !entries.Eof(); entries.MoveNext()) {
        if (!steps.GoOn())
            return std::nullopt;
        const auto id = NumberIn(entries, u"ID");
        const auto folderId = NumberIn(entries, u"FolderID");
        const int category = folderId ? categoryOf.value(*folderId, -1) : -1;
        if (id.value_or(0) != 0 && category >= 0)
            names.entries.push_back({*id, category, entries.Text(u"PDFName")});
    }
    return names;
}

} // namespace velmo
