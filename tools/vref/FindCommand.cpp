#include <iostream>

#include "vref/Commands.hpp"
#include "vref/Finding.hpp"
#include "vref/Terminal.hpp"

namespace reference::tools {

ExitStatus find(const FindOptions& options, const Configuration& configuration) {
    const Documentation documentation(configuration.documentation());
    const Finding finding = findEntries(options, documentation);
    writeResults(std::cout, Terminal::ofStandardOutput(configuration.colours.value), options,
                 finding);
    std::cout.flush();
    for (const auto& message : finding.messages)
        std::cerr << "vref: " << message << '\n';
    if (finding.lesson)
        std::cerr << "vref: " << finding.lesson->text << "\n      vref find "
                  << toArguments(finding.lesson->query) << '\n';
    return finding.results.empty() ? NothingFound : Success;
}

}  // namespace reference::tools
