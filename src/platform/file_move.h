#pragma once

#include <QString>

namespace velmo {

// What becomes of a file that has the destination's name already.
enum class IfThere { Refuse, Overwrite };

// Moves a file (stored paths) by copying: it is complete on the disk under its new name, with permissions and
// times as far as the file system lets it have them, before it disappears under the old one. A file that is
// moved onto itself stays. Throws 53, 75 or 76 when the source cannot be read, 57, 61, 70, 75 or 76 when the
// destination cannot be written or the source not deleted, each naming the file; the source is then as it
// was, and nothing half-written is left.
void MoveFile(const QString& source, const QString& destination, IfThere ifThere);

// Deletes what a move to this destination that was killed may have left half-written.
void DeleteMoveRemains(const QString& destination);

// True when both (native paths) are one file on the disk, by whatever spelling or link.
bool IsSameFile(const QString& one, const QString& other);

// The name of a file (native path), existing or not, that is the same by whatever way its folder is reached.
QString PlaceOf(const QString& native);

} // namespace velmo
