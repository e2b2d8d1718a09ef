#pragma once

#include "property/ObjectInfo.hpp"

namespace reference::property {

// A value that a callable entity gives back. A plain value (see ObjectInfo).
class Output : public ObjectInfo {
  public:
    using ObjectInfo::ObjectInfo;

    // A deep copy, sharing no storage with this object.
    [[nodiscard]] Output copy() const { return *this; }

    friend bool operator==(const Output&, const Output&) = default;
};

}  // namespace reference::property
