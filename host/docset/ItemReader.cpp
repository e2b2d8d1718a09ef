#include "docset/ItemReader.hpp"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fl/i18n/utf.hpp"
#include "foundation/core/NeverDestroyed.hpp"

namespace reference::docset {
namespace {

using namespace property;

// The names of the enumeration's named values, in their order.
template <typename Enumeration>
const std::vector<std::string>& namesOf() {
    static const foundation::core::NeverDestroyed<std::vector<std::string>> names([] {
        std::vector<std::string> all;
        for (const auto value : Enumeration::namedValues())
            all.push_back(Enumeration::enumToString(value));
        return all;
    }());
    return *names;
}

// A value of an enumeration: one of its names, or any 32-bit number.
template <typename Enumeration>
typename Enumeration::Value readEnumeration(const JsonNode& node,
                                            typename Enumeration::Value fallback) {
    using Value = typename Enumeration::Value;
    if (node.isNumber()) {
        const auto number = node.wholeNumber();
        if (number && *number <= std::numeric_limits<std::uint32_t>::max())
            return static_cast<Value>(*number);
        if (number)
            node.fault("The number is too large; it must be below 4294967296.");
        return fallback;
    }
    const auto text = node.text();
    if (!text)
        return fallback;
    // Exactly as the format spells them: Enumeration::fromString() is for people and takes more.
    const auto& names = namesOf<Enumeration>();
    const auto found = std::ranges::find(names, *text);
    if (found != names.end())
        return Enumeration::namedValues()[static_cast<std::size_t>(found - names.begin())];
    std::string known;
    for (const auto& name : names)
        known += (known.empty() ? "" : ", ") + name;
    node.fault("\"" + std::string(*text) + "\" is not known here; one of these is: " + known +
               "; or a number.");
    return fallback;
}

template <typename Enumeration>
typename Enumeration::Value requiredEnumeration(const JsonNode& node, std::string_view member,
                                                typename Enumeration::Value fallback) {
    const auto value = node.require(member);
    return value ? readEnumeration<Enumeration>(*value, fallback) : fallback;
}

// The elements of the optional list `member`, each read by `readElement`.
template <typename ReadElement>
auto listOf(const JsonNode& node, std::string_view member, ReadElement readElement) {
    std::vector<decltype(readElement(node))> list;
    if (const auto value = node.find(member)) {
        list.reserve(value->elementCount());
        value->forEachElement(
            [&](const JsonNode& element) { list.push_back(readElement(element)); });
    }
    return list;
}

std::u16string readText(const JsonNode& node) {
    const auto utf8 = node.text();
    return utf8 ? fl::i18n::toUtf16(*utf8) : std::u16string();
}

template <typename Kind>
Kind readObjectInfo(const JsonNode& node) {
    if (!node.isObjectOf({"name", "purpose", "href", "values"}))
        return {};
    return Kind(node.requiredTextOf("name", true), node.textOf("purpose"), node.textOf("href"),
                listOf(node, "values", readText));
}

SyntaxGroup readSyntaxGroup(const JsonNode& node) {
    if (!node.isObjectOf({"title", "syntaxes"}))
        return {};
    return {node.textOf("title"), listOf(node, "syntaxes", readText)};
}

InputGroup readInputGroup(const JsonNode& node) {
    if (!node.isObjectOf({"title", "inputs"}))
        return {};
    return {node.textOf("title"), listOf(node, "inputs", readObjectInfo<Input>)};
}

ClassPropertyGroup readPropertyGroup(const JsonNode& node) {
    if (!node.isObjectOf({"title", "properties"}))
        return {};
    return {node.textOf("title"), listOf(node, "properties", readObjectInfo<ClassProperty>)};
}

SeeAlso readSeeAlso(const JsonNode& node) {
    if (!node.isObjectOf({"page", "name"}))
        return {};
    return {node.textOf("page"), node.requiredTextOf("name", true)};
}

Example readExample(const JsonNode& node) {
    if (!node.isObjectOf({"title", "code"}))
        return {};
    return {node.textOf("title"), node.textOf("code")};
}

Parameter readParameter(const JsonNode& node) {
    if (!node.isObjectOf({"name", "purpose", "defaultValue"}))
        return {};
    return {node.requiredTextOf("name", true), node.textOf("purpose"), node.textOf("defaultValue")};
}

RefEntity readEntity(const JsonNode& node) {
    if (!node.isObjectOf({"name", "type", "functionType"}))
        return {};
    return {requiredEnumeration<RefEntityType>(node, "type", RefEntityType::Unknown),
            node.requiredTextOf("name", false),
            requiredEnumeration<FunctionType>(node, "functionType", FunctionType::NotCallable)};
}

AppThumbnail readThumbnail(const JsonNode& item) {
    const auto node = item.find("appThumbnail");
    if (!node || !node->isObjectOf({"source", "alternativeText"}))
        return {};
    return {node->textOf("source"), node->textOf("alternativeText")};
}

DeprecationStatus::Value readDeprecationStatus(const JsonNode& item) {
    const auto node = item.find("deprecationStatus");
    return node ? readEnumeration<DeprecationStatus>(*node, DeprecationStatus::Current)
                : DeprecationStatus::Current;
}

}  // namespace

RefItemLookup readLookupRecord(const JsonNode& node) {
    if (!node.isObjectOf({"type", "functionType", "href", "purpose"}))
        return {};
    return {requiredEnumeration<RefEntityType>(node, "type", RefEntityType::Unknown),
            requiredEnumeration<FunctionType>(node, "functionType", FunctionType::NotCallable),
            node.requiredTextOf("href", false), node.textOf("purpose")};
}

RefItem readItem(const JsonNode& node, std::u16string href) {
    if (!node.isObjectOf({"entities", "packageName", "purpose", "introduced", "description",
                          "appThumbnail", "deprecationStatus", "syntaxGroups", "inputs",
                          "inputGroups", "outputs", "classPropertyGroups", "seeAlso", "examples",
                          "parameters", "replacements"}))
        return {};
    if (const auto entities = node.require("entities"))
        entities->requireElements();
    // In braces, because their elements are evaluated in order, and so faults are reported in
    // order.
    RefItem item{std::move(href),
                 listOf(node, "entities", readEntity),
                 node.textOf("packageName"),
                 node.textOf("purpose"),
                 node.textOf("introduced"),
                 node.textOf("description"),
                 readThumbnail(node),
                 readDeprecationStatus(node),
                 listOf(node, "syntaxGroups", readSyntaxGroup),
                 listOf(node, "inputs", readObjectInfo<Input>),
                 listOf(node, "inputGroups", readInputGroup),
                 listOf(node, "outputs", readObjectInfo<Output>),
                 listOf(node, "classPropertyGroups", readPropertyGroup),
                 listOf(node, "seeAlso", readSeeAlso),
                 listOf(node, "examples", readExample),
                 listOf(node, "parameters", readParameter)};
    item.setReplacements(listOf(node, "replacements", readSeeAlso));
    return item;
}

}  // namespace reference::docset
