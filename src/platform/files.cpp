#include "platform/files.h"

#include "platform/runtime_error.h"
#include "platform/work_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <filesystem>
#include <memory>

namespace velmo {

namespace {

#ifndef Q_OS_WIN
QString FindIgnoringCase(const QString& folder, const QString& name) {
    const QStringList found =
        QDir(folder.isEmpty() ? QStringLiteral(".") : folder)
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QString& candidate : found) {
        if (candidate.compare(name, Qt::CaseInsensitive) == 0)
            return candidate;
    }
    return name;
}
#endif

// The finished work file, which does not count before it is committed.
std::unique_ptr<QSaveFile> WriteBeside(const QString& stored, const QByteArray& bytes) {
    auto file = std::make_unique<QSaveFile>(NativePath(stored));
    errno = 0;
    if (!file->open(QIODevice::WriteOnly))
        ThrowCannotWrite(stored, errno);
    errno = 0;
    // The file's own buffer hides a full disk until it is flushed.
    if (file->write(bytes) != bytes.size() || !file->flush())
        ThrowCannotWrite(stored, errno);
    return file;
}

// Puts a file (native paths) in the place of another.
std::error_code Rename(const QString& from, const QString& to) {
    std::error_code failed;
    std::filesystem::rename(std::filesystem::path(from.toStdU16String()),
                            std::filesystem::path(to.toStdU16String()), failed);
    return failed;
}

// What a symbolic link leads to; other paths, and links to nothing, are themselves.
QString FollowLink(const QString& path) {
    const QFileInfo info(path);
    return info.isSymLink() && info.exists() ? info.canonicalFilePath() : path;
}

} // namespace

QString NativePath(const QString& stored) {
#ifdef Q_OS_WIN
    return QDir::fromNativeSeparators(stored);
#else
    QString path = stored;
    path.replace(u'\\', u'/');
    if (path.isEmpty() || QFileInfo::exists(path))
        return path;
    QString found;
    const QStringList parts = path.split(u'/');
    for (qsizetype i = 0; i < parts.size(); ++i) {
        const QString& part = parts[i];
        const bool exact = part.isEmpty() || QFileInfo::exists(found + part);
        found += exact ? part : FindIgnoringCase(found, part);
        if (i + 1 < parts.size())
            found += u'/';
    }
    return found;
#endif
}

bool FileExists(const QString& stored) {
    return !stored.isEmpty() && QFileInfo(NativePath(stored)).isFile();
}

void DeleteFile(const QString& stored) {
    if (!FileExists(stored))
        throw RuntimeError(ErrorNumber::FileNotFound).InFile(stored);
    if (!QFile::remove(NativePath(stored)))
        throw RuntimeError(ErrorNumber::PermissionDenied).InFile(stored);
}

void DeleteFileIfAny(const QString& stored) {
    if (FileExists(stored))
        DeleteFile(stored);
}

void ReplaceFile(const QString& stored, const QByteArray& bytes) {
    ReplaceFiles({{stored, bytes}});
}

void ReplaceFiles(const std::vector<FileReplacement>& files) {
    std::vector<std::unique_ptr<QSaveFile>> written;
    written.reserve(files.size());
    for (const FileReplacement& file : files)
        written.push_back(WriteBeside(file.path, file.bytes));
    for (size_t i = 0; i < files.size(); ++i) {
        errno = 0;
        if (!written[i]->commit())
            ThrowCannotWrite(files[i].path, errno);
    }
}

bool ReplaceFileThrough(const QString& work, const QString& stored, const QByteArray& bytes) {
    const QString target = FollowLink(NativePath(stored));
    if (FileExists(stored)) {
        // A write-protected file is not to be replaced, even where its folder would let it be.
        QFile old(target);
        errno = 0;
        if (!old.open(QIODevice::ReadWrite | QIODevice::ExistingOnly))
            ThrowCannotWrite(stored, errno);
    }
    WorkFile file(NativePath(work));
    if (!file.IsOpen())
        return false;
    file.TakePermissions(target);
    errno = 0;
    if (!file.Write(bytes) || !file.Finish())
        ThrowCannotWrite(stored, errno);
    const std::error_code failed = Rename(file.Path(), target);
    if (!failed)
        file.Renamed(target);
    else if (failed == std::errc::cross_device_link)
        ReplaceFile(stored, bytes);
    else
        ThrowCannotWrite(stored, failed.value());
    return true;
}

void RenameOver(const QString& from, const QString& to) {
    if (Rename(NativePath(from), NativePath(to)))
        throw RuntimeError(ErrorNumber::PathFileAccess).InFile(to);
}

void ThrowCannotWrite(const QString& stored, int systemError) {
    const QFileInfo info(NativePath(stored));
    ErrorNumber number = ErrorNumber::PathFileAccess;
    if (systemError == ENOSPC || systemError == EFBIG)
        number = ErrorNumber::DiskFull;
    else if (systemError == EIO)
        number = ErrorNumber::DeviceIo;
    else if (!info.dir().exists())
        number = ErrorNumber::PathNotFound;
    else if (!info.isDir())
        number = ErrorNumber::PermissionDenied;
    throw RuntimeError(number).InFile(stored);
}

void ThrowCannotOpen(const QString& stored) {
    const QFileInfo info(NativePath(stored));
    if (stored.isEmpty() || (!info.exists() && info.dir().exists()))
        throw RuntimeError(ErrorNumber::FileNotFound).InFile(stored);
    if (!info.exists())
        throw RuntimeError(ErrorNumber::PathNotFound).InFile(stored);
    throw RuntimeError(ErrorNumber::PathFileAccess).InFile(stored);
}

} // namespace velmo
