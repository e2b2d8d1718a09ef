#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "docset/Fault.hpp"
#include "docset/ProductSource.hpp"
#include "foundation/core/export.hpp"

namespace reference::docset {

// The manifest's name within a documentation root.
inline constexpr const char* manifestFileName = "documentation-set.json";

// The files of one product in one locale: paths relative to the root, in UTF-8 with '/'.
struct ProductFiles {
    std::string lookup;
    // May be empty for a product that is not installed.
    std::string reference;
    // What the files were made from; nothing where that is not known.
    std::optional<ProductSource> source = std::nullopt;

    friend bool operator==(const ProductFiles&, const ProductFiles&) = default;
};

// What the manifest says of one product.
struct VELTRA_HOST_API ManifestProduct {
    std::u16string shortName;
    bool installed = true;
    // By locale ("en_US").
    std::map<std::string, ProductFiles> files;

    // The locale in which the product is read when `wanted` is asked for: that one, else the first
    // of `locales` (the set's, in order) that the product has. Nothing when it has none.
    [[nodiscard]] std::optional<std::string> localeFor(
        const std::string& wanted, const std::vector<std::string>& locales) const;

    friend bool operator==(const ManifestProduct&, const ManifestProduct&) = default;
};

// The list of what a documentation set holds. A plain value.
struct VELTRA_HOST_API Manifest {
    std::string title;
    // The set's locales; the first is the one that stands in for those a product lacks.
    std::vector<std::string> locales;
    std::vector<ManifestProduct> products;

    friend bool operator==(const Manifest&, const Manifest&) = default;
};

// Reads the manifest of the documentation set in the folder `root`. A product that is faulty is
// reported and left out; nothing is returned, after a report, when the file itself is unusable.
// Any thread. Throws only what `onFault` throws.
[[nodiscard]] VELTRA_HOST_API std::optional<Manifest> readManifest(
    const std::filesystem::path& root, const FaultHandler& onFault);

}  // namespace reference::docset
