// One record of a lookup file and one item of a reference file, from their JSON. Internal: no
// public header includes it.
#pragma once

#include <string>

#include "docset/JsonDocument.hpp"
#include "property/RefItem.hpp"
#include "property/RefItemLookup.hpp"

namespace reference::docset {

// The record or item at `node`. Faults go to the document's handler; when it returns, a faulty
// field has its default.
[[nodiscard]] property::RefItemLookup readLookupRecord(const JsonNode& node);
[[nodiscard]] property::RefItem readItem(const JsonNode& node, std::u16string href);

}  // namespace reference::docset
