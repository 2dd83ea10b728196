#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

// Preloaded into a program, it stands before the C library where files are opened, changed, named and synced.
// Of the calls that concern what lies in some folders each is told on the standard error ("call 7: open64
// /path"), and one of them can fail, or kill the program before it is done. Environment:
//
//   VELMO_FAULT_FOLDERS  the folders, absolute, ':' between them
//   VELMO_FAULT_CALL     the number of that call, counted from 1; none when empty
//   VELMO_FAULT          what happens there: an errno as a number, or "kill"

namespace {

struct Fault {
    std::string folders = Environment("VELMO_FAULT_FOLDERS");
    long call = std::atol(Environment("VELMO_FAULT_CALL").c_str());
    std::string what = Environment("VELMO_FAULT");

    static std::string Environment(const char* name) {
        const char* value = std::getenv(name);
        return value ? value : "";
    }
};

const Fault& TheFault() {
    static const Fault fault;
    return fault;
}

template <typename Function>
Function Original(const char* name) {
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

// Where a path leads that counts from a folder (a handle, or AT_FDCWD).
std::string Absolute(int folder, const char* path) {
    if (!path || *path == '/')
        return path ? path : "";
    const std::string link =
        folder == AT_FDCWD ? "/proc/self/cwd" : "/proc/self/fd/" + std::to_string(folder);
    char from[PATH_MAX];
    const ssize_t length = ::readlink(link.c_str(), from, sizeof from);
    return length < 0 ? path : std::string(from, size_t(length)) + '/' + path;
}

// The file that a handle is for.
std::string FileOf(int handle) {
    const std::string path = Absolute(handle, "");
    return path.empty() ? path : path.substr(0, path.size() - 1);
}

bool IsWatched(std::string_view path) {
    std::string_view folders = TheFault().folders;
    while (!folders.empty()) {
        const std::string_view folder = folders.substr(0, folders.find(':'));
        folders.remove_prefix(folder.size() < folders.size() ? folder.size() + 1 : folder.size());
        if (path.substr(0, folder.size()) == folder &&
            (path.size() == folder.size() || path[folder.size()] == '/'))
            return true;
    }
    return false;
}

void Tell(const std::string& line) {
    static_cast<void>(
        Original<ssize_t (*)(int, const void*, size_t)>("write")(STDERR_FILENO, line.data(), line.size()));
}

// Counts and tells a call; true when it is the one to fail, and why is in errno then.
bool Fails(const char* name, const std::string& path) {
    static std::atomic<long> calls = 0;
    if (!IsWatched(path))
        return false;
    const int before = errno;
    const Fault& fault = TheFault();
    const long call = ++calls;
    const bool now = call == fault.call;
    Tell("call " + std::to_string(call) + ": " + name + ' ' + path + (now ? " <- " + fault.what : "") + '\n');
    if (now && fault.what == "kill")
        ::kill(::getpid(), SIGKILL);
    errno = now ? std::atoi(fault.what.c_str()) : before;
    return now;
}

bool FailsForTwo(const char* name, const std::string& from, const std::string& to) {
    return Fails(name, IsWatched(to) ? to : from);
}

// What changes a file or a name is told apart from what only opens it.
const char* OpenName(const char* name, int flags) {
    const bool changes = (flags & (O_CREAT | O_TRUNC)) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
    return changes ? (name[4] == 'a' ? "openat+" : "open+") : name;
}

mode_t ModeOf(int flags, va_list more) {
    return (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE ? va_arg(more, mode_t) : 0;
}

int Open(const char* name, const char* path, int flags, mode_t mode) {
    return Fails(OpenName(name, flags), Absolute(AT_FDCWD, path))
               ? -1
               : Original<int (*)(const char*, int, mode_t)>(name)(path, flags, mode);
}

int OpenAt(const char* name, int folder, const char* path, int flags, mode_t mode) {
    return Fails(OpenName(name, flags), Absolute(folder, path))
               ? -1
               : Original<int (*)(int, const char*, int, mode_t)>(name)(folder, path, flags, mode);
}

template <typename Result, typename... Arguments>
Result OnHandle(const char* name, int handle, Arguments... arguments) {
    return Fails(name, FileOf(handle)) ? -1
                                       : Original<Result (*)(int, Arguments...)>(name)(handle, arguments...);
}

template <typename... Arguments>
int OnPath(const char* name, const char* path, Arguments... arguments) {
    return Fails(name, Absolute(AT_FDCWD, path))
               ? -1
               : Original<int (*)(const char*, Arguments...)>(name)(path, arguments...);
}

template <typename... Arguments>
int OnPathAt(const char* name, int folder, const char* path, Arguments... arguments) {
    return Fails(name, Absolute(folder, path))
               ? -1
               : Original<int (*)(int, const char*, Arguments...)>(name)(folder, path, arguments...);
}

} // namespace

extern "C" {

int open(const char* path, int flags, ...) {
    va_list more;
    va_start(more, flags);
    const mode_t mode = ModeOf(flags, more);
    va_end(more);
    return Open("open", path, flags, mode);
}

int open64(const char* path, int flags, ...) {
    va_list more;
    va_start(more, flags);
    const mode_t mode = ModeOf(flags, more);
    va_end(more);
    return Open("open64", path, flags, mode);
}

int openat(int folder, const char* path, int flags, ...) {
    va_list more;
    va_start(more, flags);
    const mode_t mode = ModeOf(flags, more);
    va_end(more);
    return OpenAt("openat", folder, path, flags, mode);
}

int openat64(int folder, const char* path, int flags, ...) {
    va_list more;
    va_start(more, flags);
    const mode_t mode = ModeOf(flags, more);
    va_end(more);
    return OpenAt("openat64", folder, path, flags, mode);
}

int creat(const char* path, mode_t mode) {
    return OnPath("creat", path, mode);
}

int creat64(const char* path, mode_t mode) {
    return OnPath("creat64", path, mode);
}

ssize_t write(int file, const void* bytes, size_t count) {
    return OnHandle<ssize_t>("write", file, bytes, count);
}

ssize_t pwrite(int file, const void* bytes, size_t count, off_t at) {
    return OnHandle<ssize_t>("pwrite", file, bytes, count, at);
}

ssize_t pwrite64(int file, const void* bytes, size_t count, off64_t at) {
    return OnHandle<ssize_t>("pwrite64", file, bytes, count, at);
}

int fsync(int file) {
    return OnHandle<int>("fsync", file);
}

int fdatasync(int file) {
    return OnHandle<int>("fdatasync", file);
}

int ftruncate(int file, off_t size) noexcept {
    return OnHandle<int>("ftruncate", file, size);
}

int ftruncate64(int file, off64_t size) noexcept {
    return OnHandle<int>("ftruncate64", file, size);
}

int posix_fallocate(int file, off_t at, off_t size) {
    return Fails("posix_fallocate", FileOf(file))
               ? errno
               : Original<int (*)(int, off_t, off_t)>("posix_fallocate")(file, at, size);
}

int flock(int file, int operation) noexcept {
    return OnHandle<int>("flock", file, operation);
}

int unlink(const char* path) noexcept {
    return OnPath("unlink", path);
}

int unlinkat(int folder, const char* path, int flags) noexcept {
    return OnPathAt("unlinkat", folder, path, flags);
}

int remove(const char* path) noexcept {
    return OnPath("remove", path);
}

int rmdir(const char* path) noexcept {
    return OnPath("rmdir", path);
}

int mkdir(const char* path, mode_t mode) noexcept {
    return OnPath("mkdir", path, mode);
}

int mkdirat(int folder, const char* path, mode_t mode) noexcept {
    return OnPathAt("mkdirat", folder, path, mode);
}

int rename(const char* from, const char* to) noexcept {
    return FailsForTwo("rename", Absolute(AT_FDCWD, from), Absolute(AT_FDCWD, to))
               ? -1
               : Original<int (*)(const char*, const char*)>("rename")(from, to);
}

int renameat(int fromFolder, const char* from, int toFolder, const char* to) noexcept {
    return FailsForTwo("renameat", Absolute(fromFolder, from), Absolute(toFolder, to))
               ? -1
               : Original<int (*)(int, const char*, int, const char*)>("renameat")(fromFolder, from, toFolder,
                                                                                   to);
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) noexcept {
    return FailsForTwo("renameat2", Absolute(fromFolder, from), Absolute(toFolder, to))
               ? -1
               : Original<int (*)(int, const char*, int, const char*, unsigned)>("renameat2")(
                     fromFolder, from, toFolder, to, flags);
}

int link(const char* from, const char* to) noexcept {
    return FailsForTwo("link", Absolute(AT_FDCWD, from), Absolute(AT_FDCWD, to))
               ? -1
               : Original<int (*)(const char*, const char*)>("link")(from, to);
}

int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) noexcept {
    return FailsForTwo("linkat", Absolute(fromFolder, from), Absolute(toFolder, to))
               ? -1
               : Original<int (*)(int, const char*, int, const char*, int)>("linkat")(fromFolder, from,
                                                                                      toFolder, to, flags);
}

} // extern "C"
