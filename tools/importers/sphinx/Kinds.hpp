#pragma once

#include <set>
#include <string>
#include <string_view>

#include "property/FunctionType.hpp"
#include "property/RefEntityType.hpp"
#include "sphinx/Facts.hpp"
#include "sphinx/Inventory.hpp"

namespace reference::importers::sphinx {

// What an object of an inventory is in terms of the lookup.
struct Kind {
    property::RefEntityType::Value type = property::RefEntityType::Unknown;
    property::FunctionType::Value functionType = property::FunctionType::NotCallable;

    friend bool operator==(const Kind&, const Kind&) = default;
};

// Whether the object belongs in a reference at all: it has a name and is not an alias, a parameter
// of a function or template, or a mere place in the prose (a label, a document, a grammar token).
[[nodiscard]] bool isReferenceObject(const InventoryObject& object);

// The names of an inventory's classes and modules, which tell what a name stands within. Immutable
// after construction; any thread may read it.
class Scopes {
  public:
    explicit Scopes(const std::vector<InventoryObject>& objects);

    // The name of what an object stands within: "pkg.Class" of "pkg.Class.method", "ns::Class" of
    // "ns::Class::method"; empty where it stands within nothing. Need not be in the inventory.
    [[nodiscard]] static std::string_view enclosing(const InventoryObject& object);
    [[nodiscard]] bool isInClass(const InventoryObject& object) const;
    [[nodiscard]] bool isInModule(const InventoryObject& object) const;
    // The longest module that the object's name begins with; a module's own name for a module;
    // empty: none.
    [[nodiscard]] std::string_view moduleOf(const InventoryObject& object) const;

  private:
    // Each with its domain before it, "py:pkg.Class".
    std::set<std::string> m_classes;
    std::set<std::string, std::less<>> m_modules;
};

// The kind of an object. `facts` and `signature` (of the line that has the object's id) are what
// its description says; both null: it has none.
[[nodiscard]] Kind kindOf(const InventoryObject& object, const Scopes& scopes,
                          const DescriptionFacts* facts, const SignatureFacts* signature);

// Whether an entity of the type can have properties.
[[nodiscard]] bool holdsProperties(property::RefEntityType::Value type);

}  // namespace reference::importers::sphinx
