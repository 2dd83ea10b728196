#include "support/folder_reads.h"

#include <dirent.h>
#include <dlfcn.h>

namespace velmo {

namespace {

int reads = 0;

template <typename Argument>
DIR* Read(const char* name, Argument folder) {
    using Function = DIR* (*)(Argument);
    ++reads;
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name))(folder);
}

} // namespace

int FolderReads() {
    return reads;
}

} // namespace velmo

// They stand before those of the C library.
extern "C" {

DIR* opendir(const char* folder) {
    return velmo::Read("opendir", folder);
}

DIR* fdopendir(int folder) {
    return velmo::Read("fdopendir", folder);
}
}
