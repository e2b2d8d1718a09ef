#pragma once

#include "property/ObjectInfo.hpp"

namespace reference::property {

// A property of a class, as the page of its class documents it. A plain value (see ObjectInfo).
class ClassProperty : public ObjectInfo {
  public:
    using ObjectInfo::ObjectInfo;

    // A deep copy, sharing no storage with this object.
    [[nodiscard]] ClassProperty copy() const { return *this; }

    friend bool operator==(const ClassProperty&, const ClassProperty&) = default;
};

}  // namespace reference::property
