#include "library/category_clipboard.h"

#include "library/category_way.h"
#include "library/library_database.h"

namespace velmo {

namespace {

constexpr std::int16_t Nothing = 0;
constexpr std::int16_t CutOut = 1;
constexpr std::int16_t Copied = 2;

// Adds a category of the same name and slide under another parent, if there is one to copy.
void CopyCategory(Database& library, int id, int parentId) {
    const RecordSet source = CategoryWithId(library, id);
    if (source.Eof())
        return;
    RecordSet target = AllCategories(library);
    target.AddNew();
    target.SetNumber(u"ParentID", parentId);
    target.Set(u"foldername", source.Text(u"foldername"));
    target.Set(u"SLDFileName", source.Text(u"SLDFileName"));
    target.Update();
    RequireHandledId(library);
}

// Adds each entry of a category to it once more.
void DoubleEntries(Database& library, int folderId) {
    // Rows added while others are read would be read too.
    std::vector<Entry> sources;
    for (RecordSet rows = EntriesOf(library, folderId); !rows.Eof(); rows.MoveNext())
        sources.push_back(ReadEntry(rows));
    if (sources.empty())
        return;
    RecordSet target = AllEntries(library);
    for (const Entry& source : sources) {
        target.AddNew();
        target.SetNumber(u"FolderiD", folderId);
        target.Set(u"PDFName", source.name);
        target.Set(u"PDFFileName", source.file);
        target.Set(u"SLDFileName", source.slide);
        target.Update();
        RequireHandledId(library);
    }
}

void MoveCategory(Database& library, int id, int parentId) {
    RecordSet source = CategoryWithId(library, id);
    if (source.Eof())
        return;
    source.Edit();
    source.SetNumber(u"ParentID", parentId);
    source.Update();
}

} // namespace

void CategoryClipboard::Copy(const GlobalState& state) {
    ClipFolderID_ = state.CurFolderID;
    ClipKind_ = Copied;
}

void CategoryClipboard::Cut(const GlobalState& state) {
    ClipFolderID_ = state.CurFolderID;
    ClipKind_ = CutOut;
}

QString CategoryClipboard::QuestionBeforePaste(const GlobalState& state) const {
    if (ClipKind_ != CutOut)
        return {};
    Database library(state.LibraryDb, Database::Access::Read);
    const RecordSet cut = CategoryWithId(library, ClipFolderID_);
    if (cut.Eof())
        return {};
    const QString name = cut.Text(u"foldername");
    const std::optional<QSet<std::int16_t>> way = WayToRoot(library, state.CurFolderID);
    if (!way)
        return QStringLiteral(
                   "貼り付け先の分類はツリーにありません。\n\n移動すると、「%1」とその下の分類とシンボルは"
                   "ツリーに表示されなくなります。移動してよろしいですか")
            .arg(name);
    return way->contains(ClipFolderID_) ? QuestionBeforeLoss(name) : QString();
}

void CategoryClipboard::Paste(const GlobalState& state) {
    Database library(state.LibraryDb, Database::Access::Write);
    Transaction transaction(library);
    if (ClipKind_ == CutOut) {
        MoveCategory(library, ClipFolderID_, state.CurFolderID);
    } else {
        CopyCategory(library, ClipFolderID_, state.CurFolderID);
        DoubleEntries(library, ClipFolderID_);
    }
    transaction.Commit();
    ClipKind_ = Nothing;
}

} // namespace velmo
