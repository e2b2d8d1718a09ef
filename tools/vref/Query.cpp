#include "vref/Query.hpp"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/algorithm/string/join.hpp>

#include "property/RefEntityType.hpp"
#include "reference/api/AllTextDataRetriever.hpp"
#include "reference/api/ClassEntityDataRetriever.hpp"
#include "reference/api/EntityPurposeDataRetriever.hpp"
#include "reference/api/ReferenceDataRetriever.hpp"
#include "vref/CommandLineText.hpp"
#include "vref/DisplayText.hpp"
#include "vref/ExitStatus.hpp"
#include "vref/Nearest.hpp"
#include "vref/PageEntries.hpp"

namespace reference::tools {
namespace {

using property::RefEntityType;

// What people call a type that has another name here.
constexpr std::pair<std::string_view, RefEntityType::Value> commonWords[] = {
    {"attribute", RefEntityType::Property}, {"exception", RefEntityType::Class},
    {"error", RefEntityType::Class},        {"struct", RefEntityType::Class},
    {"module", RefEntityType::Package},     {"namespace", RefEntityType::Package},
    {"data", RefEntityType::Variable},      {"field", RefEntityType::Property},
    {"enum", RefEntityType::Enumeration},   {"typedef", RefEntityType::TypeAlias},
    {"procedure", RefEntityType::Function}, {"signal", RefEntityType::Event},
};

// The type that was probably meant by a text that names none.
std::optional<std::string> meantType(const std::string& text,
                                     const std::vector<std::string>& known) {
    const std::string word = boost::to_lower_copy(text);
    for (const auto& [common, type] : commonWords)
        if (word == common || word == std::string(common) + "s" ||
            word == std::string(common) + "es")
            return RefEntityType::enumToString(type);
    return nearest(text, known);
}

constexpr std::pair<Search, const char*> namedSearches[] = {{Search::Entity, "entity"},
                                                            {Search::Class, "class"},
                                                            {Search::Purpose, "purpose"},
                                                            {Search::Text, "text"},
                                                            {Search::Page, "page"}};

const char* nameOf(Search search) {
    return std::ranges::find(namedSearches, search, &std::pair<Search, const char*>::first)->second;
}

// A word, quoted for a shell.
std::string quoted(const std::string& word) {
    constexpr std::string_view plain =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789._-/:@%+,";
    if (!word.empty() && word.find_first_not_of(plain) == std::string::npos)
        return word;
    std::string result = "'";
    for (const char unit : word)
        result += unit == '\'' ? std::string("'\\''") : std::string(1, unit);
    return result + "'";
}

}  // namespace

std::optional<Search> toSearch(const std::string& name) {
    for (const auto& [search, known] : namedSearches)
        if (name == known)
            return search;
    return std::nullopt;
}

std::vector<std::string> searchNames() {
    std::vector<std::string> names;
    for (const auto& [search, name] : namedSearches)
        names.emplace_back(name);
    return names;
}

RefEntityType::Value toType(const std::string& text) {
    if (const auto type = RefEntityType::fromString(text))
        return *type;
    std::vector<std::string> names;
    std::ranges::transform(RefEntityType::namedValues(), std::back_inserter(names),
                           RefEntityType::enumToString);
    const auto meant = meantType(text, names);
    throw UnusableError("--type: There is no entity type \"" + printableLine(text) + "\"; " +
                        (meant ? "did you mean --type " + *meant + "? There is: " : "there is: ") +
                        boost::join(names, ", ") + ", or a number.");
}

api::ReferenceRequest toRequest(const QueryOptions& options, const Documentation& documentation) {
    if (options.all && !options.name.empty())
        throw UnusableError("--all matches everything and takes no name.");
    if (!options.all && options.name.empty())
        throw UnusableError("A name to look for is missing; --all lists everything.");

    std::vector<RefEntityType::Value> types;
    std::ranges::transform(options.types, std::back_inserter(types), toType);
    std::vector<std::u16string> products;
    for (const auto& text : options.products) {
        products.push_back(fromCommandLine(text));
        documentation.requireInstalled(products.back(), "--product");
    }
    auto request = options.all
                       ? api::ReferenceRequest::createMatchAllTextRequest(types, products)
                       : api::ReferenceRequest(fromCommandLine(options.name), types, products);
    if (options.ignoreCase)
        request.setEntityCaseSensitivity(api::EntityCaseSensitivity::Insensitive);
    if (options.ignorePackage)
        request.setEntityPrecision(api::EntityPrecision::Ignore_Package);
    return request;
}

std::vector<std::u16string> preferredProducts(const QueryOptions& options,
                                              const Documentation& documentation) {
    std::vector<std::u16string> preferred;
    const auto add = [&preferred](std::u16string product) {
        if (std::ranges::find(preferred, product) == preferred.end())
            preferred.push_back(std::move(product));
    };
    for (const auto& text : options.prefer) {
        std::u16string product = fromCommandLine(text);
        documentation.requireInstalled(product, "--prefer");
        add(std::move(product));
    }
    for (const auto& text : options.usuallyPrefer)
        if (std::u16string product = fromCommandLine(text); documentation.isInstalled(product))
            add(std::move(product));
    return preferred;
}

std::vector<api::ReferenceData> retrieve(Search search, const api::ReferenceRequest& request) {
    switch (search) {
        case Search::Class:
            return api::ClassEntityDataRetriever(request).getReferenceData();
        case Search::Purpose:
            return api::EntityPurposeDataRetriever(request).getReferenceData();
        case Search::Text:
            return api::AllTextDataRetriever(request).getReferenceData();
        case Search::Page:
            return entriesOfNamedPages(request);
        case Search::Entity:
            break;
    }
    return api::ReferenceDataRetriever(request).getReferenceData();
}

std::vector<std::string> toArguments(const QueryOptions& options) {
    std::vector<std::string> arguments;
    if (options.search != Search::Entity)
        arguments.insert(arguments.end(), {"--search", nameOf(options.search)});
    if (options.search == Search::Entity && !options.ignoreCase && !options.ignorePackage &&
        !options.all)
        arguments.emplace_back("--exact");
    if (options.ignoreCase)
        arguments.emplace_back("--ignore-case");
    if (options.ignorePackage)
        arguments.emplace_back("--ignore-package");
    for (const auto& type : options.types)
        arguments.insert(arguments.end(), {"--type", type});
    for (const auto& product : options.products)
        arguments.insert(arguments.end(), {"--product", product});
    if (options.all) {
        arguments.emplace_back("--all");
        return arguments;
    }
    // What comes after it is no option, whatever it begins with.
    if (options.name.starts_with('-'))
        arguments.emplace_back("--");
    arguments.push_back(options.name);
    return arguments;
}

std::string forShell(std::span<const std::string> arguments) {
    std::string line;
    for (const auto& argument : arguments)
        line += (line.empty() ? "" : " ") + quoted(argument);
    return line;
}

}  // namespace reference::tools
