#include "BuiltGadgets.hpp"

#include <cstddef>
#include <vector>

#include <zlib.h>

namespace reference::tests {

std::string gadgetInventory(std::string_view lines) {
    std::vector<Bytef> packed(compressBound(lines.size()));
    uLongf length = packed.size();
    compress(packed.data(), &length, reinterpret_cast<const Bytef*>(lines.data()), lines.size());
    return "# Sphinx inventory version 2\n# Project: Gadgets\n# Version: 2.5\n"
           "# The remainder of this file is compressed using zlib.\n" +
           std::string(packed.begin(), packed.begin() + static_cast<std::ptrdiff_t>(length));
}

std::string gadgetPage(std::string_view name, std::string_view purpose) {
    return "<!DOCTYPE html><html><body><dl class=\"py function\"><dt class=\"sig\" id=\"" +
           std::string(name) + "\"><span class=\"sig-name descname\">" + std::string(name) +
           "</span>(x)</dt><dd><p>" + std::string(purpose) + "</p></dd></dl></body></html>";
}

void writeGadgets(const TempFolder& tree, int count, std::string_view purpose) {
    std::string lines;
    for (int number = 0; number < count; ++number) {
        const std::string name = "f" + std::to_string(number);
        lines += name + " py:function 1 " + name + ".html#$ -\n";
        tree.write(name + ".html", gadgetPage(name, purpose));
    }
    tree.write("objects.inv", gadgetInventory(lines));
}

}  // namespace reference::tests
