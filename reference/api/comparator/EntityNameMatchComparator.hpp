#pragma once

#include <string>

#include "reference/api/EntityCaseSensitivity.hpp"
#include "reference/api/ReferenceData.hpp"
#include "reference/api/comparator/ComparedName.hpp"
#include "reference/api/export.hpp"
#include "vq/vqArray.hpp"

namespace reference::api::comparator {

// Puts results that document an entity of the given name before all others, whatever its type. The
// name is the whole qualified name.
//
// Comparing changes nothing and may run on any number of threads at once; one thread at a time may
// set a property, and none while another compares.
class VELTRA_REFERENCE_API EntityNameMatchComparator {
  public:
    // An empty name, case counts.
    EntityNameMatchComparator();
    EntityNameMatchComparator(std::u16string entityName,
                              EntityCaseSensitivity::Value caseSensitivity);

    // Whether a goes before b.
    [[nodiscard]] bool operator()(const ReferenceData& a, const ReferenceData& b) const;

    // The name to match. The getter never returns null; its pointer is valid as long as this object
    // lives. The setter ignores null.
    [[nodiscard]] const std::u16string* getEntityNameProperty() const noexcept {
        return &m_name.getText();
    }
    void setEntityNameProperty(const std::u16string* entityName) { m_name.setText(entityName); }

    // Any 32-bit number is stored as it is; only Sensitive makes case count. For the property see
    // utils::EnumerationProperty.
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
};

}  // namespace reference::api::comparator
