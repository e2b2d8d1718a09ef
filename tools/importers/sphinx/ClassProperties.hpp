#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "property/ClassPropertyGroup.hpp"
#include "sphinx/Facts.hpp"

namespace reference::importers::sphinx {

// A property of a class that has a description of its own, or at least an entry in the inventory.
// All texts UTF-8.
struct DocumentedProperty {
    // Unqualified.
    std::string name;
    // The heading that it stands under unless the class's own page lists it under another one.
    std::string title;
    // Where it is documented.
    std::string href;
    // Its type, and the value that its signature shows; empty: unknown.
    std::string classifier;
    std::string value;
    // One sentence, and the whole explanation; empty: none.
    std::string purpose;
    std::string explanation;
};

// The properties of one class: what its page lists in fields, merged with what the properties' own
// descriptions say. Headings and properties are in the order of the fields, followed by the
// properties that no field lists; each property occurs once. Where both sources speak of a
// property, its own description wins, and the field fills the gaps.
class ClassProperties {
  public:
    // Adds the fields of the class's page; those that list no properties are passed over.
    void addFields(const std::vector<Field>& fields);
    void add(const DocumentedProperty& property);

    // The one-sentence purpose of a property; empty: none, or no such property.
    [[nodiscard]] std::string purposeOf(const std::string& name) const;
    // The names of all properties, in their order.
    [[nodiscard]] std::vector<std::string> names() const;
    // Groups without properties are left out.
    [[nodiscard]] std::vector<property::ClassPropertyGroup> groups() const;

  private:
    struct Group {
        std::string title;
        std::vector<DocumentedProperty> properties;
    };

    // Where a property stands: the numbers of its group, and within that.
    using Place = std::pair<std::size_t, std::size_t>;

    void append(DocumentedProperty property);
    [[nodiscard]] DocumentedProperty* find(const std::string& name);

    std::vector<Group> m_groups;
    std::unordered_map<std::string, std::size_t> m_groupsByTitle;
    std::unordered_map<std::string, Place> m_placesByName;
};

}  // namespace reference::importers::sphinx
