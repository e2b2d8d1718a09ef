#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include <boost/json/array.hpp>

#include "reference/api/ReferenceData.hpp"
#include "vref/Documentation.hpp"
#include "vref/Query.hpp"
#include "vref/Teaching.hpp"
#include "vref/Terminal.hpp"

namespace reference::tools {

// What to search for and how to show the results, as it was typed. UTF-8.
struct FindOptions {
    QueryOptions query;
    // Keys of the order (see Ordering::parse); if empty, Ordering::forPerson applies.
    std::vector<std::string> order;
    std::optional<std::size_t> limit;
    bool json = false;
    bool hrefs = false;
    bool explain = false;
    bool exact = false;
    // Words of the command line that no command stands before.
    bool isWithoutCommand = false;

    // Whether the options describe a request of the library, which has matching rules and an order
    // that are told; if not, the words are a question.
    [[nodiscard]] bool isRequest() const {
        return exact || query.search != Search::Entity || query.ignoreCase || query.ignorePackage ||
               !order.empty() || (query.all && query.name.empty());
    }
};

// How a question led to a result. UTF-8.
struct FoundBy {
    std::string name;         // the documented name that was found
    std::string rung;         // see ask::toString()
    std::string description;  // what was changed in the question, or else what the rung says
    std::string change;
};

// What was found, and what to say about it.
struct Finding {
    // In order: all of them, or, of those that a question found, the ones to show.
    std::vector<api::ReferenceData> results;
    // How each of these was found; empty unless a question was asked.
    std::vector<FoundBy> foundBy;
    std::size_t total = 0;
    // How many of them to show, counted from the first.
    std::size_t shown = 0;
    // Why each of these stands before the next; empty unless the user asked for it.
    std::vector<std::string> notes;
    // The addresses of the pages of those that are shown, as links; empty where there are none.
    std::vector<std::string> addresses;
    // What else the user should know: sentences without a full stop. UTF-8.
    std::vector<std::string> messages;
    // If nothing was found: a search that finds something.
    std::optional<Lesson> lesson;

    [[nodiscard]] std::span<const api::ReferenceData> first() const {
        return std::span(results).first(shown);
    }
};

// Searches and orders as the options say, or asks the question. If nothing has the typed name, it
// is treated as pasted code, and the name in it is searched for. Throws UnusableError for options
// that make no sense, and when nothing was found because something could not be read.
[[nodiscard]] Finding findEntries(const FindOptions& options, const Documentation& documentation);

// The results that are shown, as a program reads them: whole items, and how a question led to them.
[[nodiscard]] boost::json::array toJson(const Finding& finding);

// Writes the results that are shown, as a list or as a JSON array.
void writeResults(std::ostream& out, const Terminal& terminal, const FindOptions& options,
                  const Finding& finding);

}  // namespace reference::tools
