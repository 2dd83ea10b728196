#include "platform/file_move.h"

#include "platform/files.h"
#include "platform/runtime_error.h"
#include "platform/work_file.h"

#include <QDir>
#include <QFileInfo>

#include <cerrno>
#include <filesystem>

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
        if (!QFileInfo(from_).isFile())
            ThrowCannotOpen(source_);
        QFile in(from_);
        if (!in.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
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

    void DeleteSource() {
        if (QFile::remove(from_))
            return;
        TakeBack();
        throw RuntimeError(ErrorNumber::PermissionDenied,
                           QStringLiteral("移動元のファイルを削除できません。"))
            .InFile(source_);
    }

private:
    void RequireReplaceable(IfThere ifThere) const {
        if (ifThere == IfThere::Refuse)
            throw RuntimeError(ErrorNumber::PathFileAccess, QStringLiteral("ファイルはすでに存在します。"))
                .InFile(destination_);
        // A write-protected file is not to be replaced, even where its folder would let it be.
        QFile old(to_);
        errno = 0;
        if (!old.open(QIODevice::ReadWrite | QIODevice::ExistingOnly))
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

    // After a failure the file is only where it was before; what it replaced is gone, so there it stays.
    void TakeBack() const {
        if (!replaces_)
            QFile::remove(to_);
    }

    const QString& source_;
    const QString& destination_;
    QString from_;
    QString to_;
    bool replaces_ = false;
};

} // namespace

void MoveFile(const QString& source, const QString& destination, IfThere ifThere) {
    Move move(source, destination);
    if (move.IsOntoItself())
        return;
    move.Copy(ifThere);
    move.DeleteSource();
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
