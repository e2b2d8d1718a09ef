// One record of a lookup file and one item of a reference file, as JSON. For this project's own
// programs; not installed.
#pragma once

#include <boost/json/fwd.hpp>

#include "foundation/core/export.hpp"
#include "property/RefItem.hpp"
#include "property/RefItemLookup.hpp"

namespace reference::docset {

// Whether members that say nothing (empty texts and lists, status Current) are written.
enum class EmptyMembers { Keep, Omit };

// The record's or item's members, in the order in which the format documents them. The item's href
// is not among them: in a set it is the key under which the item is filed. Any thread.
[[nodiscard]] VELTRA_HOST_API boost::json::object toJson(const property::RefItemLookup& record);
[[nodiscard]] VELTRA_HOST_API boost::json::object toJson(const property::RefItem& item,
                                                         EmptyMembers emptyMembers);

}  // namespace reference::docset
