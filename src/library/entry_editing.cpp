#include "library/entry_editing.h"

#include "library/library_database.h"
#include "platform/code_page.h"
#include "platform/runtime_error.h"

namespace velmo {

namespace {

bool IsEntryMode(const GlobalState& state) {
    return state.EditMode >= edit_mode::AddEntry;
}

// A text box: its number, its caption and what it holds.
struct Box {
    int number;
    QString caption;
    const QString& text;
    bool required;
    // The CAD side reads it, in code page 932.
    bool handedOver;
};

QList<Box> BoxesOf(const GlobalState& state, const EntryTexts& texts) {
    if (IsEntryMode(state))
        return {{2, QStringLiteral("ＰＤＦ名"), texts.Name2, true, false},
                {3, QStringLiteral("PDFファイル名"), texts.Name3, true, true},
                {4, QStringLiteral("SLDファイル名"), texts.Name4, true, false}};
    return {{2, QStringLiteral("フォルダ名"), texts.Name2, true, false},
            {3, QStringLiteral("SLDファイル名"), texts.Name3, false, false}};
}

// No name can hold these: controls, line breaks of any kind, and halves of characters.
std::optional<QChar> FirstUnusable(const QString& text) {
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QChar c = text[at];
        const bool pair = c.isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate();
        const bool lineBreak =
            c == QChar(0x85) || c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
        if (c < QChar(0x20) || c == QChar(0x7F) || lineBreak || (c.isSurrogate() && !pair))
            return c;
        at += pair ? 1 : 0;
    }
    return std::nullopt;
}

std::optional<QString> Complaint(const Box& box) {
    if (box.text.size() > LongestText)
        return QStringLiteral("%1は %2 文字以内で入力してください (今は %3 文字です)")
            .arg(box.caption)
            .arg(LongestText)
            .arg(box.text.size());
    if (const std::optional<QChar> unusable = FirstUnusable(box.text))
        return QStringLiteral("%1に使えない文字 (U+%2) があります")
            .arg(box.caption, QString::number(unusable->unicode(), 16).toUpper().rightJustified(4, u'0'));
    if (!box.handedOver)
        return std::nullopt;
    if (const std::optional<QString> foreign = FirstForeignCharacter(box.text))
        return QStringLiteral("%1の文字「%2」は CAD に渡せません (コードページ 932 にない文字です)")
            .arg(box.caption, *foreign);
    return std::nullopt;
}

QString NameOfCategory(Database& library, int id) {
    return CategoryWithId(library, id).Text(u"foldername");
}

EntryTexts LoadFolder(Database& library, int id) {
    const RecordSet folder = CategoryWithId(library, id);
    const int parent = folder.Integer(u"ParentID");
    return {parent == 0 ? QStringLiteral("ルートフォルダ") : NameOfCategory(library, parent),
            folder.Text(u"foldername"),
            folder.Text(u"SLDFileName"),
            {}};
}

EntryTexts LoadEntry(Database& library, int folderId, int id) {
    const QString folder = NameOfCategory(library, folderId);
    const Entry entry = ReadEntry(EntryWithId(library, id));
    return {folder, entry.name, entry.file, entry.slide};
}

} // namespace

EntryTexts LoadEntryTexts(const GlobalState& state) {
    Database library(state.LibraryDb, Database::Access::Read);
    switch (state.EditMode) {
    case edit_mode::AddFolder:
    case edit_mode::AddEntry:
        return {NameOfCategory(library, state.CurFolderID), {}, {}, {}};
    case edit_mode::EditFolder:
        return LoadFolder(library, state.CurFolderID);
    case edit_mode::EditEntry:
        return LoadEntry(library, state.CurFolderID, state.CurPdfID);
    default:
        return {};
    }
}

std::optional<EntryRefusal> CheckEntryTexts(const GlobalState& state, const EntryTexts& texts) {
    const QList<Box> boxes = BoxesOf(state, texts);
    for (const Box& box : boxes) {
        if (box.required && box.text.isEmpty())
            return EntryRefusal{box.number, box.caption + QStringLiteral("を入力してください")};
    }
    for (const Box& box : boxes) {
        if (const std::optional<QString> complaint = Complaint(box))
            return EntryRefusal{box.number, *complaint};
    }
    return std::nullopt;
}

void SaveFolderEntry(GlobalState& state, const EntryTexts& texts) {
    Database library(state.LibraryDb, Database::Access::Write);
    Transaction transaction(library);
    std::int16_t id = state.CurFolderID;
    {
        RecordSet folder = CategoryWithId(library, state.CurFolderID);
        if (folder.Eof())
            throw RuntimeError(ErrorNumber::NoCurrentRecord).InFile(library.Path());
        const bool added = state.EditMode == edit_mode::AddFolder;
        if (added) {
            folder.AddNew();
            folder.SetNumber(u"ParentID", state.CurFolderID);
        } else {
            folder.Edit();
        }
        folder.Set(u"foldername", texts.Name2);
        folder.Set(u"SLDFileName", texts.Name3);
        folder.Update();
        if (added) {
            RequireHandledId(library);
            id = std::int16_t(library.LastAddedId());
        }
    }
    transaction.Commit();
    state.CurFolderID = id;
    state.CurFolderName = texts.Name2;
    state.CurSldFile = texts.Name3;
}

void SavePdfEntry(GlobalState& state, const EntryTexts& texts) {
    Database library(state.LibraryDb, Database::Access::Write);
    Transaction transaction(library);
    std::int16_t editMode = state.EditMode;
    {
        RecordSet entry = EntryWithId(library, state.CurPdfID);
        if (entry.Eof())
            editMode = edit_mode::AddEntry;
        const bool added = editMode == edit_mode::AddEntry;
        if (added) {
            entry.AddNew();
            entry.SetNumber(u"FolderiD", state.CurFolderID);
        } else {
            entry.Edit();
        }
        entry.Set(u"PDFName", texts.Name2);
        entry.Set(u"PDFFileName", texts.Name3);
        entry.Set(u"SLDFileName", texts.Name4);
        entry.Update();
        if (added)
            RequireHandledId(library);
    }
    transaction.Commit();
    state.EditMode = editMode;
    state.CurSldFile = texts.Name4;
}

} // namespace velmo
