#pragma once

#include <string>

#include "reference/api/EntityCaseSensitivity.hpp"
#include "reference/api/ReferenceData.hpp"
#include "reference/api/export.hpp"
#include "vq/vqArray.hpp"

namespace reference::api::comparator {

// Puts results that document an entity of the given name, of whatever type, before all others. The
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

    // The name to match; a null pointer given to the setter changes nothing. The pointer that the
    // getter gives is never null and lives as long as this object.
    [[nodiscard]] const std::u16string* getEntityNameProperty() const noexcept {
        return &m_entityName;
    }
    void setEntityNameProperty(const std::u16string* entityName);

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
    EntityCaseSensitivity::Value m_entityCaseSensitivity = EntityCaseSensitivity::Sensitive;

    // What the scripting language sees; null until it is first asked for, or set.
    mutable vqArrayPtr m_entityCaseSensitivityCache;
};

}  // namespace reference::api::comparator
