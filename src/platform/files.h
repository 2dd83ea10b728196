#pragma once

#include <QByteArray>
#include <QString>

#include <map>
#include <set>
#include <vector>

namespace velmo {

// Paths as the program keeps them ("stored" paths) separate folders with backslashes, whatever the operating
// system. Only the functions of this file turn them into paths of the operating system.

// The operating system's path of a stored path. On a case-sensitive file system each part that does not exist
// as spelled is looked up without regard to case; what is not found at all stays as spelled.
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

// Puts bytes in the place of the file in one step: written beside it, synced, renamed. Throws 76 when the
// folder is missing, 61 when the disk is full, 57, 70 or 75 when it cannot be written; the old file then
// stays as it was.
void ReplaceFile(const QString& stored, const QByteArray& bytes);

// The same by way of a work file (stored path) in the same folder; one that a killed run left is overwritten,
// and none stays behind an error. The permissions of the old file stay, and what is a symbolic link still is
// one. False when the work file cannot be created; nothing has changed then.
[[nodiscard]] bool ReplaceFileThrough(const QString& work, const QString& stored, const QByteArray& bytes);

// A file (stored path) and what it is to hold.
struct FileReplacement {
    QString path;
    QByteArray bytes;
};

// Replaces several files as ReplaceFile does; none takes its place before all are written.
void ReplaceFiles(const std::vector<FileReplacement>& files);

// Gives a finished file (stored path "from") the name of another in one step, over an old one of that name.
// Throws 75 when that fails.
void RenameOver(const QString& from, const QString& to);

// The file (stored path) could not be written: the error that says why. systemError: errno after the failure.
[[noreturn]] void ThrowCannotWrite(const QString& stored, int systemError);

// Opens failed: the error that says why the file could not be opened for reading.
[[noreturn]] void ThrowCannotOpen(const QString& stored);

} // namespace velmo
