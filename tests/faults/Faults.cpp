// A library that is preloaded into txhost (LD_PRELOAD): it counts the calls that can fail, by kind, and lets chosen ones fail.
// tools/faults runs it. It acts in the process that it was preloaded into and hides from that process's children.
//
// FAULT="KIND K one|on": the K-th call of the kind fails, or all from the K-th on. FAULT_COUNTS=FILE: receives the number of
// calls of each kind at the end. FAULT_TRACE=FILE: receives the stack of the first call that failed.

#include <dlfcn.h>
#include <execinfo.h>
#include <fcntl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace {

constexpr std::array<std::string_view, 17> kinds{"pipe", "actions", "spawn", "thread", "open",  "close",
                                                 "read", "write",   "print", "rename", "mkdir", "stat",
                                                 "poll", "pidfd",   "wait",  "memory", "time"};
consteval std::size_t indexOf(std::string_view kind)
{
    const auto* found = std::find(kinds.begin(), kinds.end(), kind);
    return found == kinds.end() ? throw kind : static_cast<std::size_t>(found - kinds.begin());
}
constexpr std::size_t smallestMemory = 65536;

std::array<std::atomic<long>, kinds.size()> counts;
std::atomic<bool> active;
std::atomic_flag traced;
std::size_t chosenKind = kinds.size();
long chosenCall = 0;
bool andLater = false;
const char* countsFile = nullptr;
int traceFile = -1;
thread_local bool inside = false;  // of our own calls

/// The function that ours stands in front of.
template <class Function>
Function* next(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

/// Counts a call of the kind. Returns true when it is to fail.
bool fails(std::size_t kind)
{
    if (!active || inside)
        return false;
    const long number = ++counts[kind];
    if (kind != chosenKind || (andLater ? number < chosenCall : number != chosenCall))
        return false;
    if (traceFile >= 0 && !traced.test_and_set()) {
        inside = true;
        std::array<void*, 60> frames{};
        backtrace_symbols_fd(frames.data(), backtrace(frames.data(), frames.size()), traceFile);
        inside = false;
    }
    return true;
}

[[gnu::constructor]] void begin()
{
    static std::array<char, 32> kind{};
    std::array<char, 8> mode{};
    const char* fault = std::getenv("FAULT");
    if (fault && std::sscanf(fault, "%31s %ld %7s", kind.data(), &chosenCall, mode.data()) == 3) {
        andLater = std::strcmp(mode.data(), "on") == 0;
        chosenKind = static_cast<std::size_t>(std::find(kinds.begin(), kinds.end(), kind.data()) - kinds.begin());
    }
    if (const char* file = std::getenv("FAULT_COUNTS"))
        countsFile = strdup(file);
    if (const char* file = std::getenv("FAULT_TRACE")) {
        const int opened = ::open(file, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        traceFile = fcntl(opened, F_DUPFD_CLOEXEC, 500);  // out of the way of the program's own descriptors
        ::close(opened);
    }
    for (const char* variable : {"LD_PRELOAD", "FAULT", "FAULT_COUNTS", "FAULT_TRACE"})
        unsetenv(variable);
    active = true;
}

[[gnu::destructor]] void end()
{
    active = false;
    if (!countsFile)
        return;
    if (FILE* file = std::fopen(countsFile, "w")) {
        for (std::size_t kind = 0; kind < kinds.size(); ++kind)
            std::fprintf(file, "%s %ld\n", kinds.at(kind).data(), counts.at(kind).load());
        std::fclose(file);
    }
}

/// The host may have reaped a child that has ended, never one that runs.
int waitError(int handle)
{
    siginfo_t now{};
    const long result = syscall(SYS_waitid, P_PIDFD, handle, &now, WEXITED | WNOHANG | WNOWAIT, nullptr);
    return result == 0 && now.si_pid == 0 ? EINVAL : ECHILD;
}

/// A stream without space while this lives: its descriptor leads to a full device.
class FullStream {
public:
    explicit FullStream(FILE* stream) : m_descriptor(fileno(stream))
    {
        if (m_descriptor < 0 || !fails(indexOf("print")))
            return;
        inside = true;
        m_kept = fcntl(m_descriptor, F_DUPFD_CLOEXEC, 500);
        const int full = ::open("/dev/full", O_WRONLY | O_CLOEXEC);
        dup2(full, m_descriptor);
        ::close(full);
    }
    ~FullStream()
    {
        if (m_kept < 0)
            return;
        const int error = errno;
        dup2(m_kept, m_descriptor);
        ::close(m_kept);
        inside = false;
        errno = error;
    }
    FullStream(const FullStream&) = delete;
    FullStream& operator=(const FullStream&) = delete;

private:
    int m_descriptor;
    int m_kept = -1;
};

}  // namespace

// Ours have names of their own, as the headers declare the system's, and the system's names for the linker.
#define IN_FRONT(Result, name, parameters)                                                                                       \
    extern "C" [[gnu::visibility("default")]] Result our_##name parameters __asm__(#name);                                       \
    extern "C" Result our_##name parameters

#define FAIL_WITH(kind, error, failure)                                                                                          \
    if (fails(indexOf(kind))) {                                                                                                  \
        errno = error;                                                                                                           \
        return failure;                                                                                                          \
    }

// Reports its failure in errno, and `failure` as its result.
#define SETS_ERRNO(kind, error, failure, Result, name, parameters, arguments)                                                    \
    IN_FRONT(Result, name, parameters)                                                                                           \
    {                                                                                                                            \
        static auto* const system = next<Result parameters>(#name);                                                              \
        FAIL_WITH(kind, error, failure)                                                                                          \
        return system arguments;                                                                                                 \
    }

// Returns its error.
#define RETURNS_ERROR(kind, error, name, parameters, arguments) SETS_ERRNO(kind, 0, error, int, name, parameters, arguments)

// Writes to a stream of the C library, whose own calls cannot be caught.
#define PRINTS(Result, name, parameters, arguments)                                                                              \
    IN_FRONT(Result, name, parameters)                                                                                           \
    {                                                                                                                            \
        static auto* const system = next<Result parameters>(#name);                                                              \
        const FullStream full(stream);                                                                                           \
        return system arguments;                                                                                                 \
    }

using Text = const char*;

SETS_ERRNO("pipe", EMFILE, -1, int, pipe, (int* ends), (ends))
SETS_ERRNO("pipe", EMFILE, -1, int, pipe2, (int* ends, int flags), (ends, flags))

RETURNS_ERROR("spawn", EAGAIN, posix_spawn, (int* child, Text path, void* a, void* b, char** words, char** variables),
              (child, path, a, b, words, variables))
RETURNS_ERROR("actions", ENOMEM, posix_spawn_file_actions_init, (void* a), (a))
RETURNS_ERROR("actions", ENOMEM, posix_spawn_file_actions_adddup2, (void* a, int from, int to), (a, from, to))
RETURNS_ERROR("actions", ENOMEM, posix_spawn_file_actions_addopen, (void* a, int to, Text path, int flags, unsigned mode),
              (a, to, path, flags, mode))
RETURNS_ERROR("actions", ENOMEM, posix_spawn_file_actions_addchdir_np, (void* a, Text path), (a, path))
RETURNS_ERROR("actions", ENOMEM, posix_spawn_file_actions_addclosefrom_np, (void* a, int from), (a, from))
RETURNS_ERROR("actions", ENOMEM, posix_spawnattr_init, (void* a), (a))
RETURNS_ERROR("actions", EINVAL, posix_spawnattr_setflags, (void* a, short flags), (a, flags))
RETURNS_ERROR("actions", EINVAL, posix_spawnattr_setsigmask, (void* a, void* set), (a, set))
RETURNS_ERROR("actions", EINVAL, posix_spawnattr_setsigdefault, (void* a, void* set), (a, set))

RETURNS_ERROR("thread", EAGAIN, pthread_create, (void* id, void* attributes, void* (*entry)(void*), void* argument),
              (id, attributes, entry, argument))
RETURNS_ERROR("thread", ENOMEM, pthread_attr_init, (void* attributes), (attributes))
RETURNS_ERROR("thread", EINVAL, pthread_attr_setstacksize, (void* attributes, std::size_t size), (attributes, size))

// The third argument is there only for some flags.
SETS_ERRNO("open", EMFILE, -1, int, open, (Text path, int flags, unsigned mode), (path, flags, mode))
SETS_ERRNO("open", EMFILE, -1, int, open64, (Text path, int flags, unsigned mode), (path, flags, mode))
SETS_ERRNO("open", EMFILE, -1, int, openat, (int folder, Text path, int flags, unsigned mode), (folder, path, flags, mode))
SETS_ERRNO("open", EMFILE, nullptr, FILE*, fopen, (Text path, Text mode), (path, mode))
SETS_ERRNO("open", EMFILE, nullptr, FILE*, fopen64, (Text path, Text mode), (path, mode))
SETS_ERRNO("open", EMFILE, nullptr, void*, opendir, (Text path), (path))
SETS_ERRNO("open", EMFILE, -1, int, fcntl, (int file, int command, long argument), (file, command, argument))
SETS_ERRNO("open", EMFILE, -1, int, fcntl64, (int file, int command, long argument), (file, command, argument))

IN_FRONT(int, close, (int file))
{
    static auto* const system = next<int(int)>("close");
    const bool failing = fails(indexOf("close"));
    const int result = system(file);  // a close that fails has closed the descriptor, too
    if (failing) {
        errno = EIO;
        return -1;
    }
    return result;
}

SETS_ERRNO("read", EIO, -1, ssize_t, read, (int file, void* data, std::size_t count), (file, data, count))
SETS_ERRNO("read", EIO, nullptr, void*, readdir, (void* folder), (folder))
SETS_ERRNO("read", EIO, nullptr, void*, readdir64, (void* folder), (folder))
SETS_ERRNO("read", EIO, -1, long, lseek64, (int file, long at, int from), (file, at, from))
SETS_ERRNO("write", ENOSPC, -1, ssize_t, write, (int file, const void* data, std::size_t count), (file, data, count))
SETS_ERRNO("write", ENOSPC, -1, ssize_t, writev, (int file, const void* parts, int count), (file, parts, count))
SETS_ERRNO("write", EIO, -1, int, fsync, (int file), (file))
PRINTS(std::size_t, fwrite, (const void* data, std::size_t size, std::size_t count, FILE* stream), (data, size, count, stream))
PRINTS(int, fputc, (int c, FILE* stream), (c, stream))
PRINTS(int, fputs, (Text text, FILE* stream), (text, stream))
PRINTS(int, fflush, (FILE * stream), (stream))

SETS_ERRNO("rename", EACCES, -1, int, rename, (Text from, Text to), (from, to))
SETS_ERRNO("rename", EINVAL, -1, int, renameat2, (int a, Text from, int b, Text to, unsigned flags), (a, from, b, to, flags))
SETS_ERRNO("mkdir", ENOSPC, -1, int, mkdir, (Text path, unsigned mode), (path, mode))
SETS_ERRNO("mkdir", EPERM, -1, int, chmod, (Text path, unsigned mode), (path, mode))
SETS_ERRNO("stat", EACCES, -1, int, stat, (Text path, void* entry), (path, entry))
SETS_ERRNO("stat", EACCES, -1, int, stat64, (Text path, void* entry), (path, entry))
SETS_ERRNO("stat", EACCES, -1, int, lstat, (Text path, void* entry), (path, entry))
SETS_ERRNO("stat", EACCES, -1, int, lstat64, (Text path, void* entry), (path, entry))
SETS_ERRNO("stat", EIO, -1, int, fstat64, (int file, void* entry), (file, entry))
SETS_ERRNO("stat", EIO, -1, int, access, (Text path, int mode), (path, mode))
SETS_ERRNO("stat", EACCES, nullptr, char*, realpath, (Text path, char* found), (path, found))
SETS_ERRNO("stat", EACCES, -1, ssize_t, readlink, (Text path, char* found, std::size_t size), (path, found, size))
SETS_ERRNO("stat", ENOENT, nullptr, char*, getcwd, (char* found, std::size_t size), (found, size))

SETS_ERRNO("poll", ENOMEM, -1, int, poll, (void* files, unsigned long count, int timeout), (files, count, timeout))
SETS_ERRNO("poll", ENOMEM, -1, int, ppoll, (void* files, unsigned long count, const void* timeout, const void* set),
           (files, count, timeout, set))
SETS_ERRNO("wait", waitError(id), -1, int, waitid, (int type, int id, void* info, int options), (type, id, info, options))
SETS_ERRNO("wait", ECHILD, -1, int, waitpid, (int id, int* status, int options), (id, status, options))
IN_FRONT(long, syscall, (long number, long a, long b, long c, long d, long e, long f))
{
    // Not a guarded static: where two threads meet at its guard, one of them waits there, by this very call.
    using System = long(long, long, long, long, long, long, long);
    static constinit std::atomic<System*> system{nullptr};
    if (!system)
        system = next<System>("syscall");
    if (number == SYS_pidfd_open)
        FAIL_WITH("pidfd", EMFILE, -1)
    return system.load()(number, a, b, c, d, e, f);
}

SETS_ERRNO("time", EOVERFLOW, nullptr, void*, localtime, (const void* time), (time))
SETS_ERRNO("time", EOVERFLOW, nullptr, void*, localtime_r, (const void* time, void* fields), (time, fields))
SETS_ERRNO("time", EOVERFLOW, nullptr, void*, gmtime_r, (const void* time, void* fields), (time, fields))
SETS_ERRNO("time", EOVERFLOW, -1, long, mktime, (void* fields), (fields))

// The C library's own names for these: to look up the others allocates.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* old, std::size_t size);
}
IN_FRONT(void*, malloc, (std::size_t size))
{
    if (size >= smallestMemory)
        FAIL_WITH("memory", ENOMEM, nullptr)
    return __libc_malloc(size);
}
IN_FRONT(void*, calloc, (std::size_t count, std::size_t size))
{
    if (count * size >= smallestMemory)
        FAIL_WITH("memory", ENOMEM, nullptr)
    return __libc_calloc(count, size);
}
IN_FRONT(void*, realloc, (void* old, std::size_t size))
{
    if (size >= smallestMemory)
        FAIL_WITH("memory", ENOMEM, nullptr)
    return __libc_realloc(old, size);
}
