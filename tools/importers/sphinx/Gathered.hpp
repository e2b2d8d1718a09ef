#pragma once

#include <map>
#include <string>
#include <vector>

#include "sphinx/Facts.hpp"
#include "sphinx/Inventory.hpp"
#include "sphinx/InventorySorting.hpp"

namespace reference::importers::sphinx {

// All that was gathered from a tree.
struct Gathered {
    // The product's help folder, which links may lead out of into that of another product.
    std::u16string helpFolder;
    // The objects that belong in the reference, in the order of the inventory. The numbers in
    // SignatureFacts::objects are positions in this list.
    std::vector<InventoryObject> objects;
    std::vector<FurtherName> furtherNames;
    // By name of the page.
    std::map<std::string, PageFacts> pages;
    // One-line summaries of modules.
    std::map<std::string, std::string> summaries;
};

}  // namespace reference::importers::sphinx
