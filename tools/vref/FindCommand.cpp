#include <algorithm>
#include <iostream>
#include <span>

#include "reference/api/ReferenceDataRetriever.hpp"
#include "vref/Commands.hpp"
#include "vref/ResultJson.hpp"
#include "vref/ResultList.hpp"
#include "vref/Terminal.hpp"

namespace reference::tools {

ExitStatus find(const FindOptions& options) {
    const Documentation documentation(options.documentation);
    const api::ReferenceDataRetriever retriever(toRequest(options.query, documentation));
    const auto results = retriever.getReferenceData();

    const std::size_t shown = std::min(results.size(), options.limit.value_or(results.size()));
    const auto first = std::span(results).first(shown);
    if (options.json)
        writeJson(std::cout, first);
    else
        writeList(std::cout, Terminal::ofStandardOutput(), first, options.hrefs);
    std::cout.flush();
    if (shown < results.size())
        std::cerr << "vref: " << results.size() - shown << " more of " << results.size()
                  << " (--limit " << shown << ")\n";

    if (!results.empty())
        return Success;
    if (documentation.unreadableFiles() > 0)
        throw UnusableError("What was found could not be read (see above).");
    if (options.query.all)
        std::cerr << "vref: there are no entries of these types and products\n";
    else
        std::cerr << "vref: nothing is called \"" << options.query.name << "\"\n";
    return NothingFound;
}

}  // namespace reference::tools
