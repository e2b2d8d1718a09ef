#pragma once

#include <string>
#include <vector>

#include "reference/api/ReferenceData.hpp"

// The one compact printable form of results, for expectations and failure messages.
namespace reference::tests {

// "product:name[type]@href", names divided by '+'. UTF-8.
[[nodiscard]] std::string dump(const api::ReferenceData& result);

// One dump for each result.
[[nodiscard]] std::vector<std::string> dump(const std::vector<api::ReferenceData>& results);

}  // namespace reference::tests
