#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "docset/ProductDocumentation.hpp"
#include "property/RefEntityType.hpp"

// Turns the HTML pages that Sphinx built, with the inventory that lists what they document, into
// the documentation of a product.
namespace reference::importers::sphinx {

// What is to be imported. Texts UTF-16.
struct ImportOptions {
    // The folder that holds objects.inv.
    std::filesystem::path source;
    // The product's key; must not be empty.
    std::u16string shortName;
    // Empty: the project that the inventory names.
    std::u16string displayName;
    // Empty: the version that the inventory names.
    std::u16string version;
    // Empty: the short name.
    std::u16string helpFolder;
    // How many threads read pages; 0: as many as the machine runs at a time.
    unsigned threads = 0;
    // Called after each page with how many of all pages are done; may be empty. The calls come from
    // several threads, but one after the other.
    std::function<void(std::size_t done, std::size_t total)> progress;
};

// A page that something is wrong with. All texts UTF-8.
struct PageFault {
    // Relative to the source folder; "objects.inv" for the inventory's own faults.
    std::string page;
    // A sentence.
    std::string problem;

    friend bool operator==(const PageFault&, const PageFault&) = default;
};

// How an import went.
struct ImportReport {
    // How many objects the inventory lists for the reference.
    std::size_t objects = 0;
    // How many lookup records the documentation has of each kind, without those of further names.
    std::map<property::RefEntityType::Value, std::size_t> entitiesByKind;
    // How many further names (aliases) entities are filed under.
    std::size_t furtherNames = 0;
    // How many objects of the inventory are no part of the reference, by domain and role:
    // "std:label".
    std::map<std::string, std::size_t> leftOut;
    // Pages that were read, with faults or without.
    std::size_t pagesRead = 0;
    // By name of the page. Those that could not be read were passed over.
    std::vector<PageFault> faults;
    // Names (UTF-8) of objects that no page describes, in the order of the inventory; they have
    // records that say nothing but their name, kind and place.
    std::vector<std::string> undescribed;
};

struct ImportResult {
    docset::ProductDocumentation documentation;
    ImportReport report;
};

// Why nothing can be imported; the text names the file and says what would be right.
class ImportError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Imports a built tree. The result depends on the tree and the options, never on the number of
// threads.
//
// Throws ImportError where the options are incomplete, the folder has no usable inventory, or the
// system fails to read a file that may exist (no descriptor or memory is free, the disk fails,
// access is denied). What is wrong with single pages is reported instead. An exception that
// `progress` throws ends the import and reaches the caller.
//
// May be called from any thread; several imports may run at a time.
[[nodiscard]] ImportResult importTree(const ImportOptions& options);

}  // namespace reference::importers::sphinx
