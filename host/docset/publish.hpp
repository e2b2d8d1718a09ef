#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "docset/OnWait.hpp"
#include "docset/ProductDocumentation.hpp"
#include "foundation/core/export.hpp"

namespace reference::docset {

// A documentation set could not be written. what() says which file and why.
class VELTRA_HOST_API PublishError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Puts a product into the documentation set in the folder `root`, as an installed product, adding
// it or replacing what the set has of it in `locale`. A root that does not exist, or is an empty
// folder, becomes a new set with that locale.
//
// One atomic step: the product's files are written under names that nobody reads yet, and the
// manifest that names them replaces the old one by a rename. Whenever the process or the machine
// stops, a reader finds either the old product or the new one, whole. The files that the old
// manifest named stay until the next call for the same product, for readers that still hold it.
// Calls from several processes wait for each other.
//
// The set remembers `documentation.source` for this locale, and keeps that of other locales.
//
// What was written is read back and compared before the manifest names it, so that a product that
// no reader could read (an item without entities, a text that is not Unicode) never replaces one.
// Below the root no link is followed: a link in the place of a file is replaced, never written
// through, and one in the place of a locale's folder or of the lock file is refused.
//
// `locale` is a folder name such as "en_US": UTF-8 without control characters, and no name that a
// file of the set has. Throws PublishError when the root holds something else, its manifest is
// faulty, or a file cannot be written or read back; the set is then as it was, and what had been
// written is removed. Files that a stopped process left behind are removed first. Any thread.
//
// Returns what could not be done once the product had taken effect, a text for each: the indexes
// that make the set quick to open, the removal of old files, the confirmation of the disk. Mostly
// empty.
VELTRA_HOST_API std::vector<std::string> publishProduct(const std::filesystem::path& root,
                                                        const std::string& locale,
                                                        const ProductDocumentation& documentation,
                                                        const OnWait& onWait = {});

// Throws PublishError where publishProduct() would refuse this product: because of its short name,
// the locale, or what lies at the root. Makes and changes nothing, so that it can be asked before
// the documentation is put together; publishProduct() checks again. Any thread.
VELTRA_HOST_API void requirePublishable(const std::filesystem::path& root,
                                        const std::string& locale, const std::u16string& shortName);

}  // namespace reference::docset
