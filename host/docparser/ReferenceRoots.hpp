#pragma once

#include <string>
#include <vector>

namespace reference::docparser {

// The folders that documentation is read from.
struct ReferenceRoots {
    // The documentation root.
    std::u16string docRoot;
    // The roots of the support packages, in the order in which they are searched.
    std::vector<std::u16string> supportPackageRoots;

    friend bool operator==(const ReferenceRoots&, const ReferenceRoots&) = default;
};

}  // namespace reference::docparser
