#include "library/list_file_import.h"

#include "platform/runtime_error.h"

#include <limits>

namespace velmo {

namespace {

// Position of a character at or after start; positions count from 1, and 0 means that there is none.
int Position(const QString& line, QChar c, int start) {
    return start > line.size() ? 0 : int(line.indexOf(c, start - 1)) + 1;
}

// The characters from a position on, fewer where the line is shorter. Throws 5 when length is negative.
QString Cut(const QString& line, int start, int length) {
    if (length < 0 || start < 1)
        throw RuntimeError(ErrorNumber::InvalidArgument,
                           QStringLiteral("名前、スライド、ファイルの区切りが正しくありません。"));
    return line.mid(start - 1, length);
}

// Numbers have 16 bits.
constexpr int MostRows = std::numeric_limits<std::int16_t>::max();

// Throws 6 when there is no number for one more.
void RequireRoom(int count, const QString& what) {
    if (count == MostRows)
        throw RuntimeError(
            ErrorNumber::Overflow,
            QStringLiteral("ライブラリに登録できる%1は %2 件までです。").arg(what).arg(MostRows));
}

} // namespace

ListFileImport::ListFileImport(Database& database)
    : folders_(database, QStringLiteral("FolderTable")), entries_(database, QStringLiteral("PDFFileTable")) {}

int& ListFileImport::StackAt(int depth) {
    if (depth > DeepestLevel)
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange,
                           QStringLiteral("分類の階層が %1 を超えています。").arg(DeepestLevel));
    return stack_[size_t(depth)];
}

void ListFileImport::ImportListLine(const QString& line) {
    const int open = Position(line, u'(', 1);
    const int quote = Position(line, u'"', open + 1);
    if (quote > 0) {
        ImportQuotedLine(line, open, quote);
        return;
    }
    if (open == 0) {
        if (depth_ >= 1)
            --depth_;
    } else if (Position(line, u')', open + 1) == 0) {
        ++depth_;
    }
}

void ListFileImport::ImportQuotedLine(const QString& line, int open, int quote) {
    const int endQuote = Position(line, u'"', quote + 1);
    if (endQuote < 1)
        return;
    if (folderCounter_ == 0) {
        AddImportedEntry(SystemRootName, {}, {});
        StackAt(0) = folderCounter_;
        return;
    }
    const int comma1 = Position(line, u',', quote + 1);
    const int comma2 = Position(line, u',', comma1 + quote + 2);
    const QString name = Cut(line, quote + 1, comma1 - quote - 1);
    const QString slide = Cut(line, comma1 + 3, comma2 - comma1 - 3);
    const QString file =
        comma2 == endQuote - 1 ? QString() : Cut(line, comma2 + 3, int(line.size()) - comma2 - 4);
    AddImportedEntry(name, slide, file);
    if (!file.isEmpty())
        return;
    if (open == 0) {
        if (depth_ >= 1)
            --depth_;
    } else if (Position(line, u')', endQuote + 1) == 0) {
        ++depth_;
        StackAt(depth_) = folderCounter_;
    }
}

void ListFileImport::AddImportedEntry(const QString& name, const QString& slide, const QString& file) {
    if (!file.isEmpty()) {
        RequireRoom(entryCount_, QStringLiteral("シンボル"));
        ++entryCount_;
        entries_.AddNew();
        entries_.SetNumber(u"FolderiD", folderCounter_);
        entries_.Set(u"PDFName", name);
        entries_.Set(u"PDFFileName", SymbolFolder + file);
        entries_.Set(u"SLDFileName", SymbolFolder + slide);
        entries_.Update();
        return;
    }
    RequireRoom(folderCounter_, QStringLiteral("分類"));
    ++folderCounter_;
    const bool root = folderCounter_ == 1;
    folders_.AddNew();
    folders_.SetNumber(u"ParentID", root ? 0 : StackAt(depth_));
    if (!root)
        folders_.Set(u"SLDFileName", SymbolFolder + slide);
    folders_.Set(u"foldername", name);
    folders_.Update();
}

} // namespace velmo
