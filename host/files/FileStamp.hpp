#pragma once

#include <cstdint>

#include "foundation/core/export.hpp"

struct stat;

namespace reference::files {

// What tells one state of a file from another.
struct VELTRA_HOST_API FileStamp {
    std::uint64_t size = 0;
    // When the content was last changed, in nanoseconds since the epoch.
    std::int64_t modified = 0;

    // Of an open file. Throws std::system_error.
    [[nodiscard]] static FileStamp of(int descriptor);
    [[nodiscard]] static FileStamp of(const struct ::stat& status) noexcept;

    // Whether the file can be taken for unchanged. Archives and packages keep whole seconds of a
    // time, so that a time without a fraction stands for all times in its second.
    [[nodiscard]] bool isSameAs(const FileStamp& other) const noexcept;

    friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

}  // namespace reference::files
