// The index of a documentation set: what the lookup files of its products say of themselves, and
// the names of all products as one table and by their parts, in an image of its own. With it, a
// name is found in hundreds of products without a look at the files of those that do not have it.
// Internal: no public header includes it.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "docimage/JoinedNames.hpp"
#include "docimage/QuestionIndex.hpp"
#include "docset/CompiledFiles.hpp"
#include "docset/Manifest.hpp"
#include "docset/ProductDocumentation.hpp"
#include "files/FileStamp.hpp"
#include "files/Folder.hpp"

namespace reference::docset {

// A lookup file with its image, as they were when the index was made.
struct IndexedLookup {
    std::string file;
    ProductHeader header;
    files::FileStamp json;
    // The file of aliases beside it; nothing where there is none.
    std::optional<files::FileStamp> aliases;
    files::FileStamp image;
};

// Derived from the images of lookup files, and disposable like these.
struct SetIndex {
    // Installed products, in the order of their short names.
    std::vector<IndexedLookup> products;
    std::shared_ptr<const docimage::JoinedNames> names;
    std::shared_ptr<const docimage::QuestionIndex> questions;
};

// The name of the index for products that are read in `language`, empty for each product's first
// locale: a set has one index for each of its locales.
[[nodiscard]] std::string setIndexFileName(const Manifest& manifest, const std::string& language);

// Whether a file of the set's root may have this name because it is an index.
[[nodiscard]] bool isSetIndexFileName(std::string_view name);

// Nothing where there is no index, and, after a call of `onPassedOver`, where it is damaged or of
// another version. Whether it is of the files as they are now is to be asked for each product.
[[nodiscard]] std::optional<SetIndex> openSetIndex(const files::Folder& root,
                                                   const std::string& fileName,
                                                   const PassedOver& onPassedOver);

// Whether the product's lookup file, its aliases and its image are those that the index is of.
[[nodiscard]] bool isUnchanged(const files::Folder& root, const IndexedLookup& lookup);

// Writes the index for each of the set's locales, unless it is of the files already. Where a
// product has no image there is none afterwards, and where one cannot be written, at most one that
// its readers see not to be of the files: nobody needs one in order to read the set. Returns why
// some could not be written, a text for each.
std::vector<std::string> writeSetIndexes(const files::Folder& root, const Manifest& manifest);

}  // namespace reference::docset
