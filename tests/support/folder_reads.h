#pragma once

namespace velmo {

// How often this program began to read a folder, whoever did. Only for programs that hide no functions from
// their shared libraries (ENABLE_EXPORTS).
int FolderReads();

} // namespace velmo
