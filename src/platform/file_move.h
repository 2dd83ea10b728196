#pragma once

#include <QStringList>

#include <vector>

namespace velmo {

// What becomes of a file that has the destination's name already.
enum class IfThere { Refuse, Overwrite };

// Moves a file (stored paths) by copying: it is complete on the disk under its new name, with permissions and
// times as far as the file system lets it have them, before it disappears under the old one. A file that is
// moved onto itself stays. Throws 53, 75 or 76 when the source cannot be read, 57, 61, 70, 75 or 76 when the
// destination cannot be written or the source not deleted, each naming the file; the source is then as it
// was, and nothing half-written is left.
void MoveFile(const QString& source, const QString& destination, IfThere ifThere);

// A file that is to be moved (stored paths).
struct FileToMove {
    QString source;
    QString destination;
    IfThere ifThere = IfThere::Refuse;
};

// Moves files that belong together, each as MoveFile does: all are complete in their new places before the
// first of them disappears from its old one. Where a copy fails, or the first file cannot be deleted, none
// has been moved; throws as MoveFile does. Returns the sources that could not be deleted after the first was.
QStringList MoveTogether(const std::vector<FileToMove>& files);

// Deletes what a move to this destination that was killed may have left half-written.
void DeleteMoveRemains(const QString& destination);

// Gives a finished file (stored path "from") a name that no file has. False when there is one; it stays as it
// is then. Throws 75 when that fails.
[[nodiscard]] bool RenameUnlessThere(const QString& from, const QString& to);

// True when a file of this stored path, existing or not, is in the folder root (stored path ending in a
// backslash, or empty for the current folder) or in one below it: as it is spelled, and whatever links its
// folders are. The root itself may be reached by a link.
bool IsBelow(const QString& path, const QString& root);

// True when both files (stored paths) hold the same bytes; false when one cannot be read.
bool HaveSameBytes(const QString& one, const QString& other);

// True when both (native paths) are one file on the disk, by whatever spelling or link.
bool IsSameFile(const QString& one, const QString& other);

// The name of a file (native path), existing or not, that is the same by whatever way its folder is reached.
QString PlaceOf(const QString& native);

} // namespace velmo
