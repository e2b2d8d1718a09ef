#include <algorithm>
#include <cstddef>
#include <iostream>
#include <string>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/value.hpp>

#include "docset/JsonText.hpp"
#include "fl/i18n/utf.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "vref/Commands.hpp"
#include "vref/DisplayText.hpp"
#include "vref/Pager.hpp"
#include "vref/ProductFigures.hpp"
#include "vref/Table.hpp"
#include "vref/Terminal.hpp"

namespace reference::tools {
namespace {

namespace json = boost::json;
using cache_manager::ReferenceCacheManager;

struct ProductRow {
    std::string product;
    std::string displayName;
    std::string version;
    std::string state;  // "installed", "not installed" or "unreadable"
    std::string locale;
    std::size_t entities = 0;
    std::size_t pages = 0;
};

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

void writeJson(std::ostream& out, const std::vector<ProductRow>& rows) {
    json::array array;
    for (const ProductRow& row : rows)
        array.push_back(json::object{{"product", row.product},
                                     {"displayName", row.displayName},
                                     {"version", row.version},
                                     {"state", row.state},
                                     {"locale", row.locale},
                                     {"entities", row.entities},
                                     {"pages", row.pages}});
    docset::writeJson(out, array);
    out << '\n';
}

void writeTable(std::ostream& out, const Terminal& terminal, const std::vector<ProductRow>& rows) {
    using enum Table::Align;
    Table table({{"PRODUCT", Left},
                 {"VERSION", Left},
                 {"LOCALE", Left},
                 {"STATE", Left},
                 {"ENTITIES", Right},
                 {"PAGES", Right},
                 {"NAME", Left}});
    for (const ProductRow& row : rows)
        table.add({{row.product, Style::Name},
                   {row.version},
                   {row.locale},
                   {row.state, row.state == "installed" ? Style::Plain : Style::Warning},
                   {std::to_string(row.entities)},
                   {std::to_string(row.pages)},
                   {withoutControls(row.displayName)}});
    table.write(out, terminal);
}

}  // namespace

ExitStatus products(const ProductsOptions& options, const Configuration& configuration) {
    const Documentation documentation(configuration.documentation());
    ReferenceCacheManager::PopulateLookupCaches();
    std::vector<ProductRow> rows;
    std::ranges::transform(documentation.products(), std::back_inserter(rows), toProductRow);
    const auto terminal = Terminal::ofStandardOutput(configuration.colours.value);
    PagedOutput output(terminal, configuration.pager.value);
    if (options.json)
        writeJson(output.stream(), rows);
    else
        writeTable(output.stream(), terminal, rows);
    output.show();
    if (!rows.empty())
        return Success;
    std::cerr << "vref: the documentation set holds no products\n";
    return NothingFound;
}

}  // namespace reference::tools
