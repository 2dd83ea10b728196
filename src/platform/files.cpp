#include "platform/files.h"

#include "platform/runtime_error.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>

#include <cerrno>
#include <filesystem>
#include <functional>

#ifndef Q_OS_WIN
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace velmo {

namespace {

#ifndef Q_OS_WIN
// Tells the names in a folder (native path) in the order in which the file system gives them, until one is
// the last to be told. A folder that is missing or not to be read has none.
void ReadNames(const QString& folder, const std::function<bool(const QString& name)>& isLast) {
    const QByteArray path = QFile::encodeName(folder.isEmpty() ? QStringLiteral(".") : folder);
    std::error_code failed;
    std::filesystem::directory_iterator entry(path.toStdString(), failed);
    for (; !failed && entry != std::filesystem::directory_iterator(); entry.increment(failed)) {
        if (isLast(QFile::decodeName(entry->path().filename().string().c_str())))
            return;
    }
    // What a failing disk does not tell is not known to be missing.
    if (failed == std::errc::io_error)
        throw RuntimeError(ErrorNumber::DeviceIo).InFile(folder);
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

// Puts a file (native paths) in the place of another.
std::error_code Rename(const QString& from, const QString& to) {
    std::error_code failed;
    std::filesystem::rename(std::filesystem::path(from.toStdU16String()),
                            std::filesystem::path(to.toStdU16String()), failed);
    return failed;
}

const QString NoRegularFile = QStringLiteral("通常のファイルではありません。");

// A pipe, a socket or a device.
bool IsNoRegularFile(const QFileInfo& info) {
    return info.exists() && !info.isFile() && !info.isDir();
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
    // Another program may be quicker.
    if (FileExists(stored) && !QFile::remove(NativePath(stored)) && FileExists(stored))
        throw RuntimeError(ErrorNumber::PermissionDenied).InFile(stored);
}

void RenameOver(const QString& from, const QString& to) {
    if (Rename(NativePath(from), NativePath(to)))
        throw RuntimeError(ErrorNumber::PathFileAccess).InFile(to);
}

QString FollowLink(const QString& native) {
    const QFileInfo info(native);
    return info.isSymLink() && info.exists() ? info.canonicalFilePath() : native;
}

bool OpenRegularFile(QFile& file, QIODevice::OpenMode mode) {
    errno = 0;
#ifdef Q_OS_WIN
    if (!QFileInfo(file.fileName()).isFile())
        errno = EINVAL;
    return errno == 0 && file.open(mode | QIODevice::ExistingOnly);
#else
    // A pipe would otherwise wait for its other end.
    int flags = O_NONBLOCK | O_CLOEXEC;
    flags |= !(mode & QIODevice::WriteOnly) ? O_RDONLY : (mode & QIODevice::ReadOnly) ? O_RDWR : O_WRONLY;
    const int handle = ::open(QFile::encodeName(file.fileName()).constData(), flags);
    if (handle < 0)
        return false;
    struct stat opened {};
    if (::fstat(handle, &opened) == 0 && !S_ISREG(opened.st_mode))
        errno = EINVAL;
    if (errno == 0 && file.open(handle, mode, QFileDevice::AutoCloseHandle))
        return true;
    const int failure = errno;
    ::close(handle);
    errno = failure;
    return false;
#endif
}

QByteArray ReadWholeFile(const QString& stored, qint64 most) {
    QFile file(NativePath(stored));
    if (stored.isEmpty() || !OpenRegularFile(file, QIODevice::ReadOnly))
        ThrowCannotOpen(stored);
    return ReadRest(file, stored, most);
}

QByteArray ReadRest(QFile& file, const QString& name, qint64 most) {
    if (file.size() > most)
        throw RuntimeError(ErrorNumber::PathFileAccess,
                           QStringLiteral("ファイルが大きすぎます (%1 バイトまで)。")
                               .arg(QLocale(QLocale::Japanese).toString(most)))
            .InFile(name);
    QByteArray bytes = file.read(file.size());
    if (file.error() != QFileDevice::NoError)
        throw RuntimeError(ErrorNumber::DeviceIo).InFile(name);
    return bytes;
}

void ThrowCannotWrite(const QString& stored, int systemError) {
    const QFileInfo info(NativePath(stored));
    ErrorNumber number = ErrorNumber::PathFileAccess;
    if (systemError == ENOSPC || systemError == EFBIG || systemError == EDQUOT)
        number = ErrorNumber::DiskFull;
    else if (systemError == EIO)
        number = ErrorNumber::DeviceIo;
    else if (!info.dir().exists())
        number = ErrorNumber::PathNotFound;
    else if (IsNoRegularFile(info) || systemError == EWOULDBLOCK)
        number = ErrorNumber::PathFileAccess;
    else if (!info.isDir())
        number = ErrorNumber::PermissionDenied;
    QString detail;
    if (IsNoRegularFile(info))
        detail = NoRegularFile;
    else if (systemError == EWOULDBLOCK)
        detail = QStringLiteral("ほかのプログラムが書き込んでいます。");
    throw RuntimeError(number, detail).InFile(stored);
}

void ThrowCannotOpen(const QString& stored) {
    const QFileInfo info(NativePath(stored));
    if (stored.isEmpty() || (!info.exists() && info.dir().exists()))
        throw RuntimeError(ErrorNumber::FileNotFound).InFile(stored);
    if (!info.exists())
        throw RuntimeError(ErrorNumber::PathNotFound).InFile(stored);
    throw RuntimeError(ErrorNumber::PathFileAccess, IsNoRegularFile(info) ? NoRegularFile : QString())
        .InFile(stored);
}

} // namespace velmo
