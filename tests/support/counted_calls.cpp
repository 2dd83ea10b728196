#include "support/counted_calls.h"

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

// The functions below stand before those of the C library for the program and its shared libraries.

namespace velmo {

namespace {

struct Counter {
    bool counts = false;
    std::vector<std::string> calls;
    long fatal = 0;
    CallFate fate = CallFate::Killed;
};

Counter& TheCounter() {
    static Counter counter;
    return counter;
}

bool Fails(const char* name) {
    Counter& counter = TheCounter();
    if (!counter.counts)
        return false;
    counter.calls.emplace_back(name);
    if (long(counter.calls.size()) != counter.fatal)
        return false;
    if (counter.fate == CallFate::Killed)
        ::kill(::getpid(), SIGKILL);
    errno = EIO;
    return true;
}

template <typename... Arguments>
int Count(const char* name, Arguments... arguments) {
    using Function = int (*)(Arguments...);
    return Fails(name) ? -1 : reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name))(arguments...);
}

template <typename... Arguments>
ssize_t CountBytes(const char* name, Arguments... arguments) {
    using Function = ssize_t (*)(Arguments...);
    return Fails(name) ? -1 : reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name))(arguments...);
}

} // namespace

void CountCalls(long fatal, CallFate fate) {
    TheCounter() = {true, {}, fatal, fate};
}

std::vector<std::string> CountedCalls() {
    return TheCounter().calls;
}

} // namespace velmo

using velmo::Count;
using velmo::CountBytes;

extern "C" {

int open(const char* path, int flags, ...) {
    va_list more;
    va_start(more, flags);
    const mode_t mode = flags & O_CREAT ? va_arg(more, mode_t) : 0;
    va_end(more);
    return Count("open", path, flags, mode);
}

int open64(const char* path, int flags, ...) {
    va_list more;
    va_start(more, flags);
    const mode_t mode = flags & O_CREAT ? va_arg(more, mode_t) : 0;
    va_end(more);
    return Count("open64", path, flags, mode);
}

int close(int file) {
    return Count("close", file);
}

ssize_t write(int file, const void* bytes, size_t count) {
    return CountBytes("write", file, bytes, count);
}

ssize_t pwrite64(int file, const void* bytes, size_t count, off64_t at) {
    return CountBytes("pwrite64", file, bytes, count, at);
}

int fsync(int file) {
    return Count("fsync", file);
}

int fdatasync(int file) {
    return Count("fdatasync", file);
}

int ftruncate(int file, off_t size) noexcept {
    return Count("ftruncate", file, size);
}

int ftruncate64(int file, off64_t size) noexcept {
    return Count("ftruncate64", file, size);
}

int flock(int file, int operation) noexcept {
    return Count("flock", file, operation);
}

int fchmod(int file, mode_t mode) noexcept {
    return Count("fchmod", file, mode);
}

int futimens(int file, const timespec times[2]) noexcept {
    return Count("futimens", file, times);
}

int chmod(const char* path, mode_t mode) noexcept {
    return Count("chmod", path, mode);
}

int fchown(int file, uid_t owner, gid_t group) noexcept {
    return Count("fchown", file, owner, group);
}

int link(const char* from, const char* to) noexcept {
    return Count("link", from, to);
}

int rename(const char* from, const char* to) noexcept {
    return Count("rename", from, to);
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) noexcept {
    return Count("renameat2", fromFolder, from, toFolder, to, flags);
}

int unlink(const char* path) noexcept {
    return Count("unlink", path);
}

int remove(const char* path) noexcept {
    return Count("remove", path);
}

} // extern "C"
