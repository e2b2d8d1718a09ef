// Finds what a person means who types loosely: "read csv", "guassian_kde", "how to sort a list",
// `pd.read_csv("x.csv")`. The most exact reading of the question that finds something comes first,
// and each hit says by which reading it was found.
//
// Any thread, at any time, like a retriever (see ReferenceDataRetriever): an answer comes from one
// state of the documentation, in one language.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "property/RefEntityType.hpp"
#include "reference/api/export.hpp"
#include "reference/ask/Answer.hpp"

namespace reference::ask {

struct AskOptions {
    // Hits to return; the others are only counted.
    std::size_t limit = 10;
    // Short names of products whose hits go before equal ones of others, the most preferred first.
    // Products that are not installed are passed over.
    std::vector<std::u16string> preferredProducts;
    // Filters besides those of the question; empty: any. A product that is not installed has
    // nothing.
    std::vector<property::RefEntityType::Value> types;
    std::vector<std::u16string> products;
};

// Answers the question; its grammar is that of Question. Throws QuestionError where it cannot be
// asked, unless it is, as it stands, the name of an entity; and what the document source throws.
[[nodiscard]] VELTRA_REFERENCE_API Answer ask(std::u16string_view question,
                                              const AskOptions& options = {});

}  // namespace reference::ask
