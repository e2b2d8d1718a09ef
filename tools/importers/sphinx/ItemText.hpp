#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "property/RefItem.hpp"
#include "sphinx/Facts.hpp"

namespace reference::importers::sphinx {

// All that one item is made of. Texts UTF-8.
struct ItemSource {
    std::string href;
    std::vector<property::RefEntity> entities;
    std::string_view packageName;
    // A module's one-line summary; empty: none.
    std::string summary;
    // Null: nothing is known but the above.
    const DescriptionFacts* facts = nullptr;
    std::vector<property::ClassPropertyGroup> properties;
    // Turns the target of a link into the href of the record of the object there.
    std::function<std::string(const std::string&)> recordHref;
};

// The one sentence that says what an item is about: the summary, else the description's first
// sentence, else, for a module, its heading.
[[nodiscard]] std::string itemPurpose(const DescriptionFacts& facts, const std::string& summary);

// All that is said of an object as one text.
[[nodiscard]] std::string explanationOf(const DescriptionFacts& facts);

// The item in the terms of the property library. May be called from any thread.
[[nodiscard]] property::RefItem toItem(const ItemSource& source);

}  // namespace reference::importers::sphinx
