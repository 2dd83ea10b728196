#include "platform/file_move.h"

#include "platform/files.h"
#include "platform/runtime_error.h"
#include "platform/work_file.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <memory>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>
#endif

namespace velmo {

namespace {

constexpr qint64 ChunkBytes = 1'048'576;

std::filesystem::path SystemPath(const QString& native) {
    return native.toStdU16String();
}

// The half-written file beside a destination (native path).
QString WorkName(const QString& destination) {
    return destination + QStringLiteral(".moving");
}

// One file on its way to its new place.
class Move {
public:
    Move(const QString& source, const QString& destination)
        : source_(source),
          destination_(destination),
          from_(NativePath(source)),
          to_(NativePath(destination)) {}

    bool IsOntoItself() const { return IsSameFile(from_, to_); }

    // The file is complete on the disk in its new place.
    void Copy(IfThere ifThere) {
        QFile in(from_);
        if (!OpenRegularFile(in, QIODevice::ReadOnly | QIODevice::Unbuffered))
            ThrowCannotOpen(source_);
        replaces_ = QFileInfo::exists(to_);
        if (replaces_)
            RequireReplaceable(ifThere);
        WorkFile work(WorkName(to_));
        if (!work.IsOpen())
            ThrowCannotWrite(destination_, errno);
        work.TakePermissions(from_);
        const qint64 copied = CopyBytes(in, work);
        work.TakeTimes(from_);
        errno = 0;
        if (!work.Finish())
            ThrowCannotWrite(destination_, errno);
        if (QFileInfo(work.Path()).size() != copied || in.size() != copied)
            throw RuntimeError(ErrorNumber::DeviceIo,
                               QStringLiteral("コピーの大きさが元のファイルと違います。"))
                .InFile(destination_);
        TakePlace(work, ifThere);
    }

    [[nodiscard]] bool DeleteSource() const { return QFile::remove(from_); }

    // After a failure the file is only where it was before; what it replaced is gone, so there it stays.
    void TakeBack() const {
        if (!replaces_)
            QFile::remove(to_);
    }

    const QString& Source() const { return source_; }

private:
    void RequireReplaceable(IfThere ifThere) const {
        if (ifThere == IfThere::Refuse)
            throw RuntimeError(ErrorNumber::PathFileAccess, QStringLiteral("ファイルはすでに存在します。"))
                .InFile(destination_);
        // A write-protected file is not to be replaced, even where its folder would let it be.
        QFile old(to_);
        if (!OpenRegularFile(old, QIODevice::ReadWrite))
            ThrowCannotWrite(destination_, errno);
    }

    qint64 CopyBytes(QFile& in, WorkFile& work) const {
        QByteArray buffer(ChunkBytes, Qt::Uninitialized);
        qint64 copied = 0;
        for (;;) {
            const qint64 count = in.read(buffer.data(), buffer.size());
            if (count < 0)
                throw RuntimeError(ErrorNumber::DeviceIo).InFile(source_);
            if (count == 0)
                return copied;
            errno = 0;
            if (!work.Write(QByteArrayView(buffer).first(count)))
                ThrowCannotWrite(destination_, errno);
            copied += count;
        }
    }

    void TakePlace(WorkFile& work, IfThere ifThere) {
        // Copying may have taken long.
        if (!replaces_ && QFileInfo::exists(to_))
            RequireReplaceable(ifThere);
        std::error_code failed;
        std::filesystem::rename(SystemPath(work.Path()), SystemPath(to_), failed);
        if (failed)
            ThrowCannotWrite(destination_, failed.value());
        if (work.Renamed(to_))
            return;
        const int failure = errno;
        TakeBack();
        ThrowCannotWrite(destination_, failure);
    }

    const QString& source_;
    const QString& destination_;
    QString from_;
    QString to_;
    bool replaces_ = false;
};

// All of them, or none: a failure takes back those before.
void CopyAll(const std::vector<std::unique_ptr<Move>>& moves, const std::vector<IfThere>& ifThere) {
    size_t copied = 0;
    try {
        for (; copied < moves.size(); ++copied)
            moves[copied]->Copy(ifThere[copied]);
    } catch (...) {
        for (size_t before = 0; before < copied; ++before)
            moves[before]->TakeBack();
        throw;
    }
}

#ifdef Q_OS_WIN
// 0, or the system's error.
int RenameToNew(const QString& from, const QString& to) {
    const auto wide = [](const QString& path) { return QDir::toNativeSeparators(path).toStdWString(); };
    if (::MoveFileExW(wide(from).c_str(), wide(to).c_str(), MOVEFILE_WRITE_THROUGH) != 0)
        return 0;
    const DWORD failure = ::GetLastError();
    return failure == ERROR_ALREADY_EXISTS || failure == ERROR_FILE_EXISTS ? EEXIST : EIO;
}

constexpr Qt::CaseSensitivity FolderCase = Qt::CaseInsensitive;
#else
int RenameToNew(const QString& from, const QString& to) {
    const QByteArray source = QFile::encodeName(from);
    const QByteArray target = QFile::encodeName(to);
#ifdef RENAME_NOREPLACE
    if (::renameat2(AT_FDCWD, source.constData(), AT_FDCWD, target.constData(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)
        return errno;
#endif
    // A file system without that call has links at least; two names for a moment do no harm.
    if (::link(source.constData(), target.constData()) == 0) {
        static_cast<void>(::unlink(source.constData()));
        return 0;
    }
    if (errno == EEXIST || QFileInfo::exists(to))
        return EEXIST;
    return ::rename(source.constData(), target.constData()) == 0 ? 0 : errno;
}

constexpr Qt::CaseSensitivity FolderCase = Qt::CaseSensitive;
#endif

bool IsSeparator(QChar c) {
    return c == u'\\' || c == u'/';
}

// Whether what follows the root in a path leads on from the root: it names neither a root nor a drive.
bool LeadsOn(QStringView rest) {
    const auto* const end = std::ranges::find_if(rest, IsSeparator);
    return end == rest.end() || (end != rest.begin() && !rest.first(end - rest.begin()).endsWith(u':'));
}

// The folder with all links followed; of one that does not exist what there is of the way to it. Empty when
// it cannot be told where that would lead.
QString CanonicalFolder(QString native) {
    for (;;) {
        const QFileInfo folder(native.isEmpty() ? QStringLiteral(".") : native);
        QString found = folder.canonicalFilePath();
        if (!found.isEmpty() || folder.fileName() == QStringLiteral("..") || folder.path() == native)
            return found;
        native = folder.path();
    }
}

} // namespace

void MoveFile(const QString& source, const QString& destination, IfThere ifThere) {
    MoveTogether({{source, destination, ifThere}});
}

QStringList MoveTogether(const std::vector<FileToMove>& files) {
    std::vector<std::unique_ptr<Move>> moves;
    std::vector<IfThere> ifThere;
    for (const FileToMove& file : files) {
        auto move = std::make_unique<Move>(file.source, file.destination);
        if (move->IsOntoItself())
            continue;
        moves.push_back(std::move(move));
        ifThere.push_back(file.ifThere);
    }
    CopyAll(moves, ifThere);
    QStringList left;
    for (const std::unique_ptr<Move>& move : moves) {
        if (move->DeleteSource())
            continue;
        if (move != moves.front()) {
            left << move->Source();
            continue;
        }
        for (const std::unique_ptr<Move>& copied : moves)
            copied->TakeBack();
        throw RuntimeError(ErrorNumber::PermissionDenied,
                           QStringLiteral("移動元のファイルを削除できません。"))
            .InFile(move->Source());
    }
    return left;
}

bool RenameUnlessThere(const QString& from, const QString& to) {
    const int failure = RenameToNew(NativePath(from), NativePath(to));
    if (failure != 0 && failure != EEXIST)
        throw RuntimeError(ErrorNumber::PathFileAccess).InFile(to);
    return failure == 0;
}

bool IsBelow(const QString& path, const QString& root) {
    if (!path.startsWith(root) || !LeadsOn(QStringView(path).sliced(root.size())))
        return false;
    const auto name = std::find_if(path.rbegin(), path.rend(), IsSeparator);
    // Only the folder is looked for: a file that does not exist would be looked for among all there.
    const QString folder = CanonicalFolder(NativePath(path.first(path.rend() - name)));
    const QString top =
        QFileInfo(root.isEmpty() ? QStringLiteral(".") : NativePath(root)).canonicalFilePath();
    if (folder.isEmpty() || top.isEmpty())
        return false;
    return folder.compare(top, FolderCase) == 0 ||
           folder.startsWith(top.endsWith(u'/') ? top : top + u'/', FolderCase);
}

bool HaveSameBytes(const QString& one, const QString& other) {
    QFile left(NativePath(one));
    QFile right(NativePath(other));
    if (!OpenRegularFile(left, QIODevice::ReadOnly) || !OpenRegularFile(right, QIODevice::ReadOnly) ||
        left.size() != right.size())
        return false;
    while (!left.atEnd()) {
        const QByteArray bytes = left.read(ChunkBytes);
        if (bytes.isEmpty() || bytes != right.read(ChunkBytes))
            return false;
    }
    return true;
}

void DeleteMoveRemains(const QString& destination) {
    const QString work = WorkName(NativePath(destination));
    // It deletes what it gets; what another program is writing it does not get.
    if (QFileInfo::exists(work))
        const WorkFile remains(work);
}

bool IsSameFile(const QString& one, const QString& other) {
    std::error_code failed;
    return std::filesystem::equivalent(SystemPath(one), SystemPath(other), failed) && !failed;
}

QString PlaceOf(const QString& native) {
    const QFileInfo info(native);
    const QString folder = info.dir().canonicalPath();
    return (folder.isEmpty() ? info.path() : folder) + u'/' + info.fileName();
}

} // namespace velmo
