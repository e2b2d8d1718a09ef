#include <filesystem>
#include <iostream>

#include "docset/Manifest.hpp"
#include "docset/validate.hpp"
#include "vref/Commands.hpp"

namespace reference::tools {

ExitStatus validate(const std::string& root) {
    if (!std::filesystem::is_directory(root))
        throw UnusableError("There is no folder \"" + root +
                            "\"; name the root of a documentation set, the folder that holds " +
                            docset::manifestFileName + ".");
    const auto report = docset::validate(root);
    for (const auto& fault : report.faults)
        std::cout << fault.toString() << '\n';
    std::cout << (report.faults.empty() ? "sound: " : "faulty: ");
    if (!report.faults.empty())
        std::cout << report.faults.size() << " faults; ";
    std::cout << report.products << " products, " << report.files << " files, " << report.entities
              << " entities, " << report.items << " items\n";
    return report.faults.empty() ? Success : Incomplete;
}

}  // namespace reference::tools
