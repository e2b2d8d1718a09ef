// A library to be loaded before all others (LD_PRELOAD) into a tool under test. It counts the calls
// of one family that the process makes, and lets one of them fail:
//   VELTRA_TORTURE_CALL    the family: one of `familyNames`
//   VELTRA_TORTURE_NUMBER  which call fails, counted from 1; 0 or unset: none, only count
//   VELTRA_TORTURE_HOW     the error's number; "short" for a call that transfers half of what it is
//                          asked for; "kill" for a process that is killed before the call
//   VELTRA_TORTURE_TIMES   how many calls fail in a row; unset: one; "all": also all that follow
//   VELTRA_TORTURE_FROM    "main" counts what comes after main() has begun, "start" everything
//   VELTRA_TORTURE_REPORT  a file that gets, at exit, the number of calls seen, of calls that were
//                          made to fail, and of the descriptors that are still open; then the
//                          descriptor that the first call to fail was given, or -1
//   VELTRA_TORTURE_TRACE   if set, the stack of the first call that fails goes to the standard
//   error
// What libc calls inside itself is not seen, except for memory.
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <dlfcn.h>
#include <execinfo.h>
#include <fcntl.h>
#include <optional>
#include <poll.h>
#include <pthread.h>
#include <string_view>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <climits>

// The allocator itself, by the names that no other library takes.
// NOLINTBEGIN(bugprone-reserved-identifier): libc has given the names.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
}
// NOLINTEND(bugprone-reserved-identifier)

namespace {

enum Family : std::size_t {
    Open,
    Read,
    Write,
    Fsync,
    Rename,
    Map,
    Close,
    MakeFolder,
    Unlink,
    Stat,
    List,
    Link,
    Thread,
    Lock,
    Poll,
    Memory,
    // All but Memory.
    Any,
};

constexpr std::array<std::string_view, Any + 1> familyNames{
    "open", "read", "write", "fsync",  "rename", "map",  "close",  "mkdir", "unlink",
    "stat", "list", "link",  "thread", "lock",   "poll", "memory", "any"};

enum class How { Error, Short, Kill };

// Set before the process has a second thread.
bool isRead = false;  // the variables
bool isArmed = false;
Family wanted = Any;
How how = How::Error;
int errorNumber = EIO;
long firstNumber = 0;
long lastNumber = 0;
bool isTraced = false;
const char* report = nullptr;

std::atomic<bool> isCounting = false;
std::atomic<long> seen = 0;
std::atomic<long> failed = 0;
std::atomic<int> failedDescriptor = -1;

std::string_view variable(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

long numberIn(std::string_view text) {
    return text.empty() ? 0 : std::atol(text.data());
}

void trace() {
    isCounting = false;
    std::array<void*, 64> frames{};
    const int depth = ::backtrace(frames.data(), static_cast<int>(frames.size()));
    ::backtrace_symbols_fd(frames.data(), depth, STDERR_FILENO);
    isCounting = true;
}

template <class Function>
Function* next(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

bool takesMode(int flags) {
    return (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
}

[[gnu::constructor]] void readVariables() {
    if (isRead)
        return;
    isRead = true;
    const std::string_view family = variable("VELTRA_TORTURE_CALL");
    for (std::size_t at = 0; at < familyNames.size(); ++at)
        if (familyNames[at] == family) {
            wanted = static_cast<Family>(at);
            isArmed = true;
        }
    const std::string_view kind = variable("VELTRA_TORTURE_HOW");
    how = kind == "short" ? How::Short : kind == "kill" ? How::Kill : How::Error;
    errorNumber = static_cast<int>(numberIn(kind));
    firstNumber = numberIn(variable("VELTRA_TORTURE_NUMBER"));
    const std::string_view times = variable("VELTRA_TORTURE_TIMES");
    if (firstNumber == 0)
        firstNumber = LONG_MAX;
    else if (times == "all")
        lastNumber = LONG_MAX;
    else
        lastNumber = firstNumber + (times.empty() ? 1 : numberIn(times)) - 1;
    isTraced = !variable("VELTRA_TORTURE_TRACE").empty();
    report = std::getenv("VELTRA_TORTURE_REPORT");
    isCounting = isArmed && variable("VELTRA_TORTURE_FROM") == "start";
}

// Whether it is this call's turn.
bool isDue(Family family, int descriptor = -1) {
    // Other libraries are initialised before this one; libc, which knows the variables, before
    // them.
    if (!isRead && environ != nullptr)
        readVariables();
    if (!isCounting || (wanted != family && (wanted != Any || family == Memory)))
        return false;
    const long number = ++seen;
    if (number < firstNumber || number > lastNumber)
        return false;
    if (how == How::Kill)
        ::kill(::getpid(), SIGKILL);
    if (failed++ == 0) {
        failedDescriptor = descriptor;
        if (isTraced)
            trace();
    }
    return true;
}

// Whether this call is to fail; if so, errno is set.
bool fails(Family family) {
    if (!isDue(family) || how == How::Short)
        return false;
    errno = errorNumber;
    return true;
}

// How many of so many bytes a call may transfer; nothing where it is to fail, and errno is set. A
// short count is at least one byte, because none would be the end of the file.
std::optional<std::size_t> mostOf(std::size_t count, Family family, int descriptor) {
    if (!isDue(family, descriptor))
        return count;
    if (how == How::Error) {
        errno = errorNumber;
        return std::nullopt;
    }
    return count > 1 ? count / 2 : count;
}

// How many descriptors are open, without the one that this takes to find out.
long openDescriptors() {
    ::DIR* const folder = ::opendir("/proc/self/fd");
    if (folder == nullptr)
        return -1;
    long count = -1;
    while (const ::dirent* entry = ::readdir(folder))
        count += entry->d_name[0] != '.' ? 1 : 0;
    ::closedir(folder);
    return count;
}

[[gnu::destructor]] void writeReport() {
    isCounting = false;
    if (report == nullptr)
        return;
    std::array<char, 100> text{};
    const int size = std::snprintf(text.data(), text.size(), "%ld %ld %ld %d\n", seen.load(),
                                   failed.load(), openDescriptors(), failedDescriptor.load());
    const int file = ::open(report, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    static_cast<void>(::write(file, text.data(), static_cast<std::size_t>(size)) < 0);
    ::close(file);
}

using Main = int(int, char**, char**);
Main* realMain = nullptr;

int countedMain(int count, char** arguments, char** environment) {
    if (isTraced) {
        // The first call loads a library.
        const bool wasCounting = isCounting.exchange(false);
        std::array<void*, 1> frame{};
        ::backtrace(frame.data(), 1);
        isCounting = wasCounting;
    }
    isCounting = isArmed;
    return realMain(count, arguments, environment);
}

int modeOf(int flags, std::va_list arguments) {
    return takesMode(flags) ? va_arg(arguments, int) : 0;
}

}  // namespace

#pragma GCC visibility push(default)
extern "C" {

// NOLINTNEXTLINE(bugprone-reserved-identifier): libc has given the name.
int __libc_start_main(Main* main, int count, char** arguments, void (*initialise)(),
                      void (*finish)(), void (*finishLinker)(), void* stackEnd) {
    realMain = main;
    using Start = int(Main*, int, char**, void (*)(), void (*)(), void (*)(), void*);
    return next<Start>("__libc_start_main")(countedMain, count, arguments, initialise, finish,
                                            finishLinker, stackEnd);
}

// open

int open(const char* file, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    const int mode = modeOf(flags, arguments);
    va_end(arguments);
    if (fails(Open))
        return -1;
    static const auto real = next<int(const char*, int, ...)>("open");
    return real(file, flags, mode);
}

int open64(const char* file, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    const int mode = modeOf(flags, arguments);
    va_end(arguments);
    if (fails(Open))
        return -1;
    static const auto real = next<int(const char*, int, ...)>("open64");
    return real(file, flags, mode);
}

int openat(int folder, const char* file, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    const int mode = modeOf(flags, arguments);
    va_end(arguments);
    if (fails(Open))
        return -1;
    static const auto real = next<int(int, const char*, int, ...)>("openat");
    return real(folder, file, flags, mode);
}

int openat64(int folder, const char* file, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    const int mode = modeOf(flags, arguments);
    va_end(arguments);
    if (fails(Open))
        return -1;
    static const auto real = next<int(int, const char*, int, ...)>("openat64");
    return real(folder, file, flags, mode);
}

// openat2() has no function of its own.
long syscall(long number, ...) noexcept {
    std::array<long, 6> values{};
    std::va_list arguments;
    va_start(arguments, number);
    for (long& value : values)
        value = va_arg(arguments, long);
    va_end(arguments);
    if (number == SYS_openat2 && fails(Open))
        return -1;
    static const auto real = next<long(long, ...)>("syscall");
    return real(number, values[0], values[1], values[2], values[3], values[4], values[5]);
}

std::FILE* fopen(const char* file, const char* mode) {
    if (fails(Open))
        return nullptr;
    static const auto real = next<std::FILE*(const char*, const char*)>("fopen");
    return real(file, mode);
}

std::FILE* fopen64(const char* file, const char* mode) {
    if (fails(Open))
        return nullptr;
    static const auto real = next<std::FILE*(const char*, const char*)>("fopen64");
    return real(file, mode);
}

// read and write

ssize_t read(int descriptor, void* bytes, std::size_t count) {
    static const auto real = next<ssize_t(int, void*, std::size_t)>("read");
    const std::optional<std::size_t> most = mostOf(count, Read, descriptor);
    return most ? real(descriptor, bytes, *most) : -1;
}

ssize_t pread(int descriptor, void* bytes, std::size_t count, off_t from) {
    static const auto real = next<ssize_t(int, void*, std::size_t, off_t)>("pread");
    const std::optional<std::size_t> most = mostOf(count, Read, descriptor);
    return most ? real(descriptor, bytes, *most, from) : -1;
}

ssize_t write(int descriptor, const void* bytes, std::size_t count) {
    static const auto real = next<ssize_t(int, const void*, std::size_t)>("write");
    const std::optional<std::size_t> most = mostOf(count, Write, descriptor);
    return most ? real(descriptor, bytes, *most) : -1;
}

ssize_t pwrite(int descriptor, const void* bytes, std::size_t count, off_t at) {
    static const auto real = next<ssize_t(int, const void*, std::size_t, off_t)>("pwrite");
    const std::optional<std::size_t> most = mostOf(count, Write, descriptor);
    return most ? real(descriptor, bytes, *most, at) : -1;
}

// fsync

int fsync(int descriptor) {
    static const auto real = next<int(int)>("fsync");
    return fails(Fsync) ? -1 : real(descriptor);
}

int fdatasync(int descriptor) {
    static const auto real = next<int(int)>("fdatasync");
    return fails(Fsync) ? -1 : real(descriptor);
}

// rename, mkdir, unlink

int rename(const char* file, const char* newName) noexcept {
    static const auto real = next<int(const char*, const char*)>("rename");
    return fails(Rename) ? -1 : real(file, newName);
}

int renameat(int folder, const char* file, int newFolder, const char* newName) noexcept {
    static const auto real = next<int(int, const char*, int, const char*)>("renameat");
    return fails(Rename) ? -1 : real(folder, file, newFolder, newName);
}

int mkdir(const char* folder, mode_t mode) noexcept {
    static const auto real = next<int(const char*, mode_t)>("mkdir");
    return fails(MakeFolder) ? -1 : real(folder, mode);
}

int mkdirat(int parent, const char* folder, mode_t mode) noexcept {
    static const auto real = next<int(int, const char*, mode_t)>("mkdirat");
    return fails(MakeFolder) ? -1 : real(parent, folder, mode);
}

int unlink(const char* file) noexcept {
    static const auto real = next<int(const char*)>("unlink");
    return fails(Unlink) ? -1 : real(file);
}

int unlinkat(int folder, const char* file, int flags) noexcept {
    static const auto real = next<int(int, const char*, int)>("unlinkat");
    return fails(Unlink) ? -1 : real(folder, file, flags);
}

// map

void* mmap(void* place, std::size_t size, int protection, int flags, int file,
           off_t from) noexcept {
    static const auto real = next<void*(void*, std::size_t, int, int, int, off_t)>("mmap");
    return fails(Map) ? MAP_FAILED : real(place, size, protection, flags, file, from);
}

void* mmap64(void* place, std::size_t size, int protection, int flags, int file,
             off64_t from) noexcept {
    static const auto real = next<void*(void*, std::size_t, int, int, int, off64_t)>("mmap64");
    return fails(Map) ? MAP_FAILED : real(place, size, protection, flags, file, from);
}

// close: the descriptor is gone in any case, as the system has it

int close(int descriptor) {
    static const auto real = next<int(int)>("close");
    const bool due = fails(Close);
    const int result = real(descriptor);
    if (due)
        errno = errorNumber;
    return due ? -1 : result;
}

// stat

int stat(const char* file, struct ::stat* status) noexcept {
    static const auto real = next<int(const char*, struct ::stat*)>("stat");
    return fails(Stat) ? -1 : real(file, status);
}

int lstat(const char* file, struct ::stat* status) noexcept {
    static const auto real = next<int(const char*, struct ::stat*)>("lstat");
    return fails(Stat) ? -1 : real(file, status);
}

int fstat(int descriptor, struct ::stat* status) noexcept {
    static const auto real = next<int(int, struct ::stat*)>("fstat");
    return fails(Stat) ? -1 : real(descriptor, status);
}

int fstatat(int folder, const char* file, struct ::stat* status, int flags) noexcept {
    static const auto real = next<int(int, const char*, struct ::stat*, int)>("fstatat");
    return fails(Stat) ? -1 : real(folder, file, status, flags);
}

int stat64(const char* file, struct ::stat64* status) noexcept {
    static const auto real = next<int(const char*, struct ::stat64*)>("stat64");
    return fails(Stat) ? -1 : real(file, status);
}

int lstat64(const char* file, struct ::stat64* status) noexcept {
    static const auto real = next<int(const char*, struct ::stat64*)>("lstat64");
    return fails(Stat) ? -1 : real(file, status);
}

int fstat64(int descriptor, struct ::stat64* status) noexcept {
    static const auto real = next<int(int, struct ::stat64*)>("fstat64");
    return fails(Stat) ? -1 : real(descriptor, status);
}

int statx(int folder, const char* file, int flags, unsigned mask, struct ::statx* status) noexcept {
    static const auto real = next<int(int, const char*, int, unsigned, struct ::statx*)>("statx");
    return fails(Stat) ? -1 : real(folder, file, flags, mask, status);
}

// list, link

::DIR* opendir(const char* folder) {
    static const auto real = next<::DIR*(const char*)>("opendir");
    return fails(List) ? nullptr : real(folder);
}

::DIR* fdopendir(int descriptor) {
    static const auto real = next<::DIR*(int)>("fdopendir");
    return fails(List) ? nullptr : real(descriptor);
}

::dirent* readdir(::DIR* folder) {
    static const auto real = next<::dirent*(::DIR*)>("readdir");
    return fails(List) ? nullptr : real(folder);
}

ssize_t readlink(const char* link, char* target, std::size_t size) noexcept {
    static const auto real = next<ssize_t(const char*, char*, std::size_t)>("readlink");
    return fails(Link) ? -1 : real(link, target, size);
}

ssize_t readlinkat(int folder, const char* link, char* target, std::size_t size) noexcept {
    static const auto real = next<ssize_t(int, const char*, char*, std::size_t)>("readlinkat");
    return fails(Link) ? -1 : real(folder, link, target, size);
}

char* realpath(const char* file, char* resolved) noexcept {
    static const auto real = next<char*(const char*, char*)>("realpath");
    return fails(Link) ? nullptr : real(file, resolved);
}

// thread, lock, poll

int pthread_create(::pthread_t* thread, const ::pthread_attr_t* attributes, void* (*run)(void*),
                   void* argument) noexcept {
    using Create = int(::pthread_t*, const ::pthread_attr_t*, void* (*)(void*), void*);
    static const auto real = next<Create>("pthread_create");
    return fails(Thread) ? errorNumber : real(thread, attributes, run, argument);
}

int flock(int descriptor, int operation) noexcept {
    static const auto real = next<int(int, int)>("flock");
    return fails(Lock) ? -1 : real(descriptor, operation);
}

int fcntl(int descriptor, int command, ...) {
    std::va_list arguments;
    va_start(arguments, command);
    void* const argument = va_arg(arguments, void*);
    va_end(arguments);
    static const auto real = next<int(int, int, ...)>("fcntl");
    const bool locks = command == F_SETLK || command == F_SETLKW || command == F_OFD_SETLK ||
                       command == F_OFD_SETLKW;
    return locks && fails(Lock) ? -1 : real(descriptor, command, argument);
}

int poll(::pollfd* descriptors, ::nfds_t count, int milliseconds) {
    static const auto real = next<int(::pollfd*, ::nfds_t, int)>("poll");
    return fails(Poll) ? -1 : real(descriptors, count, milliseconds);
}

// memory; operator new allocates by these

void* malloc(std::size_t size) noexcept {
    return fails(Memory) ? nullptr : __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) noexcept {
    return fails(Memory) ? nullptr : __libc_calloc(count, size);
}

void* realloc(void* memory, std::size_t size) noexcept {
    return fails(Memory) ? nullptr : __libc_realloc(memory, size);
}

void* memalign(std::size_t alignment, std::size_t size) noexcept {
    return fails(Memory) ? nullptr : __libc_memalign(alignment, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    return fails(Memory) ? nullptr : __libc_memalign(alignment, size);
}

int posix_memalign(void** memory, std::size_t alignment, std::size_t size) noexcept {
    if (fails(Memory))
        return ENOMEM;
    *memory = __libc_memalign(alignment, size);
    return *memory != nullptr ? 0 : ENOMEM;
}

}  // extern "C"
#pragma GCC visibility pop
