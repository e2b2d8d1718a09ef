#include "vref/Teaching.hpp"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "vref/Ordering.hpp"
#include "vref/ResultList.hpp"

namespace reference::tools {
namespace {

constexpr std::size_t mostNames = 5;

struct WiderSearch {
    std::string description;
    QueryOptions options;
};

// From the narrowest to the widest. Without its package: the name may be qualified less than it is
// documented, or differently, so that its last component is asked for at the end.
std::vector<WiderSearch> widerSearches(const QueryOptions& asked) {
    QueryOptions anyCase = asked;
    anyCase.ignoreCase = true;
    QueryOptions noPackage = anyCase;
    noPackage.ignorePackage = true;
    QueryOptions lastComponent = noPackage;
    lastComponent.name = asked.name.substr(asked.name.find_last_of("./:") + 1);
    QueryOptions part = anyCase;
    part.ignorePackage = false;
    part.search = Search::Purpose;
    return {{"in any case", anyCase},
            {"without its package", noPackage},
            {"without the package \"" +
                 asked.name.substr(0, asked.name.size() - lastComponent.name.size()) + "\"",
             lastComponent},
            {"as a part of a name or purpose", part}};
}

std::string firstNames(const std::vector<api::ReferenceData>& results) {
    std::string names;
    for (const auto& result : results) {
        if (&result - results.data() == static_cast<std::ptrdiff_t>(mostNames))
            return names + ", and " + std::to_string(results.size() - mostNames) + " more";
        names += (names.empty() ? "" : ", ") + namesOf(result);
    }
    return names;
}

}  // namespace

std::optional<Lesson> teach(const QueryOptions& asked, const Documentation& documentation) {
    for (auto& wider : widerSearches(asked)) {
        if (wider.options.name.empty())
            continue;
        api::ReferenceRequest request = toRequest(wider.options, documentation);
        request.setRefRequestComparator(
            Ordering::forPerson(request.getEntityText(), request.getEntityCaseSensitivity())
                .comparator());
        const auto results = retrieve(wider.options.search, request);
        if (!results.empty())
            return Lesson{.text = wider.description + " there is: " + firstNames(results),
                          .query = std::move(wider.options)};
    }
    return std::nullopt;
}

}  // namespace reference::tools
