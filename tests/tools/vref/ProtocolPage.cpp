#include "ProtocolPage.hpp"

#include <fstream>

namespace reference::tests {

std::vector<std::string> exampleAfter(const std::string& heading, const std::string& line) {
    std::ifstream page(VELTRA_PROTOCOL_PAGE);
    std::string read;
    while (std::getline(page, read) && read != heading) {
    }
    while (std::getline(page, read) && read != line) {
    }
    std::vector<std::string> lines;
    while (std::getline(page, read) && (read.empty() || read.starts_with("    ")))
        if (!read.empty())
            lines.push_back(read.substr(4));
    return lines;
}

}  // namespace reference::tests
