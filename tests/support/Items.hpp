#pragma once

#include <string>
#include <vector>

#include "property/RefItem.hpp"

namespace reference::tests {

// The fields of an item by name, so that a test sets only those that it is about.
struct ItemFields {
    std::u16string href;
    std::vector<property::RefEntity> entities;
    std::u16string packageName;
    std::u16string purpose;
    std::u16string introduced;
    std::u16string description;
    property::AppThumbnail appThumbnail;
    property::DeprecationStatus::Value deprecationStatus = property::DeprecationStatus::Current;
    std::vector<property::SyntaxGroup> syntaxGroups;
    std::vector<property::Input> inputs;
    std::vector<property::InputGroup> inputGroups;
    std::vector<property::Output> outputs;
    std::vector<property::ClassPropertyGroup> classPropertyGroups;
    std::vector<property::SeeAlso> seeAlso;
    std::vector<property::Example> examples;
    std::vector<property::Parameter> parameters;
    std::vector<property::SeeAlso> replacements;
};

[[nodiscard]] property::RefItem makeItem(ItemFields fields);

// An item in which every field says something.
[[nodiscard]] property::RefItem makeFullItem(std::u16string href);

}  // namespace reference::tests
