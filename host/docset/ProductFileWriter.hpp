// The files of a product, as JSON. Internal: no public header includes it.
#pragma once

#include <boost/json/object.hpp>

#include "docset/ProductDocumentation.hpp"

namespace reference::docset {

// In a text that is not well-formed UTF-16, U+FFFD stands for what is not.
[[nodiscard]] boost::json::object lookupDocument(const ProductDocumentation& documentation);
[[nodiscard]] boost::json::object referenceDocument(const ProductDocumentation& documentation);
[[nodiscard]] boost::json::object aliasDocument(const docimage::Aliases& aliases);

}  // namespace reference::docset
