#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace reference::importers::sphinx {

// One object that a tree documents, as its inventory lists it. All texts UTF-8. A plain value.
struct InventoryObject {
    // The qualified name, which may hold spaces.
    std::string name;
    // "py", "c", "cpp", "js", "std", …
    std::string domain;
    // The object's type within the domain: "function", "class", …
    std::string role;
    // How search ranks it; below zero: an alias of another object.
    int priority = 1;
    // The page, relative to the root of the tree, "./" at the front removed; may end in "/".
    std::string page;
    // The id on the page; empty: the page as a whole.
    std::string anchor;
    // What a reader sees.
    std::string displayName;

    friend bool operator==(const InventoryObject&, const InventoryObject&) = default;
};

// The list of everything that a built tree documents (its file objects.inv), of format version 1 or
// 2. A plain value: separate objects may be used from separate threads.
struct Inventory {
    std::string project;
    std::string version;
    // In the order of the file.
    std::vector<InventoryObject> objects;
    // Lines that could not be read, each with its number and what is wrong; the rest is used. Bytes
    // that are not well-formed UTF-8 have been replaced by U+FFFD and are reported here, too.
    std::vector<std::string> faults;
};

// Reads the whole content of an inventory file. Throws std::runtime_error, saying what is wrong and
// what would be right, where it is no inventory, is of an unknown version, is damaged or inflates
// to more than 256 MiB.
[[nodiscard]] Inventory parseInventory(std::string_view file);

}  // namespace reference::importers::sphinx
