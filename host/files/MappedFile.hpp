#pragma once

#include <cstddef>
#include <string_view>

#include "foundation/core/export.hpp"

namespace reference::files {

// The content of a file in memory, shared with all processes that map it; nothing is read until it
// is looked at. Immutable; any thread. The file may be removed or replaced by a rename meanwhile,
// but must not be made shorter: looking at what is gone ends the process, as for every mapped file.
class VELTRA_HOST_API MappedFile {
  public:
    // Maps all of an open regular file; the descriptor is not needed any more afterwards. Throws
    // std::system_error.
    explicit MappedFile(int descriptor);
    MappedFile(const MappedFile&) = delete;  // shared by pointer
    MappedFile& operator=(const MappedFile&) = delete;
    ~MappedFile();

    // Valid as long as the object.
    [[nodiscard]] std::string_view content() const noexcept { return {m_data, m_size}; }

  private:
    const char* m_data = nullptr;
    std::size_t m_size = 0;
};

}  // namespace reference::files
