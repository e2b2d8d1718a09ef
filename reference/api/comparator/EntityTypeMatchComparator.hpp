#pragma once

#include "property/RefEntityType.hpp"
#include "reference/api/ReferenceData.hpp"
#include "reference/api/export.hpp"
#include "vq/vqArray.hpp"

namespace reference::api::comparator {

// Puts results that document an entity of the given type before all others.
//
// Comparing changes nothing and may run on any number of threads at once; one thread at a time may
// set a property, and none while another compares.
class VELTRA_REFERENCE_API EntityTypeMatchComparator {
  public:
    // The type Unknown.
    EntityTypeMatchComparator();
    explicit EntityTypeMatchComparator(property::RefEntityType::Value type);

    // Whether a goes before b.
    [[nodiscard]] bool operator()(const ReferenceData& a, const ReferenceData& b) const;

    // Any 32-bit number is stored as it is.
    [[nodiscard]] property::RefEntityType::Value getRefEntityType() const noexcept {
        return m_refEntityType;
    }
    void setRefEntityType(property::RefEntityType::Value type) noexcept { m_refEntityType = type; }

    // The same as an enumeration member of the scripting language, which lives as long as this
    // object is neither changed nor gone. It is made once: a native setter leaves it alone, and it
    // shows what a script last read or set. The setter ignores null, takes any number, and throws
    // "VELTRA:class:RequireScalar" and "VELTRA:class:RequireNumeric"; it changes nothing then. By
    // one thread at a time, the getter too.
    [[nodiscard]] const vqArray* getRefEntityTypeProperty() const;
    void setRefEntityTypeProperty(const vqArray* value);

    [[nodiscard]] static const char* getZORBClassName() noexcept;
    [[nodiscard]] static const char* getZORBPackageName() noexcept;

  private:
    [[nodiscard]] bool isMatch(const ReferenceData& data) const;

    property::RefEntityType::Value m_refEntityType = property::RefEntityType::Unknown;

    // What the scripting language sees; null until it is first asked for, or set.
    mutable vqArrayPtr m_refEntityTypeCache;
};

}  // namespace reference::api::comparator
