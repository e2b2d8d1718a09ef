#include <filesystem>
#include <iostream>
#include <system_error>

#include "docset/Manifest.hpp"
#include "docset/compile.hpp"
#include "vref/Commands.hpp"
#include "vref/Counted.hpp"
#include "vref/DisplayText.hpp"
#include "vref/StandardStreams.hpp"
#include "vref/sayWaiting.hpp"

namespace reference::tools {

ExitStatus compile(const std::string& root) {
    if (!std::filesystem::is_directory(root))
        throw UnusableError("There is no folder \"" + root +
                            "\"; name the root of a documentation set, the folder that holds " +
                            docset::manifestFileName + ".");
    try {
        const auto report = docset::compile(root, [&] { sayWaiting(root); });
        for (const auto& fault : report.faults)
            std::cerr << printableLine(fault.toString()) << '\n';
        for (const auto& problem : report.problems)
            say(printableLine(problem));
        std::cout << "compiled: " << counted(report.written, "file") << " (" << report.kept
                  << " as they were)";
        if (!report.faults.empty())
            std::cout << "; " << counted(report.faults.size(), "fault");
        std::cout << '\n';
        return report.faults.empty() ? Success : Incomplete;
    } catch (const std::system_error& error) {
        throw UnusableError(error.what() + std::string("."));
    }
}

}  // namespace reference::tools
