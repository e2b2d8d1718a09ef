#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "docset/Fault.hpp"
#include "docset/OnWait.hpp"
#include "foundation/core/export.hpp"

namespace reference::docset {

// What the compilation of a documentation set did.
struct CompilationReport {
    // Why files have no image, in the order of the manifest; empty when all have one.
    std::vector<Fault> faults;
    // Images that were written, and those that were of their file already.
    std::size_t written = 0;
    std::size_t kept = 0;
    // Why indexes of the set, which make it quick to open, could not be written; a text for each.
    std::vector<std::string> problems;
};

// Writes the compiled image of every lookup and reference file that the manifest of the set at
// `root` names, unless the image is of the file already. Publishing a product does so by itself;
// this is for files that were written in another way. A file that is not sound gets no image, and
// its faults are reported. Calls from several processes, and publications, wait for each other.
//
// An image is only ever a shortcut: without it, the file is read. Throws std::system_error where
// the set cannot be opened or locked, or an image cannot be written. Any thread.
[[nodiscard]] VELTRA_HOST_API CompilationReport compile(const std::filesystem::path& root,
                                                        const OnWait& onWait = {});

}  // namespace reference::docset
