#include "platform/files.h"

#include "platform/runtime_error.h"
#include "platform/work_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <filesystem>
#include <functional>
#include <memory>

namespace velmo {

namespace {

#ifndef Q_OS_WIN
// Tells the names in a folder (native path) in the order in which the file system gives them, until one is
// the last to be told.
void ReadNames(const QString& folder, const std::function<bool(const QString& name)>& isLast) {
    const QByteArray path = QFile::encodeName(folder.isEmpty() ? QStringLiteral(".") : folder);
    std::error_code failed;
    std::filesystem::directory_iterator entry(path.toStdString(), failed);
    for (; !failed && entry != std::filesystem::directory_iterator(); entry.increment(failed)) {
        if (isLast(QFile::decodeName(entry->path().filename().string().c_str())))
            return;
    }
}

QString FindIgnoringCase(const QString& folder, const QString& name) {
    QString found = name;
    ReadNames(folder, [&](const QString& candidate) {
        const bool isSame = candidate.compare(name, Qt::CaseInsensitive) == 0;
        if (isSame)
            found = candidate;
        return isSame;
    });
    return found;
}

// The native path of a stored one; find tells how a folder spells a name that it does not have as spelled.
template <typename Find>
QString SpelledAsFound(const QString& stored, const Find& find) {
    QString path = stored;
    path.replace(u'\\', u'/');
    if (path.isEmpty() || QFileInfo::exists(path))
        return path;
    QString found;
    const QStringList parts = path.split(u'/');
    for (qsizetype i = 0; i < parts.size(); ++i) {
        const QString& part = parts[i];
        const bool exact = part.isEmpty() || QFileInfo::exists(found + part);
        found += exact ? part : find(found, part);
        if (i + 1 < parts.size())
            found += u'/';
    }
    return found;
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
    return SpelledAsFound(stored, FindIgnoringCase);
#endif
}

QString NativePaths::Find(const QString& stored) {
#ifdef Q_OS_WIN
    return NativePath(stored);
#else
    return SpelledAsFound(
        stored, [this](const QString& folder, const QString& name) { return FindName(folder, name); });
#endif
}

#ifndef Q_OS_WIN
QString NativePaths::FindName(const QString& folder, const QString& name) {
    const auto [known, isNew] = folders_.try_emplace(folder);
    Names& names = known->second;
    if (isNew)
        ReadNames(folder, [&names](const QString& found) {
            // Of several that differ only in case the first, as ever.
            names.insert(found);
            return false;
        });
    const auto found = names.find(name);
    return found == names.end() ? name : *found;
}
#endif

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
