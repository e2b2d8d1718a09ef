#include "vref/Finding.hpp"

#include <algorithm>
#include <utility>

#include <boost/algorithm/string/join.hpp>

#include "vref/CommandLineText.hpp"
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

// Asks for the name as it was typed. If nothing has that name and it is pasted code, asks for the
// name in it.
Answer askForName(const FindOptions& options, const Documentation& documentation,
                  std::vector<std::string>& messages) {
    Answer answer = ask(options, options.query, documentation);
    if (!answer.results.empty() || !looksForName(options.query))
        return answer;
    QueryOptions cleaned = options.query;
    cleaned.name = nameInPastedCode(options.query.name);
    if (cleaned.name == options.query.name)
        return answer;
    messages.push_back("took \"" + options.query.name + "\" for the name \"" + cleaned.name + "\"");
    return ask(options, cleaned, documentation);
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
        return "nothing is found for \"" + query.name + "\"";
    std::string kinds;
    for (const auto& type : query.types)
        kinds +=
            (kinds.empty() ? "" : " or ") + property::RefEntityType::enumToString(toType(type));
    return (kinds.empty() ? "nothing" : "no " + kinds) + " is called \"" + query.name + "\"" +
           (query.products.empty() ? "" : " in " + boost::join(query.products, " or "));
}

}  // namespace

Finding findEntries(const FindOptions& options, const Documentation& documentation) {
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
        if (documentation.unreadableFiles() > unreadableBefore)
            throw UnusableError("What was found could not be read (see above).");
        finding.messages.push_back(complaint(answer.query));
        if (looksForName(answer.query))
            finding.lesson = teach(answer.query, documentation);
    }
    finding.results = std::move(answer.results);
    return finding;
}

void writeResults(std::ostream& out, const Terminal& terminal, const FindOptions& options,
                  const Finding& finding) {
    if (options.json)
        writeJson(out, finding.first(), finding.notes);
    else
        writeList(out, terminal, finding.first(), {.hrefs = options.hrefs, .notes = finding.notes});
}

}  // namespace reference::tools
