#include "files/MappedFile.hpp"

#include <cerrno>
#include <sys/mman.h>
#include <system_error>

#include "files/FileStamp.hpp"

namespace reference::files {

MappedFile::MappedFile(int descriptor) : m_size(FileStamp::of(descriptor).size) {
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

}  // namespace reference::files
