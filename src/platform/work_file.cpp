#include "platform/work_file.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QThread>

#include <cerrno>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace velmo {

namespace {

#ifdef Q_OS_WIN

bool OpenAlone(QFile& file) {
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
}

// A new file has the rights that its folder gives.
void CopyPermissions(int, const QString&) {}

void CopyTimes(QFile& file, const QString& other) {
    file.setFileTime(QFileInfo(other).lastModified(), QFileDevice::FileModificationTime);
}

bool Sync(int handle) {
    return ::_commit(handle) == 0;
}

// The system renames through to the disk.
bool SyncFolder(const QString&) {
    return true;
}

#else

// True when an open file still goes by that name.
bool IsNamed(const struct stat& opened, const char* path) {
    struct stat named {};
    return ::lstat(path, &named) == 0 && opened.st_ino == named.st_ino && opened.st_dev == named.st_dev;
}

// Why an open file cannot be the work file; 0 when it is empty and ours alone now.
int Claim(int handle, const char* path) {
    struct stat opened {};
    if (::fstat(handle, &opened) != 0)
        return errno;
    if (!S_ISREG(opened.st_mode))
        return EINVAL;
    if (opened.st_nlink > 1)
        return EMLINK;
    if (::flock(handle, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        return EWOULDBLOCK;
    if (!IsNamed(opened, path))
        return EAGAIN;
    if (::ftruncate(handle, 0) == 0)
        return 0;
    const int failure = errno;
    ::unlink(path);
    return failure;
}

// -1 when the file is not to be had.
int OpenLocked(const char* path) {
    const int handle = ::open(path, O_WRONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0666);
    if (handle < 0)
        return -1;
    const int obstacle = Claim(handle, path);
    if (obstacle == 0)
        return handle;
    ::close(handle);
    errno = obstacle;
    return -1;
}

// Whether a file of somebody else that may only be read is no longer written by anybody. Otherwise errno
// tells why not.
bool IsAbandoned(const char* path) {
    const int handle = ::open(path, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (handle < 0)
        return false;
    struct stat opened {};
    int obstacle = ::fstat(handle, &opened) == 0 ? 0 : errno;
    if (obstacle == 0 && !S_ISREG(opened.st_mode))
        obstacle = EACCES;
    if (obstacle == 0 && ::flock(handle, LOCK_EX | LOCK_NB) != 0)
        obstacle = errno;
    ::close(handle);
    errno = obstacle;
    return obstacle == 0;
}

// What is a link, or a file that goes by another name too, or one that somebody left who was killed, makes
// room for a file of our own.
bool MakesRoom(const char* path) {
    const bool isOther = errno == ELOOP || errno == EMLINK || (errno == EACCES && IsAbandoned(path));
    return isOther && ::unlink(path) == 0;
}

bool OpenAlone(QFile& file) {
    const QByteArray path = QFile::encodeName(file.fileName());
    int handle = OpenLocked(path.constData());
    if (handle < 0 && MakesRoom(path.constData()))
        handle = OpenLocked(path.constData());
    return handle >= 0 &&
           file.open(handle, QIODevice::WriteOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle);
}

void CopyPermissions(int handle, const QString& other) {
    struct stat old {};
    if (::stat(QFile::encodeName(other).constData(), &old) != 0)
        return;
    constexpr auto same = uid_t(-1);
    // Only the superuser gives files away; others may still hand one to a group of theirs.
    static_cast<void>(::fchown(handle, old.st_uid, old.st_gid) == 0 ||
                      ::fchown(handle, same, old.st_gid) == 0);
    static_cast<void>(::fchmod(handle, old.st_mode & 0777));
}

void CopyTimes(QFile& file, const QString& other) {
    struct stat old {};
    if (::stat(QFile::encodeName(other).constData(), &old) != 0)
        return;
    const timespec times[] = {old.st_atim, old.st_mtim};
    static_cast<void>(::futimens(file.handle(), times));
}

// Some file systems cannot, and say so.
bool CannotSync(int error) {
    return error == EINVAL || error == ENOTSUP;
}

bool Sync(int handle) {
    return ::fsync(handle) == 0 || CannotSync(errno);
}

// False when the disk failed. Who may not read a folder cannot sync it either.
bool SyncFolder(const QString& path) {
    const int folder = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return errno == EACCES;
    const bool synced = Sync(folder);
    const int failure = errno;
    ::close(folder);
    errno = failure;
    return synced;
}

#endif

} // namespace

WorkFile::WorkFile(const QString& path) : path_(path), file_(path) {
    mine_ = OpenAlone(file_);
}

WorkFile::~WorkFile() {
    if (mine_)
        QFile::remove(path_);
}

void WorkFile::TakePermissions(const QString& other) {
    CopyPermissions(file_.handle(), other);
}

void WorkFile::TakeTimes(const QString& other) {
    CopyTimes(file_, other);
}

bool WorkFile::Write(QByteArrayView bytes) {
    return file_.write(bytes.data(), bytes.size()) == bytes.size();
}

bool WorkFile::Finish() {
    if (!Sync(file_.handle()))
        return false;
#ifdef Q_OS_WIN
    file_.close();
#endif
    return true;
}

bool WorkFile::Renamed(const QString& name) {
    mine_ = false;
    return SyncFolder(QFileInfo(name).path());
}

std::unique_ptr<WorkFile> TakeWorkFile(const QString& path, std::chrono::milliseconds patience) {
    constexpr unsigned long pause = 20; // Milliseconds.
    QElapsedTimer waited;
    waited.start();
    for (;;) {
        auto work = std::make_unique<WorkFile>(path);
        const int obstacle = errno;
        if (work->IsOpen() || obstacle != EWOULDBLOCK || waited.hasExpired(patience.count())) {
            errno = obstacle;
            return work;
        }
        QThread::msleep(pause);
    }
}

} // namespace velmo
