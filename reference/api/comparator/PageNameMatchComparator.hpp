#pragma once

#include <string>

#include "reference/api/EntityCaseSensitivity.hpp"
#include "reference/api/ReferenceData.hpp"
#include "reference/api/comparator/ComparedName.hpp"
#include "reference/api/export.hpp"
#include "vq/vqArray.hpp"

namespace reference::api::comparator {

// Puts the results of a page before all others. A page is named without its folder and without
// ".html" ("plot" for "ref/plot.html"). A fragment is part of an href's file name, so an item in
// the middle of a page does not match.
//
// A default-constructed object compares with an empty file name, without ".html", until its page
// name or case setting is set: it matches the results whose href is empty or ends in '/'.
//
// Comparing changes nothing and may run on any number of threads at once; one thread at a time may
// set a property, and none while another compares.
class VELTRA_REFERENCE_API PageNameMatchComparator {
  public:
    PageNameMatchComparator();
    PageNameMatchComparator(std::u16string pageName, EntityCaseSensitivity::Value caseSensitivity);

    // Whether a goes before b.
    [[nodiscard]] bool operator()(const ReferenceData& a, const ReferenceData& b) const;

    // The page to match. The getter never returns null; its pointer is valid as long as this object
    // lives. The setter ignores null.
    [[nodiscard]] const std::u16string* getPageNameProperty() const noexcept {
        return &m_name.getText();
    }
    void setPageNameProperty(const std::u16string* pageName) { m_name.setText(pageName); }

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

    ComparedName m_name;  // its form is the file name: the page name and ".html"
};

}  // namespace reference::api::comparator
