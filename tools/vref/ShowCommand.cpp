#include <span>
#include <string>

#include "vref/ClassMembers.hpp"
#include "vref/Commands.hpp"
#include "vref/ItemPage.hpp"
#include "vref/NamedEntries.hpp"
#include "vref/Pager.hpp"
#include "vref/ResultJson.hpp"
#include "vref/Terminal.hpp"

namespace reference::tools {

ExitStatus show(const ShowOptions& options, const Configuration& configuration) {
    const Documentation documentation(configuration.documentation());
    const NamedEntries named = entriesNamed(options.query, options.nth, documentation);
    const auto& found = named.entries;
    if (found.empty())
        return NothingFound;
    const auto terminal = Terminal::ofStandardOutput(configuration.colours.value);
    PagedOutput output(terminal, configuration.pager.value);
    if (options.json) {
        writeJson(output.stream(), std::span(found).first(1), {});
    } else {
        const auto place = documentation.placeOf(found.front());
        writePage(output.stream(), terminal, found.front(),
                  {.address = place ? place->address() : std::string(),
                   .members = membersOf(found.front())});
    }
    output.show();
    tellOthers(named, configuration.colours.value);
    return Success;
}

}  // namespace reference::tools
