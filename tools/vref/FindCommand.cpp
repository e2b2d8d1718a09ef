#include <algorithm>
#include <iostream>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "vref/CommandLineText.hpp"
#include "vref/Commands.hpp"
#include "vref/Ordering.hpp"
#include "vref/ResultJson.hpp"
#include "vref/ResultList.hpp"
#include "vref/Teaching.hpp"
#include "vref/Terminal.hpp"

namespace reference::tools {
namespace {

// What was found for a query, and by which order.
struct Answer {
    QueryOptions query;
    Ordering ordering;
    std::vector<api::ReferenceData> results;
};

Answer ask(const FindOptions& options, const QueryOptions& query,
           const Documentation& documentation) {
    api::ReferenceRequest request = toRequest(query, documentation);
    const auto caseSensitivity = request.getEntityCaseSensitivity();
    Ordering ordering = options.order.empty()
                            ? Ordering::forPerson(request.getEntityText(), caseSensitivity)
                            : Ordering::parse(options.order, caseSensitivity);
    request.setRefRequestComparator(ordering.comparator());
    return {query, std::move(ordering), retrieve(query.search, request)};
}

bool looksForName(const QueryOptions& query) {
    return !query.all && (query.search == Search::Entity || query.search == Search::Class);
}

// Asks for the name as it was typed, and when nothing bears it, for the name in it if it is pasted
// code.
Answer askForName(const FindOptions& options, const Documentation& documentation) {
    Answer answer = ask(options, options.query, documentation);
    if (!answer.results.empty() || !looksForName(options.query))
        return answer;
    QueryOptions cleaned = options.query;
    cleaned.name = nameInPastedCode(options.query.name);
    if (cleaned.name == options.query.name)
        return answer;
    std::cerr << "vref: took \"" << options.query.name << "\" for the name \"" << cleaned.name
              << "\"\n";
    return ask(options, cleaned, documentation);
}

// What to say of each of the first `shown` results: why it stands before the next, which may be one
// that is not shown.
std::vector<std::string> explanations(const Answer& answer, std::size_t shown) {
    std::vector<std::string> texts;
    for (std::size_t at = 0; at < shown; ++at)
        texts.push_back(at + 1 < answer.results.size()
                            ? answer.ordering.explain(answer.results[at], answer.results[at + 1])
                            : "the last");
    return texts;
}

void complain(const Answer& answer, const Documentation& documentation) {
    if (answer.query.all) {
        std::cerr << "vref: there are no entries of these types and products\n";
        return;
    }
    std::cerr << "vref: nothing is " << (looksForName(answer.query) ? "called" : "found for")
              << " \"" << answer.query.name << "\"\n";
    if (looksForName(answer.query))
        teach(std::cerr, answer.query, documentation);
}

}  // namespace

ExitStatus find(const FindOptions& options) {
    const Documentation documentation(options.documentation);
    const Answer answer = askForName(options, documentation);
    const auto& results = answer.results;

    const std::size_t shown = std::min(results.size(), options.limit.value_or(results.size()));
    const auto first = std::span(results).first(shown);
    const auto notes = options.explain ? explanations(answer, shown) : std::vector<std::string>();
    if (options.json)
        writeJson(std::cout, first, notes);
    else
        writeList(std::cout, Terminal::ofStandardOutput(), first,
                  {.hrefs = options.hrefs, .notes = notes});
    std::cout.flush();
    if (shown < results.size())
        std::cerr << "vref: " << results.size() - shown << " more of " << results.size()
                  << " (--limit " << shown << ")\n";

    if (!results.empty())
        return Success;
    if (documentation.unreadableFiles() > 0)
        throw UnusableError("What was found could not be read (see above).");
    complain(answer, documentation);
    return NothingFound;
}

}  // namespace reference::tools
