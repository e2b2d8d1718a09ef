#pragma once

#include "property/RefEntityType.hpp"
#include "reference/api/ReferenceData.hpp"
#include "reference/api/export.hpp"
#include "reference/utils/EnumerationProperty.hpp"
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

    // Any 32-bit number is stored as it is. For the property see utils::EnumerationProperty.
    [[nodiscard]] property::RefEntityType::Value getRefEntityType() const noexcept {
        return m_refEntityType.get();
    }
    void setRefEntityType(property::RefEntityType::Value type) noexcept {
        m_refEntityType.set(type);
    }
    [[nodiscard]] const vqArray* getRefEntityTypeProperty() const;
    void setRefEntityTypeProperty(const vqArray* value);

    [[nodiscard]] static const char* getZORBClassName() noexcept;
    [[nodiscard]] static const char* getZORBPackageName() noexcept;

  private:
    [[nodiscard]] bool isMatch(const ReferenceData& data) const;

    utils::EnumerationProperty<property::RefEntityType::Value> m_refEntityType{
        property::RefEntityType::Unknown};
};

}  // namespace reference::api::comparator
