#pragma once

#include <map>
#include <string>
#include <vector>

#include "docparser/DocResource.hpp"
#include "docparser/ParsingResults.hpp"
#include "docparser/ProductPathData.hpp"
#include "docparser/ReferenceRoots.hpp"
#include "foundation/core/export.hpp"
#include "property/RefItem.hpp"

namespace reference::docparser {

// Parsed resources by product short name.
using ReferenceResources = std::map<std::u16string, DocResource<property::RefItem>>;

// Where parsed documentation comes from. Derive from it to bring another store, or to watch or fail
// the calls in a test, and hand it to DocResourceParser::setSource.
//
// The library calls every operation from any thread, several at once, and while it holds a lock of
// its own: an implementation must be safe for that and must not call the library. What it cannot
// read it reports with DocParserException; whatever else it throws ends the caller's whole request.
class VELTRA_HOST_API DocSource {
  public:
    DocSource() = default;
    DocSource(const DocSource&) = delete;  // shared by pointer
    DocSource& operator=(const DocSource&) = delete;
    virtual ~DocSource();

    // The lookup resources of all products. Called once, and again after the caches were cleared;
    // what is read while they are being cleared serves one request and is not cached. A product
    // that cannot be read is left out; it is no reason to throw.
    [[nodiscard]] virtual ParsingResults getResourceLookupFiles() = 0;

    // All products of one reference file, named by what HeaderInfo::getReferenceFileName() of a
    // lookup resource says, or by a product's short name. Called when a product is asked for that
    // is not cached: once, and again after the caches were cleared. Called once more for a product
    // that is cached from a file that the lookup resources do not name, when it was not read for
    // them: it may be in another language. That is done once at most for one reading of the lookup
    // files.
    [[nodiscard]] virtual ReferenceResources getResourceFile(
        const std::u16string& resourceFile) = 0;

    // The folders in force.
    [[nodiscard]] virtual ReferenceRoots getReferenceRoots() = 0;

    // The locales that documentation exists in ("en_US"); the first stands in for missing ones.
    [[nodiscard]] virtual std::vector<std::u16string> getSupportedDocLocales() = 0;

    // The products found under `docRoot` (a root of getReferenceRoots) and in the support packages.
    // A product counts when it exists in one of `locales`; an empty list admits all. `locale` is
    // where a source would look first; a source that lists products from a manifest ignores it.
    [[nodiscard]] virtual ProductLists getAllProducts(const std::u16string& docRoot,
                                                      const std::vector<std::u16string>& locales,
                                                      const std::u16string& locale) = 0;

    // Whether the product of this short name is installed; false for one that is not known.
    [[nodiscard]] virtual bool isProductInstalled(const std::u16string& product) = 0;

    // Forgets what is remembered of the support packages.
    virtual void clearSupportPackageCaches() = 0;

    // A compiled image that this source handed out was found damaged: from now on, everything is to
    // be read from what the images were made of. `problem` says which image and where. The caches
    // are cleared afterwards and the request is made again. By default nothing is done, and the
    // request fails.
    virtual void passOverImages(const std::string& problem);
};

}  // namespace reference::docparser
