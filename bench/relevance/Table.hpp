#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

namespace reference::bench {

enum class TableForm : std::uint8_t { Plain, Markdown };

// A table of texts. The first column goes to the left, the others to the right.
struct Table {
    std::vector<std::string> header;
    // As long as the header, each.
    std::vector<std::vector<std::string>> rows;

    void print(std::ostream& stream, TableForm form) const;
};

}  // namespace reference::bench
