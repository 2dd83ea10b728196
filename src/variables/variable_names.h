#pragma once

#include "variables/work_database.h"

namespace velmo {

// Writes the names of NowTable into the variable section of a
// definition file that begins with it; of another file only the first line goes. Line n of the section gets
// the name of variable n, and goes when there is none. The file is replaced in one step, by way of a work
// file of its name and a "2", or stays as it was. That there is no such file is told through inform.
//
// Throws 5, naming file and line, for a line without a name in double quotes and for a name that the file
// cannot hold, 62 for an empty file, 75 when the work file cannot be created, and what ReplaceFile throws.
void WriteVariableNames(const WorkDatabase& work, const QString& definitionFile, const Inform& inform);

} // namespace velmo
