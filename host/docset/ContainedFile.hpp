// Reading the files of a documentation root without ever leaving it. Internal: no public header
// includes it.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "docset/Fault.hpp"
#include "files/Folder.hpp"

namespace reference::docset {

// The size, in bytes, up to which a file is read: far above any real product, and far below what
// would use up a process's memory.
inline constexpr std::size_t maxFileSize = std::size_t{256} * 1024 * 1024;

// Why `relativePath` (UTF-8, parts divided by '/') may not name a file of a documentation root, or
// nothing when it may: it must be relative, name no parent folder, and have no empty part, no
// backslash and no control character.
[[nodiscard]] std::optional<std::string> whyNotContained(std::string_view relativePath);

// The folder `root`. Nothing, after one call of `onFault`, when it cannot be opened; the fault
// names `relativePath`, which was to be read.
[[nodiscard]] std::optional<files::Folder> openRoot(const std::filesystem::path& root,
                                                    std::string_view relativePath,
                                                    const FaultHandler& onFault);

// The fault of a file below `root` that could not be opened or read.
[[nodiscard]] Fault faultOf(const files::Folder& root, std::string_view relativePath,
                            const std::error_code& error);

// The bytes of a file below `root`. Nothing, after one call of `onFault`, when the name leads out
// of the root (by its parts or through a link), or the file is missing, not a regular file, too
// large or unreadable. Never blocks on a pipe or a device. Any thread.
[[nodiscard]] std::optional<std::string> readContainedFile(const files::Folder& root,
                                                           std::string_view relativePath,
                                                           const FaultHandler& onFault);

}  // namespace reference::docset
