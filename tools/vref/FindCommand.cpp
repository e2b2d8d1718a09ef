#include <iostream>

#include "vref/Commands.hpp"
#include "vref/DisplayText.hpp"
#include "vref/Finding.hpp"
#include "vref/PageAddresses.hpp"
#include "vref/Pager.hpp"
#include "vref/StandardStreams.hpp"
#include "vref/Terminal.hpp"

namespace reference::tools {

ExitStatus find(const FindOptions& options, const Configuration& configuration) {
    const Documentation documentation(configuration.documentation());
    Finding finding = findEntries(options, documentation);
    const auto terminal = Terminal::ofStandardOutput(configuration.colours.value);
    if (terminal.hasLinks())
        finding.addresses = PageAddresses(documentation).ofAll(finding.first());
    PagedOutput output(terminal, configuration.pager.value);
    writeResults(output.stream(), terminal, options, finding);
    output.show();
    for (const auto& message : finding.messages)
        say(message);
    if (finding.lesson)
        say(printableLine(finding.lesson->text) + "\n      vref find " +
            forShell(toArguments(finding.lesson->query)));
    return finding.results.empty() ? NothingFound : Success;
}

}  // namespace reference::tools
