#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sphinx/Facts.hpp"
#include "sphinx/Node.hpp"

namespace reference::importers::sphinx {

// Lists of fields: "Parameters", "Returns", "Raises" and so on, in the forms in which the various
// generators write them. All functions may be called from any thread.

// Whether the node is such a list: a definition list marked as one, a table marked as one or an
// unmarked definition list whose terms are all headings of known fields.
[[nodiscard]] bool isFieldList(Node node);

// What a field of the given heading holds; `Prose` for a heading that is not known. Letter case and
// a colon at the end do not matter.
[[nodiscard]] FieldRole fieldRoleOf(std::string_view heading);

// The fields of a node that `isFieldList` accepts, in page order.
[[nodiscard]] std::vector<Field> readFieldList(Node list);

// A field as a paragraph: "Raises: ValueError – If …".
[[nodiscard]] std::string fieldText(const Field& field);

// A field as a section of a description: its title as a heading, below it a list. Empty for a field
// that holds nothing.
[[nodiscard]] std::string sectionText(const Field& field);

}  // namespace reference::importers::sphinx
