#include "library/folder_content.h"

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

void MoveToCategory(const GlobalState& state, const std::vector<ContentRow>& rows,
                    const std::vector<ContentRow>& selected, std::int16_t target) {
    QSet<std::int16_t> chosen;
    for (const ContentRow& row : selected)
        chosen.insert(row.id);
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
