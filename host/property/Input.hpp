#pragma once

#include "property/ObjectInfo.hpp"

namespace reference::property {

// An argument that a callable entity takes. A plain value (see ObjectInfo).
class Input : public ObjectInfo {
  public:
    using ObjectInfo::ObjectInfo;

    // A deep copy, sharing no storage with this object.
    [[nodiscard]] Input copy() const { return *this; }

    friend bool operator==(const Input&, const Input&) = default;
};

}  // namespace reference::property
