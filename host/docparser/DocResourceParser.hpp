#pragma once

#include <memory>
#include <string>
#include <vector>

#include "docparser/DocSource.hpp"
#include "foundation/core/export.hpp"

namespace reference::docparser {

// The documentation parser as its callers see it: static operations that ask the current source.
// Each does what the DocSource operation of its name says, and throws what that throws.
//
// Any thread. A call that has begun finishes with the source that it began with.
class VELTRA_HOST_API DocResourceParser {
  public:
    // Replaces the source; null puts the default one back, which reads a documentation set from the
    // disk. Caches that were filled from the old source are the caller's to clear.
    static void setSource(std::shared_ptr<DocSource> source);

    [[nodiscard]] static ParsingResults getResourceLookupFiles();
    [[nodiscard]] static ReferenceResources getResourceFile(const std::u16string& resourceFile);
    [[nodiscard]] static ReferenceRoots getReferenceRoots();
    [[nodiscard]] static ProductLists getAllProducts(const std::u16string& docRoot,
                                                     const std::vector<std::u16string>& locales,
                                                     const std::u16string& locale);
    [[nodiscard]] static bool isProductInstalled(const std::u16string& product);
    static void clearSupportPackageCaches();
    static void passOverImages(const std::string& problem);

    // What the parser knows of the documentation's shape.
    class VELTRA_HOST_API ParsingTools {
      public:
        [[nodiscard]] static std::vector<std::u16string> getSupportedDocLocales();
    };
};

}  // namespace reference::docparser
