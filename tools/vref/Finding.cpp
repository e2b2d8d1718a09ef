#include "vref/Finding.hpp"

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

#include <boost/algorithm/string/join.hpp>

#include "docset/JsonText.hpp"
#include "fl/i18n/utf.hpp"
#include "reference/ask/QuestionError.hpp"
#include "reference/ask/ask.hpp"
#include "vref/CommandLineText.hpp"
#include "vref/DisplayText.hpp"
#include "vref/ExitStatus.hpp"
#include "vref/Ordering.hpp"
#include "vref/ResultJson.hpp"
#include "vref/ResultList.hpp"

namespace reference::tools {
namespace {

// What was found for a query, and in which order.
struct Answer {
    QueryOptions query;
    Ordering ordering;
    std::vector<api::ReferenceData> results;
};

Answer request(const FindOptions& options, const QueryOptions& query,
               const Documentation& documentation) {
    api::ReferenceRequest request = toRequest(query, documentation);
    const auto caseSensitivity = request.getEntityCaseSensitivity();
    Ordering ordering = options.order.empty()
                            ? Ordering::forPerson(request.getEntityText(), caseSensitivity,
                                                  preferredProducts(query, documentation))
                            : Ordering::parse(options.order, caseSensitivity);
    request.setRefRequestComparator(ordering.comparator());
    return {query, std::move(ordering), retrieve(query.search, request)};
}

bool looksForName(const QueryOptions& query) {
    return !query.all && (query.search == Search::Entity || query.search == Search::Class);
}

// Asks for the name as it was typed. If nothing has that name and it is pasted code, asks for the
// name in it.
Answer askForName(const FindOptions& options, const Documentation& documentation,
                  std::vector<std::string>& messages) {
    Answer answer = request(options, options.query, documentation);
    if (!answer.results.empty() || !looksForName(options.query))
        return answer;
    QueryOptions cleaned = options.query;
    cleaned.name = nameInPastedCode(options.query.name);
    if (cleaned.name == options.query.name)
        return answer;
    messages.push_back("took \"" + printableLine(options.query.name) + "\" for the name \"" +
                       printableLine(cleaned.name) + "\"");
    return request(options, cleaned, documentation);
}

// What to say about each of the first `shown` results: why it stands before the next, which may be
// one that is not shown.
std::vector<std::string> explanations(const Answer& answer, std::size_t shown) {
    std::vector<std::string> texts;
    for (std::size_t at = 0; at < shown; ++at)
        texts.push_back(at + 1 < answer.results.size()
                            ? answer.ordering.explain(answer.results[at], answer.results[at + 1])
                            : "the last");
    return texts;
}

std::string complaint(const QueryOptions& query) {
    if (query.all)
        return "there are no entries of these types and products";
    if (!looksForName(query))
        return "nothing is found for \"" + printableLine(query.name) + "\"";
    std::string kinds;
    for (const auto& type : query.types)
        kinds +=
            (kinds.empty() ? "" : " or ") + property::RefEntityType::enumToString(toType(type));
    return (kinds.empty() ? "nothing" : "no " + kinds) + " is called \"" +
           printableLine(query.name) + "\"" +
           (query.products.empty() ? "" : " in " + boost::join(query.products, " or "));
}

// That nothing is found means little where something could not be read.
void requireWhole(const Documentation& documentation, std::size_t unreadableBefore) {
    if (documentation.unreadableFiles() > unreadableBefore)
        throw UnusableError("What was found could not be read (see above).");
    if (documentation.missesProducts())
        throw UnusableError("Nothing is found in what could be read (see above).");
}

Finding findByRequest(const FindOptions& options, const Documentation& documentation) {
    const std::size_t unreadableBefore = documentation.unreadableFiles();
    Finding finding;
    Answer answer = askForName(options, documentation, finding.messages);
    const std::size_t found = answer.results.size();
    finding.shown = std::min(found, options.limit.value_or(found));
    if (options.explain)
        finding.notes = explanations(answer, finding.shown);
    if (finding.shown < found)
        finding.messages.push_back(std::to_string(found - finding.shown) + " more of " +
                                   std::to_string(found) + " (--limit " +
                                   std::to_string(finding.shown) + ")");
    if (found == 0) {
        requireWhole(documentation, unreadableBefore);
        finding.messages.push_back(complaint(answer.query));
        if (looksForName(answer.query))
            finding.lesson = teach(answer.query, documentation);
    }
    finding.total = found;
    finding.results = std::move(answer.results);
    return finding;
}

// What a question is asked with besides its words.
ask::AskOptions askOptions(const FindOptions& options, const Documentation& documentation) {
    ask::AskOptions asked;
    constexpr std::size_t usualLimit = 10;
    asked.limit = options.query.all ? std::numeric_limits<std::size_t>::max() : usualLimit;
    if (options.limit)
        asked.limit = *options.limit;
    asked.preferredProducts = preferredProducts(options.query, documentation);
    std::ranges::transform(options.query.types, std::back_inserter(asked.types), toType);
    for (const auto& name : options.query.products) {
        asked.products.push_back(fromCommandLine(name));
        documentation.requireInstalled(asked.products.back(), "--product");
    }
    return asked;
}

// "Table (class, veltra), filter (function, qix)".
std::string namesWithPlaces(const std::vector<ask::Hit>& hits) {
    std::string names;
    for (const auto& hit : hits)
        names += (names.empty() ? "" : ", ") + shownLine(hit.name) + " (" + kindsOf(hit.data) +
                 ", " + shownLine(hit.data.getHeaderInfo().getShortName()) + ")";
    return names;
}

// The question with a line below it that points at the part that is wrong.
std::string pointed(const std::string& question, const ask::QuestionError& error) {
    const std::u16string text = fromCommandLine(question);
    constexpr std::size_t mostShown = 200;
    std::string message = error.what();
    if (text.size() > mostShown || text.find_first_of(u"\n\r\t") != std::u16string::npos)
        return message;
    const std::size_t at = std::min(error.position(), text.size());
    const std::size_t length =
        std::max<std::size_t>(1, displayWidth(fl::i18n::toUtf8(text.substr(at, error.length()))));
    return message + "\n      " + printableLine(question) + "\n      " +
           std::string(displayWidth(fl::i18n::toUtf8(text.substr(0, at))), ' ') +
           std::string(length, '^');
}

ask::Answer askLibrary(const FindOptions& options, const Documentation& documentation) {
    if (options.query.name.empty())
        throw UnusableError("Something to look for is missing; --all lists everything.");
    try {
        return ask::ask(fromCommandLine(options.query.name), askOptions(options, documentation));
    } catch (const ask::QuestionError& error) {
        throw UnusableError(pointed(options.query.name, error));
    }
}

FoundBy howFound(const ask::Hit& hit) {
    FoundBy by{.name = fl::i18n::toUtf8(hit.name),
               .rung = std::string(ask::toString(hit.rung)),
               .description = std::string(ask::describe(hit.rung)),
               .change = fl::i18n::toUtf8(hit.change)};
    if (!by.change.empty())
        by.description = by.change;
    return by;
}

Finding findByQuestion(const FindOptions& options, const Documentation& documentation) {
    const std::size_t unreadableBefore = documentation.unreadableFiles();
    ask::Answer answer = askLibrary(options, documentation);
    Finding finding;
    finding.total = answer.total;
    finding.shown = answer.hits.size();
    const bool isGuess = !answer.hits.empty() && ask::isGuess(answer.hits.front().rung);
    for (auto& hit : answer.hits) {
        finding.foundBy.push_back(howFound(hit));
        if (options.explain)
            finding.notes.push_back(
                std::string(ask::describe(hit.rung)) +
                (hit.change.empty() ? "" : "; " + fl::i18n::toUtf8(hit.change)));
        finding.results.push_back(std::move(hit.data));
    }
    if (isGuess)
        finding.messages.emplace_back(
            "no name and purpose has all the words; this is what comes nearest");
    if (finding.shown < finding.total)
        finding.messages.push_back(std::to_string(finding.total - finding.shown) + " more of " +
                                   std::to_string(finding.total) + " (--limit N, or --all)");
    if (finding.total > 0 && answer.filteredAway > 0)
        finding.messages.push_back("the filters leave out " + std::to_string(answer.filteredAway) +
                                   " more");
    if (finding.total > 0)
        return finding;
    requireWhole(documentation, unreadableBefore);
    finding.messages.push_back("nothing is found for \"" + printableLine(options.query.name) +
                               "\"");
    if (!answer.turnedAway.empty())
        finding.messages.push_back(
            "without the filters there is: " + namesWithPlaces(answer.turnedAway) +
            (answer.filteredAway > answer.turnedAway.size()
                 ? ", and " + std::to_string(answer.filteredAway - answer.turnedAway.size()) +
                       " more"
                 : ""));
    return finding;
}

// A heading before the first result of each kind of reading, unless the first is what was typed.
std::vector<std::string> headingsOf(const Finding& finding, bool isExplained) {
    std::vector<std::string> headings(isExplained ? 0 : finding.foundBy.size());
    std::string before;
    for (std::size_t at = 0; at < headings.size(); ++at) {
        const FoundBy& by = finding.foundBy[at];
        const bool isName =
            by.change.empty() && (by.rung == ask::toString(ask::Rung::Name) ||
                                  by.rung == ask::toString(ask::Rung::AnyCase) ||
                                  by.rung == ask::toString(ask::Rung::WithoutPackage));
        const std::string heading = isName ? std::string() : by.description;
        if (heading != before)
            headings[at] = heading;
        before = heading;
    }
    return headings;
}

}  // namespace

Finding findEntries(const FindOptions& options, const Documentation& documentation) {
    Finding finding = options.isRequest() ? findByRequest(options, documentation)
                                          : findByQuestion(options, documentation);
    static_cast<void>(documentation.missesProducts());  // it says which
    return finding;
}

void writeResults(std::ostream& out, const Terminal& terminal, const FindOptions& options,
                  const Finding& finding) {
    if (options.json) {
        docset::writeJson(out, toJson(finding));
        out << '\n';
        return;
    }
    writeList(out, terminal, finding.first(),
              {.hrefs = options.hrefs,
               .notes = finding.notes,
               .headings = headingsOf(finding, options.explain),
               .addresses = finding.addresses});
}

boost::json::array toJson(const Finding& finding) {
    auto array = toJson(finding.first(), finding.notes);
    for (std::size_t at = 0; at < finding.foundBy.size(); ++at) {
        auto& element = array.at(at).as_object();
        const FoundBy& by = finding.foundBy[at];
        element.emplace("name", by.name);
        element.emplace("rung", by.rung);
        element.emplace("change", by.change);
    }
    return array;
}

}  // namespace reference::tools
