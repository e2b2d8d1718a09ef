#pragma once

#include <string>
#include <vector>

#include "reference/api/ReferenceRequest.hpp"
#include "vref/Documentation.hpp"

namespace reference::tools {

// What the command line says of a search, as it was typed. UTF-8.
struct QueryOptions {
    std::string name;
    std::vector<std::string> types;
    std::vector<std::string> products;
    bool ignoreCase = false;
    bool ignorePackage = false;
    bool all = false;
};

// The request that the options ask for. Throws UnusableError for a type or product that is not
// known, text that is not UTF-8, and for a name together with, or neither of a name and, `all`.
[[nodiscard]] api::ReferenceRequest toRequest(const QueryOptions& options,
                                              const Documentation& documentation);

}  // namespace reference::tools
