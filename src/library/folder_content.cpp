#include "library/folder_content.h"

#include "library/category_way.h"
#include "library/library_database.h"

#include <QSet>

#include <algorithm>

namespace velmo {

namespace {

// Gives the field the target number in every row that is among the chosen ones.
void MoveRows(RecordSet rows, const QSet<std::int16_t>& chosen, QStringView field, std::int16_t target) {
    for (; !rows.Eof(); rows.MoveNext()) {
        if (!chosen.contains(rows.Integer(u"ID")))
            continue;
        rows.Edit();
        rows.SetNumber(field, target);
        rows.Update();
    }
}

QSet<std::int16_t> NumbersOf(const std::vector<ContentRow>& rows) {
    QSet<std::int16_t> numbers;
    for (const ContentRow& row : rows)
        numbers.insert(row.id);
    return numbers;
}

} // namespace

std::vector<ContentRow> FolderContent(const GlobalState& state) {
    std::vector<ContentRow> content;
    Database library(state.LibraryDb, Database::Access::Read);
    for (RecordSet rows = ChildCategories(library, state.CurFolderID); !rows.Eof(); rows.MoveNext())
        content.push_back({true, rows.Integer(u"ID"), rows.Text(u"foldername"), {}, {}});
    for (RecordSet rows = EntriesOf(library, state.CurFolderID); !rows.Eof(); rows.MoveNext()) {
        const Entry entry = ReadEntry(rows);
        content.push_back({false, rows.Integer(u"ID"), entry.name, entry.file, entry.slide});
    }
    return content;
}

QString QuestionBeforeMove(const GlobalState& state, const std::vector<ContentRow>& rows,
                           const std::vector<ContentRow>& selected, std::int16_t target) {
    const QSet<std::int16_t> chosen = NumbersOf(selected);
    Database library(state.LibraryDb, Database::Access::Read);
    const std::optional<QSet<std::int16_t>> way = WayToRoot(library, target);
    if (!way)
        return QStringLiteral("移動先の分類が選択されていないか、ツリーにありません。\n\n"
                              "移動すると、選択した分類とシンボルはツリーに表示されなくなります。"
                              "移動してよろしいですか");
    const auto lost = std::find_if(rows.begin(), rows.end(), [&](const ContentRow& row) {
        return row.isFolder && chosen.contains(row.id) && way->contains(row.id);
    });
    return lost == rows.end() ? QString() : QuestionBeforeLoss(lost->name);
}

void MoveToCategory(const GlobalState& state, const std::vector<ContentRow>& rows,
                    const std::vector<ContentRow>& selected, std::int16_t target) {
    const QSet<std::int16_t> chosen = NumbersOf(selected);
    const auto isFolder = [](const ContentRow& row) { return row.isFolder; };
    Database library(state.LibraryDb, Database::Access::Write);
    Transaction transaction(library);
    if (std::any_of(rows.begin(), rows.end(), isFolder))
        MoveRows(ChildCategories(library, state.CurFolderID), chosen, u"ParentID", target);
    if (!std::all_of(rows.begin(), rows.end(), isFolder))
        MoveRows(EntriesOf(library, state.CurFolderID), chosen, u"FolderiD", target);
    transaction.Commit();
}

} // namespace velmo
