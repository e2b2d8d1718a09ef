#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "docset/Fault.hpp"
#include "docset/ProductDocumentation.hpp"
#include "files/Folder.hpp"
#include "foundation/core/export.hpp"

namespace reference::docset {

// A lookup file: one product's entities.
struct LookupContents {
    ProductHeader header;
    std::map<std::u16string, std::vector<property::RefItemLookup>> entities;
};

// A product's share of a reference file.
struct ReferenceContents {
    ProductHeader header;
    std::map<std::u16string, std::vector<property::RefItem>> pages;
};

// Each reads one file below a documentation root, named by a path relative to the root. Every fault
// goes to `onFault`; where it throws, nothing is returned. Where it returns, the faulty field takes
// its default and the reading goes on, and nothing is returned only when the file as a whole is
// unusable. Any thread.
[[nodiscard]] VELTRA_HOST_API std::optional<LookupContents> readLookupFile(
    const std::filesystem::path& root, std::string_view relativePath, const FaultHandler& onFault);
[[nodiscard]] VELTRA_HOST_API std::optional<std::vector<ReferenceContents>> readReferenceFile(
    const std::filesystem::path& root, std::string_view relativePath, const FaultHandler& onFault);

// The same for a documentation root that is held open.
[[nodiscard]] VELTRA_HOST_API std::optional<LookupContents> readLookupFile(
    const files::Folder& root, std::string_view relativePath, const FaultHandler& onFault);
[[nodiscard]] VELTRA_HOST_API std::optional<std::vector<ReferenceContents>> readReferenceFile(
    const files::Folder& root, std::string_view relativePath, const FaultHandler& onFault);

}  // namespace reference::docset
