#include "files/MappedFile.hpp"

#include <cerrno>
#include <sys/mman.h>
#include <sys/stat.h>
#include <system_error>

namespace reference::files {
namespace {

struct stat statusOf(int descriptor) {
    struct stat status {};
    if (::fstat(descriptor, &status) != 0)
        throw std::system_error(errno, std::generic_category(), "fstat");
    return status;
}

}  // namespace

MappedFile::MappedFile(int descriptor)
    : m_size(static_cast<std::size_t>(statusOf(descriptor).st_size)) {
    if (m_size == 0)  // nothing can be mapped
        return;
    void* const data = ::mmap(nullptr, m_size, PROT_READ, MAP_SHARED, descriptor, 0);
    if (data == MAP_FAILED)
        throw std::system_error(errno, std::generic_category(), "mmap");
    m_data = static_cast<const char*>(data);
}

MappedFile::~MappedFile() {
    if (m_data != nullptr)
        ::munmap(const_cast<char*>(m_data), m_size);
}

FileStamp FileStamp::of(int descriptor) {
    const struct stat status = statusOf(descriptor);
    constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;
    return {.size = static_cast<std::uint64_t>(status.st_size),
            .modified = status.st_mtim.tv_sec * nanosecondsPerSecond + status.st_mtim.tv_nsec};
}

}  // namespace reference::files
