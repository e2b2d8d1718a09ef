// Names that go on from what is typed, dotted part by dotted part, for shells and editors.
//
// Any thread, at any time, like ask().
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "property/RefEntityType.hpp"
#include "reference/api/export.hpp"

namespace reference::ask {

struct Completion {
    // What was typed up to its last dot, as it was typed, and the next part of the name as it is
    // documented: "DataFrame.gr" is completed to "DataFrame.groupby". It ends with a dot where it
    // is no name itself, but names go on from it: "scipy.sp" is completed to "scipy.spatial.".
    std::u16string text;
    bool isName = false;

    // Of the name that is meant, if it is one: all of it, its first type, and the purpose of that
    // entry. Of several that are completed alike, the best.
    std::u16string name;
    property::RefEntityType::Value type{};
    std::u16string purpose;
};

struct CompleteOptions {
    // Completions to return.
    std::size_t limit = 20;
    // Short names of the products to look in; empty: all. One that is not installed has nothing.
    std::vector<std::u16string> products;
    // As in AskOptions.
    std::vector<std::u16string> preferredProducts;
};

// The completions of the beginning of a name, each text once, the best first: those in the case
// that was typed; names that do not begin with an underscore, unless one was typed; what was
// typed in full; what stands in
// the package that was typed before what stands in one that ends like it; preferred products; names
// before parts of names; then as the library prefers kinds of entities; shorter ones; and the order
// of the texts. Of a beginning that thousands of names share, not all are looked at.
//
// A package may be typed by an alias that examples give it: "pd.read_c" goes on to "pd.read_csv".
// A beginning without a dot goes on to the first part of names, and to their last: "read_c" to
// "read_csv". "::", "->", "#" and "/" are taken for dots. Nothing that is typed is wrong: what no
// name begins with has no completion. Throws what the document source throws.
[[nodiscard]] VELTRA_REFERENCE_API std::vector<Completion> complete(
    std::u16string_view beginning, const CompleteOptions& options = {});

}  // namespace reference::ask
