#pragma once

#include <QString>
#include <QStringList>

namespace velmo {

// What stands in a folder of the disk (stored path ending in a backslash). Only the folder itself is read. A
// name that no stored path can hold is passed over.

// The names of the folders in a folder, in the order in which the file system gives them; a link to a folder
// is one. A folder that cannot be read has none.
QStringList SubFolders(const QString& folder);

struct FolderFiles {
    // Sorted by name; hidden files too.
    QStringList names;
    // Whether the folder could be read.
    bool readable = false;
};

// The files of a folder that match a pattern such as "*.SLD", regardless of case.
FolderFiles FilesOf(const QString& folder, const QString& pattern);

bool FolderExists(const QString& folder);

// A path in upper case, character by character: it keeps its length, and names what it named before.
QString UpperCasePath(const QString& path);

// The path with a backslash at its end.
QString FolderPath(const QString& path);

// The path of a name in a folder, which may lack its last backslash.
QString PathIn(const QString& folder, const QString& name);

} // namespace velmo
