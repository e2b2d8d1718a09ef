// How the tables of the library's classes tell that a property is a member of an enumeration.
// Internal: no public header includes it.
#pragma once

#include "zorb/COSClass.hpp"
#include "zorb/HostName.hpp"

namespace reference::api {

// One member of the enumeration class that Owner names.
template <typename Owner>
[[nodiscard]] zorb::Shape memberShape() {
    return {.kind = zorb::Shape::Enumeration, .className = zorb::HostName<Owner>::id().str()};
}

}  // namespace reference::api
