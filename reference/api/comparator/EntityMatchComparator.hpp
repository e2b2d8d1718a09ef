#pragma once

#include <string>

#include "property/RefEntityType.hpp"
#include "reference/api/EntityCaseSensitivity.hpp"
#include "reference/api/ReferenceData.hpp"
#include "reference/api/comparator/ComparedName.hpp"
#include "reference/api/export.hpp"
#include "reference/utils/EnumerationProperty.hpp"
#include "vq/vqArray.hpp"

namespace reference::api::comparator {

// Puts results that document an entity of the given type and name before all others. The type must
// be equal; no type stands for any other. The name is the whole qualified name.
//
// Comparing changes nothing and may run on any number of threads at once; one thread at a time may
// set a property, and none while another compares.
class VELTRA_REFERENCE_API EntityMatchComparator {
  public:
    // An empty name, the type Unknown, case counts.
    EntityMatchComparator();
    EntityMatchComparator(std::u16string entityName, property::RefEntityType::Value type,
                          EntityCaseSensitivity::Value caseSensitivity);

    // Whether a goes before b.
    [[nodiscard]] bool operator()(const ReferenceData& a, const ReferenceData& b) const;

    // The name to match. The getter never returns null; its pointer is valid as long as this object
    // lives. The setter ignores null.
    [[nodiscard]] const std::u16string* getEntityNameProperty() const noexcept {
        return &m_name.getText();
    }
    void setEntityNameProperty(const std::u16string* entityName) { m_name.setText(entityName); }

    // Any 32-bit number is stored as it is. For the property see utils::EnumerationProperty.
    [[nodiscard]] property::RefEntityType::Value getRefEntityType() const noexcept {
        return m_refEntityType.get();
    }
    void setRefEntityType(property::RefEntityType::Value type) noexcept {
        m_refEntityType.set(type);
    }
    [[nodiscard]] const vqArray* getRefEntityTypeProperty() const;
    void setRefEntityTypeProperty(const vqArray* value);

    // The same; only Sensitive makes case count.
    [[nodiscard]] EntityCaseSensitivity::Value getEntityCaseSensitivity() const noexcept {
        return m_name.getCaseSensitivity();
    }
    void setEntityCaseSensitivity(EntityCaseSensitivity::Value value) {
        m_name.setCaseSensitivity(value);
    }
    [[nodiscard]] const vqArray* getEntityCaseSensitivityProperty() const {
        return m_name.getCaseSensitivityProperty();
    }
    void setEntityCaseSensitivityProperty(const vqArray* value) {
        m_name.setCaseSensitivityProperty(value);
    }

    [[nodiscard]] static const char* getZORBClassName() noexcept;
    [[nodiscard]] static const char* getZORBPackageName() noexcept;

  private:
    [[nodiscard]] bool isMatch(const ReferenceData& data) const;

    ComparedName m_name;
    utils::EnumerationProperty<property::RefEntityType::Value> m_refEntityType{
        property::RefEntityType::Unknown};
};

}  // namespace reference::api::comparator
