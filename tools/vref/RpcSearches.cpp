#include "vref/RpcSearches.hpp"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include "fl/i18n/utf.hpp"
#include "foundation/core/TextStream.hpp"
#include "property/RefEntityType.hpp"
#include "reference/ask/QuestionError.hpp"
#include "reference/ask/ask.hpp"
#include "reference/ask/complete.hpp"
#include "vref/CommandLineText.hpp"
#include "vref/DisplayText.hpp"
#include "vref/ExitStatus.hpp"
#include "vref/HitJson.hpp"
#include "vref/ItemPage.hpp"
#include "vref/Members.hpp"
#include "vref/NamedEntries.hpp"
#include "vref/Ordering.hpp"
#include "vref/PageAddresses.hpp"
#include "vref/Query.hpp"
#include "vref/RpcError.hpp"
#include "vref/SeeAlsoTargets.hpp"

namespace reference::tools {
namespace {

namespace json = boost::json;
using Lane = RequestPool::Lane;
using property::RefEntityType;

constexpr std::size_t usualHits = 10;

std::vector<RefEntityType::Value> typesOf(const std::vector<NamedText>& texts) {
    std::vector<RefEntityType::Value> types;
    types.reserve(texts.size());
    for (const auto& [parameter, text] : texts) {
        const auto type = RefEntityType::fromString(text);
        if (!type) {
            std::vector<std::string> names;
            std::ranges::transform(RefEntityType::namedValues(), std::back_inserter(names),
                                   RefEntityType::enumToString);
            throw RpcError::unknownName(parameter, "type", text, names);
        }
        types.push_back(*type);
    }
    return types;
}

std::vector<std::u16string> plainUtf16(const std::vector<NamedText>& texts) {
    std::vector<std::u16string> names;
    names.reserve(texts.size());
    for (const NamedText& text : texts)
        names.push_back(fromCommandLine(text.text));
    return names;
}

std::vector<std::string> plainTexts(std::vector<NamedText> texts) {
    std::vector<std::string> all;
    all.reserve(texts.size());
    for (NamedText& text : texts)
        all.push_back(std::move(text.text));
    return all;
}

// Throws RpcError for a product that is not installed.
void requireInstalled(const std::vector<NamedText>& products, const Documentation& documentation) {
    if (products.empty())
        return;
    std::vector<std::string> installed;
    for (const auto& product : documentation.products())
        if (product.installed)
            installed.push_back(fl::i18n::toUtf8(product.shortName));
    for (const auto& [parameter, text] : products)
        if (std::ranges::find(installed, text) == installed.end())
            throw RpcError::unknownName(parameter, "installed product", text, installed);
}

// A question as the methods "ask" and "show" have it.
struct Asked {
    std::u16string question;
    ask::AskOptions options;
    std::vector<NamedText> products;
};

std::vector<std::u16string> preferredBy(RpcParameters& parameters,
                                        const std::vector<std::string>& usuallyPrefer) {
    auto preferred = plainUtf16(parameters.texts("prefer"));
    for (const auto& product : usuallyPrefer)
        preferred.push_back(fromCommandLine(product));
    return preferred;
}

Asked askedFor(RpcParameters& parameters, const std::vector<std::string>& usuallyPrefer) {
    Asked asked{.products = parameters.texts("products")};
    asked.options = {.preferredProducts = preferredBy(parameters, usuallyPrefer),
                     .types = typesOf(parameters.texts("types")),
                     .products = plainUtf16(asked.products)};
    return asked;
}

ask::Answer answerTo(const Asked& asked, const Documentation& documentation) {
    requireInstalled(asked.products, documentation);
    try {
        return ask::ask(asked.question, asked.options);
    } catch (const ask::QuestionError& error) {
        const std::size_t at = std::min(error.position(), asked.question.size());
        throw RpcError::wrongQuestion(error.what(), error.position(), error.length(),
                                      fl::i18n::toUtf8(asked.question.substr(at, error.length())));
    }
}

json::array toJson(const std::vector<ask::Hit>& hits, const HitFields& fields,
                   const Documentation& documentation) {
    json::array array;
    array.reserve(hits.size());
    for (const ask::Hit& hit : hits)
        array.push_back(tools::toJson(foundHit(hit), fields, documentation));
    return array;
}

Search searchOf(const std::optional<std::string>& name) {
    if (!name)
        return Search::Entity;
    if (const auto search = toSearch(*name))
        return *search;
    throw RpcError::unknownName("search", "search", *name, searchNames());
}

// A request as the method "find" has it.
struct Wanted {
    QueryOptions query;
    std::vector<NamedText> products;
    std::vector<std::string> order;
    std::size_t limit = usualHits;
    bool explain = false;
    HitFields fields = HitFields::brief();

    [[nodiscard]] Ordering ordering() const {
        const auto sensitivity = query.ignoreCase ? api::EntityCaseSensitivity::Insensitive
                                                  : api::EntityCaseSensitivity::Sensitive;
        return order.empty() ? Ordering::forPerson(fromCommandLine(query.name), sensitivity)
                             : Ordering::parse(order, sensitivity);
    }
};

Wanted wantedBy(RpcParameters& parameters) {
    Wanted wanted;
    wanted.query.all = parameters.flag("all");
    if (!wanted.query.all)
        wanted.query.name = parameters.requiredText("name");
    else if (parameters.any("name") != nullptr)
        throw RpcError::wrongParameter("name", "stands beside \"all\"",
                                       "absent, since \"all\" matches everything");
    wanted.query.search = searchOf(parameters.text("search"));
    const auto types = parameters.texts("type");
    static_cast<void>(typesOf(types));
    wanted.query.types = plainTexts(types);
    wanted.products = parameters.texts("product");
    wanted.query.products = plainTexts(wanted.products);
    wanted.query.ignoreCase = parameters.flag("ignore-case");
    wanted.query.ignorePackage = parameters.flag("ignore-package");
    wanted.order = plainTexts(parameters.texts("order"));
    wanted.explain = parameters.flag("explain");
    wanted.limit = parameters.count("limit", usualHits, 0, maxHits);
    wanted.fields = HitFields::parse(parameters, wanted.fields);
    if (parameters.any("exact") != nullptr && !parameters.flag("exact"))
        throw RpcError::wrongParameter("exact", "is false",
                                       "absent or true; \"ask\" takes questions");
    try {
        static_cast<void>(wanted.ordering());
    } catch (const UnusableError&) {
        throw RpcError::wrongParameter("order", "names a key that there is not",
                                       "a list of keys: " + Ordering::knownKeys());
    }
    return wanted;
}

json::value findWanted(const Wanted& wanted, const Documentation& documentation) {
    requireInstalled(wanted.products, documentation);
    api::ReferenceRequest request = toRequest(wanted.query, documentation);
    const Ordering ordering = wanted.ordering();
    request.setRefRequestComparator(ordering.comparator());
    const auto found = retrieve(wanted.query.search, request);
    json::array hits;
    for (std::size_t at = 0; at < std::min(found.size(), wanted.limit); ++at) {
        FoundHit hit = foundHit(found[at], request.getEntityText());
        HitFields fields = wanted.fields;
        if (wanted.explain) {
            hit.note = at + 1 < found.size() ? ordering.explain(found[at], found[at + 1])
                                             : std::string("the last");
            fields.add("note");
        }
        hits.push_back(toJson(hit, fields, documentation));
    }
    return json::object{{"total", found.size()}, {"hits", std::move(hits)}};
}

// An entry as the method "show" has it.
struct Shown {
    Asked asked;
    // If it is not empty, instead of a question. UTF-8.
    std::string href;
    std::vector<NamedText> types;
    std::size_t nth = 1;
    std::size_t width = 80;
    HitFields fields = HitFields::all();
};

json::value shownResult(std::size_t total, const FoundHit* hit, const Shown& wanted,
                        const Documentation& documentation) {
    json::object result{{"total", total}, {"hit", nullptr}, {"text", ""}};
    if (hit == nullptr)
        return result;
    result["hit"] = toJson(*hit, wanted.fields, documentation);
    foundation::core::TextStream text;
    PageAddresses pages(documentation);
    writePage(text, Terminal(false, false, wanted.width), hit->data,
              {.address = pages.of(hit->data),
               .members = membersOf(hit->data),
               .seeAlso = seeAlsoTargets(hit->data)});
    result["text"] = text.str();
    return result;
}

json::value showPage(const Shown& wanted, const Documentation& documentation) {
    requireInstalled(wanted.asked.products, documentation);
    const auto found = entriesOfPage({.name = wanted.href,
                                      .types = plainTexts(wanted.types),
                                      .products = plainTexts(wanted.asked.products)},
                                     documentation);
    if (wanted.nth > found.size())
        return shownResult(found.size(), nullptr, wanted, documentation);
    const FoundHit hit = foundHit(found[wanted.nth - 1], {});
    return shownResult(found.size(), &hit, wanted, documentation);
}

json::value showAnswer(const Shown& wanted, const Documentation& documentation) {
    const ask::Answer answer = answerTo(wanted.asked, documentation);
    if (wanted.nth > answer.hits.size())
        return shownResult(answer.total, nullptr, wanted, documentation);
    const FoundHit hit = foundHit(answer.hits[wanted.nth - 1]);
    return shownResult(answer.total, &hit, wanted, documentation);
}

json::object toJson(const ask::Completion& completion) {
    json::object object{{"text", fl::i18n::toUtf8(completion.text)}};
    if (completion.isName) {
        object["name"] = fl::i18n::toUtf8(completion.name);
        object["type"] = RefEntityType::enumToString(completion.type);
        object["purpose"] = fl::i18n::toUtf8(completion.purpose);
    }
    return object;
}

}  // namespace

RpcCall prepareAsk(RpcParameters& parameters, const Documentation& documentation,
                   const std::vector<std::string>& usuallyPrefer) {
    auto question = fromCommandLine(parameters.requiredText("question"));
    Asked asked = askedFor(parameters, usuallyPrefer);
    asked.question = std::move(question);
    asked.options.limit = parameters.count("limit", usualHits, 0, maxHits);
    const HitFields fields = HitFields::parse(parameters, HitFields::brief());
    return {Lane::Slow, [asked = std::move(asked), fields, &documentation]() -> json::value {
                const ask::Answer answer = answerTo(asked, documentation);
                return json::object{
                    {"total", answer.total},
                    {"hits", toJson(answer.hits, fields, documentation)},
                    {"filteredAway", answer.filteredAway},
                    {"turnedAway", toJson(answer.turnedAway, fields, documentation)}};
            }};
}

RpcCall prepareFind(RpcParameters& parameters, const Documentation& documentation) {
    Wanted wanted = wantedBy(parameters);
    const Lane lane =
        wanted.query.search == Search::Entity && !wanted.query.all ? Lane::Quick : Lane::Slow;
    return {lane, [wanted = std::move(wanted), &documentation] {
                return findWanted(wanted, documentation);
            }};
}

RpcCall prepareShow(RpcParameters& parameters, const Documentation& documentation,
                    const std::vector<std::string>& usuallyPrefer) {
    const auto question = parameters.text("question");
    const auto href = parameters.text("href");
    Shown wanted{.asked = askedFor(parameters, usuallyPrefer), .types = parameters.texts("types")};
    if (question.has_value() == href.has_value())
        throw RpcError::wrongParameter(
            "question", question ? "stands beside \"href\"" : "is missing, and so is \"href\"",
            "a text, unless \"href\" is one");
    if (question)
        wanted.asked.question = fromCommandLine(parameters.requiredText("question"));
    else
        wanted.href = parameters.requiredText("href");
    wanted.nth = parameters.count("nth", wanted.nth, 1, maxHits);
    constexpr std::size_t narrowest = 20;
    constexpr std::size_t widest = 1000;
    wanted.width = parameters.count("width", wanted.width, narrowest, widest);
    wanted.fields = HitFields::parse(parameters, wanted.fields);
    wanted.asked.options.limit = wanted.nth;
    return {Lane::Slow, [wanted = std::move(wanted), &documentation] {
                return wanted.href.empty() ? showAnswer(wanted, documentation)
                                           : showPage(wanted, documentation);
            }};
}

RpcCall prepareComplete(RpcParameters& parameters, const Documentation& documentation,
                        const std::vector<std::string>& usuallyPrefer) {
    const auto prefix = fromCommandLine(parameters.text("prefix").value_or(""));
    if (parameters.any("prefix") == nullptr)
        throw RpcError::wrongParameter("prefix", "is missing", "a text, which may be empty");
    auto products = parameters.texts("products");
    ask::CompleteOptions options{.products = plainUtf16(products),
                                 .preferredProducts = preferredBy(parameters, usuallyPrefer)};
    options.limit = parameters.count("limit", options.limit, 0, maxHits);
    return {Lane::Quick,
            [prefix, options = std::move(options), products = std::move(products),
             &documentation]() -> json::value {
                requireInstalled(products, documentation);
                json::array completions;
                for (const ask::Completion& completion : ask::complete(prefix, options))
                    completions.push_back(toJson(completion));
                return json::object{{"completions", std::move(completions)}};
            }};
}

}  // namespace reference::tools
