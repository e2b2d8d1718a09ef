#pragma once

#include <vector>

#include "sphinx/Node.hpp"

namespace reference::importers::sphinx {

// The siblings after an object description that speak of it; empty for a description that says
// something itself. `description` is a node that `isObjectDescription` accepts. May be called from
// any thread.
//
// Some authors write an object's prose after its signature lines instead of below them, so that the
// description itself is empty. The prose then reaches up to the next description, heading, section
// or module. Empty descriptions that stand next to each other share it, as signature lines of one
// description do. Two things are left where they are:
//   1. a paragraph right before a description that it introduces: it ends in a colon or begins with
//      "The following";
//   2. everything in a place where prose comes before its description: there is prose before the
//      first description, and nothing after the last one, which is empty.
[[nodiscard]] std::vector<Node> followingProse(Node description);

}  // namespace reference::importers::sphinx
