#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QString>

#include <map>
#include <set>

class QFile;

namespace velmo {

// Paths as the program keeps them ("stored" paths) separate folders with backslashes, whatever the operating
// system. Only the functions of this file turn them into paths of the operating system.

// The operating system's path of a stored path. On a case-sensitive file system each part that does not exist
// as spelled is looked up without regard to case; what is not found at all stays as spelled. Throws 57 when
// the disk fails.
QString NativePath(const QString& stored);

// Finds many paths as NativePath does but reads each folder only once: a file that is made meanwhile may be
// missed where it is spelled otherwise.
class NativePaths {
public:
    QString Find(const QString& stored);

private:
    struct IgnoringCase {
        bool operator()(const QString& left, const QString& right) const {
            return left.compare(right, Qt::CaseInsensitive) < 0;
        }
    };
    using Names = std::set<QString, IgnoringCase>;

    QString FindName(const QString& folder, const QString& name);

    // The names in each folder (path of the operating system) that had to be read.
    std::map<QString, Names> folders_;
};

// True when a file (not a folder) of that name exists. An empty path names nothing.
bool FileExists(const QString& stored);

// Deletes the file. Throws 53 when there is none, 70 when it cannot be deleted.
void DeleteFile(const QString& stored);

// Deletes the file if there is one. Throws 70 when it cannot be deleted.
void DeleteFileIfAny(const QString& stored);

// Gives a finished file (stored path "from") the name of another in one step, over an old one of that name.
// Throws 75 when that fails.
void RenameOver(const QString& from, const QString& to);

// The file (stored path) could not be written: the error that says why. systemError: errno after the failure.
[[noreturn]] void ThrowCannotWrite(const QString& stored, int systemError);

// What a symbolic link (the operating system's path) leads to; other paths, and links to nothing, are
// themselves.
QString FollowLink(const QString& native);

// Opens an existing regular file (its name is the operating system's). Folders, pipes and devices are refused
// without waiting for them. False, with the reason in errno, when it cannot be opened.
bool OpenRegularFile(QFile& file, QIODevice::OpenMode mode);

// The whole of a file. Throws 53, 75 or 76 when it cannot be opened, 57 when reading fails, 75 when it is no
// regular file or has more bytes than most.
QByteArray ReadWholeFile(const QString& stored, qint64 most);

// What is left to read of an open file; name names it in errors. Throws 57 when reading fails, 75 when it has
// more bytes than most.
QByteArray ReadRest(QFile& file, const QString& name, qint64 most);

// Opens failed: the error that says why the file could not be opened for reading.
[[noreturn]] void ThrowCannotOpen(const QString& stored);

} // namespace velmo
