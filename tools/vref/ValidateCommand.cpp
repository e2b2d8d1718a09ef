#include <filesystem>
#include <iostream>

#include "docset/Manifest.hpp"
#include "docset/validate.hpp"
#include "vref/Commands.hpp"
#include "vref/Counted.hpp"
#include "vref/DisplayText.hpp"

namespace reference::tools {

ExitStatus validate(const std::string& root) {
    if (!std::filesystem::is_directory(root))
        throw UnusableError("There is no folder \"" + root +
                            "\"; name the root of a documentation set, the folder that holds " +
                            docset::manifestFileName + ".");
    const auto report = docset::validate(root);
    for (const auto& fault : report.faults)
        std::cout << printableLine(fault.toString()) << '\n';
    std::cout << (report.faults.empty()
                      ? "sound: "
                      : "faulty: " + counted(report.faults.size(), "fault") + "; ")
              << counted(report.products, "product") << ", " << counted(report.files, "file")
              << ", " << counted(report.entities, "entity", "entities") << ", "
              << counted(report.items, "item") << '\n';
    return report.faults.empty() ? Success : Incomplete;
}

}  // namespace reference::tools
