#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "sphinx/Inventory.hpp"

namespace reference::importers::sphinx {

// A further name of an object: the module where it is really defined, or an option without its
// program.
struct FurtherName {
    std::string name;
    // The object's position in SortedInventory::objects.
    std::size_t object = 0;

    friend bool operator==(const FurtherName&, const FurtherName&) = default;
};

// The entries of an inventory, sorted by whether they belong in the reference. A plain value, all
// texts UTF-8.
struct SortedInventory {
    // What belongs in the reference, each once, in the order of the inventory.
    std::vector<InventoryObject> objects;
    std::vector<FurtherName> furtherNames;
    // How many entries are left out, by domain and role ("std:label"). Aliases of objects that are
    // not listed have " (alias)" after the role.
    std::map<std::string, std::size_t> leftOut;
};

// Sorts the objects of an inventory. An alias is a further name of the first object that is
// documented at the same place. Names that repeat their role ("command:install") lose it. May be
// called from any thread.
[[nodiscard]] SortedInventory sortInventory(std::vector<InventoryObject> all);

}  // namespace reference::importers::sphinx
