#pragma once

#include <vector>

#include "sphinx/Facts.hpp"
#include "sphinx/Node.hpp"

namespace reference::importers::sphinx {

// Reads what a description says below its signature lines into `facts`, whose signatures must be
// set: purpose, description, bases, fields, examples, see-also links, the version that introduced
// the object and whether it is deprecated. `nodes` are siblings, in page order: the children of a
// definition, or for a module the part of its section that speaks of the module itself.
//
// A box that marks something as new or deprecated counts only where it is itself one of `nodes` and
// does not speak of a mere part of the object.
//
// Links are left as the page has them. May be called from any thread.
void readDescriptionBody(const std::vector<Node>& nodes, DescriptionFacts& facts);

// The same as one text, from the first sentence on, with code, version boxes and what may be raised
// where the page has them.
[[nodiscard]] std::string readExplanation(const std::vector<Node>& nodes);

}  // namespace reference::importers::sphinx
