#include "docset/ProductFileWriter.hpp"

#include <string>
#include <utility>

#include <boost/json/array.hpp>
#include <boost/json/value.hpp>

#include "docset/Formats.hpp"
#include "docset/ItemWriter.hpp"
#include "fl/i18n/utf.hpp"

namespace reference::docset {
namespace {

namespace json = boost::json;

std::string utf8(const std::u16string& text) {
    return fl::i18n::toUtf8(text);
}

json::object headerMembers(const ProductHeader& header) {
    return {{"shortName", utf8(header.shortName)},
            {"displayName", utf8(header.displayName)},
            {"helpFolder", utf8(header.helpFolder)},
            {"version", utf8(header.version)}};
}

}  // namespace

json::object lookupDocument(const ProductDocumentation& documentation) {
    json::object entities;
    entities.reserve(documentation.entities.size());
    for (const auto& [name, records] : documentation.entities) {
        json::array list;
        for (const auto& record : records)
            list.push_back(toJson(record));
        entities.emplace(utf8(name), std::move(list));
    }
    return {{"format", lookupFormat},
            {"formatVersion", formatVersion},
            {"product", headerMembers(documentation.header)},
            {"entities", std::move(entities)}};
}

json::object referenceDocument(const ProductDocumentation& documentation) {
    json::object pages;
    pages.reserve(documentation.pages.size());
    for (const auto& [href, items] : documentation.pages) {
        json::array list;
        for (const auto& item : items)
            list.push_back(toJson(item, JsonForm::Set));
        pages.emplace(utf8(href), std::move(list));
    }
    json::object product = headerMembers(documentation.header);
    product.emplace("pages", std::move(pages));
    json::array products;
    products.push_back(std::move(product));
    return {{"format", referenceFormat},
            {"formatVersion", formatVersion},
            {"products", std::move(products)}};
}

json::object aliasDocument(const docimage::Aliases& aliases) {
    json::object members;
    for (const auto& [alias, names] : aliases) {
        json::object counts;
        for (const auto& [name, count] : names)
            counts.emplace(utf8(name), count);
        members.emplace(utf8(alias), std::move(counts));
    }
    return {{"format", aliasesFormat},
            {"formatVersion", formatVersion},
            {"aliases", std::move(members)}};
}

}  // namespace reference::docset
