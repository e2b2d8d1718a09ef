#include "vref/Teaching.hpp"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "fl/i18n/utf.hpp"
#include "vref/Ordering.hpp"
#include "vref/ResultList.hpp"

namespace reference::tools {
namespace {

constexpr std::size_t maxNames = 5;

struct WiderSearch {
    std::string description;
    QueryOptions options;
};

// The same search among all types and products.
std::optional<QueryOptions> unrestricted(QueryOptions options) {
    if (options.types.empty() && options.products.empty())
        return std::nullopt;
    options.types.clear();
    options.products.clear();
    return options;
}

// From the narrowest to the widest: the exact name elsewhere, then less exact ones, each first
// where the user searched and then elsewhere. Without its package: the typed name may have fewer
// qualifiers than the documented one, or different ones, so its last component is tried last.
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
    const WiderSearch less[] = {
        {"in any case", anyCase},
        {"without its package", noPackage},
        {"without the package \"" +
             asked.name.substr(0, asked.name.size() - lastComponent.name.size()) + "\"",
         lastComponent},
        {"as a part of a name or purpose", part}};

    std::vector<WiderSearch> searches;
    if (!asked.types.empty()) {
        QueryOptions anyType = asked;
        anyType.types.clear();
        searches.push_back({"of another type", std::move(anyType)});
    }
    if (!asked.products.empty()) {
        QueryOptions anyProduct = asked;
        anyProduct.products.clear();
        searches.push_back({"in another product", std::move(anyProduct)});
    }
    if (!asked.types.empty() && !asked.products.empty())
        searches.push_back({"of another type in another product", *unrestricted(asked)});
    for (const auto& wider : less) {
        searches.push_back(wider);
        if (auto elsewhere = unrestricted(wider.options))
            searches.push_back({wider.description + ", of any type and product", *elsewhere});
    }
    return searches;
}

// The name, and in parentheses the type or product if the user restricted it and the wider search
// does not: "TypeError (class)".
std::string nameWithin(const api::ReferenceData& result, const QueryOptions& asked,
                       const QueryOptions& wider) {
    std::string where;
    if (!asked.types.empty() && wider.types.empty())
        where = kindsOf(result);
    if (!asked.products.empty() && wider.products.empty())
        where +=
            (where.empty() ? "" : ", ") + fl::i18n::toUtf8(result.getHeaderInfo().getShortName());
    return namesOf(result) + (where.empty() ? "" : " (" + where + ")");
}

std::string firstNames(const std::vector<api::ReferenceData>& results, const QueryOptions& asked,
                       const QueryOptions& wider) {
    std::string names;
    for (const auto& result : results) {
        if (&result - results.data() == static_cast<std::ptrdiff_t>(maxNames))
            return names + ", and " + std::to_string(results.size() - maxNames) + " more";
        names += (names.empty() ? "" : ", ") + nameWithin(result, asked, wider);
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
            return Lesson{.text = wider.description +
                                  " there is: " + firstNames(results, asked, wider.options),
                          .query = std::move(wider.options)};
    }
    return std::nullopt;
}

}  // namespace reference::tools
