#include "library/move_note.h"

#include "platform/files.h"
#include "platform/runtime_error.h"
#include "platform/save_file.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

#include <cerrno>
#include <optional>

namespace velmo {

namespace {

// More than the moves of all files of a library need.
constexpr qint64 MostBytes = 268'435'456;

// Each line is a list of its own, so that names may hold whatever they like.
QByteArray Line(const NameChange& change) {
    const QJsonArray texts{change.field, change.oldName, change.newName};
    return QJsonDocument(texts).toJson(QJsonDocument::Compact) + '\n';
}

std::optional<NameChange> ReadLine(const QByteArray& line) {
    constexpr qsizetype texts = 3;
    const QJsonArray read = QJsonDocument::fromJson(line).array();
    if (read.size() != texts || !read[0].isString() || !read[1].isString() || !read[2].isString())
        return std::nullopt;
    const NameChange change{read[0].toString(), read[1].toString(), read[2].toString()};
    if (change.field != PdfField && change.field != SlideField)
        return std::nullopt;
    return change;
}

} // namespace

MoveNote::MoveNote(const QString& library)
    : stored_(library + QStringLiteral(".move")), path_(NativePath(library) + QStringLiteral(".move")) {}

bool MoveNote::Exists() const {
    return QFileInfo::exists(path_);
}

QByteArray MoveNote::Bytes() const {
    QFile file(path_);
    // A link would make another file the note.
    if (QFileInfo(path_).isSymLink() || !OpenRegularFile(file, QIODevice::ReadOnly) ||
        file.size() > MostBytes)
        ThrowCannotOpen(stored_);
    return file.readAll();
}

std::vector<NameChange> MoveNote::Read() {
    known_ = Bytes();
    std::vector<NameChange> changes;
    QByteArrayList lines = known_.split('\n');
    bool understood = lines.takeLast().isEmpty();
    for (const QByteArray& line : lines) {
        const std::optional<NameChange> change = ReadLine(line);
        understood = understood && change;
        if (understood)
            changes.push_back(*change);
    }
    if (!understood)
        throw RuntimeError(ErrorNumber::PathFileAccess,
                           QStringLiteral("前回のファイル移動の記録を読めません。"))
            .InFile(stored_)
            .AtLine(qint64(changes.size()) + 1);
    return changes;
}

void MoveNote::Write(const std::vector<NameChange>& changes) {
    QByteArray bytes;
    for (const NameChange& change : changes)
        bytes += Line(change);
    if (!ReplaceFileThrough(path_ + QStringLiteral(".new"), path_, bytes))
        ThrowCannotWrite(stored_, errno);
    known_ = bytes;
}

void MoveNote::Remove() const {
    if (Exists() && Bytes() == known_)
        DeleteFile(path_);
}

} // namespace velmo
