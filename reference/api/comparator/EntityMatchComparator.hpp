#pragma once

#include <string>

#include "property/RefEntityType.hpp"
#include "reference/api/EntityCaseSensitivity.hpp"
#include "reference/api/ReferenceData.hpp"
#include "reference/api/export.hpp"
#include "vq/vqArray.hpp"

namespace reference::api::comparator {

// Puts results that document an entity of the given type and name before all others. The type must
// be equal, no type stands for any; the name is the whole qualified name.
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

    // The name to match; a null pointer given to the setter changes nothing. The pointer that the
    // getter gives is never null and lives as long as this object.
    [[nodiscard]] const std::u16string* getEntityNameProperty() const noexcept {
        return &m_entityName;
    }
    void setEntityNameProperty(const std::u16string* entityName);

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

    // Any 32-bit number is stored as it is; only Sensitive makes case count.
    [[nodiscard]] EntityCaseSensitivity::Value getEntityCaseSensitivity() const noexcept {
        return m_entityCaseSensitivity;
    }
    void setEntityCaseSensitivity(EntityCaseSensitivity::Value value);

    // The same as an enumeration member of the scripting language, which lives as long as this
    // object is neither changed nor gone. It is made once: a native setter leaves it alone, and it
    // shows what a script last read or set. The setter ignores null, takes any number, and throws
    // "VELTRA:class:RequireScalar" and "VELTRA:class:RequireNumeric"; it changes nothing then. By
    // one thread at a time, the getter too.
    [[nodiscard]] const vqArray* getEntityCaseSensitivityProperty() const;
    void setEntityCaseSensitivityProperty(const vqArray* value);

    [[nodiscard]] static const char* getZORBClassName() noexcept;
    [[nodiscard]] static const char* getZORBPackageName() noexcept;

  private:
    [[nodiscard]] bool isMatch(const ReferenceData& data) const;
    void generateCompareName();

    std::u16string m_entityName;
    std::u16string m_compareName;  // the name in the form that is compared
    property::RefEntityType::Value m_refEntityType = property::RefEntityType::Unknown;
    EntityCaseSensitivity::Value m_entityCaseSensitivity = EntityCaseSensitivity::Sensitive;

    // What the scripting language sees; null until it is first asked for, or set.
    mutable vqArrayPtr m_refEntityTypeCache;
    mutable vqArrayPtr m_entityCaseSensitivityCache;
};

}  // namespace reference::api::comparator
