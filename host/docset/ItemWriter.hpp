// One record of a lookup file and one item of a reference file, as JSON. For this project's own
// programs; not installed.
#pragma once

#include <boost/json/fwd.hpp>

#include "foundation/core/export.hpp"
#include "property/RefItem.hpp"
#include "property/RefItemLookup.hpp"

namespace reference::docset {

// Two forms of the same members.
enum class JsonForm {
    // As a documentation set has them: what says nothing (empty texts and lists, status Current) is
    // left out, and a number without a name is a number.
    Set,
    // As programs like to read them: every member is there, except the app thumbnail of an item
    // that has none, and numbers without a name are texts.
    Complete,
};

// The record's (in the form Set) or item's members, in the order in which the format documents
// them. The item's href is not among them: in a set it is the key under which the item is filed.
// Any thread.
[[nodiscard]] VELTRA_HOST_API boost::json::object toJson(const property::RefItemLookup& record);
[[nodiscard]] VELTRA_HOST_API boost::json::object toJson(const property::RefItem& item,
                                                         JsonForm form);

}  // namespace reference::docset
