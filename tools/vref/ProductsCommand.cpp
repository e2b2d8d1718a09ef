#include <algorithm>
#include <cstddef>
#include <iostream>
#include <set>
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
#include "vref/Terminal.hpp"

namespace reference::tools {
namespace {

namespace json = boost::json;
using cache_manager::ReferenceCacheManager;

struct Row {
    std::string product;
    std::string displayName;
    std::string version;
    std::string state;  // "installed", "not installed" or "unreadable"
    std::string locale;
    std::size_t entities = 0;
    std::size_t pages = 0;
};

std::size_t countPages(const ReferenceCacheManager::LookupCache::mapped_type& resource) {
    std::set<std::u16string> pages;
    for (const auto& [name, records] : resource.getItems())
        for (const auto& record : records)
            pages.insert(record.getHref().substr(0, record.getHref().find(u'#')));
    return pages.size();
}

Row toRow(const docparser::ListedProduct& product) {
    Row row{.product = fl::i18n::toUtf8(product.shortName),
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
    for (const auto& [name, records] : found->second.getItems())
        row.entities += records.size();
    row.pages = countPages(found->second);
    return row;
}

void writeJson(std::ostream& out, const std::vector<Row>& rows) {
    json::array array;
    for (const Row& row : rows)
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

std::string rightAligned(const std::string& text, std::size_t width) {
    return std::string(text.size() < width ? width - text.size() : 0, ' ') + text;
}

void writeTable(std::ostream& out, const Terminal& terminal, const std::vector<Row>& rows) {
    const auto widest = [&](const std::string& heading, auto textOf) {
        std::size_t width = heading.size();
        for (const Row& row : rows)
            width = std::max(width, displayWidth(textOf(row)));
        return width;
    };
    const auto product = widest("PRODUCT", [](const Row& row) { return row.product; });
    const auto version = widest("VERSION", [](const Row& row) { return row.version; });
    const auto locale = widest("LOCALE", [](const Row& row) { return row.locale; });
    const auto state = widest("STATE", [](const Row& row) { return row.state; });
    constexpr std::size_t numbers = 8;
    out << terminal.styled(Style::Heading, padToWidth("PRODUCT", product) + "  " +
                                               padToWidth("VERSION", version) + "  " +
                                               padToWidth("LOCALE", locale) + "  " +
                                               padToWidth("STATE", state) + "  " +
                                               rightAligned("ENTITIES", numbers) + "  " +
                                               rightAligned("PAGES", numbers) + "  NAME")
        << '\n';
    for (const Row& row : rows)
        out << terminal.styled(Style::Name, padToWidth(row.product, product)) << "  "
            << padToWidth(row.version, version) << "  " << padToWidth(row.locale, locale) << "  "
            << terminal.styled(row.state == "installed" ? Style::Plain : Style::Warning,
                               padToWidth(row.state, state))
            << "  " << rightAligned(std::to_string(row.entities), numbers) << "  "
            << rightAligned(std::to_string(row.pages), numbers) << "  "
            << withoutControls(row.displayName) << '\n';
}

}  // namespace

ExitStatus products(const ProductsOptions& options) {
    const Documentation documentation(options.documentation);
    ReferenceCacheManager::PopulateLookupCaches();
    std::vector<Row> rows;
    std::ranges::transform(documentation.products(), std::back_inserter(rows), toRow);
    if (options.json)
        writeJson(std::cout, rows);
    else
        writeTable(std::cout, Terminal::ofStandardOutput(), rows);
    if (!rows.empty())
        return Success;
    std::cerr << "vref: the documentation set holds no products\n";
    return NothingFound;
}

}  // namespace reference::tools
