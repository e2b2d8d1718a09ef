#include <algorithm>
#include <exception>
#include <iostream>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/value.hpp>

#include "docset/JsonText.hpp"
#include "vref/CommandLineText.hpp"
#include "vref/Commands.hpp"
#include "vref/DisplayText.hpp"
#include "vref/LanguageChoice.hpp"
#include "vref/Table.hpp"

namespace reference::tools {
namespace {

namespace json = boost::json;

struct PreferredProduct {
    std::string name;
    Origin origin;
    std::optional<bool> isInstalled;  // nothing where the set cannot be read
};

// What is in force together with what only the documentation set tells.
struct InForce {
    Setting<std::string> documentationSet;
    std::vector<PreferredProduct> preferred;
    Setting<std::string> language;  // empty where the set cannot be read and the locale decides
};

Setting<std::string> languageInForce(const Documentation& documentation) {
    const std::string language = documentation.language();
    const auto locales = documentation.languages();
    for (const LanguageWish& wish : languagesOfEnvironment())
        if (localeMeant(wish.locale, locales) == language && !wish.variable.empty())
            return {language, {.kind = Origin::Kind::Environment, .name = wish.variable}};
    return {language, {}};
}

std::vector<PreferredProduct> preferredInForce(const ConfigOptions& options,
                                               const Configuration& configuration) {
    std::vector<PreferredProduct> preferred;
    const auto add = [&](const std::vector<std::string>& names, const Origin& origin) {
        for (const auto& name : names)
            if (std::ranges::find(preferred, name, &PreferredProduct::name) == preferred.end())
                preferred.push_back({.name = name, .origin = origin});
    };
    add(options.prefer, {.kind = Origin::Kind::Option, .name = "--prefer"});
    add(configuration.preferredProducts.value, configuration.preferredProducts.origin);
    return preferred;
}

json::object toJson(const Origin& origin) {
    switch (origin.kind) {
        case Origin::Kind::Option:
            return {{"kind", "option"}, {"name", origin.name}};
        case Origin::Kind::Environment:
            return {{"kind", "environment"}, {"name", origin.name}};
        case Origin::Kind::File:
            return {{"kind", "file"}, {"path", wellFormed(origin.name)}, {"line", origin.line}};
        case Origin::Kind::Default:
            break;
    }
    return {{"kind", "default"}};
}

json::object toJson(json::value value, const Origin& origin) {
    return {{"value", std::move(value)}, {"from", toJson(origin)}};
}

json::value textOrNull(const std::string& text) {
    return text.empty() ? json::value(nullptr) : json::value(wellFormed(text));
}

void writeJson(std::ostream& out, const InForce& inForce, const Configuration& configuration) {
    json::array preferred;
    for (const PreferredProduct& product : inForce.preferred) {
        auto object = toJson(json::value(product.name), product.origin);
        object["installed"] =
            product.isInstalled ? json::value(*product.isInstalled) : json::value(nullptr);
        preferred.push_back(std::move(object));
    }
    const json::value pager = configuration.pager.value.empty()
                                  ? json::value(false)
                                  : json::value(wellFormed(configuration.pager.value));
    docset::writeJson(
        out, json::object{
                 {"file", json::object{{"path", textOrNull(configuration.file.string())},
                                       {"exists", configuration.isFileThere}}},
                 {"documentation-set", toJson(textOrNull(inForce.documentationSet.value),
                                              inForce.documentationSet.origin)},
                 {"preferred-products", std::move(preferred)},
                 {"language", toJson(textOrNull(inForce.language.value), inForce.language.origin)},
                 {"pager", toJson(pager, configuration.pager.origin)},
                 {"colours", toJson(json::value(toString(configuration.colours.value)),
                                    configuration.colours.origin)}});
    out << '\n';
}

void writeText(std::ostream& out, const InForce& inForce, const Configuration& configuration) {
    using enum Table::Align;
    Table table({{"KEY", Left}, {"VALUE", Left}, {"FROM", Left}});
    const auto add = [&table](const char* key, const std::string& value, const Origin& origin) {
        table.add({{key, Style::Name}, {printableLine(value)}, {printableLine(toString(origin))}});
    };
    add("documentation-set", inForce.documentationSet.value, inForce.documentationSet.origin);
    const char* key = "preferred-products";
    for (const PreferredProduct& product : inForce.preferred)
        add(std::exchange(key, ""),
            product.name + (product.isInstalled.value_or(true) ? "" : " (not installed)"),
            product.origin);
    if (inForce.preferred.empty())
        add(key, "none", {});
    add("language", inForce.language.value.empty() ? "the locale's" : inForce.language.value,
        inForce.language.origin);
    add("pager", configuration.pager.value.empty() ? "none" : configuration.pager.value,
        configuration.pager.origin);
    add("colours", toString(configuration.colours.value), configuration.colours.origin);
    table.write(out, Terminal::ofStandardOutput(configuration.colours.value));
    if (configuration.file.empty())
        out << "\nThere is no place for a file: neither XDG_CONFIG_HOME nor HOME names a folder.\n";
    else
        out << '\n'
            << (configuration.isFileThere ? "The file is " : "There is no file ")
            << printableLine(configuration.file.string()) << ".\n";
}

}  // namespace

ExitStatus config(const ConfigOptions& options, const Configuration& configuration) {
    InForce inForce{.documentationSet = configuration.documentationSet,
                    .preferred = preferredInForce(options, configuration),
                    .language = configuration.language};
    // A set that cannot be read is when a person most wants to know where its name comes from.
    std::exception_ptr problem;
    try {
        const Documentation documentation(configuration.documentation());
        if (inForce.language.value.empty())
            inForce.language = languageInForce(documentation);
        else
            inForce.language.value = documentation.language();
        for (PreferredProduct& product : inForce.preferred)
            product.isInstalled = documentation.isInstalled(fromCommandLine(product.name));
    } catch (const UnusableError&) {
        problem = std::current_exception();
    }
    inForce.documentationSet.value = docparser::DocumentationLocation::current().docRoot.string();
    if (options.json)
        writeJson(std::cout, inForce, configuration);
    else
        writeText(std::cout, inForce, configuration);
    std::cout.flush();
    if (problem)
        std::rethrow_exception(problem);
    return Success;
}

}  // namespace reference::tools
