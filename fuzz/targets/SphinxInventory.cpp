// The lines of an inventory, which are compressed here: a fuzzer does not get through zlib. An
// input that begins with "# Sphinx" is taken for the whole file, as it stands.
#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>

#include "FuzzTarget.hpp"
#include "FuzzTexts.hpp"
#include "inventoryOf.hpp"
#include "sphinx/Inventory.hpp"

namespace reference::fuzz {
namespace VELTRA_TEST_FILE {

using importers::sphinx::Inventory;
using importers::sphinx::InventoryObject;
using importers::sphinx::parseInventory;

void requireSound(const Inventory& inventory) {
    require(isUtf8(inventory.project) && isUtf8(inventory.version), "The head is UTF-8");
    for (const auto& fault : inventory.faults)
        require(!fault.empty() && isUtf8(fault), "A fault is a text", fault);
    for (const auto& object : inventory.objects) {
        require(!object.domain.empty(), "An object has a domain", object.name);
        for (const auto* const text : {&object.name, &object.domain, &object.role, &object.page,
                                       &object.anchor, &object.displayName})
            require(isUtf8(*text) && text->find('\n') == std::string::npos,
                    "A text is one line of UTF-8", *text);
    }
}

// An object as a line that says the same without any abbreviation.
std::string lineOf(const InventoryObject& object) {
    return object.name + " " + object.domain + ":" + object.role + " " +
           std::to_string(object.priority) + " " + object.page + "#" + object.anchor + " " +
           object.displayName + "\n";
}

bool hasGraphicEnds(const std::string& text) {
    const auto isGraphic = [](char unit) { return unit > ' ' && unit < 0x7F; };
    return !text.empty() && isGraphic(text.front()) && isGraphic(text.back());
}

// A name may look like a line of its own, a place that ends with "$" like an abbreviation, and
// white space at the ends means nothing.
bool isPlain(const InventoryObject& object) {
    const auto hasNo = [](const std::string& text, const char* units) {
        return text.find_first_of(units) == std::string::npos;
    };
    return hasGraphicEnds(object.name) && hasNo(object.name, " :\r#") &&
           hasNo(object.page, " #\r") && hasNo(object.anchor, " $\r") &&
           hasNo(object.domain, ":") && hasNo(object.displayName, "\r") && !object.page.empty() &&
           !object.page.starts_with("./") && hasGraphicEnds(object.displayName) &&
           object.displayName != "-";
}

void run(std::string_view input) {
    const bool isWhole = input.starts_with("# Sphinx");
    Inventory inventory;
    try {
        inventory = parseInventory(isWhole ? std::string(input) : inventoryOf(input));
    } catch (const std::runtime_error& error) {
        require(isWhole, "Lines alone make no inventory unusable", error.what());
        return;
    }
    requireSound(inventory);
    std::erase_if(inventory.objects, [](const auto& object) { return !isPlain(object); });
    std::string lines;
    for (const auto& object : inventory.objects)
        lines += lineOf(object);
    const Inventory again = parseInventory(inventoryOf(lines));
    require(again.objects == inventory.objects && again.faults.empty(),
            "What was read can be written", lines);
}

const FuzzTarget target("SphinxInventory", &run);

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::fuzz
