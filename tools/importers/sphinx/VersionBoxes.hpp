#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "sphinx/Facts.hpp"
#include "sphinx/Node.hpp"

namespace reference::importers::sphinx {

// The boxes in which a page says that something is new, has changed or is deprecated. All functions
// may be called from any thread.

// Whether the node is such a box.
[[nodiscard]] bool isVersionBox(Node node);

enum class VersionChange { Added, Changed, Deprecated };

struct VersionBox {
    VersionChange change = VersionChange::Changed;
    // The version that the box names; empty where it names none.
    std::string version;
    // What the box says beyond "New in version …"; may be empty.
    std::string explanation;
    // The whole as displayed.
    std::string text;
    // The entities that it refers to by a link.
    std::vector<LinkFacts> links;
};

// Reads a node that `isVersionBox` accepts.
[[nodiscard]] VersionBox readVersionBox(Node box);

// What is known of the object whose description has the box.
struct BoxOwner {
    // The object's names, qualified or not.
    std::vector<std::string> names;
    // The names of its parameters.
    std::set<std::string> parts;
};

// Whether the explanation speaks of a part of the object (a parameter, an option, a way to call it)
// or of something else altogether and so says nothing of the object as a whole. An empty
// explanation speaks of the whole.
[[nodiscard]] bool concernsPart(std::string_view explanation, const BoxOwner& owner);

}  // namespace reference::importers::sphinx
