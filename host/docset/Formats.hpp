// The marks with which the files of a documentation set say what they are. Internal: no public
// header includes it.
#pragma once

#include <string_view>

namespace reference::docset {

inline constexpr std::string_view manifestFormat = "veltra-documentation-set";
inline constexpr std::string_view lookupFormat = "veltra-documentation-lookup";
inline constexpr std::string_view referenceFormat = "veltra-documentation-reference";
inline constexpr std::string_view aliasesFormat = "veltra-documentation-aliases";

// The one version of all formats that this code reads and writes. A change that an older
// reader would misread raises it.
inline constexpr unsigned formatVersion = 1;

}  // namespace reference::docset
