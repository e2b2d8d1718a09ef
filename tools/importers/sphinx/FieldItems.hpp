#pragma once

#include "sphinx/Facts.hpp"
#include "sphinx/Node.hpp"

namespace reference::importers::sphinx {

// Reads the body of one field, whose title and role are set, and appends what it finds to the
// field's parts and prose. May be called from any thread.
//
// The forms that are understood, also several in one body:
//   - a definition list: name and classifier in the term, the text in the definition;
//   - a list of items, each "name (classifier) – text";
//   - one such item as a paragraph, further blocks belonging to its text.
// Joint names ("x, y") give one part each. Everything else is prose.
void readFieldBody(Node body, Field& field);

}  // namespace reference::importers::sphinx
