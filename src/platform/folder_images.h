#pragma once

#include <QIcon>
#include <QList>

namespace velmo {

// The images of every tree of folders, and their numbers in it.
QList<QIcon> FolderImages();
inline constexpr int OpenFolder = 1;
inline constexpr int ClosedFolder = 2;

} // namespace velmo
