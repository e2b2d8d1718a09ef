#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "property/RefEntityType.hpp"
#include "reference/api/ReferenceData.hpp"
#include "reference/api/ReferenceRequest.hpp"
#include "vref/Documentation.hpp"

namespace reference::tools {

// What a search compares the text with.
enum class Search {
    Entity,   // names
    Class,    // names of classes; a class comes with its properties
    Purpose,  // parts of names and purposes
    Text,     // parts of everything that is said in prose
    Page,     // names of pages, each with all its entries
};

// The search of this name ("entity", "class", ...), if there is one, and the names of all.
[[nodiscard]] std::optional<Search> toSearch(const std::string& name);
[[nodiscard]] std::vector<std::string> searchNames();

// What the command line says about a search, as it was typed. UTF-8.
struct QueryOptions {
    std::string name;
    Search search = Search::Entity;
    std::vector<std::string> types;
    std::vector<std::string> products;
    // Products whose hits go before equal ones of others, the most preferred first; all must be
    // installed.
    std::vector<std::string> prefer;
    // The same after these, as configured for all documentation sets; some may be missing here.
    std::vector<std::string> usuallyPrefer;
    bool ignoreCase = false;
    bool ignorePackage = false;
    bool all = false;
};

// The request that the options describe, with no order set. Throws UnusableError for an unknown
// type or product, for text that is not UTF-8, and unless exactly one of a name and `all` is given.
[[nodiscard]] api::ReferenceRequest toRequest(const QueryOptions& options,
                                              const Documentation& documentation);

// The type that a text of --type names. For any other text it throws UnusableError, which lists the
// types and, for a word that people commonly use for one of them, says which is meant.
[[nodiscard]] property::RefEntityType::Value toType(const std::string& text);

// The preferred products that are installed, each once. Throws UnusableError where one of `prefer`
// is not.
[[nodiscard]] std::vector<std::u16string> preferredProducts(const QueryOptions& options,
                                                            const Documentation& documentation);

// What the library finds for a request; for pages, see entriesOfNamedPages().
[[nodiscard]] std::vector<api::ReferenceData> retrieve(Search search,
                                                       const api::ReferenceRequest& request);

// The arguments of "vref find" for the same search, such as "--type", "class", "NAME". UTF-8.
[[nodiscard]] std::vector<std::string> toArguments(const QueryOptions& options);

// Arguments as a line for a shell, with quotes where they are needed.
[[nodiscard]] std::string forShell(std::span<const std::string> arguments);

}  // namespace reference::tools
