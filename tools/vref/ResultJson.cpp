#include "vref/ResultJson.hpp"

#include <ostream>
#include <string_view>
#include <utility>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/value.hpp>

#include "docset/ItemWriter.hpp"
#include "docset/JsonText.hpp"
#include "fl/i18n/utf.hpp"

namespace reference::tools {
namespace {

namespace json = boost::json;

// The members in the order that readers are promised; a result's place and summary come first.
constexpr std::string_view memberOrder[] = {
    "packageName",  "purpose",    "introduced",  "description", "deprecationStatus",   "entities",
    "syntaxGroups", "inputs",     "inputGroups", "outputs",     "classPropertyGroups", "seeAlso",
    "examples",     "parameters", "appThumbnail"};

json::object toJson(const api::ReferenceData& result) {
    const auto& header = result.getHeaderInfo();
    const auto& item = result.getRefItem();
    json::object element{{"product", fl::i18n::toUtf8(header.getShortName())},
                         {"helpFolder", fl::i18n::toUtf8(header.getHelpFolder())},
                         {"href", fl::i18n::toUtf8(item.getHref())}};
    json::object members = docset::toJson(item, docset::JsonForm::Complete);
    for (const auto name : memberOrder)
        if (auto* member = members.if_contains(json::string_view(name.data(), name.size())))
            element.emplace(json::string_view(name.data(), name.size()), std::move(*member));
    return element;
}

}  // namespace

void writeJson(std::ostream& out, std::span<const api::ReferenceData> results) {
    json::array array;
    array.reserve(results.size());
    for (const auto& result : results)
        array.push_back(toJson(result));
    docset::writeJson(out, array);
    out << '\n';
}

}  // namespace reference::tools
