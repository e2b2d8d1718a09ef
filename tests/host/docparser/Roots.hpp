// Documentation roots in folders of a test's own, and sources that read them.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "docparser/FileDocSource.hpp"
#include "docset/publish.hpp"
#include "host/docset/Sets.hpp"
#include "support/Capture.hpp"

namespace reference::tests {

[[nodiscard]] inline docparser::FileDocSource sourceOf(docparser::DocumentationLocation location) {
    return docparser::FileDocSource([location = std::move(location)] { return location; });
}

inline void publish(const TempFolder& root, const docset::ProductDocumentation& product,
                    const std::string& locale = "en_US") {
    docset::publishProduct(root.path(), locale, product);
}

// The edition of makeProduct that the source's lookups of an installed product are of.
[[nodiscard]] inline std::u16string lookupEdition(docparser::DocSource& source,
                                                  const std::u16string& product) {
    return source.getResourceLookupFiles().installed.at(product).getHeaderInfo().getVersion();
}

// The edition that the source's pages of a product are of.
[[nodiscard]] inline std::u16string pageEdition(docparser::DocSource& source,
                                                const std::u16string& product) {
    return source.getResourceFile(product).at(product).getHeaderInfo().getVersion();
}

}  // namespace reference::tests
