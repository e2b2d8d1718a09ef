#include "vref/ResultJson.hpp"

#include <cstddef>
#include <ostream>
#include <string_view>
#include <utility>

#include <boost/json/object.hpp>
#include <boost/json/value.hpp>

#include "docset/ItemWriter.hpp"
#include "docset/JsonText.hpp"
#include "fl/i18n/utf.hpp"

namespace reference::tools {
namespace {

namespace json = boost::json;

// The members in the order promised to readers; a result's place and summary come first.
constexpr std::string_view memberOrder[] = {
    "packageName",  "purpose",    "introduced",   "description", "deprecationStatus",   "entities",
    "syntaxGroups", "inputs",     "inputGroups",  "outputs",     "classPropertyGroups", "seeAlso",
    "examples",     "parameters", "replacements", "appThumbnail"};

json::object resultToJson(const api::ReferenceData& result) {
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

std::span<const std::string_view> itemMembers() noexcept {
    return memberOrder;
}

json::array toJson(std::span<const api::ReferenceData> results,
                   std::span<const std::string> notes) {
    json::array array;
    array.reserve(results.size());
    for (std::size_t at = 0; at < results.size(); ++at) {
        json::object element = resultToJson(results[at]);
        if (!notes.empty())
            element.emplace("note", notes[at]);
        array.push_back(std::move(element));
    }
    return array;
}

void writeJson(std::ostream& out, std::span<const api::ReferenceData> results,
               std::span<const std::string> notes) {
    docset::writeJson(out, toJson(results, notes));
    out << '\n';
}

}  // namespace reference::tools
