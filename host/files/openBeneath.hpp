// Opening a file below a folder without ever leaving the folder. Internal: no public header
// includes it.
#pragma once

#include <string_view>
#include <system_error>

#include "files/Descriptor.hpp"

namespace reference::files {

enum class Resolver {
    // The system resolves the path where it can (openat2), and ByHand does what it declines.
    System,
    // Every part is opened by itself, and links are resolved here.
    ByHand,
};

// Opens `relativePath` for reading, or gives nothing and sets `error`. Links are followed as long
// as what they lead to, by whatever way, lies below `folder`, an open descriptor of a folder. What
// lies outside is never opened for reading; the error is then std::errc::cross_device_link. Both
// resolvers give the same answers. Does not wait for the other end of a pipe. Any thread.
[[nodiscard]] Descriptor openBeneath(int folder, std::string_view relativePath, Resolver resolver,
                                     std::error_code& error);

}  // namespace reference::files
