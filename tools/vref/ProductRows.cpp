#include "vref/ProductRows.hpp"

#include <algorithm>
#include <iterator>

#include <boost/json/object.hpp>

#include "fl/i18n/utf.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "vref/ProductFigures.hpp"

namespace reference::tools {
namespace {

namespace json = boost::json;
using cache_manager::ReferenceCacheManager;

ProductRow toProductRow(const docparser::ListedProduct& product) {
    ProductRow row{.product = fl::i18n::toUtf8(product.shortName),
                   .state = product.installed ? "installed" : "not installed",
                   .locale = product.locale};
    const auto lookups = product.installed ? ReferenceCacheManager::GetLookupCache()
                                           : ReferenceCacheManager::GetUninstalledLookupCache();
    const auto found = lookups->find(product.shortName);
    if (found == lookups->end()) {
        row.state = "unreadable";
        return row;
    }
    row.displayName = fl::i18n::toUtf8(found->second.getHeaderInfo().getDisplayName());
    row.version = fl::i18n::toUtf8(found->second.getHeaderInfo().getVersion());
    row.entities = countEntities(found->second);
    row.pages = countPages(found->second);
    return row;
}

}  // namespace

std::vector<ProductRow> productRows(const Documentation& documentation) {
    ReferenceCacheManager::PopulateLookupCaches();
    std::vector<ProductRow> rows;
    std::ranges::transform(documentation.products(), std::back_inserter(rows), toProductRow);
    return rows;
}

json::array toJson(std::span<const ProductRow> rows) {
    json::array array;
    array.reserve(rows.size());
    for (const ProductRow& row : rows)
        array.push_back(json::object{{"product", row.product},
                                     {"displayName", row.displayName},
                                     {"version", row.version},
                                     {"state", row.state},
                                     {"locale", row.locale},
                                     {"entities", row.entities},
                                     {"pages", row.pages}});
    return array;
}

}  // namespace reference::tools
