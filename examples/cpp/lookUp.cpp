// Looks a name up and prints what is found as a table, the likeliest first.
//
//     lookUp NAME [PRODUCT]
//
// Results of PRODUCT go before all others, then those that bear exactly the name; the rest is left
// to the usual order. Letter case and packages do not count.
#include <algorithm>
#include <array>
#include <cstddef>
#include <exception>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include "fl/i18n/utf.hpp"
#include "property/RefEntity.hpp"
#include "property/RefEntityType.hpp"
#include "reference/api/ReferenceDataRetriever.hpp"
#include "reference/api/comparator/CompoundReferenceComparator.hpp"
#include "reference/api/comparator/EntityNameMatchComparator.hpp"
#include "reference/api/comparator/PreferredOrderComparator.hpp"
#include "reference/api/comparator/ProductMatchComparator.hpp"

namespace {

using fl::i18n::toUtf8;
using reference::api::EntityCaseSensitivity;
using reference::api::EntityPrecision;
using reference::api::ReferenceData;
using reference::api::ReferenceDataRetriever;
using reference::api::ReferenceRequest;
using reference::property::RefEntity;
using reference::property::RefEntityType;
using namespace reference::api::comparator;

std::vector<ReferenceData> lookUp(const std::u16string& name, const std::u16string& product) {
    ReferenceRequest request(name);
    request.setEntityCaseSensitivity(EntityCaseSensitivity::Insensitive);
    request.setEntityPrecision(EntityPrecision::Ignore_Package);
    request.setRefRequestComparator(CompoundReferenceComparator(
        {ProductMatchComparator(product),
         EntityNameMatchComparator(name, EntityCaseSensitivity::Sensitive),
         PreferredOrderComparator()}));
    return ReferenceDataRetriever(std::move(request)).getReferenceData();
}

void printTable(const std::vector<ReferenceData>& results) {
    using Row = std::array<std::u16string, 4>;
    std::vector<Row> rows = {{u"PRODUCT", u"NAME", u"TYPE", u"PURPOSE"}};
    for (const auto& result : results) {
        const auto& item = result.getRefItem();
        // One row for an item: an item may document several entities, or none.
        const auto& entities = item.getRefEntities();
        const auto entity = entities.empty() ? RefEntity() : entities.front();
        rows.push_back({result.getHeaderInfo().getShortName(), entity.getName(),
                        fl::i18n::toUtf16(RefEntityType::enumToString(entity.getRefEntityType())),
                        item.getPurpose()});
    }
    for (const auto& row : rows) {
        for (std::size_t column = 0; column < 3; ++column) {
            std::size_t width = 0;
            for (const auto& other : rows)
                width = std::max(width, other[column].size());
            std::cout << toUtf8(row[column]) << std::string(width - row[column].size() + 2, ' ');
        }
        std::cout << toUtf8(row[3]) << '\n';
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2 || argc > 3) {
        std::cerr << "usage: lookUp NAME [PRODUCT]\n";
        return 2;
    }
    try {
        const std::u16string product = fl::i18n::toUtf16(argc == 3 ? argv[2] : "veltra");
        const auto results = lookUp(fl::i18n::toUtf16(argv[1]), product);
        if (results.empty()) {
            std::cerr << "lookUp: Nothing is called \"" << argv[1] << "\".\n";
            return 1;
        }
        printTable(results);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "lookUp: " << error.what() << '\n';
        return 2;
    }
}
