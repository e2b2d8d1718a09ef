#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "property/RefItem.hpp"
#include "property/RefItemLookup.hpp"
#include "sphinx/Facts.hpp"
#include "sphinx/ImportTree.hpp"
#include "support/TempFolder.hpp"

namespace reference::tests {

// A whole inventory file of version 2 with the given lines.
std::string inventoryFile(std::string_view lines, std::string_view project = "Sample",
                          std::string_view version = "2.5");

// A built tree in a temporary folder, to be imported.
class BuiltTree {
  public:
    // Adds a line to the inventory: "name domain:role 1 location -".
    BuiltTree& object(std::string_view name, std::string_view type, std::string_view location,
                      int priority = 1);
    // Adds a page with the given content of its body.
    BuiltTree& page(std::string_view name, std::string_view body);

    [[nodiscard]] const TempFolder& folder() const noexcept { return m_folder; }
    [[nodiscard]] importers::sphinx::ImportOptions options() const;

    // Writes the inventory and imports the tree.
    [[nodiscard]] importers::sphinx::ImportResult import() const;

  private:
    TempFolder m_folder;
    std::string m_lines;
};

// A signature line and what stands below it, as current pages have them.
std::string described(std::string_view domain, std::string_view type, std::string_view anchor,
                      std::string_view signature, std::string_view body);

// The single item filed under an href; fails the test and gives an empty item where there is none
// or more than one.
property::RefItem itemAt(const importers::sphinx::ImportResult& result, std::u16string_view href);

// The single lookup record of a name, likewise.
property::RefItemLookup recordOf(const importers::sphinx::ImportResult& result,
                                 std::u16string_view name);

// What is read from the body of the description of a function f(x, flag=None).
importers::sphinx::DescriptionFacts readBody(std::string_view body);

}  // namespace reference::tests
