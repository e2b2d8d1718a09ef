#pragma once

#include <string>
#include <string_view>

#include "reference/api/EntityCaseSensitivity.hpp"
#include "reference/api/export.hpp"
#include "reference/utils/EnumerationProperty.hpp"
#include "vq/vqArray.hpp"

namespace reference::api::comparator {

// The name that a comparator looks for and whether its letter case counts, with the form that names
// of results are compared with: lower case, or the name as it stands where case counts, and then an
// ending. It is derived when a value changes, so that a comparison has only the result's name to
// fold.
//
// A default-constructed object has an empty form, without the ending, until a setter is called.
//
// Comparing changes nothing and may run on any number of threads at once; one thread at a time may
// set a value or read the property, and none while another compares. A setter that throws changes
// nothing.
class VELTRA_REFERENCE_API ComparedName {
  public:
    // An empty name; case counts. `ending` is appended to the form after the fold, and must live as
    // long as the process.
    explicit ComparedName(std::u16string_view ending = {}) noexcept : m_ending(ending) {}
    ComparedName(std::u16string text, EntityCaseSensitivity::Value caseSensitivity,
                 std::u16string_view ending = {});

    [[nodiscard]] const std::u16string& getText() const noexcept { return m_text; }
    // Null changes nothing.
    void setText(const std::u16string* text);

    [[nodiscard]] EntityCaseSensitivity::Value getCaseSensitivity() const noexcept {
        return m_caseSensitivity.get();
    }
    void setCaseSensitivity(EntityCaseSensitivity::Value value);

    // See utils::EnumerationProperty.
    [[nodiscard]] const vqArray* getCaseSensitivityProperty() const;
    void setCaseSensitivityProperty(const vqArray* value);

    // Only Sensitive makes case count.
    [[nodiscard]] bool isCaseSensitive() const noexcept {
        return m_caseSensitivity.get() == EntityCaseSensitivity::Sensitive;
    }

    // What names are compared with. Valid until this object is changed or destroyed.
    [[nodiscard]] std::u16string_view getForm() const noexcept { return m_form; }

    // Whether `name`, folded unless case counts, is the form. Allocates nothing for names whose
    // lower case has up to 1,024 units.
    [[nodiscard]] bool isNameOf(std::u16string_view name) const;

  private:
    using CaseSensitivity = utils::EnumerationProperty<EntityCaseSensitivity::Value>;

    void set(std::u16string text, CaseSensitivity caseSensitivity);

    std::u16string_view m_ending;
    std::u16string m_text;
    std::u16string m_form;
    CaseSensitivity m_caseSensitivity{EntityCaseSensitivity::Sensitive};
};

}  // namespace reference::api::comparator
