#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "sphinx/ClassProperties.hpp"
#include "sphinx/Gathered.hpp"
#include "sphinx/Kinds.hpp"

namespace reference::importers::sphinx {

// What is known of one object beyond the inventory. Objects are named by their positions in
// Gathered::objects, items by theirs in Filed::drafts.
struct FiledObject {
    Kind kind;
    // Null: nothing was found.
    const DescriptionFacts* facts = nullptr;
    const SignatureFacts* signature = nullptr;
    // The class that has the object as a property; empty: it has an item of its own.
    std::optional<std::size_t> owner;
    // Where the object itself is documented.
    std::string ownHref;
    // The item that the object is filed with.
    std::size_t draft = 0;
};

// An item in the making.
struct DraftItem {
    std::string href;
    // Null: nothing was found.
    const DescriptionFacts* facts = nullptr;
    // The objects that are its entities, and those that are properties of one of them.
    std::vector<std::size_t> objects;
    std::vector<std::size_t> properties;
    ClassProperties classProperties;
};

// Points into what was gathered.
struct Filed {
    // One for each object.
    std::vector<FiledObject> objects;
    std::vector<DraftItem> drafts;
    // The objects that nothing was found about, in the order of the list.
    std::vector<std::size_t> undescribed;
};

// Decides which item each object is filed with, and which href an item has; assemble() says by
// which rules. The scopes are those of the gathered objects. May be called from any thread.
[[nodiscard]] Filed fileObjects(const Gathered& gathered, const Scopes& scopes);

}  // namespace reference::importers::sphinx
