// A library to be loaded before all others (LD_PRELOAD) into a tool under test. It makes system
// calls fail for one file, which no file system does on demand:
//   VELTRA_FAIL_FILE   the end of the file's name
//   VELTRA_FAIL_CALL   "open" or "read"
//   VELTRA_FAIL_ERRNO  the error's number
//   VELTRA_FAIL_TIMES  how often it fails before it works again; unset: always
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <dlfcn.h>
#include <fcntl.h>
#include <string_view>
#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

namespace {

std::string_view variable(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

// Whether this call is to fail; if so, errno is set.
bool fails(std::string_view call) {
    static std::atomic<int> timesLeft = [] {
        const std::string_view times = variable("VELTRA_FAIL_TIMES");
        return times.empty() ? -1 : std::atoi(times.data());
    }();
    if (variable("VELTRA_FAIL_CALL") != call || timesLeft == 0)
        return false;
    if (timesLeft > 0)
        --timesLeft;
    errno = std::atoi(variable("VELTRA_FAIL_ERRNO").data());
    return true;
}

bool isMeant(const char* file) {
    const std::string_view end = variable("VELTRA_FAIL_FILE");
    return file != nullptr && !end.empty() && std::string_view(file).ends_with(end);
}

// The descriptor that the file was opened with.
std::atomic<int> meantDescriptor = -1;

int opened(const char* file, int descriptor) {
    if (isMeant(file))
        meantDescriptor = descriptor;
    else if (descriptor == meantDescriptor)
        meantDescriptor = -1;
    return descriptor;
}

template <class Function>
Function* next(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

mode_t modeOf(int flags, std::va_list arguments) {
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

}  // namespace

extern "C" {

[[gnu::visibility("default")]] int open(const char* file, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    if (isMeant(file) && fails("open"))
        return -1;
    return opened(file, next<int(const char*, int, ...)>("open")(file, flags, mode));
}

[[gnu::visibility("default")]] int openat(int folder, const char* file, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    if (isMeant(file) && fails("open"))
        return -1;
    return opened(file, next<int(int, const char*, int, ...)>("openat")(folder, file, flags, mode));
}

// openat2() has no function of its own.
[[gnu::visibility("default")]] long syscall(long number, ...) noexcept {
    long values[6] = {};
    std::va_list arguments;
    va_start(arguments, number);
    for (long& value : values)
        value = va_arg(arguments, long);
    va_end(arguments);
    const char* const file =
        number == SYS_openat2 ? reinterpret_cast<const char*>(values[1]) : nullptr;
    if (isMeant(file) && fails("open"))
        return -1;
    const long result = next<long(long, ...)>("syscall")(number, values[0], values[1], values[2],
                                                         values[3], values[4], values[5]);
    if (file != nullptr)
        opened(file, static_cast<int>(result));
    return result;
}

[[gnu::visibility("default")]] ssize_t read(int descriptor, void* bytes, std::size_t count) {
    if (descriptor >= 0 && descriptor == meantDescriptor && fails("read"))
        return -1;
    return next<ssize_t(int, void*, std::size_t)>("read")(descriptor, bytes, count);
}

}  // extern "C"
