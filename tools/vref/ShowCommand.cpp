#include <span>
#include <string>

#include "vref/Commands.hpp"
#include "vref/ItemPage.hpp"
#include "vref/Members.hpp"
#include "vref/NamedEntries.hpp"
#include "vref/PageAddresses.hpp"
#include "vref/Pager.hpp"
#include "vref/ResultJson.hpp"
#include "vref/SeeAlsoTargets.hpp"
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
        PageAddresses pages(documentation);
        PageAddresses* const links = terminal.hasLinks() ? &pages : nullptr;
        writePage(output.stream(), terminal, found.front(),
                  {.address = pages.of(found.front()),
                   .members = membersOf(found.front(), links),
                   .seeAlso = seeAlsoTargets(found.front(), links)});
    }
    output.show();
    tellOthers(named, configuration.colours.value);
    return Success;
}

}  // namespace reference::tools
