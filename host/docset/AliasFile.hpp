#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "docimage/Aliases.hpp"
#include "docset/Fault.hpp"
#include "files/Folder.hpp"
#include "foundation/core/export.hpp"

namespace reference::docset {

// More aliases, or more names of one alias, are no help to anybody who asks.
inline constexpr std::size_t mostAliases = 200;
inline constexpr std::size_t mostNamesOfAlias = 8;

// The file that may lie beside a lookup file: "demo.lookup.json" has "demo.lookup.aliases.json". No
// manifest names it, so that readers that do not know of it read the set as before.
[[nodiscard]] VELTRA_HOST_API std::string aliasFileName(std::string_view lookupFile);

// Whether the text is a name that code can give ("np"), and whether it is such names with dots
// between them ("matplotlib.pyplot"). Letters are those of ASCII.
[[nodiscard]] VELTRA_HOST_API bool isIdentifier(std::string_view text) noexcept;
[[nodiscard]] VELTRA_HOST_API bool isDottedName(std::string_view text) noexcept;

// The aliases beside the lookup file of this path relative to the root; none where there is no such
// file. Every fault goes to `onFault`, and what is faulty is left out. Nothing, after a fault,
// where the file as a whole is unusable. Any thread.
[[nodiscard]] VELTRA_HOST_API std::optional<docimage::Aliases> readAliases(
    const std::filesystem::path& root, std::string_view lookupFile, const FaultHandler& onFault);

// The same for a documentation root that is held open.
[[nodiscard]] VELTRA_HOST_API std::optional<docimage::Aliases> readAliases(
    const files::Folder& root, std::string_view lookupFile, const FaultHandler& onFault);

// What lies beside a lookup file.
struct AliasFile {
    bool isThere = false;  // also where it cannot be opened
    std::optional<docimage::Aliases> aliases;
};

// The aliases as readAliases() gives them, and whether they are those of a file.
[[nodiscard]] AliasFile readAliasFile(const files::Folder& root, std::string_view lookupFile,
                                      const FaultHandler& onFault);

// Whether there is something in the place of that file, sound or not.
[[nodiscard]] bool hasAliasFile(const files::Folder& root, std::string_view lookupFile);

}  // namespace reference::docset
