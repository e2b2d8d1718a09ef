#pragma once

#include <string>
#include <utility>
#include <vector>

#include "docset/ProductDocumentation.hpp"
#include "property/RefItem.hpp"
#include "reference/api/ReferenceRequest.hpp"

namespace reference::tests {

// The five ways to search.
enum class Search { Entity, Class, Purpose, AllText, Page };

// What a search must answer, by the plainest reading of its rules: every record of every product is
// looked at, nothing is remembered, nothing is skipped early. Slow, and independent of the
// library's own search: it shares no code with it.
//
// Returns product and entry, in retrieval order: the request's comparator plays no part.
[[nodiscard]] std::vector<std::pair<std::u16string, property::RefItem>> modelAnswer(
    Search search, const api::ReferenceRequest& request,
    const std::vector<docset::ProductDocumentation>& products);

// The root locale's full lower case of a text, and of one that is not well-formed the text itself.
[[nodiscard]] std::u16string modelLowerCase(const std::u16string& text);

}  // namespace reference::tests
