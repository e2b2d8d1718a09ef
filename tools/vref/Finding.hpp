#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "reference/api/ReferenceData.hpp"
#include "vref/Documentation.hpp"
#include "vref/Query.hpp"
#include "vref/Teaching.hpp"
#include "vref/Terminal.hpp"

namespace reference::tools {

// What a search is to look for and how its results are shown, as it was typed. UTF-8.
struct FindOptions {
    QueryOptions query;
    // Keys of the order (see Ordering::parse); without any, a person's order.
    std::vector<std::string> order;
    std::optional<std::size_t> limit;
    bool json = false;
    bool hrefs = false;
    bool explain = false;
};

// What was found, and what to tell of it.
struct Finding {
    // In order, all of them.
    std::vector<api::ReferenceData> results;
    // How many of them the options admit, from the first on.
    std::size_t shown = 0;
    // Why each of these stands before the next; empty where nobody asked.
    std::vector<std::string> notes;
    // What the user should know besides: sentences without a full stop. UTF-8.
    std::vector<std::string> messages;
    // Where nothing was found: what would find something.
    std::optional<Lesson> lesson;

    [[nodiscard]] std::span<const api::ReferenceData> first() const {
        return std::span(results).first(shown);
    }
};

// Searches and orders as the options say. A name that nothing bears is taken for pasted code, and
// the name in it looked for. Throws UnusableError for options that say nothing sensible, and where
// nothing was found because it could not be read.
[[nodiscard]] Finding findEntries(const FindOptions& options, const Documentation& documentation);

// Writes the results that are shown, as a list or as a JSON array.
void writeResults(std::ostream& out, const Terminal& terminal, const FindOptions& options,
                  const Finding& finding);

}  // namespace reference::tools
