#include "files/FileStamp.hpp"

#include <cerrno>
#include <sys/stat.h>
#include <system_error>

namespace reference::files {
namespace {

constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;

}  // namespace

FileStamp FileStamp::of(int descriptor) {
    struct ::stat status {};
    if (::fstat(descriptor, &status) != 0)
        throw std::system_error(errno, std::generic_category(), "fstat");
    return of(status);
}

FileStamp FileStamp::of(const struct ::stat& status) noexcept {
    return {.size = static_cast<std::uint64_t>(status.st_size),
            .modified = status.st_mtim.tv_sec * nanosecondsPerSecond + status.st_mtim.tv_nsec};
}

bool FileStamp::isSameAs(const FileStamp& other) const noexcept {
    if (size != other.size)
        return false;
    const bool isWhole =
        modified % nanosecondsPerSecond == 0 || other.modified % nanosecondsPerSecond == 0;
    return isWhole ? modified / nanosecondsPerSecond == other.modified / nanosecondsPerSecond
                   : modified == other.modified;
}

}  // namespace reference::files
