// A small built Sphinx tree, for tests that import one through the tool.
#pragma once

#include <string>
#include <string_view>

#include "support/TempFolder.hpp"

namespace reference::tests {

// The bytes of an inventory, project "Gadgets" 2.5, with these lines.
[[nodiscard]] std::string gadgetInventory(std::string_view lines);

// A page that describes one function.
[[nodiscard]] std::string gadgetPage(std::string_view name, std::string_view purpose);

// Writes a tree of `count` functions f0, f1, … on a page each, all with the same purpose.
void writeGadgets(const TempFolder& tree, int count, std::string_view purpose);

}  // namespace reference::tests
