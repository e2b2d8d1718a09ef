// The compiled images beside the JSON files of a documentation set: written when a product is
// published or a set is compiled, and read instead of the JSON as long as they are of it. Internal:
// no public header includes it.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "docimage/LookupImage.hpp"
#include "docimage/PageImage.hpp"
#include "docimage/TextTable.hpp"
#include "docset/ProductDocumentation.hpp"
#include "files/Folder.hpp"

namespace reference::docset {

// A lookup file, and a product's share of a reference file, as images.
struct CompiledLookup {
    ProductHeader header;
    std::shared_ptr<const docimage::LookupImage> records;
};
struct CompiledPages {
    ProductHeader header;
    std::shared_ptr<const docimage::PageImage> pages;
};

// A product's head as four texts of an image: appends them, and reads those of the product of this
// number. The latter throws DamagedImage.
void addHeader(const ProductHeader& header, docimage::TextTableBuilder& texts);
[[nodiscard]] ProductHeader headerAt(const docimage::TextTable& texts, std::size_t product);

// The name of the image of a JSON file: "a.lookup.json" has "a.lookup.image".
[[nodiscard]] std::string imageFileName(std::string_view jsonFile);

// Told why an image that is there is not used: a sentence that names it.
using PassedOver = std::function<void(const std::string& why)>;

// The image of a JSON file below `root`. Nothing where there is none, and, after a call of
// `onPassedOver`, where it is damaged, of another version, or not of the JSON file as it is now.
[[nodiscard]] std::optional<CompiledLookup> openCompiledLookup(const files::Folder& root,
                                                               const std::string& jsonFile,
                                                               const PassedOver& onPassedOver);
[[nodiscard]] std::optional<std::vector<CompiledPages>> openCompiledPages(
    const files::Folder& root, const std::string& jsonFile, const PassedOver& onPassedOver);

// What a product's share of a reference file says; both are borrowed.
struct PagesOfProduct {
    const ProductHeader& header;
    const docimage::PageImage::Pages& pages;
};

// Write the image of a JSON file that lies in `folder` and says this, in one step; that of a lookup
// file is also of the file of aliases beside it. Throw
// std::system_error, and std::length_error for more than 4 GiB of text.
void writeCompiledLookup(const files::Folder& folder, const std::string& jsonFile,
                         const ProductHeader& header,
                         const docimage::LookupImage::Entities& entities,
                         const docimage::Aliases& aliases);
void writeCompiledPages(const files::Folder& folder, const std::string& jsonFile,
                        const std::vector<PagesOfProduct>& products);

}  // namespace reference::docset
